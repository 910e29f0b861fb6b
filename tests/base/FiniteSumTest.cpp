#include "XOV_Graphics/base/FiniteSum.h"

#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

FiniteSum sumOf(const std::vector<float>& values) {
  FiniteSum sum;
  addFinite(values, sum);
  return sum;
}

} // namespace

TEST(FiniteSum, addsWholeNumbersExactlyHoweverManyThereAre) {
  forEachVectorWidth([](auto...) {
    for (const int count : {0, 1, 7, 8, 9, 4095, 4096, 4097, 10000}) {
      std::vector<float> values;
      for (int i = 1; i <= count; ++i)
        values.push_back(float(i));
      const FiniteSum sum = sumOf(values);
      EXPECT_EQ(sum.sum, double(count) * (count + 1) / 2);
      EXPECT_EQ(sum.count, count);
    }
  });
}

TEST(FiniteSum, leavesOutWhatIsNotFinite) {
  for (const float gap : {kNan, kInfinity, -kInfinity}) {
    std::vector<float> values(5000, 2);
    values[4500] = gap;
    const FiniteSum sum = sumOf(values);
    EXPECT_EQ(sum.sum, 9998);
    EXPECT_EQ(sum.count, 4999);
    EXPECT_EQ(sum.mean(), 2);
  }
  EXPECT_EQ(sumOf({kInfinity, -kInfinity, kNan}).mean(), 0) << "of no number";
}

TEST(FiniteSum, addsTheLargestNumbers) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  EXPECT_EQ(sumOf(std::vector<float>(16, kLargest)).sum, 16 * double(kLargest));
}

TEST(FiniteSum, goesOnWithASum) {
  FiniteSum sum{10, 4};
  addFinite(std::vector<float>{5}, sum);
  EXPECT_EQ(sum.sum, 15);
  EXPECT_EQ(sum.mean(), 3);
}
