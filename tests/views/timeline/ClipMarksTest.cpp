#include "XOV_Graphics/views/timeline/ClipMarks.h"

#include "XOV_Graphics/base/SampleIndex.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace xov {
namespace {

// Samples ten points apart from x = 100 on, a point a count, about y = 50.
Trace heldAt(float limit, const std::vector<float>& samples) {
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  trace.time = TraceTime::uniform(0, 1);
  trace.xScale = 10;
  trace.xOffset = 100;
  trace.yOffset = 50;
  trace.clampLow = -limit;
  trace.clampHigh = limit;
  return trace;
}

} // namespace

TEST(ClipMarks, lieAlongTheLimitWhereSamplesAreBeyondIt) {
  const std::vector<float> samples = {0, 6, 0, 0, -7, 0};
  // At x 110 on the upper limit and at 140 on the lower one, each 3 points long.
  EXPECT_EQ(clipMarks(heldAt(5, samples)), (std::vector<QLineF>{{108.5, 55, 111.5, 55}, {138.5, 45, 141.5, 45}}));
}

TEST(ClipMarks, areOneWhereSamplesFollowEachOtherClosely) {
  const std::vector<float> samples = {0, 6, 6, 6, 0, 6, 0, 0, 0, 6};
  Trace trace = heldAt(5, samples);
  trace.xScale = 0.9; // the samples in between are 1.8 points apart, the last one is 3.6 off
  const auto marks = clipMarks(trace);
  ASSERT_EQ(marks.size(), 2U);
  EXPECT_NEAR(marks[0].x1(), 100.9, 1e-9);
  EXPECT_NEAR(marks[0].x2(), 104.5, 1e-9);
  EXPECT_NEAR(marks[1].x1(), 108.1 - 1.5, 1e-9);
}

TEST(ClipMarks, areNotAtSamplesOnTheLimitNorAtGaps) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const std::vector<float> samples = {5, -5, kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN()};
  EXPECT_TRUE(clipMarks(heldAt(5, samples)).empty());
  Trace free = heldAt(1, samples);
  free.clampLow.reset();
  EXPECT_TRUE(clipMarks(free).empty()) << "it is not held";
  EXPECT_TRUE(clipMarks(Trace()).empty());
}

TEST(ClipMarks, areTheSameWithAnIndexOfExtremes) {
  std::mt19937 random(11);
  std::vector<float> samples(5000);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const float wide = i / 700 % 3 == 0 ? 12.0F : 4.0F; // some blocks within the limit, some not
    samples[i] = wide * (float(random() % 2001) / 1000 - 1);
  }
  samples[900] = std::numeric_limits<float>::quiet_NaN();
  const SampleIndex index(samples);
  for (const std::int64_t first : {0, 1, 255, 256, 1000}) {
    for (const std::int64_t last : {first, first + 1, std::int64_t(1536), std::int64_t(5000)}) {
      Trace trace = heldAt(5, samples);
      trace.xScale = 0.1;
      trace.first = first;
      trace.last = last;
      const auto plain = clipMarks(trace);
      trace.index = &index;
      EXPECT_EQ(clipMarks(trace), plain) << first << " to " << last;
    }
  }
}

} // namespace xov
