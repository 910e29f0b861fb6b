#include "XOV_Graphics/graphics/LinearAxis.h"

#include "AxisPrinting.h"

#include <gmock/gmock.h>

namespace xov {
namespace {

using ::testing::ElementsAre;

// A frame with its lower left corner at (60, 50) and type of 18 points. Below, lm and ls stand for the decimal
// logarithms of the largest tick value and of the step, moved away from zero.
LinearAxisRequest axis(AxisDirection direction, int length, float lower, float upper, float interval = 0) {
  LinearAxisRequest request;
  request.direction = direction;
  request.frame = {std::int16_t(50 + (direction == AxisDirection::Y ? length : 300)), 60, 50,
                   std::int16_t(60 + (direction == AxisDirection::X ? length : 400))};
  request.lower = lower;
  request.upper = upper;
  request.interval = interval;
  return request;
}

LinearAxisRequest xAxis(int length, float lower, float upper, float interval = 0) {
  return axis(AxisDirection::X, length, lower, upper, interval);
}

LinearAxisRequest yAxis(int length, float lower, float upper, float interval = 0) {
  return axis(AxisDirection::Y, length, lower, upper, interval);
}

std::vector<std::string> textsOf(const LinearAxis& axis) {
  std::vector<std::string> texts;
  for (const AxisLabel& label : axis.labels)
    texts.push_back(label.text);
  return texts;
}

std::vector<std::string> textsOf(const LinearAxisRequest& request) { return textsOf(layoutLinearAxis(request)); }

// How far along an X axis its ticks of a length stand.
std::vector<float> xTicks(const LinearAxis& axis, float length) {
  std::vector<float> positions;
  for (const AxisSegment& s : axis.ticks) {
    if (s.y1 == 50 && s.y2 == 50 + length) positions.push_back(s.x1);
  }
  return positions;
}

std::vector<float> yTicks(const LinearAxis& axis, float length) {
  std::vector<float> positions;
  for (const AxisSegment& s : axis.ticks) {
    if (s.x1 == 60 && s.x2 == 60 + length) positions.push_back(s.y1);
  }
  return positions;
}

// 0 to 1000 over 400 points. 400/(18 · 18) gives one step, raised to five: raw step 200 = 2 · 10^2. 80 points between
// major ticks are at least a tenth of the axis, so there are three secondary ticks, 20 points apart.
TEST(LinearAxisX, choosesStepsOf200For0To1000On400Points) {
  const LinearAxis axis = layoutLinearAxis(xAxis(400, 0, 1000));
  EXPECT_EQ(axis.step, 200);
  EXPECT_EQ(axis.majorCount, 6);
  EXPECT_EQ(axis.minorCount, 3);
  EXPECT_THAT(textsOf(axis), ElementsAre("0", "200", "400", "600", "800", "1000"));
  EXPECT_THAT(xTicks(axis, 0.75f * 18), ElementsAre(60, 140, 220, 300, 380, 460));
  EXPECT_THAT(xTicks(axis, 0.375f * 18),
              ElementsAre(80, 100, 120, 160, 180, 200, 240, 260, 280, 320, 340, 360, 400, 420, 440));
  EXPECT_EQ(axis.suffix, "");
}

TEST(LinearAxisX, hasTicksExactlyAtBothEnds) {
  const std::vector<float> ticks = xTicks(layoutLinearAxis(xAxis(400, 0, 1000)), 0.75f * 18);
  EXPECT_EQ(ticks.front(), 60);
  EXPECT_EQ(ticks.back(), 460);
}

// The label of the tick at 140 points is centred there, 1.25 · 18 = 22.5 points below the frame: trunc(27.5).
TEST(LinearAxisX, centersLabelsBelowTheirTicks) {
  EXPECT_EQ(layoutLinearAxis(xAxis(400, 0, 1000)).labels.at(1), (AxisLabel{"200", 140, 27}));
}

TEST(LinearAxisX, drawsTheBottomAndTheTopEdgeOfTheFrame) {
  EXPECT_THAT(layoutLinearAxis(xAxis(400, 0, 1000)).frame,
              ElementsAre(AxisSegment{60, 50, 460, 50}, AxisSegment{60, 350, 460, 350}));
}

TEST(LinearAxisX, drawsTicksInwardsFromBothEdgesInPairs) {
  const std::vector<AxisSegment> ticks = layoutLinearAxis(xAxis(400, 0, 1000)).ticks;
  EXPECT_EQ(ticks.at(0), (AxisSegment{60, 50, 60, 63.5f}));
  EXPECT_EQ(ticks.at(1), (AxisSegment{60, 350, 60, 336.5f}));
  EXPECT_EQ(ticks.at(2), (AxisSegment{80, 50, 80, 56.75f}));
  EXPECT_EQ(ticks.at(3), (AxisSegment{80, 350, 80, 343.25f}));
}

TEST(LinearAxisX, hasTicksOnOneEdgeOnlyWhenTheFrameHasNoHeight) {
  LinearAxisRequest request = xAxis(400, 0, 1000);
  request.frame.top = request.frame.bottom;
  const LinearAxis axis = layoutLinearAxis(request);
  EXPECT_EQ(axis.ticks.size(), 6u + 15u);
  EXPECT_EQ(axis.ticks.at(1), (AxisSegment{80, 50, 80, 56.75f}));
}

// Without a tick at the left end, the secondary ticks below the first major one begin at the frame. 50 to 1050 on
// 400 points: step 200, first tick 200 at 60 + 150 · 0.4 = 120; secondary ticks at 60, 80, 100.
TEST(LinearAxisX, hasSecondaryTicksBelowTheFirstMajorOneFromTheEdgeOn) {
  const std::vector<float> minors = xTicks(layoutLinearAxis(xAxis(400, 50, 1050)), 0.375f * 18);
  EXPECT_THAT(std::vector<float>(minors.begin(), minors.begin() + 4), ElementsAre(60, 80, 100, 140));
}

// One step for each 18 · 18 = 324 points: 2592 points hold eight, of 5.5, and mantissa 5 gives 2; 2591 points hold
// seven, of 6.3, and mantissa 6 gives 5.
TEST(LinearAxisX, hasMoreStepsOnALongAxis) {
  EXPECT_EQ(layoutLinearAxis(xAxis(2592, 0, 44)).step, 2);
  EXPECT_EQ(layoutLinearAxis(xAxis(2591, 0, 44)).step, 5);
}

// Raw step 0.2 = 2 · 10^-1. lm = log10(1.001) + 1.001 = 1.001 and ls = log10(0.2) - 0.999 = -1.7 differ in sign: one
// decimal, width 1 + 1 + 2.
TEST(LinearAxisX, hasOneDecimalForStepsOfTenths) {
  EXPECT_THAT(textsOf(xAxis(400, 0, 1)), ElementsAre(" 0.0", " 0.2", " 0.4", " 0.6", " 0.8", " 1.0"));
}

// The logarithm of the raw step 0.1 is -1 in single precision; one less makes the power 10^-2 and the mantissa 10,
// which is not above 10 but above 5.
TEST(LinearAxisX, takesFiveTimesTheLowerPowerWhereTheLogarithmIsWhole) {
  EXPECT_FLOAT_EQ(layoutLinearAxis(xAxis(400, 0, 0.5f)).step, 0.05f);
}

// lm = log10(0.04 + 0.001) - 0.999 = -2.4 and ls = log10(0.01) - 0.999 = -2.999: two decimals. The width of -2 would
// put blanks behind a shorter number.
TEST(LinearAxisX, hasLabelsOfSmallValuesWithTheirDecimals) {
  EXPECT_THAT(textsOf(xAxis(400, 0, 0.04f, 0.01f)), ElementsAre("0.00", "0.01", "0.02", "0.03", "0.04"));
}

// Steps of 5 are divided into five, but a given interval of the same size into four. 40 points of 320 are an eighth
// of the axis.
TEST(LinearAxisX, dividesChosenStepsOf5IntoFive) {
  const LinearAxis axis = layoutLinearAxis(xAxis(320, 0, 40));
  EXPECT_EQ(axis.step, 5);
  EXPECT_EQ(axis.minorCount, 4);
}

TEST(LinearAxisX, neverDividesAGivenIntervalIntoFive) {
  const LinearAxis axis = layoutLinearAxis(xAxis(320, 0, 40, 5));
  EXPECT_EQ(axis.step, 5);
  EXPECT_EQ(axis.minorCount, 3);
}

TEST(LinearAxisX, dividesWideStepsIntoTenAndNarrowOnesIntoTwo) {
  EXPECT_EQ(layoutLinearAxis(xAxis(400, 0, 40, 10)).minorCount, 9);  // exactly a quarter of the axis
  EXPECT_EQ(layoutLinearAxis(xAxis(400, 0, 41, 10)).minorCount, 3);  // just below
  EXPECT_EQ(layoutLinearAxis(xAxis(400, 0, 100, 10)).minorCount, 3); // exactly a tenth
  EXPECT_EQ(layoutLinearAxis(xAxis(400, 0, 101, 10)).minorCount, 1); // just below
}

// 0 to 1e6 on 200 points: step 2 · 10^5, six labels of six digits of 9 points take 324 points.
TEST(LinearAxisX, dividesLabelsThatDoNotFitByThePowerOfTen) {
  LinearAxisRequest request = xAxis(200, 0, 1e6f);
  request.mayScaleLabels = true;
  const LinearAxis axis = layoutLinearAxis(request);
  EXPECT_THAT(textsOf(axis), ElementsAre("0", "2", "4", "6", "8", "10"));
  EXPECT_EQ(axis.suffix, " x 10^+05");
}

TEST(LinearAxisX, leavesLabelsThatFitAlone) {
  LinearAxisRequest request = xAxis(325, 0, 1e6f);
  request.mayScaleLabels = true;
  EXPECT_EQ(layoutLinearAxis(request).suffix, "");
  request.frame.right = 60 + 324; // labels of 324 points do not fit
  EXPECT_EQ(layoutLinearAxis(request).suffix, " x 10^+05");
}

TEST(LinearAxisX, leavesLabelsThatDoNotFitAloneWithoutThePowerFlag) {
  EXPECT_THAT(textsOf(xAxis(200, 0, 1e6f)), ElementsAre("0", "200000", "400000", "600000", "800000", "1000000"));
}

// 0 to 9 on 20 points in steps of 1: ten labels of one digit take 1 · 10 · 9 = 90 points, but 10^0 is not worth
// saying.
TEST(LinearAxisX, saysNothingAboutAPowerOfZero) {
  LinearAxisRequest request = xAxis(20, 0, 9, 1);
  request.mayScaleLabels = true;
  const LinearAxis axis = layoutLinearAxis(request);
  EXPECT_EQ(axis.suffix, "");
  EXPECT_EQ(axis.labels.back().text, "9");
}

// 2147483648 = 2^31 and its multiples are exact in single precision.
TEST(LinearAxisX, writesLongLabelsInFull) {
  EXPECT_THAT(textsOf(xAxis(400, 0, 4294967296.0f, 2147483648.0f)), ElementsAre("0", "2147483648", "4294967296"));
}

// No multiple of 10 lies between 1 and 9. The would-be tick at 10 stands at 60 + 9 · 50 = 510; steps of 500 points
// have nine secondary ticks, 50 points apart, from 60 on, at the values 1 to 9.
TEST(LinearAxisX, hasOnlyTheSecondaryTicksBelowTheWouldBeTickWhenNoTickIsInside) {
  const LinearAxis axis = layoutLinearAxis(xAxis(400, 1, 9, 10));
  EXPECT_EQ(axis.majorCount, 0);
  EXPECT_TRUE(axis.labels.empty());
  EXPECT_THAT(xTicks(axis, 0.375f * 18), ElementsAre(60, 110, 160, 210, 260, 310, 360, 410, 460));
}

// A negative interval falls with the limits. It has no logarithm, so labels have no decimals and the width of the
// largest value: lm = log10(10.001) + 1.001 = 2.001.
TEST(LinearAxisX, countsDownWithANegativeInterval) {
  const LinearAxis axis = layoutLinearAxis(xAxis(400, 10, 0, -2));
  EXPECT_THAT(xTicks(axis, 0.75f * 18), ElementsAre(60, 140, 220, 300, 380, 460));
  EXPECT_THAT(textsOf(axis), ElementsAre("10", " 8", " 6", " 4", " 2", " 0"));
}

// A range below zero has step 2. The first multiple from 10 on is 10 itself, the last one up to 0 is 0: no ticks. The
// spacing of -80 points leaves one secondary tick, half of it past the would-be tick at 60 points.
TEST(LinearAxisX, hasNoLabelsWithFallingLimitsAndNoInterval) {
  const LinearAxis axis = layoutLinearAxis(xAxis(400, 10, 0));
  EXPECT_EQ(axis.step, 2);
  EXPECT_EQ(axis.majorCount, 0);
  EXPECT_THAT(xTicks(axis, 0.375f * 18), ElementsAre(100));
}

// 0 to 10 by 4: the third tick stands at 380 points, then follow secondary ones 16 points apart up to the edge.
TEST(LinearAxisX, hasSecondaryTicksAtTheRightEdge) {
  EXPECT_EQ(xTicks(layoutLinearAxis(xAxis(400, 0, 10, 4)), 0.375f * 18).back(), 460);
}

TEST(LinearAxisX, modesAddTicksAndLabels) {
  LinearAxisRequest request = xAxis(400, 0, 1000);
  request.detail = AxisDetail::Frame;
  EXPECT_EQ(layoutLinearAxis(request).frame.size(), 2u);
  EXPECT_TRUE(layoutLinearAxis(request).ticks.empty());
  EXPECT_TRUE(layoutLinearAxis(request).labels.empty());
  request.detail = AxisDetail::Ticks;
  EXPECT_EQ(layoutLinearAxis(request).ticks.size(), 2u * (6 + 15));
  EXPECT_TRUE(layoutLinearAxis(request).labels.empty());
}

TEST(LinearAxisX, leavesSecondaryTicksOutOnRequest) {
  LinearAxisRequest request = xAxis(400, 0, 1000);
  request.minorTicks = false;
  EXPECT_EQ(layoutLinearAxis(request).ticks.size(), 2u * 6);
}

// -5 to 5 over 300 points: raw step 2, mantissa 2, step 2. lm = log10(4.001) + 1.001 = 1.6, ls = 1.3: width 1, one
// more for negative numbers; after them a blank stands for the sign.
TEST(LinearAxisY, putsABlankForTheSignAboveNegativeLabels) {
  const LinearAxis axis = layoutLinearAxis(yAxis(300, -5, 5));
  EXPECT_EQ(axis.step, 2);
  EXPECT_THAT(textsOf(axis), ElementsAre("-4", "-2", " 0", " 2", " 4"));
  EXPECT_THAT(yTicks(axis, 0.75f * 18), ElementsAre(80, 140, 200, 260, 320));
}

// Labels end 0.2 · 18 = 3.6 points left of the axis and start half the type size below the tick.
TEST(LinearAxisY, putsLabelsLeftOfTheirTicks) {
  EXPECT_EQ(layoutLinearAxis(yAxis(300, -5, 5)).labels.at(0), (AxisLabel{"-4", 56, 71}));
}

TEST(LinearAxisY, drawsBothVerticalEdgesWithTicksInwards) {
  const LinearAxis axis = layoutLinearAxis(yAxis(300, 0, 10, 5));
  EXPECT_THAT(axis.frame, ElementsAre(AxisSegment{60, 50, 60, 350}, AxisSegment{460, 50, 460, 350}));
  EXPECT_EQ(axis.ticks.at(0), (AxisSegment{60, 50, 73.5f, 50}));
  EXPECT_EQ(axis.ticks.at(1), (AxisSegment{460, 50, 446.5f, 50}));
  EXPECT_EQ(axis.ticks.at(2), (AxisSegment{60, 65, 69, 65})); // nine secondary ticks of half the type size
  EXPECT_EQ(axis.ticks.at(3), (AxisSegment{460, 65, 451, 65}));
}

// At the right edge, one set of ticks points into the frame and one out of it; labels end 3.6 points right of the
// edge and start half the type size above the tick. Their width is that of 10: log10(10.001) + 1.001 = 2.001.
TEST(LinearAxisY, drawsARightAxisWithEverythingAtTheRightEdge) {
  LinearAxisRequest request = yAxis(300, 0, 10, 5);
  request.line = AxisLine::AtEnd;
  const LinearAxis axis = layoutLinearAxis(request);
  EXPECT_THAT(axis.frame, ElementsAre(AxisSegment{460, 50, 460, 350}, AxisSegment{460, 50, 460, 350}));
  EXPECT_EQ(axis.ticks.at(0), (AxisSegment{460, 50, 446.5f, 50}));
  EXPECT_EQ(axis.ticks.at(1), (AxisSegment{460, 50, 473.5f, 50}));
  EXPECT_EQ(axis.ticks.at(2), (AxisSegment{460, 65, 451, 65}));
  EXPECT_EQ(axis.ticks.at(3), (AxisSegment{460, 65, 469, 65}));
  EXPECT_EQ(axis.labels.at(0), (AxisLabel{" 0", 463, 59}));
}

// 0 to 100: step 20, lm = log10(100.001) + 1.001 = 3.001, width 3. The negated zero is minus zero, which is not below
// zero, so it gets no extra column.
TEST(LinearAxisY, negatesLabelsWithTheSignOfZero) {
  LinearAxisRequest request = yAxis(300, 0, 100);
  request.invertSigns = true;
  EXPECT_THAT(textsOf(request), ElementsAre(" -0", " -20", " -40", " -60", " -80", "-100"));
}

// A raw mantissa of 1 and 2 makes 2, of 3 to 5 makes 5, above that 1 of the next power.
TEST(LinearAxisY, roundsStepsTo2And5And10) {
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 5)).step, 2);   // raw step 1
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 14)).step, 2);  // 2.8
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 15)).step, 5);  // 3
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 29)).step, 5);  // 5.8
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 30)).step, 10); // 6
}

