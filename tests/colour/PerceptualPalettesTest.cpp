// Palettes whose lightness grows evenly: judged by the lightness of CIE 1976 (L*), which is reckoned here from the
// colours alone.
#include "XOV_Graphics/colour/ColorValues.h"
#include "tests/colour/ColorReckoning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace xov::test {
namespace {

using Linear = std::array<double, 3>; // red, green and blue light, 0 to 1

double linearOf(std::uint32_t component) { // IEC 61966-2-1
  const double c = double(component) / 255;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

Linear lightOf(const Color& color) { return {linearOf(color.red), linearOf(color.green), linearOf(color.blue)}; }

double lightness(const Linear& light) {
  const double y = 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
  return y > 216.0 / 24389 ? 116 * std::cbrt(y) - 16 : y * 24389 / 27;
}

Color levelColor(int palette, int level) { return colorOf(65536, palette, (float(level) + 0.5F) / 255); }

class PerceptualPalette : public ::testing::TestWithParam<int> {};

TEST_P(PerceptualPalette, growsLighterWithEveryLevel) {
  for (int level = 1; level < 255; ++level)
    EXPECT_GE(lightness(lightOf(levelColor(GetParam(), level))) + 0.3,
              lightness(lightOf(levelColor(GetParam(), level - 1))))
        << "a component is rounded to 1/255 at " << level;
}

TEST_P(PerceptualPalette, growsLighterByEqualSteps) {
  // From level 0 to 254; the steps between every 16 of them differ little.
  const double whole =
      lightness(lightOf(levelColor(GetParam(), 254))) - lightness(lightOf(levelColor(GetParam(), 0)));
  EXPECT_GT(whole, 60);
  for (int level = 0; level + 16 <= 254; level += 16) {
    const double step =
        lightness(lightOf(levelColor(GetParam(), level + 16))) - lightness(lightOf(levelColor(GetParam(), level)));
    EXPECT_NEAR(step, whole * 16 / 254, 0.3 * whole * 16 / 254) << "from level " << level;
  }
}

INSTANTIATE_TEST_SUITE_P(Palettes, PerceptualPalette, ::testing::Values(kViridisPalette, kCividisPalette));

// The ends as their authors give them, in 1/255: viridis (0.267, 0.005, 0.329) and (0.993, 0.906, 0.144), cividis
// (0, 0.135, 0.305) and (0.996, 0.909, 0.218).
TEST(PerceptualPalettes, beginAndEndWithThePublishedColors) {
  EXPECT_EQ(colorOf(64, kViridisPalette, 0), (Color{68, 1, 84, 1}));
  EXPECT_EQ(colorOf(64, kViridisPalette, 1), (Color{253, 231, 37, 1}));
  EXPECT_EQ(colorOf(64, kCividisPalette, 0), (Color{0, 34, 78, 1}));
  EXPECT_EQ(colorOf(64, kCividisPalette, 1), (Color{254, 232, 56, 1}));
}

// Deuteranopia by the matrix of Machado, Oliveira and Fernandes (2009) on light: cividis hardly changes in hue, so
// red and green come out as the original ones to a tenth, which a rainbow's do not.
TEST(PerceptualPalettes, cividisLooksAlmostTheSameWithoutCellsForGreen) {
  const auto seen = [](const Linear& light) {
    return Linear{0.367322 * light[0] + 0.860646 * light[1] - 0.227968 * light[2],
                  0.280085 * light[0] + 0.672501 * light[1] + 0.047413 * light[2],
                  -0.011820 * light[0] + 0.042940 * light[1] + 0.968881 * light[2]};
  };
  const auto largestChange = [&](int palette) {
    double largest = 0;
    for (int level = 0; level < 255; ++level) {
      const Linear light = lightOf(levelColor(palette, level)), changed = seen(light);
      for (std::size_t k = 0; k < light.size(); ++k)
        largest = std::max(largest, std::abs(light[k] - changed[k]));
    }
    return largest;
  };
  EXPECT_LT(largestChange(kCividisPalette), 0.1);
  EXPECT_GT(largestChange(3), 0.4);
}

} // namespace
} // namespace xov::test
