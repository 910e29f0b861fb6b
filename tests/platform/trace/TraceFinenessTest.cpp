#include "XOV_Graphics/platform/trace/TraceFineness.h"

#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace xov;

namespace {

constexpr int kCount = 34; // sub-columns, of which the first and the last are only neighbours
constexpr int kRows = 100;
constexpr double kWide = 1e9;         // a place that the ink covers hardly any of
constexpr double kOnce = 10 * kCount; // a place that a line of 10 rows covers once

using Judged = InkRoughness::Judged;

/// A line a row thick at rows 10 to 11, whose ink reaches down to `bottom` from the middle on.
InkRoughness lineThatSteps(float bottom, Judged judged = Judged::Curve) {
  const std::vector<float> low(kCount, 10);
  std::vector<float> high(kCount, 11);
  for (int j = kCount / 2; j < kCount; ++j)
    high[static_cast<std::size_t>(j)] = bottom;
  InkRoughness ink;
  ink.include(low.data(), high.data(), kCount, kRows, judged);
  return ink;
}

/// A line a row thick that goes down by so many rows a sub-column.
InkRoughness lineThatFalls(double slope, Judged judged) {
  std::vector<float> low(kCount), high(kCount);
  for (int j = 0; j < kCount; ++j) {
    low[static_cast<std::size_t>(j)] = float(10 + slope * j);
    high[static_cast<std::size_t>(j)] = float(11 + slope * j);
  }
  InkRoughness ink;
  ink.include(low.data(), high.data(), kCount, kRows, judged);
  return ink;
}

} // namespace

TEST(InkRoughness, aLevelLineIsExact) {
  EXPECT_EQ(lineThatSteps(11).expectedError(kWide), 0);
  EXPECT_EQ(InkRoughness().expectedError(kWide), 0);
}

// The jump of 20 rows counts 1.2 times where it is a slope, and a quarter where it only bends: 29. Of the 32
// sub-columns in between, 16 have 1 row of ink and 16 have 21; each takes part of a row more: 16 · 2 + 16 · 22 = 384.
// A quarter of 255 levels for each row that jumps: 63.75 · 29 / 384.
TEST(InkRoughness, aJumpIsOffByAQuarterOfASubColumn) {
  EXPECT_NEAR(lineThatSteps(31).expectedError(kWide), 63.75 * 29 / 384, 1e-4);
}

// Of the jump to row 1000 only what lies on the page counts: 89 rows, and 16 · 2 + 16 · 91 = 1488.
TEST(InkRoughness, whatLiesOutsideThePageDoesNotCount) {
  EXPECT_NEAR(lineThatSteps(1000).expectedError(kWide), 63.75 * (89 * 1.45) / 1488, 1e-4);
}

// Rows 10 + s · j to 11 + s · j bend nowhere, and are 32 slopes of two edges, on 32 · 2 = 64 rows. Up to 2 rows a
// sub-column an edge counts 0.6 · s², from there on 1.2 · s: 0.006, 0.6, 2.4 and 3.
TEST(InkRoughness, alongAGentleSlantErrorsCancel) {
  const std::pair<double, double> slants[] = {{0.1, 0.006}, {1, 0.6}, {2, 2.4}, {2.5, 3}};
  for (const auto& [slope, expected] : slants)
    EXPECT_NEAR(lineThatFalls(slope, Judged::Curve).expectedError(kWide), 63.75 * expected, 1e-3) << slope;
}

// Nothing but the middles of sub-columns stands between it and the exact one: 0.3 · s². The jump of 20 rows counts
// once as a slope and a quarter where it only bends.
TEST(InkRoughness, exactInkIsOffByLess) {
  EXPECT_NEAR(lineThatFalls(0.1, Judged::Exact).expectedError(kWide), 63.75 * 0.003, 1e-4);
  EXPECT_NEAR(lineThatFalls(2, Judged::Exact).expectedError(kWide), 63.75 * 1.2, 1e-3);
  EXPECT_NEAR(lineThatSteps(31, Judged::Exact).expectedError(kWide), 63.75 * 25 / 384, 1e-4);
}