// One step for each 10 · 6 · 6 = 360 points of type of 6 points: 2160 points hold six, of 2.8, and mantissa 2 gives
// 2; 2159 points hold five, of 3.4, and mantissa 3 gives 5.
TEST(LinearAxisY, hasMoreStepsOnALongAxisWithSmallType) {
  for (AxisLine line : {AxisLine::AtStart, AxisLine::AtEnd}) {
    LinearAxisRequest request = yAxis(2160, 0, 17);
    request.fontSize = 6;
    request.line = line;
    EXPECT_EQ(layoutLinearAxis(request).step, 2);
    request.frame.top = std::int16_t(request.frame.top - 1);
    EXPECT_EQ(layoutLinearAxis(request).step, 5);
  }
}

// 0 to 10 by 4: the third tick stands at 290 points, then follow secondary ones 12 points apart. The one at 350
// points would lie on the edge.
TEST(LinearAxisY, hasNoSecondaryTickAtTheUpperEdge) {
  EXPECT_EQ(yTicks(layoutLinearAxis(yAxis(300, 0, 10, 4)), 0.5f * 18).back(), 338);
}

// No multiple of 10 lies between 1 and 9. The would-be tick at 10 has nine secondary ones below it, 37.5 points apart
// at the values 1 to 9. The one at 1 lies on the edge.
TEST(LinearAxisY, hasNoSecondaryTickAtTheLowerEdge) {
  const LinearAxis axis = layoutLinearAxis(yAxis(300, 1, 9, 10));
  EXPECT_EQ(axis.majorCount, 0);
  EXPECT_EQ(yTicks(axis, 0.5f * 18).front(), 87.5f);
}

