#include "AxisFixture.h"
#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kSmallest = std::numeric_limits<float>::denorm_min();
constexpr AxisFrame kFrame = {350, 60, 50, 460};

bool isFinite(const AxisSegment& s) {
  return std::isfinite(s.x1) && std::isfinite(s.y1) && std::isfinite(s.x2) && std::isfinite(s.y2);
}

LinearAxis layout(AxisDirection direction, float lower, float upper, float interval) {
  LinearAxisRequest request;
  request.direction = direction;
  request.frame = kFrame;
  request.lower = lower;
  request.upper = upper;
  request.interval = interval;
  request.mayScaleLabels = true;
  return layoutLinearAxis(request);
}

void expectFrameAlone(float lower, float upper, float interval) {
  for (AxisDirection direction : {AxisDirection::X, AxisDirection::Y}) {
    const LinearAxis axis = layout(direction, lower, upper, interval);
    const auto where = ::testing::Message() << lower << " to " << upper << " by " << interval;
    EXPECT_EQ(axis.frame.size(), 2u) << where;
    EXPECT_TRUE(axis.ticks.empty()) << where;
    EXPECT_TRUE(axis.labels.empty()) << where;
    EXPECT_EQ(axis.suffix, "") << where;
  }
}

TEST(AxisRobustness, equalLimitsGiveTheFrameAlone) {
  for (float limit : {0.0f, 5.0f, -1e-30f, kLargest})
    expectFrameAlone(limit, limit, 0);
  expectFrameAlone(5, 5, 1);
}

TEST(AxisRobustness, nanAndInfiniteLimitsGiveTheFrameAlone) {
  for (float bad : {kNan, kInfinity, -kInfinity}) {
    expectFrameAlone(bad, 1, 0);
    expectFrameAlone(0, bad, 0);
    expectFrameAlone(bad, bad, 0);
    expectFrameAlone(0, bad, 1);
  }
}

TEST(AxisRobustness, nanAndInfiniteIntervalsGiveTheFrameAlone) {
  for (float bad : {kNan, kInfinity, -kInfinity})
    expectFrameAlone(0, 1, bad);
}

TEST(AxisRobustness, aRangeBeyondSinglePrecisionGivesTheFrameAlone) { expectFrameAlone(-kLargest, kLargest, 0); }

TEST(AxisRobustness, anIntervalABillionTimesSmallerThanTheRangeGivesTheFrameAlone) {
  expectFrameAlone(0, 1, 1e-9f);
  expectFrameAlone(-1e9f, 1e9f, 1);
  expectFrameAlone(0, kLargest, kSmallest);
  expectFrameAlone(0, 1, -1e-30f);
}

TEST(AxisRobustness, asManyTicksAsAreAllowedAreDrawnAndNotOneMore) {
  EXPECT_EQ(layout(AxisDirection::X, 0, kMostMajorTicks - 1, 1).majorCount, kMostMajorTicks);
  expectFrameAlone(0, kMostMajorTicks, 1);
}

TEST(AxisRobustness, labelsThatNobodyCouldReadAreLeftOutAndTheirTicksDrawn) {
  const auto labels = [](int ticks, int length) {
    LinearAxisRequest request;
    request.frame.right = std::int16_t(length);
    request.frame.top = 100;
    request.upper = float(ticks - 1);
    request.interval = 1;
    const LinearAxis axis = layoutLinearAxis(request);
    EXPECT_EQ(axis.majorCount, ticks);
    EXPECT_GE(axis.ticks.size(), std::size_t(2 * ticks));
    return axis.labels.size();
  };
  EXPECT_EQ(labels(301, 600), 301u); // two points apart
  EXPECT_EQ(labels(302, 600), 0u);
  EXPECT_EQ(labels(kFewTickLabels, 10), std::size_t(kFewTickLabels)); // few, however close
  EXPECT_EQ(labels(kFewTickLabels + 1, 10), 0u);
  EXPECT_EQ(labels(kMostTickLabels, 30000), std::size_t(kMostTickLabels)); // 30 points apart
  EXPECT_EQ(labels(kMostTickLabels + 1, 30000), 0u);
}

TEST(AxisRobustness, aFontSizeOfZeroGivesTheFrameAlone) {
  LinearAxisRequest request;
  request.frame = kFrame;
  request.upper = 1000;
  request.fontSize = 0;
  EXPECT_TRUE(layoutLinearAxis(request).ticks.empty());
  request.direction = AxisDirection::Y;
  EXPECT_TRUE(layoutLinearAxis(request).ticks.empty());
}

