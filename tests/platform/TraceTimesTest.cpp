#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/platform/TraceTimeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using namespace xov;

namespace {

/// A trace whose samples are never read.
Trace traceOf(std::int64_t count, double pointsPerSecond) {
  static const float kSample = 0;
  Trace trace;
  trace.samples = &kSample;
  trace.last = count;
  trace.xScale = pointsPerSecond;
  return trace;
}

TraceTime::Rule ruleOf(float start, float step, std::int64_t count, double pointsPerSecond) {
  Trace trace = traceOf(count, pointsPerSecond);
  trace.settleTimes(start, TraceTime::even(start, step));
  return trace.time.rule;
}

/// How far the sums of steps come from their products, walking all of them.
double farthestSum(float start, float step, std::int64_t count) {
  double farthest = 0;
  float sum = start;
  for (std::int64_t i = 0; i < count; ++i) {
    farthest = std::max(farthest, std::abs(double(sum) - (double(start) + double(step) * double(i))));
    sum = sum + step;
  }
  return farthest;
}

constexpr auto kSums = TraceTime::Rule::Accumulated;
constexpr auto kEven = TraceTime::Rule::Even;

} // namespace

// At 2²⁴ single precision is 2 fine, and a sum of 2²⁴ and 1 stays where it is: sample i is i seconds early.
TEST(TraceTimes, areSumsUpToHalfAPointFromTheEvenOnesAndNotBeyond) {
  EXPECT_EQ(ruleOf(16777216, 1, 5, 0.125), kSums); // the last lies 4 s · 0.125 = 0.5 points away
  EXPECT_EQ(ruleOf(16777216, 1, 6, 0.125), kEven);
  EXPECT_EQ(ruleOf(16777216, 1, 5, std::nextafter(0.125, 1)), kEven);
  EXPECT_EQ(ruleOf(16777216, 1, 5, -0.125), kSums); // drawn leftwards
  EXPECT_EQ(ruleOf(16777216, 1, 6, -0.125), kEven);
}

TEST(TraceTimes, areDecidedAsIfEverySumWereLookedAt) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> exponent(-3, 5.5);
  std::uniform_int_distribution<std::int64_t> counts(2, 40'000);
  int drifting = 0;
  for (int k = 0; k < 400; ++k) {
    const float start = (k % 2 == 0 ? 1.0F : -1.0F) * float(std::pow(10, exponent(random)));
    const float step = 1.0F / float(1 + random() % 200);
    const std::int64_t count = counts(random);
    const double farthest = farthestSum(start, step, count);
    if (!(farthest > 0)) continue;
    ++drifting;
    SCOPED_TRACE(::testing::Message() << count << " samples of " << step << " s from " << start << " s on");
    // Half a point off at this scale; the margin is the rounding of double precision in the walk above.
    const double border = 0.5 / farthest;
    const double margin = 1e-15 * (std::abs(double(start)) + double(step) * double(count)) / farthest + 1e-14;
    EXPECT_EQ(ruleOf(start, step, count, border * (1 - margin)), kSums);
    EXPECT_EQ(ruleOf(start, step, count, border * (1 + margin)), kEven);
  }
  EXPECT_GT(drifting, 300);
}

// The middle of a record may be farther off than its end: sums that run late below a power of two and early above it.
TEST(TraceTimes, lookAtTheWholeRecordAndNotAtItsEndAlone) {
  // 1/100 s is 3/256 s between 2¹⁵ and 2¹⁶ s, and 1/128 s beyond: late by 0.00171875 s a sample, then early by
  // 0.0021875 s. 1000 samples of each kind, the first 32 of which bring the sum to 2¹⁶.
  const float start = 65536.0F - 1000 * 3.0F / 256;
  constexpr std::int64_t kCount = 1000 + 786; // 1000 · 0.00171875 / 0.0021875 = 785.7: back where it should be
  const double farthest = farthestSum(start, 0.01F, kCount);
  EXPECT_NEAR(farthest, 1000 * 0.00171875, 0.01);
  const double atEnd = std::abs(65536 + 786.0 / 128 - (double(start) + 0.01 * kCount));
  EXPECT_LT(atEnd, 0.01);
  EXPECT_EQ(ruleOf(start, 0.01F, kCount, 0.28), kSums); // 1.72 s · 0.28 = 0.48 points
  EXPECT_EQ(ruleOf(start, 0.01F, kCount, 0.30), kEven); // 0.52 points
}

