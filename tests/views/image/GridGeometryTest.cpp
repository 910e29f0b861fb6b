#include "XOV_Graphics/views/image/GridGeometry.h"

#include "tests/support/ThreadCounts.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace xov {
namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();

GridRange rangeOf(const std::vector<float>& values) { return gridRange(values).value(); }

// The first value, 5, counts as −5 for the minimum.
TEST(GridRange, ofEqualValuesReachesDownToTheNegative) {
  const GridRange range = rangeOf({5, 5, 5});
  EXPECT_EQ(range.highest, 5);
  EXPECT_EQ(range.lowest, -5);
}

TEST(GridRange, ofPositiveValuesStartsAtTheNegativeOfTheFirst) {
  const GridRange range = rangeOf({3, 1, 9});
  EXPECT_EQ(range.highest, 9);
  EXPECT_EQ(range.lowest, -3);
}

// The negative of −2 is 2, but −2 itself is lower: the scan takes the first value in.
TEST(GridRange, takesANegativeFirstValueIn) {
  EXPECT_EQ(rangeOf({-2, 0, 8}).lowest, -2);
  EXPECT_EQ(rangeOf({-2, 0, 8}).highest, 8);
  EXPECT_EQ(rangeOf({-2, -1, 8}).lowest, -2);
}

TEST(GridRange, leavesOutWhatIsNoNumber) {
  const GridRange range = rangeOf({kNaN, 4, kNaN, 6});
  EXPECT_EQ(range.highest, 6);
  EXPECT_EQ(range.lowest, -4);
  EXPECT_FALSE(gridRange(std::vector<float>{kNaN, kNaN}));
  EXPECT_FALSE(gridRange({}));
}

// A plain loop over the values, as the range is defined.
GridRange plainRange(const std::vector<float>& values) {
  GridRange range{-values[0], values[0]};
  for (const float value : values) {
    if (value > range.highest) range.highest = value;
    if (value < range.lowest) range.lowest = value;
  }
  return range;
}

TEST(GridRange, isTheSameWithAnyNumberOfThreads) {
  std::mt19937 random(3);
  std::vector<float> values(1000000);
  for (float& value : values)
    value = random() % 10 == 0 ? kNaN : float(random() % 1000) - 100;
  values[10] = 4;
  values[999999] = 5000;
  values[600000] = -700;
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    EXPECT_EQ(rangeOf(values).highest, 5000);
    EXPECT_EQ(rangeOf(values).lowest, -700);
  }
}

TEST(GridRange, isThatOfAPlainLoopForAnyLengthAndVectorWidth) {
  std::mt19937 random(2009);
  const float odd[] = {kNaN, 0.0F, -0.0F, std::numeric_limits<float>::infinity(), -1e30F, 3.5F, -2, 7};
  testing::forEachVectorWidth([&] {
    for (std::size_t length = 1; length < 70; ++length) {
      // Of all eight kinds, and of zeros of both signs alone.
      for (const std::size_t first : {0U, 1U}) {
        std::vector<float> values(length);
        for (float& value : values)
          value = odd[first + random() % (first == 0 ? 8 : 2)];
        if (std::isnan(values[0])) values[0] = 1;
        const GridRange range = rangeOf(values), plain = plainRange(values);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(range.highest), std::bit_cast<std::uint32_t>(plain.highest)) << length;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(range.lowest), std::bit_cast<std::uint32_t>(plain.lowest)) << length;
      }
    }
  });
}

std::vector<float> zeros(std::size_t count) { return std::vector<float>(count); }

TEST(HeldGrid, isTheWholeGridWhereTheBufferHoldsIt) {
  const std::vector<float> buffer = zeros(7);
  const GridValues grid = GridValues::held(buffer, 2, 3);
  EXPECT_EQ(grid.rows, 2);
  EXPECT_EQ(grid.columns, 3);
  EXPECT_EQ(grid.values.size(), 6u);
}

TEST(HeldGrid, isTheWholeRowsThatTheBufferHolds) {
  const std::vector<float> buffer = zeros(8);
  const GridValues grid = GridValues::held(buffer, 4, 3);
  EXPECT_EQ(grid.rows, 2);
  EXPECT_EQ(grid.columns, 3);
}

