#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

#include "tests/support/FakeRecord.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

TEST(TitleOfRecords, namesTheEventOfTheFirstRecord) {
  const auto r = std::make_shared<testing::FakeRecord>();
  r->region = "NEAR EAST COAST OF HONSHU";
  r->originTime = "2011/03/11 05:46:23.7";
  EXPECT_EQ(titleOfRecords({r, makeRecord()}), "NEAR EAST COAST OF HONSHU  2011/03/11 05:46:23.7 UTC");
}

TEST(TitleOfRecords, makesDoWithWhatIsKnown) {
  const auto r = std::make_shared<testing::FakeRecord>();
  r->region = "FIJI";
  EXPECT_EQ(titleOfRecords({r}), "FIJI");
  r->region.clear();
  r->originTime = "2011/03/11 05:46:23.7";
  EXPECT_EQ(titleOfRecords({r}), "2011/03/11 05:46:23.7 UTC");
}

TEST(TitleOfRecords, namesStationAndDayOfAnUnknownEvent) {
  EXPECT_EQ(titleOfRecords({makeRecord()}), "II.TLY  2011-03-11 UTC");
  EXPECT_EQ(titleOfRecords({makeRecord(), makeRecord({.component = "BHN"})}), "II.TLY  2011-03-11 UTC");
  EXPECT_EQ(titleOfRecords({makeRecord({.reference = QDateTime()})}), "II.TLY");
}

TEST(TitleOfRecords, countsRecordsOfSeveralStations) {
  EXPECT_EQ(titleOfRecords({makeRecord(), makeRecord({.station = "ARU"})}), "2 records  2011-03-11 UTC");
  EXPECT_EQ(titleOfRecords({std::make_shared<testing::FakeRecord>()}), "1 record");
  EXPECT_EQ(titleOfRecords({}), "0 records");
}

TEST(TitleOfRecords, namesTheFirstAndTheLastDay) {
  // The second record's first sample is 5 s before midnight, its reference time after it.
  const auto day = [](float begin) { return makeRecord({.reference = onTheDay(0, 0), .begin = begin}); };
  EXPECT_EQ(titleOfRecords({day(10), day(-5), day(86400)}), "II.TLY  2011-03-10 to 2011-03-12 UTC");
}

TEST(StationText, isTheStationAloneWithoutANetwork) {
  testing::FakeRecord record;
  record.station = "ABC";
  EXPECT_EQ(stationText(record), "ABC");
  record.network = "XX";
  EXPECT_EQ(stationText(record), "XX.ABC");
}

TEST(AmplitudeLabel, namesTheQuantityThatAllRecordsHold) {
  const auto label = [](std::int32_t first, std::int32_t second) {
    return amplitudeLabel({makeRecord({.quantity = first}), makeRecord({.quantity = second})});
  };
  EXPECT_EQ(label(6, 6), "Displacement (nm)");
  EXPECT_EQ(label(7, 7), "Velocity (nm/s)");
  EXPECT_EQ(label(8, 8), "Acceleration (nm/s/s)");
  EXPECT_EQ(label(6, 7), "Amplitude");
  EXPECT_EQ(label(5, 5), "Amplitude") << "of no known kind";
  EXPECT_EQ(amplitudeLabel({}), "Amplitude");
  EXPECT_EQ(amplitudeLabel({nullptr}), "Amplitude");
  EXPECT_EQ(amplitudeLabel({nullptr, makeRecord({.quantity = 7})}), "Velocity (nm/s)");
}

TEST(ChannelsOf, namesEachOnceInTheirOrder) {
  EXPECT_EQ(channelsOf({makeRecord({.component = "BHZ"}), makeRecord({.component = "BHN"}), makeRecord()}),
            (QStringList{"II.TLY..BHZ", "II.TLY..BHN"}));
  EXPECT_TRUE(channelsOf({}).isEmpty());
}

TEST(TitleOfChannels, namesTheChannelTheStationOrTheirNumber) {
  EXPECT_EQ(titleOfChannels({makeRecord(), makeRecord()}), "II.TLY..BHZ");
  EXPECT_EQ(titleOfChannels({makeRecord(), makeRecord({.component = "BHN"})}), "II.TLY");
  EXPECT_EQ(titleOfChannels({makeRecord(), makeRecord({.station = "ARU"}), makeRecord()}), "2 channels");
}

TEST(CaptionedByChannel, keepsThePathsThatTellRecordsApart) {
  const auto first = makeRecord({.path = "/data/a.SAC"});
  const SeismogramArray records = captionedByChannel(
      {first, makeRecord({.path = "/data/b.mseed"}), makeRecord({.component = "BHN", .path = "/data/b.mseed"})});
  EXPECT_EQ(records[0], first);
  EXPECT_EQ(records[1]->path(), "II.TLY..BHZ");
  EXPECT_EQ(records[2]->path(), "II.TLY..BHN");
  EXPECT_EQ(records[2]->npts(), 10);
}

} // namespace
} // namespace xov
