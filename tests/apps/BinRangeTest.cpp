#include "apps/xov/commands/HistCommand.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

TEST(BinRange, endsOneBinAboveTheValuesSoThatTheBinsDivideTheirRange) {
  // The view's width is then (12.5 - 0) / (4 + 1) = 2.5, a quarter of the values' range.
  const BinRange range = binRange(0, 10, 4, {}, {});
  EXPECT_EQ(range.min, 0);
  EXPECT_EQ(range.max, 12.5F);
}

TEST(BinRange, takesGivenEndsAsTheyAre) {
  const BinRange range = binRange(0, 10, 4, -3, 99);
  EXPECT_EQ(range.min, -3);
  EXPECT_EQ(range.max, 99);
}

TEST(BinRange, completesOneGivenEndFromTheValues) {
  const BinRange upwards = binRange(0, 10, 4, 2, {}); // bins of (10 - 2) / 4 = 2
  EXPECT_EQ(upwards.min, 2);
  EXPECT_EQ(upwards.max, 12);
  const BinRange downwards = binRange(0, 10, 4, {}, 7);
  EXPECT_EQ(downwards.min, 0);
  EXPECT_EQ(downwards.max, 7);
}

TEST(BinRange, isNeverEmpty) {
  const BinRange equal = binRange(0, 0, 2, {}, {}); // -1 to 1, bins of 1
  EXPECT_EQ(equal.min, -1);
  EXPECT_EQ(equal.max, 2);
  const BinRange above = binRange(0, 10, 1, 100, {}); // the values lie below: 95 to 105 but for the given end
  EXPECT_EQ(above.min, 100);
  EXPECT_GT(above.max, 100);
  const BinRange below = binRange(0, 10, 1, {}, -100); // a twentieth of 100 below the given end
  EXPECT_FLOAT_EQ(below.min, -105);
  EXPECT_EQ(below.max, -100);
}

} // namespace
} // namespace xov::cli