// A line 10 rows thick that steps down by 20 has two edges, 2 · 29 as above, and 32 · 11 rows with ink. It covers a
// place of 340 once, and level lines of the same thickness cover it once more each. With one of them, 1 / e of the
// edges show, on 1 - 1 / e of the place, which is 1 / (e - 1); with four, 4 / (e⁴ - 1). A line hides nothing of
// itself.
TEST(InkRoughness, jumpsHideUnderOtherInk) {
  std::vector<float> low(kCount, 10), high(kCount, 20);
  InkRoughness ink;
  const auto addLevelLine = [&] { ink.include(low.data(), high.data(), kCount, kRows, InkRoughness::Judged::Not); };
  std::vector<float> steppingLow = low, steppingHigh = high;
  for (std::size_t j = kCount / 2; j < kCount; ++j) {
    steppingLow[j] += 20;
    steppingHigh[j] += 20;
  }
  ink.include(steppingLow.data(), steppingHigh.data(), kCount, kRows);
  const double apart = 63.75 * 58 / 352;
  EXPECT_NEAR(ink.expectedError(kOnce), apart, 1e-4);
  EXPECT_FALSE(ink.isCrowded(kOnce));
  addLevelLine();
  EXPECT_NEAR(ink.expectedError(kOnce), apart / (2.718281828 - 1), 1e-4);
  EXPECT_TRUE(ink.isCrowded(kOnce));
  for (int more = 0; more < 3; ++more)
    addLevelLine();
  EXPECT_NEAR(ink.expectedError(kOnce), apart * 4 / (54.59815 - 1), 1e-4);
  EXPECT_EQ(ink.expectedError(0), 0);
}

// Of one group of eight sub-columns in four: 1 to 8 rows of ink are 36, and 153 in 34. Half as much is a crowd.
TEST(InkRoughness, inkIsCountedAlikeAtEveryWidthOfVectors) {
  const std::vector<float> low(kCount, 10);
  std::vector<float> high;
  for (int j = 0; j < kCount; ++j)
    high.push_back(float(11 + j));
  xov::testing::forEachVectorWidth([&] {
    InkRoughness ink;
    ink.include(low.data(), high.data(), kCount, kRows, Judged::Not);
    EXPECT_TRUE(ink.isCrowded(153 / 1.5 - 0.1));
    EXPECT_FALSE(ink.isCrowded(153 / 1.5 + 0.1));
  });
}

// Its end is an edge of one row; 16 sub-columns with part of a second row each: 63.75 · 1 / 32.
TEST(InkRoughness, aLineEndsInAnEdge) {
  std::vector<float> low(kCount, 10), high(kCount, 11);
  for (int j = kCount / 2; j < kCount; ++j) { // nothing there
    low[static_cast<std::size_t>(j)] = 1e30F;
    high[static_cast<std::size_t>(j)] = -1e30F;
  }
  InkRoughness ink;
  ink.include(low.data(), high.data(), kCount, kRows);
  EXPECT_NEAR(ink.expectedError(kWide), 63.75 / 32, 1e-4);
}

TEST(TraceFineness, fewLinesBeginFinerThanMany) {
  EXPECT_EQ(TraceFineness(0.5, 1, 30).subColumns(), 64);
  EXPECT_EQ(TraceFineness(0.5, 16, 30).subColumns(), 32);
  EXPECT_EQ(TraceFineness(0.5, 100, 30).subColumns(), 24);
  EXPECT_EQ(TraceFineness(0.5, 100, 0.5).subColumns(), 8); // longer segments than pixels are judged well
}

