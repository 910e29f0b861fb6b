#include "XOV_Graphics/colour/CategoryColors.h"

#include "tests/colour/ColorVision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace xov::test {
namespace {

Linear lightOfPacked(std::uint32_t packed) {
  return lightOf({packed >> 16, (packed >> 8) & 0xffU, packed & 0xffU, 1});
}

// CIE 1976 L*a*b* under daylight D65.
Linear labOf(const Linear& light) {
  constexpr Matrix kToXyz = {
      {{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750}, {0.0193339, 0.1191920, 0.9503041}}};
  constexpr Linear kWhite = {0.95047, 1, 1.08883};
  Linear f = times(kToXyz, light);
  for (std::size_t k = 0; k < f.size(); ++k) {
    const double t = f[k] / kWhite[k];
    f[k] = t > 216.0 / 24389 ? std::cbrt(t) : (t * 24389 / 27 + 16) / 116;
  }
  return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

double difference(const Linear& left, const Linear& right, const Matrix& eye) {
  const auto seen = [&](const Linear& light) {
    Linear shown = times(eye, light);
    for (double& component : shown)
      component = std::clamp(component, 0.0, 1.0);
    return labOf(shown);
  };
  const Linear a = seen(left), b = seen(right);
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

constexpr Matrix kAllCells = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// The smallest difference between two colours to any eye.
double smallestDifference(const Linear& left, const Linear& right) {
  double smallest = std::numeric_limits<double>::infinity();
  for (const Matrix& eye : {kAllCells, kProtanopia, kDeuteranopia, kTritanopia})
    smallest = std::min(smallest, difference(left, right, eye));
  return smallest;
}

} // namespace

TEST(CategoryColors, areThePublishedOnes) {
  // Of Okabe and Ito, in 1/255: vermilion (213, 94, 0), blue (0, 114, 178), sky blue (86, 180, 233).
  EXPECT_EQ(categoryColor(0), 0U);
  EXPECT_EQ(categoryColor(1), 213U * 65536 + 94 * 256);
  EXPECT_EQ(categoryColor(2), 114U * 256 + 178);
  EXPECT_EQ(categoryColor(5), 86U * 65536 + 180 * 256 + 233);
}

// A difference of 2.3 is the smallest that is seen with the colours side by side.
TEST(CategoryColors, canBeToldApartWithEveryKindOfColourVision) {
  for (std::size_t i = 0; i < kCategoryColors; ++i) {
    for (std::size_t k = 0; k < i; ++k)
      EXPECT_GT(smallestDifference(lightOfPacked(categoryColor(i)), lightOfPacked(categoryColor(k))), 15)
          << i << " and " << k;
  }
  // A pair that is known for its trouble.
  EXPECT_LT(smallestDifference(lightOfPacked(0xa06000), lightOfPacked(0x608000)), 15);
}

// Contrast as web pages reckon it: (1 + 0.05) / (luminance + 0.05). That of Okabe and Ito's yellow is 1.3.
TEST(CategoryColors, standOutFromWhitePaper) {
  for (std::size_t i = 0; i < kCategoryColors; ++i)
    EXPECT_GT(1.05 / (luminance(lightOfPacked(categoryColor(i))) + 0.05), 2.2) << i;
}

TEST(CategoryColors, comeAgainWhereThereAreMoreKinds) {
  EXPECT_EQ(categoryColor(kCategoryColors), categoryColor(0));
  EXPECT_EQ(categoryColor(3 * kCategoryColors + 2), categoryColor(2));
  EXPECT_EQ(categoryColor(std::numeric_limits<std::size_t>::max()),
            categoryColor(std::numeric_limits<std::size_t>::max() % kCategoryColors));
}

} // namespace xov::test
