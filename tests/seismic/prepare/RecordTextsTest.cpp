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

TEST(TitleOfRecords, countsRecordsOfAnUnknownEvent) {
  EXPECT_EQ(titleOfRecords({makeRecord(), makeRecord()}), "2 records");
  EXPECT_EQ(titleOfRecords({makeRecord()}), "1 record");
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
