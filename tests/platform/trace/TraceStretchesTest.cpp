#include "XOV_Graphics/platform/trace/TraceStretches.h"

#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "tests/support/TraceReference.h"

#include <gtest/gtest.h>

#include <QImage>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kWidth = 72, kHeight = 48;

/// Points that a trace goes through, in pixels, x from its times.
struct Line {
  std::vector<float> x, y;

  Trace trace() const {
    Trace trace;
    trace.samples = y.data();
    trace.last = std::int64_t(y.size());
    trace.time = TraceTime::explicitValues(x.data());
    return trace;
  }
};

std::vector<float> timesOf(const Trace& trace) {
  return {trace.time.values + trace.first, trace.time.values + trace.last};
}

std::vector<float> valuesOf(const Trace& trace) { return {trace.samples + trace.first, trace.samples + trace.last}; }

/// The line's pixels through its stretches against those of the line as it stands.
TraceDifference differenceOf(const Line& line, double xScale = 1, double xOffset = 0) {
  Trace trace = line.trace();
  trace.xScale = xScale;
  trace.xOffset = xOffset;
  const QTransform viewToDevice(1, 0, 0, -1, 0, kHeight);
  QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::white);
  const PixelTarget target{picture.bits(), picture.bytesPerLine(), kWidth, kHeight};
  EXPECT_FALSE(strokeTraces(target, {&trace, 1}, viewToDevice, picture.rect(), 1, Qt::black)) << "needs no stretches";
  const auto stretches = TraceStretches::of({&trace, 1});
  EXPECT_TRUE(stretches);
  if (stretches) {
    EXPECT_TRUE(strokeTraces(target, stretches->traces(), viewToDevice, picture.rect(), 1, Qt::black));
  }
  return compareWithReference(picture,
                              columnReference({&trace, 1}, viewToDevice, 1, picture.width(), picture.height(), 96));
}

void expectExact(const TraceDifference& difference) {
  EXPECT_GT(difference.inked, 20);
  EXPECT_LE(difference.mean, 0.7);
  EXPECT_LE(difference.over16, 0.001);
}

} // namespace

TEST(TraceStretches, endWhereXTurnsAndHoldTheSampleThereTwice) {
  const Line line{{1, 2, 3, 2.5F, 2, 4}, {10, 20, 30, 40, 50, 60}};
  const Trace trace = line.trace();
  const auto stretches = TraceStretches::of({&trace, 1});
  ASSERT_TRUE(stretches);
  ASSERT_EQ(stretches->traces().size(), 3u);
  EXPECT_EQ(timesOf(stretches->traces()[0]), (std::vector<float>{1, 2, 3, 3}));
  EXPECT_EQ(valuesOf(stretches->traces()[0]), (std::vector<float>{10, 20, 30, 30}));
  // Turned around, so that it grows.
  EXPECT_EQ(timesOf(stretches->traces()[1]), (std::vector<float>{2, 2, 2.5F, 3}));
  EXPECT_EQ(valuesOf(stretches->traces()[1]), (std::vector<float>{50, 50, 40, 30}));
  EXPECT_EQ(timesOf(stretches->traces()[2]), (std::vector<float>{2, 4}));
}

TEST(TraceStretches, endInAButtWhereATimeOrTheNextValueIsMissing) {
  const Line gap{{1, 2, kNan, 4, 5}, {10, 20, 30, 40, 50}};
  const Trace broken = gap.trace();
  const auto pieces = TraceStretches::of({&broken, 1});
  ASSERT_TRUE(pieces);
  ASSERT_EQ(pieces->traces().size(), 2u);
  EXPECT_EQ(timesOf(pieces->traces()[0]), (std::vector<float>{1, 2}));
  EXPECT_EQ(timesOf(pieces->traces()[1]), (std::vector<float>{4, 5}));
  const Line hole{{1, 2, 1.5F}, {10, 20, kNan}};
  const Trace turning = hole.trace();
  const auto turned = TraceStretches::of({&turning, 1});
  ASSERT_TRUE(turned);
  EXPECT_EQ(timesOf(turned->traces()[0]), (std::vector<float>{1, 2}));
}

TEST(TraceStretches, areNoneForTimesByRuleAndForTangles) {
  const std::vector<float> samples(10000, 1);
  Trace ruled;
  ruled.samples = samples.data();
  ruled.last = 10;
  ruled.time = TraceTime::uniform(0, -1);
  EXPECT_FALSE(TraceStretches::of({&ruled, 1}));
  // Every sample turns back: 10,000 of them may have 32 + 10000 / 512 turns.
  Line tangle{std::vector<float>(10000), samples};
  for (std::size_t i = 0; i < tangle.x.size(); ++i)
    tangle.x[i] = i % 2 == 0 ? 0.F : 1.F;
  const Trace tangled = tangle.trace();
  EXPECT_FALSE(TraceStretches::of({&tangled, 1}));
}

TEST(TraceStretches, ofALineThatStepsBackOnceAreTheSameLine) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> level(8, 40);
  for (const int count : {12, 60, 500, 4000}) {
    Line line;
    for (int i = 0; i < count; ++i) {
      const float along = float(i) / float(count);
      line.x.push_back(along < 0.6F ? 4 + 90 * along : 58 - 60 * (along - 0.6F));
      line.y.push_back(level(random));
    }
    SCOPED_TRACE(count);
    expectExact(differenceOf(line));
  }
}

TEST(TraceStretches, ofALineFromRightToLeftAreTheSameLine) {
  Line line;
  for (int i = 0; i < 300; ++i) {
    line.x.push_back(68 - 0.2F * float(i));
    line.y.push_back(24 + 15 * std::sin(0.3F * float(i)));
  }
  expectExact(differenceOf(line));
  // The same, on an axis that runs leftwards: x = 72 - t.
  std::ranges::reverse(line.x);
  expectExact(differenceOf(line, -1, kWidth));
}

TEST(TraceStretches, ofALineWithoutSomeTimesAreTheSameLine) {
  Line line;
  for (int i = 0; i < 300; ++i) {
    line.x.push_back(i % 97 == 50 ? kNan : 4 + 0.2F * float(i));
    line.y.push_back(24 + 15 * std::sin(0.3F * float(i)));
  }
  expectExact(differenceOf(line));
}

// A figure of eight, whose turns are round: without a join there, each would lack half a disc.
TEST(TraceStretches, haveRoundJoinsAtTheirTurns) {
  Line eight;
  for (int i = 0; i <= 200; ++i) {
    const float angle = float(i) * 0.0628F;
    eight.x.push_back(36 + 30 * std::sin(angle));
    eight.y.push_back(24 + 18 * std::sin(2 * angle));
  }
  expectExact(differenceOf(eight));
  // Sharp ones: to the right, back, and to the right again.
  expectExact(differenceOf({{6, 60, 10, 66}, {10, 14.3F, 30.2F, 41}}));
}