TEST(LinearAxisY, dividesStepsIntoTenOnlyAboveAQuarterOfTheAxis) {
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 40, 10)).minorCount, 3); // exactly a quarter
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 39, 10)).minorCount, 9);
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 100, 10)).minorCount, 3); // exactly a tenth
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 101, 10)).minorCount, 1);
  EXPECT_EQ(layoutLinearAxis(yAxis(300, 0, 20)).minorCount, 4); // a chosen step of 5
}

// 0 to 1000: step 200, ls = log10(200) + 1.001 = 3.3: three digits or more. lm = 4.001, width max(4, 4 - 3 + 2).
TEST(LinearAxisY, dividesLargeLabelsByThePowerOfTen) {
  LinearAxisRequest request = yAxis(300, 0, 1000);
  request.mayScaleLabels = true;
  const LinearAxis axis = layoutLinearAxis(request);
  EXPECT_EQ(axis.suffix, " x 10^+02");
  EXPECT_THAT(textsOf(axis), ElementsAre("   0", "   2", "   4", "   6", "   8", "  10"));
}

// 0 to 0.005 by 0.002: lm = log10(0.004 + 0.001) - 0.999 = -3.3, three digits behind the point. 0.002 = 2 · 10^-3.
TEST(LinearAxisY, dividesSmallLabelsByThePowerOfTen) {
  LinearAxisRequest request = yAxis(300, 0, 0.005f, 0.002f);
  request.mayScaleLabels = true;
  const LinearAxis axis = layoutLinearAxis(request);
  EXPECT_EQ(axis.suffix, " x 10^-03");
  EXPECT_THAT(textsOf(axis), ElementsAre("   0", "   2", "   4"));
}