TEST(TraceFineness, widePensBeginCoarser) {
  EXPECT_EQ(TraceFineness(1, 100, 30).subColumns(), 16); // two thirds of 24
  EXPECT_EQ(TraceFineness(60, 100, 30).subColumns(), 8);
  EXPECT_EQ(TraceFineness(0.001, 1, 30).subColumns(), 64); // a pen without width is no finer than others
}

TEST(TraceFineness, takesAsManySubColumnsAsTheInkNeeds) {
  TraceFineness fineness(0.5, 100, 300);
  ASSERT_EQ(fineness.subColumns(), 16);
  EXPECT_FALSE(fineness.refine(lineThatSteps(11), kWide));
  EXPECT_EQ(fineness.subColumns(), 16);
  // 4.81 levels where 1.05 are allowed: 16 · 4.81 / 1.05 = 73.4, rounded up to a multiple of 8.
  EXPECT_TRUE(fineness.refine(lineThatSteps(31), kWide));
  EXPECT_EQ(fineness.subColumns(), 80);
}

TEST(TraceFineness, becomesCoarserThanItBeganOnlyInACrowd) {
  TraceFineness fineness(0.5, 100, 30);
  EXPECT_FALSE(fineness.refine(lineThatSteps(11), kWide));
  EXPECT_EQ(fineness.subColumns(), 24);
  InkRoughness crowd = lineThatSteps(31);
  const std::vector<float> low(kCount, 10), high(kCount, 20);
  for (int more = 0; more < 5; ++more)
    crowd.include(low.data(), high.data(), kCount, kRows, InkRoughness::Judged::Not);
  EXPECT_FALSE(fineness.refine(crowd, kOnce)); // 0.3 levels
  EXPECT_EQ(fineness.subColumns(), 16);
  EXPECT_TRUE(fineness.refine(lineThatSteps(11), kWide));
  EXPECT_EQ(fineness.subColumns(), 24);
}

TEST(TraceFineness, becomesCoarserAgainWhenTheInkDoes) {
  TraceFineness fineness(0.5, 100, 300);
  fineness.refine(lineThatSteps(31), kWide);
  EXPECT_FALSE(fineness.refine(lineThatSteps(11), kWide));
  EXPECT_EQ(fineness.subColumns(), 16);
}

// Fills and the like: what they look like alone tells how many they need.
TEST(TraceFineness, exactInkBeginsCoarsest) {
  TraceFineness fineness(1);
  EXPECT_EQ(fineness.subColumns(), 8);
  EXPECT_FALSE(fineness.refine(lineThatFalls(0.1, Judged::Exact), kWide));
  // A jump of 10 counts 10 as a slope and a quarter where it only bends, on 16 · 2 + 16 · 12 = 224: 3.56 levels where
  // 1.05 are allowed. 8 · 3.56 / 1.05 = 27.1.
  EXPECT_TRUE(fineness.refine(lineThatSteps(21, Judged::Exact), kWide));
  EXPECT_EQ(fineness.subColumns(), 32);
}

// With half as many, slants would be four times as far off: 0.2 rows give 63.75 · 0.3 · 0.2² = 0.765 levels, so that
// 32 · √(0.765 / 1.05) = 27.3 are needed. In proportion it would be 23.3.
TEST(TraceFineness, exactInkBecomesCoarserByItsSquare) {
  TraceFineness fineness(1);
  ASSERT_TRUE(fineness.refine(lineThatSteps(21, Judged::Exact), kWide));
  ASSERT_EQ(fineness.subColumns(), 32);
  EXPECT_FALSE(fineness.refine(lineThatFalls(0.2, Judged::Exact), kWide));
  EXPECT_EQ(fineness.subColumns(), 32);
}

TEST(TraceFineness, neverAsksForMoreThanItsFinest) {
  TraceFineness fineness(0.5, 100, 300);
  int rounds = 0;
  while (fineness.refine(lineThatSteps(31), kWide) && rounds < 10)
    ++rounds;
  EXPECT_EQ(fineness.subColumns(), 96);
  EXPECT_LT(rounds, 4);
}
