#include "XOV_Graphics/views/map/MapColors.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

void expectColor(const QColor& color, double red, double green, double blue) {
  // A component is kept in 16 bits.
  constexpr double kStep = 1.0 / 65535;
  EXPECT_NEAR(color.redF(), red, kStep);
  EXPECT_NEAR(color.greenF(), green, kStep);
  EXPECT_NEAR(color.blueF(), blue, kStep);
  EXPECT_EQ(color.alphaF(), 1.0F);
}

TEST(RedToWhiteColors, keepRedAtOneFromPureRedToWhite) {
  const std::vector<QColor> colors = redToWhiteColors(5);
  ASSERT_EQ(colors.size(), 5U);
  expectColor(colors[0], 1, 0, 0);
  expectColor(colors[1], 1, 0.25, 0.25);
  expectColor(colors[2], 1, 0.5, 0.5);
  expectColor(colors[3], 1, 0.75, 0.75);
  expectColor(colors[4], 1, 1, 1);
}

TEST(RedToWhiteColors, ofTwoLevelsAreRedAndWhite) {
  const std::vector<QColor> colors = redToWhiteColors(2);
  ASSERT_EQ(colors.size(), 2U);
  expectColor(colors[0], 1, 0, 0);
  expectColor(colors[1], 1, 1, 1);
}

TEST(RedToWhiteColors, ofOneLevelAreRed) {
  const std::vector<QColor> colors = redToWhiteColors(1);
  ASSERT_EQ(colors.size(), 1U);
  expectColor(colors[0], 1, 0, 0);
}

TEST(RedToWhiteColors, ofNoOrFewerLevelsAreNone) {
  EXPECT_TRUE(redToWhiteColors(0).empty());
  EXPECT_TRUE(redToWhiteColors(-5).empty());
}

TEST(RedToWhiteColors, endSomewhereForAnAbsurdCount) {
  EXPECT_EQ(redToWhiteColors(2'000'000'000).size(), std::size_t(kMostRampColors));
}

TEST(NoGreenColors, runFromBlueThroughCyanAndYellowToRed) {
  const std::vector<QColor> colors = noGreenColors();
  ASSERT_EQ(colors.size(), 16U);
  expectColor(colors[0], 0.13, 0.38, 1);
  expectColor(colors[3], 0, 0.81, 1);
  expectColor(colors[4], 0.16, 1, 1);
  expectColor(colors[7], 0.67, 1, 1);
  expectColor(colors[8], 1, 1, 0.33);
  expectColor(colors[13], 1, 0.44, 0);
  expectColor(colors[14], 1, 0.3, 0);
  expectColor(colors[15], 1, 0, 0);
}

TEST(NoGreenColors, haveNoColorInWhichGreenAloneStandsOut) {
  for (const QColor& color : noGreenColors())
    EXPECT_LE(color.greenF(), std::max(color.redF(), color.blueF()));
}

TEST(SeisColors, runFromDarkRedThroughYellowAndGreenToBlue) {
  const std::vector<QColor> colors = seisColors();
  ASSERT_EQ(colors.size(), 21U);
  expectColor(colors[0], 0.67, 0, 0);
  expectColor(colors[2], 0.95, 0, 0);
  expectColor(colors[9], 1, 0.95, 0);
  expectColor(colors[14], 0.35, 1, 0.12);
  expectColor(colors[16], 0.05, 0.95, 0.39);
  expectColor(colors[19], 0, 0.27, 0.97);
  expectColor(colors[20], 0, 0.13, 0.89);
}

TEST(SeisColors, haveTheSameYellowTwice) {
  expectColor(seisColors()[10], 1, 1, 0);
  EXPECT_EQ(seisColors()[10], seisColors()[11]);
}

TEST(PolarColors, mirrorTheirBlueHalfInRed) {
  const std::vector<QColor> colors = polarColors();
  ASSERT_EQ(colors.size(), 21U);
  expectColor(colors[0], 0, 0, 1);
  expectColor(colors[4], 0.38, 0.38, 1);
  for (std::size_t i = 1; i <= 10; ++i) {
    const QColor& blue = colors[i];
    expectColor(colors[21 - i], double(blue.blueF()), double(blue.greenF()), double(blue.redF()));
  }
}

TEST(PolarColors, haveNoPureWhiteAndEndBeforePureRed) {
  for (const QColor& color : polarColors())
    EXPECT_LT(color.greenF(), 0.96F);
  expectColor(polarColors()[10], 0.95, 0.95, 1);
  expectColor(polarColors()[11], 1, 0.95, 0.95);
  expectColor(polarColors()[20], 1, 0.09, 0.09);
}

} // namespace
} // namespace xov