// A negative interval has no power of its own. lm = log10(0.005 + 0.001) - 0.999 = -3.2 asks for one.
TEST(LinearAxisY, saysSoWhenThePowerIsZero) {
  LinearAxisRequest request = yAxis(300, 0.005f, 0, -0.001f);
  request.mayScaleLabels = true;
  EXPECT_EQ(layoutLinearAxis(request).suffix, " x 10^+00");
}

TEST(LinearAxisY, leavesLabelsOfTwoDigitsAlone) {
  LinearAxisRequest request = yAxis(300, 0, 200, 50); // ls = 1.7 + 1.001 = 2.7
  request.mayScaleLabels = true;
  EXPECT_EQ(layoutLinearAxis(request).suffix, "");
  request.interval = 100; // ls = 2 + 1.001
  EXPECT_EQ(layoutLinearAxis(request).suffix, " x 10^+02");
}

// lm = log10(1.001) + 1.001 = 1.001 and ls = log10(0.2) - 0.999 = -1.7 differ in sign: one decimal, width 1 + 1 + 2.
TEST(LinearAxisY, makesRoomForDecimals) {
  EXPECT_THAT(textsOf(yAxis(300, 0, 1)), ElementsAre(" 0.0", " 0.2", " 0.4", " 0.6", " 0.8", " 1.0"));
}

// 1e15 in single precision is 999999986991104; lm = log10(1e15) + 1.001 = 16.001, width 16.
TEST(LinearAxisY, writesLongLabelsInFull) {
  EXPECT_EQ(textsOf(yAxis(300, 0, 1e15f, 1e15f)).back(), " 999999986991104");
}

} // namespace
} // namespace xov
