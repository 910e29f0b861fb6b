#include "XOV_Graphics/views/xy/HistogramBars.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace xov {
namespace {

// A frame whose left side is at 50 and whose bottom is at 50, 100 wide and 60 high: 10 points a unit along x and y.
HistogramBars bars(const std::vector<std::int32_t>& counts) {
  HistogramBars result;
  result.bins = {std::int32_t(counts.size()), 0, 10, 2};
  result.counts = counts;
  result.maxCount = counts.empty() ? 0 : *std::max_element(counts.begin(), counts.end());
  result.frame = {50, 50, 100, 60};
  result.limits = {0, 10, 0, 6};
  return result;
}

TEST(HistogramBars, barsStandSideBySideOnTheBottom) {
  const std::vector<std::int32_t> counts{3, 0, 5};
  const auto lines = bars(counts).overValues().polylines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], QPolygonF({{50, 50}, {50, 80}, {70, 80}, {70, 50}}));
  EXPECT_EQ(lines[1], QPolygonF({{70, 50}, {90, 50}})); // no higher than the line that it stands on
  EXPECT_EQ(lines[2], QPolygonF({{90, 50}, {90, 100}, {110, 100}, {110, 50}}));
}

TEST(HistogramBars, outlinesAreAQuarterPointWide) {
  const std::vector<std::int32_t> counts{3};
  EXPECT_EQ(bars(counts).overValues().lineWidth(), 0.25);
  EXPECT_EQ(bars(counts).besideFrame().lineWidth(), 0.25);
}

TEST(HistogramBars, barsAreCutAtTheTopAndTheRightOfTheFrame) {
  const std::vector<std::int32_t> counts{1, 1, 1, 1, 9};
  HistogramBars input = bars(counts);
  input.limits.xmax = 9; // 100/9 points a unit: the last bar reaches from 8 to 10
  const auto lines = input.overValues().polylines();
  const double left = 50 + 8 * 100.0 / 9;
  EXPECT_EQ(lines.back(), QPolygonF({{left, 50}, {left, 110}, {150, 110}, {150, 50}}));
}

TEST(HistogramBars, binsWhoseLeftEdgeLiesOutsideTheFrameAreLeftOut) {
  const std::vector<std::int32_t> counts{1, 2, 3, 4, 5};
  HistogramBars input = bars(counts);
  input.limits = {2, 6, 0, 6}; // 25 points a unit: edges at 0 and 50, 100, 150 and 200 points
  const auto lines = input.overValues().polylines();
  ASSERT_EQ(lines.size(), 3u); // 2, 4 and, exactly on the right side, 6
  EXPECT_EQ(lines[0][1], QPointF(50, 70));
  EXPECT_EQ(lines[2], QPolygonF({{150, 50}, {150, 90}, {150, 50}}));
}

TEST(HistogramBars, theXCoordinateOfTheFrameIsTheHeightThatBarsCloseOn) {
  const std::vector<std::int32_t> counts{3, 5};
  HistogramBars input = bars(counts);
  input.frame.moveTo(20, 70);
  const auto lines = input.overValues().polylines();
  EXPECT_EQ(lines[0], QPolygonF({{20, 70}, {20, 100}, {40, 100}, {40, 20}}));
  EXPECT_EQ(lines[1], QPolygonF({{40, 20}, {40, 120}, {60, 120}, {60, 20}}));
}

// The bars start 5 points right of 150, the longest is 60 long, and each is 60/6 = 10 high.
TEST(HistogramBars, barsBesideTheFrameAreAsLongAsTheFrameIsHigh) {
  const std::vector<std::int32_t> counts{3, 6};
  const auto lines = bars(counts).besideFrame().polylines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], QPolygonF({{155, 50}, {185, 50}, {185, 60}, {155, 60}}));
  EXPECT_EQ(lines[1], QPolygonF({{155, 60}, {215, 60}, {215, 70}, {155, 70}}));
}

TEST(HistogramBars, theBaselineStandsFivePointsRightOfTheFrame) {
  const std::vector<std::int32_t> counts{3};
  const Path line = bars(counts).baseline();
  EXPECT_EQ(line.lineWidth(), 0.75);
  EXPECT_EQ(line.polylines(), std::vector<QPolygonF>{QPolygonF({{155, 50}, {155, 110}})});
}

TEST(HistogramBars, countsAndBinsMayDifferInNumber) {
  const std::vector<std::int32_t> counts{3, 4, 5};
  HistogramBars input = bars(counts);
  input.bins.count = 2;
  EXPECT_EQ(input.overValues().polylines().size(), 2u);
  input.bins.count = 1000000000;
  EXPECT_EQ(input.overValues().polylines().size(), 3u);
  EXPECT_EQ(input.besideFrame().polylines().size(), 3u);
  input.bins.count = -4;
  EXPECT_TRUE(input.overValues().isEmpty());
}

TEST(HistogramBars, equalLimitsDrawNoBars) {
  const std::vector<std::int32_t> counts{3, 4};
  HistogramBars input = bars(counts);
  input.limits = {5, 5, 0, 6};
  EXPECT_TRUE(input.overValues().isEmpty());
}

// 100 points hold 800 columns of 1/8 point. A million bars of 1/10000 point: in each column 1250.
TEST(HistogramBars, ofBarsCloserThanAnEighthOfAPointTheTallestStandForTheRest) {
  std::vector<std::int32_t> counts(1000000, 1);
  counts[500600] = 4;
  HistogramBars input = bars(counts);
  input.bins.width = 10.0f / 1e6f;
  const auto lines = input.overValues().polylines();
  EXPECT_LE(lines.size(), 801u);
  EXPECT_GE(lines.size(), 800u);
  int tall = 0;
  for (const QPolygonF& line : lines) {
    if (line[1].y() != 90) continue;
    ++tall;
    EXPECT_NEAR(line[1].x(), 100.06, 0.001);
  }
  EXPECT_EQ(tall, 1);
}

TEST(HistogramBars, aMillionBarsBesideTheFrameStayFew) {
  std::vector<std::int32_t> counts(1000000);
  std::iota(counts.begin(), counts.end(), 0);
  HistogramBars input = bars(counts);
  EXPECT_LE(input.besideFrame().polylines().size(), 2001u); // 10 points each, up to 20000 points away
  input.limits.ymax = 6e6f;                                 // 1/100000 point each, 80 columns in all
  EXPECT_LE(input.besideFrame().polylines().size(), 81u);
}

} // namespace
} // namespace xov
