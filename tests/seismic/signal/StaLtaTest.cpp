#include "XOV_Graphics/seismic/signal/StaLta.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace xov {
namespace {

using Values = std::vector<double>;

TEST(ApplyStaLta, comparesMeansOfTheLastSquares) {
  // Squares 1 1 4 4 9: over two and four of them 4 and 2.5, then 6.5 and 4.5.
  Values values{1, -1, 2, -2, 3};
  applyStaLta(values, 2, 4);
  EXPECT_EQ(Values(values.begin(), values.begin() + 3), (Values{0, 0, 0})) << "before there are four";
  EXPECT_DOUBLE_EQ(values[3], 4 / 2.5);
  EXPECT_DOUBLE_EQ(values[4], 6.5 / 4.5);
}

TEST(ApplyStaLta, recursivelyLetsOldSquaresFade) {
  // The long-term average goes half of the way to each square: ½, ¾, then half of ¾ + 9.
  Values values{1, 1, 3};
  applyStaLta(values, 1, 2, StaLtaKind::Recursive);
  EXPECT_EQ(values[0], 0);
  EXPECT_DOUBLE_EQ(values[1], 1 / 0.75);
  EXPECT_DOUBLE_EQ(values[2], 9 / 4.875);
}

TEST(ApplyStaLta, forgetsLargeValuesToTheLastBit) {
  Values values(1000, 1);
  values[100] = 1e10;
  applyStaLta(values, 7, 50);
  EXPECT_NEAR(values[100], 50.0 / 7, 1e-9);
  for (std::size_t i = 220; i < values.size(); ++i)
    ASSERT_EQ(values[i], 1) << i;
}

TEST(ApplyStaLta, is0WhereNothingMoves) {
  Values values(10);
  applyStaLta(values, 2, 4);
  EXPECT_EQ(values, Values(10));
}

TEST(ApplyStaLta, beginsAnewBehindAGap) {
  for (const StaLtaKind kind : {StaLtaKind::Classic, StaLtaKind::Recursive}) {
    Values values{5, 5, 5, std::nan(""), 1, 1, 2};
    Values alone{1, 1, 2};
    applyStaLta(values, 1, 3, kind);
    applyStaLta(alone, 1, 3, kind);
    EXPECT_EQ(Values(values.begin() + 4, values.end()), alone);
    EXPECT_GT(alone[2], 1);
  }
}

} // namespace
} // namespace xov
