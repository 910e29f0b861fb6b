#include "XOV_Graphics/seismic/prepare/Alignment.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordPicks.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace xov {
namespace {

/// Begins 10 s after its reference time 05:00:00, with the origin 100 s after it, at 72 degrees: 8006.03 km on a
/// sphere of 6371 km.
std::shared_ptr<SeismogramRecord> record(const std::function<void(SacHeader&)>& change = [](SacHeader&) {}) {
  SacHeader header = headerOf(*makeRecord({.begin = 10}));
  header.gcarc = 72;
  header.o = 100;
  change(header);
  return copyOfRecord(*makeRecord({.begin = 10}), {.header = header, .precise = footerFromHeader(header)});
}

TEST(Alignment, countsAllTimesOfARecordFromItsPick) {
  const auto picked = record([](SacHeader& header) {
    header.a = 16.5F;
    header.ka = "P";
    header.t2 = 20;
  });
  const AlignedRecords aligned = alignedOn({picked}, "P");
  ASSERT_EQ(aligned.records.size(), 1U);
  const SeismogramRecord& moved = *aligned.records.front();
  EXPECT_EQ(moved.b(), -6.5F);
  EXPECT_EQ(moved.e(), 2.5F) << "ten samples, a second apart";
  EXPECT_EQ(moved.pTime(), 0);
  EXPECT_EQ(moved.timePickKey(2), 3.5F);
  EXPECT_EQ(moved.originTimeOffset(), 83.5F);
  EXPECT_EQ(moved.timePickKey(3), kUndefinedValue);
  EXPECT_EQ(referenceTimeOf(moved), onTheDay(5, 0, 16, 500)) << "so that the samples stay at their moments";
  EXPECT_EQ(picked->b(), 10) << "the original stays";
}

TEST(Alignment, leavesOutRecordsWithoutThePhase) {
  const auto withPick = record([](SacHeader& header) { header.t0 = 12; });
  const auto without = record();
  const AlignedRecords aligned = alignedOn({without, withPick, without}, "T0");
  ASSERT_EQ(aligned.records.size(), 1U);
  EXPECT_EQ(aligned.records.front()->b(), -2);
  EXPECT_EQ(aligned.leftOut, (SeismogramArray{without, without}));
  EXPECT_EQ(aligned.leftOutIndices, (std::vector<std::size_t>{0, 2}));
}

// At 60 degrees from an event 33 km deep P takes 603.23 s.
TEST(Alignment, takesPredictedPhasesWhereThereIsNoPick) {
  const AlignedRecords aligned = alignedOn({record([](SacHeader& header) {
                                             header.gcarc = 60;
                                             header.evdp = 33;
                                           })},
                                           "P");
  ASSERT_EQ(aligned.records.size(), 1U);
  EXPECT_NEAR(aligned.records.front()->b(), 10 - 100 - 603.23, 0.02);
}

// 72 degrees are 72 · 111.195 km = 8006.03 km, and 1000.75 s at 8 km/s.
TEST(Alignment, reducesTimesByDistanceOverVelocity) {
  const AlignedRecords reduced = reducedBy({record()}, 8);
  ASSERT_EQ(reduced.records.size(), 1U);
  const SeismogramRecord& moved = *reduced.records.front();
  EXPECT_NEAR(moved.originTimeOffset(), -1000.75, 0.01);
  EXPECT_NEAR(moved.b(), 10 - 100 - 1000.75, 0.01);
  EXPECT_EQ(referenceTimeOf(moved), onTheDay(5, 0).addMSecs(1100754)) << "100 s and 72 * 111.19493 / 8 s later";
}

TEST(Alignment, reducesWhatCountsFromOneMomentWithoutAnOrigin) {
  const auto noOrigin = [](SacHeader& header) { header.o = kUndefinedValue; };
  const AlignedRecords reduced = reducedBy({record(noOrigin)}, 8);
  ASSERT_EQ(reduced.records.size(), 1U);
  EXPECT_NEAR(reduced.records.front()->b(), 10 - 1000.75, 0.01);
  const AlignedRecords mixed = reducedBy({record(noOrigin), record()}, 8);
  EXPECT_EQ(mixed.leftOutIndices, (std::vector<std::size_t>{0})) << "the other one counts from its origin time";
}

TEST(Alignment, leavesOutWhatHasNoDistanceOrNoVelocity) {
  const auto nowhere = record([](SacHeader& header) { header.gcarc = kUndefinedValue; });
  EXPECT_EQ(reducedBy({nowhere, record()}, 8).leftOutIndices, (std::vector<std::size_t>{0}));
  for (const double velocity : {0.0, -8.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_TRUE(reducedBy({record()}, velocity).records.empty()) << velocity;
}

TEST(Alignment, zerosThatAreNoTimesLeaveARecordAsItIs) {
  const auto original = record();
  for (const double zero : {1e300, -1e11, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(countedFrom(original, zero), original) << zero;
  EXPECT_EQ(countedFrom(nullptr, 1), nullptr);
}

TEST(Alignment, recordsWithoutAReferenceTimeKeepNone) {
  const AlignedRecords aligned = alignedOn({makeRecord({.reference = QDateTime(), .begin = 3})}, "O");
  EXPECT_TRUE(aligned.records.empty());
  const auto counted = countedFrom(makeRecord({.reference = QDateTime(), .begin = 3}), 2);
  EXPECT_EQ(counted->b(), 1);
  EXPECT_FALSE(referenceTimeOf(*counted).isValid());
}

} // namespace
} // namespace xov
