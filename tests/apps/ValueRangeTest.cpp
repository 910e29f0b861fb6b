#include "apps/xov/inputs/ValueRange.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace xov::cli {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(ValueRange, spansTheFiniteValues) {
  const auto limits =
      limitsOfPoints(std::vector<float>{kNaN, 3, -1, kInfinity}, std::vector<float>{7, -kInfinity, 5, 6});
  ASSERT_TRUE(limits);
  EXPECT_EQ(limits->xmin, -1);
  EXPECT_EQ(limits->xmax, 3);
  EXPECT_EQ(limits->ymin, 5);
  EXPECT_EQ(limits->ymax, 7);
}

TEST(ValueRange, widensARangeOfNoWidth) {
  const auto limits = limitsOfPoints(std::vector<float>{-100}, std::vector<float>{0});
  ASSERT_TRUE(limits);
  EXPECT_FLOAT_EQ(limits->xmin, -105);
  EXPECT_FLOAT_EQ(limits->xmax, -95);
  EXPECT_EQ(limits->ymin, -1);
  EXPECT_EQ(limits->ymax, 1);
}

TEST(ValueRange, hasNoneWithoutFiniteValues) {
  EXPECT_FALSE(limitsOfPoints({}, {}));
  EXPECT_FALSE(limitsOfPoints(std::vector<float>{kNaN}, std::vector<float>{1}));
  EXPECT_FALSE(limitsOfPoints(std::vector<float>{1}, std::vector<float>{kInfinity}));
}

TEST(ValueRange, movesLimitsOutwardsByAShareOfTheirRange) {
  // A twentieth of 40 is 2, of 2 is 0.1.
  const PlotLimits limits = widenedBy({-10, 30, 5, 7}, 0.05);
  EXPECT_FLOAT_EQ(limits.xmin, -12);
  EXPECT_FLOAT_EQ(limits.xmax, 32);
  EXPECT_FLOAT_EQ(limits.ymin, 4.9F);
  EXPECT_FLOAT_EQ(limits.ymax, 7.1F);
}

TEST(ValueRange, keepsWidenedLimitsFinite) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  const PlotLimits limits = widenedBy({-kLargest, kLargest, 0, 1}, 0.05);
  EXPECT_EQ(limits.xmin, -kLargest);
  EXPECT_EQ(limits.xmax, kLargest);
}

} // namespace
} // namespace xov::cli