TEST(TraceTimes, ofRecordsThatDriftAreEven) {
  // 1.72 ms late each of 32,800 samples: 56 s of 328, on 1000 points.
  EXPECT_EQ(ruleOf(54'400, 0.01F, 32'800, 1000.0 / 328), kEven);
  // From 86,400 s on 1/100 s becomes 1/128 s: 72 s early.
  EXPECT_EQ(ruleOf(86'400, 0.01F, 32'800, 1000.0 / 328), kEven);
  // A day at 20 Hz: beyond 2¹⁵ s the step of 0.05 s lies between 12 and 13 of 1/256 s: 13/256 s is 0.78 ms too long.
  EXPECT_EQ(ruleOf(0, 0.05F, 1'728'000, 1000.0 / 86'400), kEven);
  // A live display of six hours at 100 Hz; 0.01 s is 5 of 1/512 s up to 2¹⁴ s and then 5 of 1/512 = 10 of 1/1024.
  EXPECT_EQ(ruleOf(0, 0.01F, 2'160'000, 600.0 / 21'600), kEven);
}

TEST(TraceTimes, ofShortOrExactRecordsAreSums) {
  EXPECT_EQ(ruleOf(0, 0.01F, 6'000, 1000.0 / 60), kSums);
  EXPECT_EQ(ruleOf(0, 1, 86'400, 1000.0 / 86'400), kSums);      // whole numbers up to 2²⁴ are exact
  EXPECT_EQ(ruleOf(86'400, 0.0078125F, 1'000'000, 1e6), kSums); // so are multiples of 1/128 below 2¹⁷
  EXPECT_EQ(ruleOf(54'400, 0.01F, 32'800, 0.5 / 57), kSums);    // on 2.9 points nobody sees 56 s
  EXPECT_EQ(ruleOf(0, 0.05F, 1'728'000, 1e-6), kSums);
}

TEST(TraceTimes, ofAYearAt200HertzEndWhereTheYearEnds) {
  constexpr std::int64_t kCount = std::int64_t(365) * 86'400 * 200; // 6.3 thousand million
  for (const float start : {0.0F, 86'400.0F}) {
    Trace trace = traceOf(kCount, 1000.0 / (365 * 86'400.0));
    trace.tOrigin = start;
    trace.settleTimes(start, TraceTime::even(start, 0.005F));
    ASSERT_EQ(trace.time.rule, kEven);
    const TraceTimeline timeline(trace);
    EXPECT_EQ(timeline.last(), kCount);
    EXPECT_EQ(timeline.time(kCount / 2), double(start) + double(0.005F) * double(kCount / 2));
    // The step in single precision is 2.2e-8 of itself too short, which is 0.7 s a year.
    EXPECT_NEAR(timeline.since(start, kCount - 1), 365 * 86'400.0, 1);
  }
}

TEST(TraceTimes, countFromTheSampleThatLiesAtTheirStart) {
  const std::vector<float> samples(6, 1.0F);
  Trace trace = traceOf(6, 4);
  trace.samples = samples.data();
  trace.first = 3;
  trace.tOrigin = 10;
  trace.time = TraceTime::even(10, 0.5F);
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{6, 1}, {8, 1}, {10, 1}})); // 1.5, 2 and 2.5 s · 4
  trace.time = TraceTime::even(10, 0.5F, 3);
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{0, 1}, {2, 1}, {4, 1}}));
}

TEST(TraceTimes, ofEvenRecordsKeepWhatSinglePrecisionDrops) {
  const std::vector<float> samples(3, 1.0F);
  Trace trace = traceOf(3, 1);
  trace.samples = samples.data();
  trace.tOrigin = 16777216; // where single precision knows even numbers only
  trace.time = TraceTime::even(16777216, 0.25F);
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{0, 1}, {0.25, 1}, {0.5, 1}}));
}

TEST(TraceTimes, thatAreNoNumbersStaySums) {
  const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
  for (const float odd : {nan, infinity}) {
    EXPECT_EQ(ruleOf(odd, 1, 100, 1), kSums);
    EXPECT_EQ(ruleOf(0, odd, 100, 1), kSums);
    EXPECT_EQ(ruleOf(16777216, 1, 100, double(odd)), kSums);
  }
  EXPECT_EQ(ruleOf(0, 1, 0, 1), kSums);
}

TEST(TraceTimes, thatLeaveSinglePrecisionAreEven) {
  // 3 · 10³⁸ + 10³⁷ i is beyond 3.4 · 10³⁸ from the fifth sample on.
  EXPECT_EQ(ruleOf(3.0e38F, 1e37F, 4, 1e-40), kSums);
  EXPECT_EQ(ruleOf(3.0e38F, 1e37F, 6, 1e-40), kEven);
}

TEST(TraceTimes, areReadBackFromARecording) {
  const std::vector<float> samples(6, 1.0F);
  RecordingContext recording;
  for (const std::int64_t count : {5, 6}) {
    Trace trace = traceOf(count, 0.125);
    trace.samples = samples.data();
    trace.settleTimes(16777216, TraceTime::even(16777216, 1));
    Path path;
    path.appendTrace(trace);
    recording.strokePath(path);
  }
  const std::vector<RecordedItem> strokes = recording.strokes();
  ASSERT_EQ(strokes.size(), 2U);
  EXPECT_EQ(strokes[0].path.traces().at(0).time.rule, kSums);
  EXPECT_EQ(strokes[1].path.traces().at(0).time.rule, kEven);
}
