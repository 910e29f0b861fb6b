#include "XOV_Graphics/views/base/TraceReading.h"

#include "XOV_Graphics/base/SampleIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace xov {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Zeros with a few peaks, a sample a view point: x is the index, y = 2 v + 5. Blocks of the index are 256 samples.
class TraceReadingTest : public ::testing::Test {
protected:
  TraceReadingTest() {
    samples[300] = 40;
    samples[700] = -60;
    samples[1500] = 90;
  }
  Trace trace(bool indexed = true) {
    index.build(samples);
    Trace trace;
    trace.borrow({samples.data(), indexed ? &index : nullptr, nullptr});
    trace.last = std::int64_t(samples.size());
    trace.time = TraceTime::even(0, 1);
    trace.yScale = 2;
    trace.yOffset = 5;
    return trace;
  }
  // With an index and without.
  static void expectReach(Trace trace, double left, double right, double lowest, double highest) {
    for (const SampleIndex* used : {trace.index, static_cast<const SampleIndex*>(nullptr)}) {
      trace.index = used;
      const std::optional<TraceReach> reach = reachBetween(trace, left, right);
      ASSERT_TRUE(reach.has_value()) << left << ' ' << right;
      EXPECT_EQ(reach->lowest, lowest) << left << ' ' << right << ' ' << used;
      EXPECT_EQ(reach->highest, highest) << left << ' ' << right << ' ' << used;
    }
  }

  std::vector<float> samples = std::vector<float>(2000, 0);
  SampleIndex index;
};

TEST_F(TraceReadingTest, aLineReachesAsFarAsItsSamplesBetweenTwoX) {
  expectReach(trace(), 0, 1999, -115, 185); // 2 · -60 + 5 and 2 · 90 + 5
  expectReach(trace(), 0, 1400, -115, 85);
  expectReach(trace(), 301, 699, 5, 5);
  expectReach(trace(), 300, 700, -115, 85);
  expectReach(trace(), 701, 1500, 5, 185);
}

TEST_F(TraceReadingTest, aLineReachesToWhereItIsCutBetweenItsSamples) {
  // It falls from 0 to -60 between 699 and 700: at a quarter of the way it is at -15.
  expectReach(trace(), 400, 699.25, 5 - 2 * 15, 5);
  // And it falls from 40 at 300 to 0 at 301: at three quarters it is at 10.
  expectReach(trace(), 300.75, 650, 5, 5 + 2 * 10);
}

TEST_F(TraceReadingTest, aClampedLineReachesAsFarAsItsClamps) {
  Trace clamped = trace();
  clamped.clampLow = -10;
  clamped.clampHigh = 20;
  expectReach(clamped, 0, 1999, -15, 45);
  expectReach(clamped, 701, 1999, 5, 45);
}

TEST_F(TraceReadingTest, whatStandsForTheFirstSampleIsNotClamped) {
  Trace replaced = trace();
  replaced.clampHigh = 20;
  replaced.firstValue = 1000;
  expectReach(replaced, 0, 1999, -115, 2005);
  expectReach(replaced, 1, 1999, -115, 45);
}

TEST_F(TraceReadingTest, aBlockWithAGapIsReadSampleBySample) {
  samples[520] = kNan; // of samples 512 … 767, as the lowest one
  expectReach(trace(), 0, 1999, -115, 185);
  expectReach(trace(), 300, 1400, -115, 85);
  for (float& sample : samples)
    sample = kNan;
  EXPECT_FALSE(reachBetween(trace(), 0, 1999).has_value());
}

TEST_F(TraceReadingTest, aLineThatRunsLeftwardsReachesAsFar) {
  Trace mirrored = trace();
  mirrored.xScale = -1;
  mirrored.xOffset = 1999; // x = 1999 - i
  expectReach(mirrored, 0, 1999, -115, 185);
  expectReach(mirrored, 1999 - 699.25, 1599, 5 - 2 * 15, 5);
}

TEST_F(TraceReadingTest, noLineReachesAnywhereWithoutScalesOrBesideItsEnds) {
  EXPECT_FALSE(reachBetween(trace(), 2500, 3000).has_value());
  EXPECT_FALSE(reachBetween(trace(), -20, -10).has_value());
  EXPECT_FALSE(reachBetween(trace(), kNan, 100).has_value());
  EXPECT_FALSE(reachBetween(trace(), 0, HUGE_VAL).has_value());
  for (const double scale : {0.0, std::nan(""), HUGE_VAL}) {
    Trace flat = trace();
    flat.xScale = scale;
    EXPECT_FALSE(reachBetween(flat, 0, 1999).has_value()) << scale;
  }
  EXPECT_FALSE(reachBetween(Trace(), 0, 1999).has_value());
  std::vector<float> times(samples.size(), 1);
  Trace listed = trace();
  listed.time = TraceTime::explicitValues(times.data());
  EXPECT_FALSE(reachBetween(listed, 0, 1999).has_value());
}

} // namespace
} // namespace xov
