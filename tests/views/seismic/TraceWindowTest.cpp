#include "XOV_Graphics/views/seismic/TraceWindow.h"

#include "SeisDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov::testing {
namespace {

FakeRecord evenRecord(int count, float interval, float begin) {
  return FakeRecord(std::vector<float>(static_cast<std::size_t>(count), 1.0f), interval, begin);
}

TEST(WindowStartingAtLimit, holdsAllOfARecordInsideTheWindow) {
  EXPECT_EQ(windowStartingAtLimit(evenRecord(10, 1, 5), 0, 100), (TraceWindow{0, 10, 5}));
  EXPECT_EQ(windowStartingAtLimit(evenRecord(10, 1, 0), 0, 9), (TraceWindow{0, 10, 0}));
}

TEST(WindowStartingAtLimit, drawsTheFirstSampleOfALateWindowAtItsStart) {
  // (4.7 − 2) / 0.5 = 5.4: sample 5, though it belongs at 4.5.
  EXPECT_EQ(windowStartingAtLimit(evenRecord(100, 0.5f, 2), 4.7f, 1000), (TraceWindow{5, 100, 4.7f}));
}

TEST(WindowStartingAtLimit, countsTheSamplesOfTheWholeWindow) {
  // 10 s at 0.5 s are 20 samples, from sample 5 on.
  EXPECT_EQ(windowStartingAtLimit(evenRecord(100, 0.5f, 2), 4.7f, 14.7f), (TraceWindow{5, 25, 4.7f}));
}

TEST(WindowStartingAtLimit, letsARecordThatBeginsInsideRunPastTheEnd) {
  // 20 samples of a window of 10 s, though only 12 fit behind 4 s.
  EXPECT_EQ(windowStartingAtLimit(evenRecord(100, 0.5f, 4), 0, 10), (TraceWindow{0, 20, 4}));
}

TEST(WindowStartingAtLimit, neverReadsBeyondTheSamples) {
  FakeRecord record = evenRecord(10, 1, 0);
  record.endSeconds = 1e6f; // a header that says more than there is
  EXPECT_EQ(windowStartingAtLimit(record, 0, 1000), (TraceWindow{0, 10, 0}));
}

TEST(WindowStartingAtLimit, isEmptyForARecordThatEndsBeforeTheWindow) {
  const TraceWindow window = windowStartingAtLimit(evenRecord(10, 1, 0), 50, 100);
  EXPECT_EQ(window.first, 50);
  EXPECT_LE(window.last, window.first);
}

TEST(WindowStartingAtLimit, takesWindowsBeyondAllNumbers) {
  constexpr float kHuge = 1e30f;
  const FakeRecord record = evenRecord(10, 1e-6f, 0);
  EXPECT_EQ(windowStartingAtLimit(record, kHuge, kHuge).last - 10, 0);
  EXPECT_EQ(windowStartingAtLimit(record, -kHuge, kHuge), (TraceWindow{0, 10, 0}));
  EXPECT_LE(windowStartingAtLimit(record, 0, -kHuge).last, 0);
}

TEST(WindowBetweenLimits, leavesTheLastSampleOfTheLongestRecordOut) {
  // (9 − 0) / 1 = 9: samples 0 to 8 of 0 to 9.
  EXPECT_EQ(windowBetweenLimits(evenRecord(10, 1, 0), 0, 9), (TraceWindow{0, 9, 0}));
  EXPECT_EQ(windowBetweenLimits(evenRecord(10, 1, 0), 0, 10), (TraceWindow{0, 10, 0}));
}

TEST(WindowBetweenLimits, truncatesBothEnds) {
  // (4.7 − 2) / 0.5 = 5.4 and (9.9 − 2) / 0.5 = 15.8; sample 5 stays at its own time.
  EXPECT_EQ(windowBetweenLimits(evenRecord(100, 0.5f, 2), 4.7f, 9.9f), (TraceWindow{5, 15, 4.5f}));
}

TEST(WindowBetweenLimits, staysInsideTheSamples) {
  EXPECT_EQ(windowBetweenLimits(evenRecord(10, 1, 5), -1000, 1000), (TraceWindow{0, 10, 5}));
  const TraceWindow after = windowBetweenLimits(evenRecord(10, 1, 0), 50, 100);
  EXPECT_LE(after.last, after.first);
  const TraceWindow before = windowBetweenLimits(evenRecord(10, 1, 500), 50, 100);
  EXPECT_LE(before.last, before.first);
}

TEST(WindowBetweenLimits, isEmptyWhereTheIntervalAndTheTimeAreZero) {
  const TraceWindow window = windowBetweenLimits(evenRecord(10, 0, 0), 0, 0);
  EXPECT_LE(window.last, window.first);
}

} // namespace
} // namespace xov::testing
