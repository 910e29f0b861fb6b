#include "XOV_Graphics/platform/TraceTimeline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace xov;

namespace {

Trace traceOf(const TraceTime& time, std::int64_t first, std::int64_t last) {
  static const float kSample = 0;
  Trace trace;
  trace.samples = &kSample; // never read by a timeline
  trace.first = first;
  trace.last = last;
  trace.time = time;
  return trace;
}

/// Compares every time with adding the step again and again in single precision.
::testing::AssertionResult equalsAddition(float start, float step, std::int64_t first, std::int64_t count) {
  const TraceTimeline timeline(traceOf(TraceTime::accumulated(start, step), first, first + count));
  float expected = start;
  for (std::int64_t i = first; i < first + count; ++i) {
    if (!std::isfinite(expected)) {
      if (timeline.last() == i) return ::testing::AssertionSuccess();
      return ::testing::AssertionFailure() << "ends at " << timeline.last() << " and not at " << i;
    }
    if (i >= timeline.last() || timeline.time(i) != expected) {
      return ::testing::AssertionFailure()
             << "sample " << i << " of start " << start << " step " << step << " lies at "
             << (i < timeline.last() ? timeline.time(i) : NAN) << " and not at " << expected;
    }
    expected = expected + step;
  }
  if (timeline.last() == first + count) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "ends at " << timeline.last();
}

} // namespace

TEST(TraceTimeline, accumulatesLikeRepeatedAdditionOverMillionsOfSteps) {
  EXPECT_TRUE(equalsAddition(0, 0.01F, 0, 5'000'000));
  EXPECT_TRUE(equalsAddition(0, 0.005F, 7, 3'000'000));
  EXPECT_TRUE(equalsAddition(-12345.678F, 0.01F, 0, 3'000'000));
}

TEST(TraceTimeline, accumulatesLikeRepeatedAdditionForManyStepsAndStarts) {
  for (const float step :
       {0.01F, 0.025F, 1.0F, 0.1F, 1.0F / 3, 0.0078125F, 1e-7F, 5.9604645e-8F, 8.940697e-8F, 17.3F}) {
    for (const float start :
         {0.0F, -0.0F, 1.0F, -1.0F, -3.7F, 86399.99F, -86400.0F, 1e6F, -0.001F, 1e-40F, -1e-40F}) {
      EXPECT_TRUE(equalsAddition(start, step, 0, 20'000));
    }
  }
}

TEST(TraceTimeline, accumulatesLikeRepeatedAdditionForRandomStepsAndStarts) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> exponent(-12, 6), mantissa(-1, 1);
  for (int k = 0; k < 300; ++k) {
    const float start = mantissa(random) * std::pow(10.0F, exponent(random));
    const float step = mantissa(random) * std::pow(10.0F, exponent(random));
    ASSERT_TRUE(equalsAddition(start, step, k % 3, 3'000));
  }
}

TEST(TraceTimeline, accumulatesLikeRepeatedAdditionWhenAStepEndsHalfWayBetweenGridPoints) {
  // From 2²³ on the grid is 1: steps of n + 1/2 tie at every addition and are rounded to even.
  for (const float step : {0.5F, 1.5F, 2.5F, 3.5F}) {
    for (const float start : {8388608.0F, 8388609.0F, 8388610.0F, -16777215.0F, -16777214.0F}) {
      EXPECT_TRUE(equalsAddition(start, step, 0, 50'000));
    }
  }
}

TEST(TraceTimeline, stallsWhereTheStepIsBelowHalfTheGrid) {
  // At 2²⁴ the grid is 2, and adding 1 ties to the even number: the time never moves again.
  const TraceTimeline timeline(traceOf(TraceTime::accumulated(16777216.0F, 1.0F), 0, 1'000'000'000'000));
  EXPECT_EQ(timeline.time(999'999'999'999), 16777216.0F);
  EXPECT_FALSE(timeline.decreases());
  EXPECT_LE(timeline.pieces().size(), 4U);
}

TEST(TraceTimeline, crossesAllPowersOfTwoInFewPieces) {
  const TraceTimeline timeline(traceOf(TraceTime::accumulated(-1e30F, 1e25F), 0, 10'000'000));
  EXPECT_LT(timeline.pieces().size(), 300U);
}

TEST(TraceTimeline, endsWhereTheTimeOverflows) {
  EXPECT_TRUE(equalsAddition(3.0e38F, 1e37F, 0, 100));
  // 1e38 · 3 = 3e38 is a number, 1e38 · 4 is not.
  EXPECT_EQ(TraceTimeline(traceOf(TraceTime::uniform(0, 1e38F), 0, 100)).last(), 4);
}

TEST(TraceTimeline, isEmptyWithoutFiniteTimes) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const TraceTime& time : {TraceTime::uniform(nan, 1), TraceTime::uniform(0, nan),
                                TraceTime::accumulated(nan, 1), TraceTime::explicitValues(nullptr)}) {
    const TraceTimeline timeline(traceOf(time, 0, 100));
    EXPECT_LE(timeline.last(), timeline.first());
  }
  // The first time does not need the step.
  EXPECT_EQ(TraceTimeline(traceOf(TraceTime::accumulated(0, nan), 0, 100)).last(), 1);
}

TEST(TraceTimeline, roundsTheUniformProductAndTheSumOnceEach) {
  const TraceTimeline timeline(traceOf(TraceTime::uniform(0.1F, 0.01F), 0, 10'000'000));
  for (const std::int64_t i : {std::int64_t(0), std::int64_t(3), std::int64_t(1'234'567), std::int64_t(9'999'999)}) {
    const float product = 0.01F * float(i);
    EXPECT_EQ(timeline.time(i), 0.1F + product);
  }
}

TEST(TraceTimeline, knowsWhenTimesDecrease) {
  EXPECT_TRUE(TraceTimeline(traceOf(TraceTime::uniform(0, -1), 0, 2)).decreases());
  EXPECT_TRUE(TraceTimeline(traceOf(TraceTime::accumulated(0, -1), 0, 2)).decreases());
  EXPECT_FALSE(TraceTimeline(traceOf(TraceTime::uniform(0, -1), 0, 1)).decreases());
  EXPECT_FALSE(TraceTimeline(traceOf(TraceTime::uniform(5, 0), 0, 100)).decreases());
  const std::vector<float> equal{1, 2, 2, 3}, back{1, 3, 2, 4};
  EXPECT_FALSE(TraceTimeline(traceOf(TraceTime::explicitValues(equal.data()), 0, 4)).decreases());
  EXPECT_TRUE(TraceTimeline(traceOf(TraceTime::explicitValues(back.data()), 0, 4)).decreases());
}

TEST(TraceTimeline, leavesOutTimesAtTheEndsThatAreNotFinite) {
  const float inf = std::numeric_limits<float>::infinity();
  const std::vector<float> times{-inf, 1, 2, inf, 3, inf};
  const TraceTimeline timeline(traceOf(TraceTime::explicitValues(times.data()), 0, 6));
  EXPECT_EQ(timeline.first(), 1);
  EXPECT_EQ(timeline.last(), 5);
  EXPECT_TRUE(timeline.hasGaps());
  EXPECT_FALSE(timeline.decreases());
}