TEST(HeldGrid, isTheBeginningOfARowThatIsCutShort) {
  const std::vector<float> buffer = zeros(5);
  const GridValues grid = GridValues::held(buffer, std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
  EXPECT_EQ(grid.rows, 1);
  EXPECT_EQ(grid.columns, 5);
}

TEST(HeldGrid, isEmptyForCountsThatAreNotPositive) {
  const std::vector<float> buffer = zeros(8);
  for (const auto& [nr, nc] : {std::pair(0, 3), {3, 0}, {-1, 3}, {3, -1}, {std::numeric_limits<int>::min(), 1}})
    EXPECT_TRUE(GridValues::held(buffer, nr, nc).values.empty());
  EXPECT_TRUE(GridValues::held({}, 3, 3).values.empty());
}

// Three columns over 0 … 6 stand 3 apart, two rows over −1 … 1 stand 2 apart, from the top.
TEST(GridNodes, putTheOutermostCellsOnTheLimits) {
  const GridNodes nodes({0, 6, -1, 1}, 2, 3);
  EXPECT_EQ(nodes.dx, 3);
  EXPECT_EQ(nodes.dy, 2);
  EXPECT_EQ(nodes.x(0), 0);
  EXPECT_EQ(nodes.x(2), 6);
  EXPECT_EQ(nodes.y(0), 1);
  EXPECT_EQ(nodes.y(1), -1);
}

TEST(GridNodes, ofOneColumnStandOnTheLowerLimit) {
  const GridNodes nodes({2, 6, -1, 1}, 1, 1);
  EXPECT_EQ(nodes.x(0), 2);
  EXPECT_EQ(nodes.y(0), 1);
}

// The stride is the number of rows, 2: the value of row 1, column 2 is the one at 2 + 2 · 1 = 4, not at 5.
TEST(GridNodes, lookValuesUpWithTheNumberOfRowsAsStride) {
  const std::vector<float> buffer = {10, 11, 12, 13, 14, 15};
  const GridValues grid = GridValues::held(buffer, 2, 3);
  const GridNodes nodes({0, 1, 0, 1}, 2, 3);
  EXPECT_EQ(nodes.value(grid, 0, 2), 12);
  EXPECT_EQ(nodes.value(grid, 1, 0), 12);
  EXPECT_EQ(nodes.value(grid, 1, 2), 14);
}

// With 3 rows of 2, row 2 begins at 6, beyond the six values.
TEST(GridNodes, haveNoValueBeyondTheGrid) {
  const std::vector<float> buffer = {10, 11, 12, 13, 14, 15, 99};
  const GridValues grid = GridValues::held(buffer, 3, 2);
  const GridNodes nodes({0, 1, 0, 1}, 3, 2);
  EXPECT_EQ(nodes.value(grid, 1, 1), 14);
  EXPECT_FALSE(nodes.value(grid, 2, 0));
}

std::optional<GridPeak> peakOf(const std::vector<float>& buffer, int nr, int nc) {
  return findPeak(GridNodes({0, float(nc - 1), 0, float(nr - 1)}, nr, nc), GridValues::held(buffer, nr, nc));
}

TEST(GridPeak, isTheFirstOfEqualMaxima) {
  const auto peak = peakOf({0, 7, 7, 0, 7, 0, 0, 0, 0}, 3, 3);
  ASSERT_TRUE(peak);
  EXPECT_EQ(peak->x, 1);
  EXPECT_EQ(peak->y, 2);
}

// The largest value, at the end of a 2 × 3 grid, is never looked at; the 8 at index 4 is found as row 1, column 2.
TEST(GridPeak, isLookedForWithTheNumberOfRowsAsStride) {
  const auto peak = peakOf({0, 0, 0, 0, 8, 9}, 2, 3);
  ASSERT_TRUE(peak);
  EXPECT_EQ(peak->x, 2);
  EXPECT_EQ(peak->y, 0);
}

TEST(GridPeak, leavesOutCellsBeyondTheGrid) {
  const auto peak = peakOf({1, 2, 3, 4, 5, 6, 1000, 1000}, 3, 2);
  ASSERT_TRUE(peak);
  // Row 1 of stride 3 holds the values at 3 and 4; row 2 is not there.
  EXPECT_EQ(peak->x, 1);
  EXPECT_EQ(peak->y, 1);
}

TEST(GridPeak, isNotThereWithoutAValueAboveTheLowest) {
  EXPECT_FALSE(peakOf({kNaN, kNaN}, 1, 2));
  EXPECT_FALSE(peakOf({-1e30F, -2e30F}, 1, 2));
  EXPECT_FALSE(peakOf({}, 2, 2));
}

} // namespace
} // namespace xov
