// Palettes whose lightness grows evenly: judged by the lightness of CIE 1976 (L*), which is reckoned here from the
// colours alone.
#include "XOV_Graphics/colour/ColorValues.h"
#include "tests/colour/ColorVision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace xov::test {
namespace {

double lightness(const Linear& light) {
  const double y = luminance(light);
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

INSTANTIATE_TEST_SUITE_P(Palettes, PerceptualPalette,
                         ::testing::Values(kViridisPalette, kCividisPalette, kDawnPalette));

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
  const auto largestChange = [&](int palette) {
    double largest = 0;
    for (int level = 0; level < 255; ++level) {
      const Linear light = lightOf(levelColor(palette, level)), changed = times(kDeuteranopia, light);
      for (std::size_t k = 0; k < light.size(); ++k)
        largest = std::max(largest, std::abs(light[k] - changed[k]));
    }
    return largest;
  };
  EXPECT_LT(largestChange(kCividisPalette), 0.1);
  EXPECT_GT(largestChange(3), 0.4);
}

// B. Ottosson (2020).
Linear oklabOf(const Linear& light) {
  constexpr Matrix kToCells = {{{0.4122214708, 0.5363325363, 0.0514459929},
                                {0.2119034982, 0.6806995451, 0.1073969566},
                                {0.0883024619, 0.2817188376, 0.6299787005}}};
  constexpr Matrix kToLab = {{{0.2104542553, 0.7936177850, -0.0040720468},
                              {1.9779984951, -2.4285922050, 0.4505937099},
                              {0.0259040371, 0.7827717662, -0.8086757660}}};
  Linear cells = times(kToCells, light);
  for (double& cell : cells)
    cell = std::cbrt(cell);
  return times(kToLab, cells);
}

// The way back from the colours, which are rounded to 1/255, to the helix that they were taken from.
TEST(PerceptualPalettes, dawnIsAHelixThroughLightness) {
  for (int level = 0; level < 255; ++level) {
    const Linear lab = oklabOf(lightOf(levelColor(kDawnPalette, level)));
    const double t = double(level) / 255, angle = (270 - 300 * t) * 3.14159265358979 / 180;
    EXPECT_NEAR(lab[0], 0.28 + 0.59 * t, 0.004) << level;
    EXPECT_NEAR(lab[1], 0.01 + 0.085 * std::cos(angle), 0.006) << level;
    EXPECT_NEAR(lab[2], 0.02 + 0.085 * std::sin(angle), 0.006) << level;
  }
}

// Along the helix 15 levels span an angle of 300° · 15 / 255 = 17.647°, whose chord is 2 · 0.085 · sin(8.8235°) =
// 0.026077, and a height of 0.59 · 15 / 255 = 0.034706: together 0.043411.
TEST(PerceptualPalettes, dawnChangesByEqualSteps) {
  for (int level = 0; level + 15 < 255; level += 15) {
    const Linear from = oklabOf(lightOf(levelColor(kDawnPalette, level)));
    const Linear to = oklabOf(lightOf(levelColor(kDawnPalette, level + 15)));
    EXPECT_NEAR(std::hypot(to[0] - from[0], to[1] - from[1], to[2] - from[2]), 0.043411, 0.003) << level;
  }
}

} // namespace
} // namespace xov::test
