#include "XOV_Graphics/seismic/signal/Calculus.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace xov {
namespace {

using Values = std::vector<double>;
const double kGap = std::nan("");

TEST(Integrate, sumsTrapezoids) {
  Values values{1, 2, 4};
  integrate(values, 0.5);
  EXPECT_EQ(values, (Values{0, 0.75, 2.25})); // ½ s · 1.5 and ½ s · 3
}

TEST(Integrate, beginsAnewBehindAGap) {
  Values values{kGap, 1, 1, kGap, 2, 2, 2, kGap, 5};
  integrate(values, 1);
  EXPECT_TRUE(std::isnan(values[0]) && std::isnan(values[3]) && std::isnan(values[7]));
  EXPECT_EQ(Values(values.begin() + 1, values.begin() + 3), (Values{0, 1}));
  EXPECT_EQ(Values(values.begin() + 4, values.begin() + 7), (Values{0, 2, 4}));
  EXPECT_EQ(values[8], 0);
}

TEST(Differentiate, isExactForParabolasUpToTheEnds) {
  Values values;
  for (int i = 0; i < 6; ++i)
    values.push_back(std::pow(0.5 * i, 2)); // t², whose derivative is 2t
  differentiate(values, 0.5);
  EXPECT_EQ(values, (Values{0, 1, 2, 3, 4, 5}));
}

TEST(Differentiate, takesWhatAShortStretchHas) {
  Values values{1, 4, kGap, 7, kGap, 1, 4, 9};
  differentiate(values, 1);
  EXPECT_EQ(values[0], 3);
  EXPECT_EQ(values[1], 3);
  EXPECT_TRUE(std::isnan(values[3])) << "a single value";
  EXPECT_EQ(values[5], 2); // -3 · 1 + 4 · 4 - 9 = 4, by 2
  EXPECT_EQ(values[6], 4);
  EXPECT_EQ(values[7], 6); // 3 · 9 - 4 · 4 + 1 = 12, by 2
}

} // namespace
} // namespace xov
