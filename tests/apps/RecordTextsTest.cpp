#include "apps/xov/inputs/RecordTexts.h"

#include "apps/xov/commands/MonitorCommand.h"
#include "apps/xov/commands/StackCommand.h"
#include "tests/apps/TestRecords.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

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
} // namespace xov::cli
