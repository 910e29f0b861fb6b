#include "AxisFixture.h"

#include <gmock/gmock.h>

#include <cstring>
#include <limits>
#include <string>

namespace xov {
namespace {

using ::testing::ElementsAre;

/// The frame is 400 × 300 points from (60, 50), the type 18 points in all that follows.
class Axes : public AxisFixture {
protected:
  QPointF lastPosition() const { return recording_.items().back().position; }
  // ADrawAxis() with a text in the label buffer.
  void drawLabelled(const char* text, int axis, int side) {
    std::strcpy(label_, text);
    recording_.clear();
    const GraphicsContext::Pass pass(recording_);
    ADrawAxis(label_, axis, side, 2, 0, 10, 0);
  }
  std::string suffixOf(void (*axis)(int, char*, int, float, float, float), int side, float upper) {
    char suffix[kAxisSuffixSize] = "old";
    axis(side, suffix, 2, upper, 0, 0);
    return suffix;
  }
};

TEST_F(Axes, appendToThePathAndStrokeNothing) {
  drawAxis(1, 3, 2, 0, 1000);
  EXPECT_TRUE(recording_.strokes().empty());
  // Two frame lines, six major ticks and fifteen secondary ones on either edge.
  EXPECT_EQ(segments().size(), 2u + 2 * (6 + 15));
}

TEST_F(Axes, areStrokedByTheCaller) {
  path_->removeAllPoints();
  {
    const GraphicsContext::Pass pass(recording_);
    ADrawAxis(label_, 1, 3, 2, 0, 1000, 0);
    GraphicsContext::current().strokePath(*path_);
  }
  ASSERT_EQ(recording_.strokes().size(), 1u);
  EXPECT_EQ(recording_.strokes()[0].segments().size(), 2u + 2 * (6 + 15));
}

TEST_F(Axes, drawLabelsAtOnceWithTheLabelAttributes) {
  drawAxis(1, 3, 2, 0, 1000);
  EXPECT_EQ(strings(), (QStringList{"0", "200", "400", "600", "800", "1000"}));
  EXPECT_EQ(recording_.items().at(1).attributes, *attributes_);
  // Centred on the tick at 60 + 80, 22.5 points below the frame, truncated.
  EXPECT_EQ(recording_.items().at(1).position, QPointF(140 - sizeOf("200").width() / 2, 27));
}

TEST_F(Axes, ofYEndTheirLabelsLeftOfTheAxis) {
  drawAxis(2, 1, 2, -5, 5);
  EXPECT_EQ(strings(), (QStringList{"-4", "-2", " 0", " 2", " 4"}));
  EXPECT_EQ(recording_.items().at(0).position, QPointF(56 - sizeOf("-4").width(), 71));
}

TEST_F(Axes, withoutAPathStillDrawTheirLabels) {
  ASetPath(nullptr);
  drawAxis(1, 3, 2, 0, 1000);
  EXPECT_EQ(strings().size(), 6);
  EXPECT_TRUE(path_->isEmpty());
}

TEST_F(Axes, ofXLookTheSameForBothSides) {
  drawAxis(1, 3, 2, 0, 1000);
  const std::vector<AxisSegment> bottom = segments();
  const QString bottomTexts = recording_.toText();
  drawAxis(1, 4, 2, 0, 1000);
  EXPECT_EQ(segments(), bottom);
  EXPECT_EQ(recording_.toText(), bottomTexts);
}

TEST_F(Axes, modeZeroDrawsTheFrameAlone) {
  for (int mode : {0, -1}) {
    drawAxis(1, 3, mode, 0, 1000);
    EXPECT_THAT(segments(), ElementsAre(AxisSegment{60, 50, 460, 50}, AxisSegment{60, 350, 460, 350}));
    EXPECT_TRUE(recording_.items().empty());
  }
}

TEST_F(Axes, modeOneAddsTicksAndNoText) {
  std::strcpy(label_, "Time (s)");
  ADrawAxis(label_, 1, 3, 1, 0, 1000, 0);
  EXPECT_EQ(tickLines().size(), 2u * (6 + 15));
  EXPECT_TRUE(recording_.items().empty());
}

TEST_F(Axes, modesAboveTwoDrawLikeTwo) {
  drawAxis(1, 3, 99, 0, 1000);
  EXPECT_EQ(strings().size(), 6);
}

TEST_F(Axes, secondaryTicksFollowTheirGlobals) {
  gXsecTic = 0;
  drawAxis(1, 3, 1, 0, 1000);
  EXPECT_EQ(tickLines().size(), 2u * 6);
  gYsecTic = 0;
  drawAxis(2, 1, 1, 0, 1000);
  EXPECT_EQ(tickLines().size(), 2u * 6);
}

TEST_F(Axes, tickLengthsFollowTheFontSizeAndNotTheLabelFont) {
  ASetFontSize(8);
  drawAxis(1, 3, 1, 0, 1000);
  EXPECT_EQ(tickLines().at(0), (AxisSegment{60, 50, 60, 56}));
}

TEST_F(Axes, positiveDownNegatesYLabelsOnly) {
  gPosDown = 1;
  drawAxis(2, 1, 2, 0, 100);
  EXPECT_EQ(strings(), (QStringList{" -0", " -20", " -40", " -60", " -80", "-100"}));
  drawAxis(1, 3, 2, 0, 100);
  EXPECT_EQ(strings(), (QStringList{"0", "20", "40", "60", "80", "100"}));
}

TEST_F(Axes, ofOtherCodesDrawNothing) {
  for (const auto& [axis, side] : {std::pair{1, 1}, {1, 2}, {2, 3}, {2, 4}, {0, 1}, {3, 3}, {1, 0}, {2, 5}}) {
    drawAxis(axis, side, 2, 0, 1000);
    EXPECT_TRUE(path_->isEmpty()) << axis << ' ' << side;
    EXPECT_TRUE(recording_.items().empty()) << axis << ' ' << side;
  }
}

// Axis labels

TEST_F(Axes, labelOfTheBottomIsCenteredBelow) {
  drawLabelled("Time (s)", 1, 3);
  EXPECT_EQ(strings().back(), "Time (s)");
  EXPECT_EQ(lastPosition(), QPointF(260 - sizeOf("Time (s)").width() / 2, 50 - 45));
  EXPECT_EQ(gJustify, 2);
}

TEST_F(Axes, labelOfTheTopStartsAtTheCenterAbove) {
  drawLabelled("Time (s)", 1, 4);
  EXPECT_EQ(lastPosition(), QPointF(260, 350 + 45));
  EXPECT_EQ(gJustify, 1);
}

TEST_F(Axes, labelOfTheLeftStartsAtTheUpperLeftCorner) {
  drawLabelled("Depth", 2, 1);
  EXPECT_EQ(lastPosition(), QPointF(60 - 36, 350 + 9));
  EXPECT_EQ(gJustify, 1);
}

// Half of 50 + 350, and the top again.
TEST_F(Axes, labelOfTheRightIsMeasuredFromTheLeftEdgeAndAboveTheTop) {
  drawLabelled("Depth", 2, 2);
  EXPECT_EQ(lastPosition(), QPointF(60 + 63 - sizeOf("Depth").width() / 2, 200 + 350));
  EXPECT_EQ(gJustify, 2);
}

// The centre of -5 and -2 is -3 as integers divide, towards zero.
TEST_F(Axes, labelCenterIsTruncatedTowardsZero) {
  ASetAxisRect(-5, -2, 300, 0);
  drawLabelled("x", 1, 4);
  EXPECT_EQ(lastPosition().x(), -3);
}

TEST_F(Axes, labelOffsetsAreTruncated) {
  ASetFontSize(9); // 2.5 · 9 = 22.5
  drawLabelled("x", 1, 3);
  EXPECT_EQ(lastPosition().y(), 27); // 27.5
  drawLabelled("x", 1, 4);
  EXPECT_EQ(lastPosition().y(), 372); // 372.5
}

TEST_F(Axes, labelGetsTheSuffixAppended) {
  ASetXAxisPowerFlag(1);
  ASetAxisRect(60, 260, 350, 50);
  std::strcpy(label_, "Moment");
  {
    const GraphicsContext::Pass pass(recording_);
    ADrawAxis(label_, 1, 3, 2, 0, 1e6f, 0);
  }
  EXPECT_STREQ(label_, "Moment x 10^+05");
  EXPECT_EQ(strings(), (QStringList{"0", "2", "4", "6", "8", "10", "Moment x 10^+05"}));
}

TEST_F(Axes, labelThatIsNotClearedKeepsTheSuffixOfTheAxisBefore) {
  ASetYAxisPowerFlag(1);
  ADrawAxis(label_, 2, 1, 2, 0, 1000, 0);
  ADrawAxis(label_, 2, 1, 2, 0, 1000, 0);
  EXPECT_STREQ(label_, " x 10^+02 x 10^+02");
}

TEST_F(Axes, labelIsLeftAloneBelowModeTwo) {
  ASetYAxisPowerFlag(1);
  ADrawAxis(label_, 2, 1, 1, 0, 1000, 0);
  EXPECT_STREQ(label_, "");
}

TEST_F(Axes, namedCodesDrawWhatTheNumbersDo) {
  ASetYAxisPowerFlag(1);
  constexpr struct {
    AxisSide name;
    int axis;
    int side;
  } kSides[] = {{AxisSide::Bottom, 1, 3}, {AxisSide::Top, 1, 4}, {AxisSide::Left, 2, 1}, {AxisSide::Right, 2, 2}};
  for (const auto& side : kSides) {
    for (const AxisDetail detail : {AxisDetail::Frame, AxisDetail::Ticks, AxisDetail::Labels}) {
      const auto drawn = [&](const auto& drawAxis) {
        path_->removeAllPoints();
        recording_.clear();
        char label[32] = "Moment";
        {
          const GraphicsContext::Pass pass(recording_);
          drawAxis(std::span<char>(label));
        }
        return std::tuple(path_->shape(), strings(), std::string(label), gJustify);
      };
      const auto named = drawn([&](std::span<char> label) { ADrawAxis(label, side.name, detail, 0, 1e6f, 2e5f); });
      const auto numbered =
          drawn([&](std::span<char> label) { ADrawAxis(label, side.axis, side.side, int(detail), 0, 1e6f, 2e5f); });
      EXPECT_EQ(named, numbered) << side.axis << " " << side.side << " " << int(detail);
      EXPECT_FALSE(std::get<0>(named).isEmpty());
    }
  }
}

TEST_F(Axes, aNullLabelIsAnEmptyOne) {
  ASetYAxisPowerFlag(1);
  const GraphicsContext::Pass pass(recording_);
  ADrawAxis(nullptr, 2, 1, 2, 0, 1000, 0);
  EXPECT_EQ(strings().back(), " x 10^+02");
}

TEST_F(Axes, aBufferThatIsTooSmallStaysAsItIsAndTheLabelIsDrawnInFull) {
  ASetYAxisPowerFlag(1);
  char small[8] = "Moment";
  {
    const GraphicsContext::Pass pass(recording_);
    ADrawAxis(std::span<char>(small), 2, 1, 2, 0, 1000, 0);
  }
  EXPECT_STREQ(small, "Moment");
  EXPECT_EQ(strings().back(), "Moment x 10^+02");
}

// "Moment x 10^+02" and its terminator are 16 bytes.
TEST_F(Axes, aBufferThatIsJustLargeEnoughTakesTheSuffix) {
  ASetYAxisPowerFlag(1);
  char exact[16] = "Moment";
  ADrawAxis(std::span<char>(exact), 2, 1, 2, 0, 1000, 0);
  EXPECT_STREQ(exact, "Moment x 10^+02");
}

TEST_F(Axes, aTextThatFillsItsBufferEndsThere) {
  const GraphicsContext::Pass pass(recording_);
  char bytes[] = {'a', 'b', 'c', '!'};
  ADrawAxis(std::span<char>(bytes, 3), 1, 3, 2, 0, 10, 0);
  EXPECT_EQ(strings().back(), "abc");
  EXPECT_EQ(bytes[3], '!');
}

// The axis functions by themselves

TEST_F(Axes, bareAxesTakeTheUpperLimitFirst) {
  const GraphicsContext::Pass pass(recording_);
  AXlinAxis(3, nullptr, 2, 1000, 0, 0);
  EXPECT_EQ(strings(), (QStringList{"0", "200", "400", "600", "800", "1000"}));
}

TEST_F(Axes, bareAxesWriteTheSuffix) {
  ASetXAxisPowerFlag(1);
  ASetYAxisPowerFlag(1);
  ASetAxisRect(60, 260, 350, 50);
  EXPECT_EQ(suffixOf(AXlinAxis, 3, 1e6f), " x 10^+05");
  EXPECT_EQ(suffixOf(AXlinAxis, 4, 10), "");
  EXPECT_EQ(suffixOf(AYlinAxis, 1, 1e6f), " x 10^+05");
  EXPECT_EQ(suffixOf(AYlinAxis, 2, 10), "");
}

TEST_F(Axes, bareAxesLeaveTheirJustification) {
  AXlinAxis(3, nullptr, 2, 1000, 0, 0);
  EXPECT_EQ(gJustify, 2);
  AYlinAxis(1, nullptr, 2, 1000, 0, 0);
  EXPECT_EQ(gJustify, 3);
  gJustify = 1;
  AYlinAxis(2, nullptr, 0, 1000, 0, 0);
  EXPECT_EQ(gJustify, 3);
}

// The axis rectangle

TEST_F(Axes, rectangleIsTruncatedTowardsZero) {
  ASetAxisRect(-10.9f, 99.9f, 50.5f, -0.9f);
  drawAxis(1, 3, 0, 0, 1);
  EXPECT_THAT(segments(), ElementsAre(AxisSegment{-10, 0, 99, 0}, AxisSegment{-10, 50, 99, 50}));
}

// 40000 is 65536 - 25536.
TEST_F(Axes, rectangleWrapsAroundBeyond16Bits) {
  ASetAxisRect(0, 40000, 100, 0);
  drawAxis(1, 3, 0, 0, 1);
  EXPECT_EQ(segments().at(0), (AxisSegment{0, 0, -25536, 0}));
}

TEST_F(Axes, rectangleTakesAnyNumber) {
  const float infinity = std::numeric_limits<float>::infinity();
  ASetAxisRect(std::numeric_limits<float>::quiet_NaN(), infinity, 1e30f, -infinity);
  drawAxis(1, 3, 2, 0, 1000);
  // NaN counts as 0; the largest int has the lower 16 bits of -1, the smallest those of 0.
  EXPECT_EQ(frameLines().at(0), (AxisSegment{0, 0, -1, 0}));
  EXPECT_EQ(frameLines().at(1), (AxisSegment{0, -1, -1, -1}));
}

} // namespace
} // namespace xov
