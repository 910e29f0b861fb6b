#include "XOV_Graphics/platform/Trace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();

Trace traceOf(const std::vector<float>& samples) {
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  return trace;
}

} // namespace

TEST(Trace, placesSamplesByOriginScaleAndOffset) {
  const std::vector<float> samples{1, 2, 4};
  Trace trace = traceOf(samples);
  trace.time = TraceTime::uniform(10, 0.5F);
  trace.tOrigin = 9;
  trace.xScale = 4;
  trace.xOffset = 100;
  trace.vOrigin = 1;
  trace.yScale = -3;
  trace.yOffset = 50;
  // x = (10 + 0.5 i - 9) · 4 + 100, y = (v - 1) · -3 + 50
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{104, 50}, {106, 47}, {108, 41}}));
}

TEST(Trace, countsTimesOfAnAccumulatedTraceFromItsFirstSample) {
  const std::vector<float> samples{9, 9, 1, 2};
  Trace trace = traceOf(samples);
  trace.first = 2;
  trace.time = TraceTime::accumulated(5, 1);
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{5, 1}, {6, 2}}));
}

TEST(Trace, takesExplicitTimesByTheSampleIndex) {
  const std::vector<float> samples{0, 1, 2}, times{7, 8, 8.5F};
  Trace trace = traceOf(samples);
  trace.first = 1;
  trace.time = TraceTime::explicitValues(times.data());
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{8, 1}, {8.5, 2}}));
}

TEST(Trace, holdsValuesInsideTheClampButNotTheFirstValue) {
  const std::vector<float> samples{0, -5, 5, 1};
  Trace trace = traceOf(samples);
  trace.clampLow = -1.0F;
  trace.clampHigh = 2.0F;
  trace.firstValue = 8.0F;
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{0, 8}, {1, -1}, {2, 2}, {3, 1}}));
}

TEST(Trace, marksSamplesAndTimesThatBreakTheLine) {
  const std::vector<float> samples{0, kNan, 2, kInfinity, -kInfinity, 5}, times{0, 1, kNan, 3, 4, 5};
  Trace trace = traceOf(samples);
  trace.clampLow = -9.0F;
  trace.clampHigh = 9.0F;
  trace.time = TraceTime::explicitValues(times.data());
  const std::vector<QPointF> points = trace.points();
  ASSERT_EQ(points.size(), 6U);
  EXPECT_EQ(points.front(), QPointF(0, 0));
  EXPECT_EQ(points.back(), QPointF(5, 5));
  for (const std::size_t i : {1U, 2U, 3U, 4U})
    EXPECT_TRUE(std::isnan(points[i].x()) && std::isnan(points[i].y())) << i;
}

TEST(Trace, aFirstValueRepairsAFirstSampleThatBreaksTheLine) {
  const std::vector<float> samples{kNan, 1};
  Trace trace = traceOf(samples);
  trace.firstValue = 3.0F;
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{0, 3}, {1, 1}}));
}

TEST(Trace, differencesBeyondSinglePrecisionStayAtItsEnd) {
  const float largest = std::numeric_limits<float>::max();
  const std::vector<float> samples{largest};
  Trace trace = traceOf(samples);
  trace.vOrigin = -largest;
  EXPECT_EQ(trace.points(), (std::vector<QPointF>{{0, double(largest)}}));
}

TEST(Trace, isEmptyWithoutSamples) {
  Trace trace;
  trace.last = 5;
  EXPECT_TRUE(trace.isEmpty());
  EXPECT_EQ(trace.size(), 0);
  EXPECT_TRUE(trace.points().empty());
}