// 1e-44 in five steps: the power of ten that would bring the raw step to one digit is beyond single precision.
TEST(AxisRobustness, denormalRangesAreBounded) {
  for (float range : {kSmallest, 1e-44f, 1e-40f, 1e-38f, 1e-37f, 1e-36f}) {
    for (AxisDirection direction : {AxisDirection::X, AxisDirection::Y}) {
      const LinearAxis axis = layout(direction, 0, range, 0);
      EXPECT_LE(axis.majorCount, 20) << range;
      for (const AxisSegment& tick : axis.ticks)
        EXPECT_TRUE(isFinite(tick)) << range;
    }
  }
}

// Every combination of awkward numbers: nothing to count on but a frame, bounded work and finite geometry. The
// sanitizers watch the conversions.
TEST(AxisRobustness, everyCombinationOfAwkwardNumbersIsBoundedAndFinite) {
  const float values[] = {0,      -0.0f, 1,        -1,        5000,      1e9f, -1e9f,     1e-9f,      3e38f,
                          -2e38f, 1e38f, kLargest, -kLargest, kSmallest, kNan, kInfinity, -kInfinity, 16777216};
  const AxisFrame frames[] = {kFrame, {0, 0, 0, 0}, {-32768, 32767, 32767, -32768}, {32767, -32768, -32768, 32767}};
  const int fontSizes[] = {18, 0, 1, -7, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
  LinearAxisRequest request;
  request.mayScaleLabels = true;
  request.invertSigns = true;
  for (AxisDirection direction : {AxisDirection::X, AxisDirection::Y}) {
    for (const AxisFrame& frame : frames) {
      for (int fontSize : fontSizes) {
        request.direction = direction;
        request.line = fontSize % 2 == 0 ? AxisLine::AtEnd : AxisLine::AtStart;
        request.frame = frame;
        request.fontSize = fontSize;
        for (float lower : values) {
          for (float upper : values) {
            for (float interval : values) {
              request.lower = lower;
              request.upper = upper;
              request.interval = interval;
              const LinearAxis axis = layoutLinearAxis(request);
              const auto where = ::testing::Message()
                                 << lower << " to " << upper << " by " << interval << ", font " << fontSize
                                 << ", frame " << frame.left << " to " << frame.right;
              ASSERT_EQ(axis.frame.size(), 2u) << where;
              ASSERT_LE(axis.labels.size(), std::size_t(kMostTickLabels)) << where;
              ASSERT_TRUE(std::all_of(axis.ticks.begin(), axis.ticks.end(), isFinite)) << where;
            }
          }
        }
      }
    }
  }
}

using AxisRobustnessDrawn = AxisFixture;

TEST_F(AxisRobustnessDrawn, awkwardLimitsStillDrawTheAxisLabel) {
  for (float upper : {0.0f, kNan, kInfinity}) {
    recording_.clear();
    const GraphicsContext::Pass pass(recording_);
    char label[64] = "Time (s)";
    ADrawAxis(label, 1, 3, 2, 0, upper, 0);
    EXPECT_EQ(strings(), QStringList{"Time (s)"});
    EXPECT_STREQ(label, "Time (s)");
  }
}

TEST_F(AxisRobustnessDrawn, awkwardFontSizesDrawTheAxisLabelSomewhere) {
  for (int size : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0}) {
    ASetFontSize(size);
    for (const auto& [axis, side] : {std::pair{1, 3}, {1, 4}, {2, 1}, {2, 2}}) {
      recording_.clear();
      const GraphicsContext::Pass pass(recording_);
      char label[64] = "Time (s)";
      ADrawAxis(label, axis, side, 2, 0, 10, 0);
      EXPECT_EQ(strings().back(), "Time (s)");
    }
  }
}

TEST(SinglePrecision, truncationIsHeldInsideTheRangeOfInt) {
  EXPECT_EQ(towardZero(2.9f), 2);
  EXPECT_EQ(towardZero(-2.9f), -2);
  EXPECT_EQ(towardZero(2147483520.0f), 2147483520); // the last float below 2^31
  EXPECT_EQ(towardZero(2147483648.0f), std::numeric_limits<int>::max());
  EXPECT_EQ(towardZero(-2147483648.0f), std::numeric_limits<int>::min());
  EXPECT_EQ(towardZero(kInfinity), std::numeric_limits<int>::max());
  EXPECT_EQ(towardZero(-kInfinity), std::numeric_limits<int>::min());
  EXPECT_EQ(towardZero(kNan), 0);
}

TEST(SinglePrecision, powersOfTenGoToInfinityAndZero) {
  EXPECT_EQ(powerOfTen(0), 1);
  EXPECT_EQ(powerOfTen(-1), 0.1f);
  EXPECT_EQ(powerOfTen(38), 1e38f);
  EXPECT_EQ(powerOfTen(39), kInfinity);
  EXPECT_EQ(powerOfTen(std::numeric_limits<int>::max()), kInfinity);
  EXPECT_EQ(powerOfTen(-46), 0);
  EXPECT_EQ(powerOfTen(std::numeric_limits<int>::min()), 0);
}

} // namespace
} // namespace xov
