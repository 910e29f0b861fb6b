#include "XOV_Graphics/seismic/signal/Trend.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace xov {
namespace {

using Values = std::vector<double>;
const double kNaN = std::nan("");

TEST(RemovePolynomial, ofOrder0TakesTheMeanAway) {
  Values values{1, 2, 6};
  removePolynomial(values, 0);
  EXPECT_EQ(values, (Values{-2, -1, 3}));
}

TEST(RemovePolynomial, ofOrder1TakesTheLineOfLeastSquaresAway) {
  // Through (0, 0), (1, 3), (2, 3): slope 3/2, and 2 at the middle; 1/2 ... 7/2.
  Values values{0, 3, 3};
  removePolynomial(values, 1);
  EXPECT_NEAR(values[0], -0.5, 1e-15);
  EXPECT_NEAR(values[1], 1, 1e-15);
  EXPECT_NEAR(values[2], -0.5, 1e-15);
}

TEST(RemovePolynomial, leavesNothingOfPolynomialsUpToItsOrder) {
  for (int order = 0; order <= 12; ++order) {
    Values values;
    for (int i = 0; i < 1000; ++i)
      values.push_back(100 * std::pow(double(i) / 500 - 0.7, order));
    removePolynomial(values, order);
    for (const double value : values)
      ASSERT_NEAR(value, 0, 1e-9) << order;
  }
}

TEST(RemovePolynomial, leavesWhatIsOrthogonalToIt) {
  // 1 -3 3 -1 is orthogonal to every polynomial below the third order over four equidistant places.
  Values values{1 + 5, -3 + 6, 3 + 7, -1 + 8};
  removePolynomial(values, 2);
  EXPECT_NEAR(values[0], 1, 1e-14);
  EXPECT_NEAR(values[1], -3, 1e-14);
  EXPECT_NEAR(values[2], 3, 1e-14);
  EXPECT_NEAR(values[3], -1, 1e-14);
}

TEST(RemovePolynomial, fitsOneOverAllSidesOfAGap) {
  Values values{kNaN, 10, 12, kNaN, HUGE_VAL, 18, 20};
  removePolynomial(values, 1);
  EXPECT_TRUE(std::isnan(values[0]));
  EXPECT_TRUE(std::isnan(values[3]));
  EXPECT_EQ(values[4], HUGE_VAL);
  for (const int i : {1, 2, 5, 6})
    EXPECT_NEAR(values[std::size_t(i)], 0, 1e-13) << i;
}

TEST(RemovePolynomial, leavesNothingOfAsFewValuesAsItHasCoefficients) {
  Values values{3, -4};
  removePolynomial(values, 7);
  EXPECT_NEAR(values[0], 0, 1e-14);
  EXPECT_NEAR(values[1], 0, 1e-14);
  Values none;
  removePolynomial(none, 1);
  Values missing{kNaN};
  removePolynomial(missing, 1);
  EXPECT_TRUE(std::isnan(missing[0]));
}

} // namespace
} // namespace xov
