#include "XOV_Graphics/grid/GridCell.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace xov {
namespace {

constexpr float kMissing = std::numeric_limits<float>::quiet_NaN();

TEST(GridCell, ofTheLargestValueIsCountedFromTheUpperLeftOne) {
  const auto cell = largestCell(std::vector<float>{1, 2, 3, 4, 9, 5}, 3);
  ASSERT_TRUE(cell);
  EXPECT_EQ(cell->row, 1);
  EXPECT_EQ(cell->column, 1);
}

TEST(GridCell, isTheFirstOfEqualValuesAndNeverAMissingOne) {
  const auto cell = largestCell(std::vector<float>{kMissing, -7, kMissing, -7}, 2);
  ASSERT_TRUE(cell);
  EXPECT_EQ(cell->row, 0);
  EXPECT_EQ(cell->column, 1);
}

TEST(GridCell, isNoneWithoutAValueOrColumns) {
  EXPECT_FALSE(largestCell({}, 3));
  EXPECT_FALSE(largestCell(std::vector<float>{kMissing, kMissing}, 2));
  EXPECT_FALSE(largestCell(std::vector<float>{1}, 0));
}

TEST(GridCell, onTheEdgeLiesInAnOutermostRowOrColumn) {
  int inside = 0;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 5; ++column)
      inside += GridCell{row, column}.isOnEdge(4, 5) ? 0 : 1;
  }
  EXPECT_EQ(inside, 2 * 3);
}

} // namespace
} // namespace xov
