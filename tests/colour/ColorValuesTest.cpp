#include "XOV_Graphics/colour/ColorValues.h"

#include "tests/colour/ColorReckoning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

using namespace xov;
using namespace xov::test;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

constexpr int kPalettes[] = {
    0, 1, 2, 3, 4, 5, 64, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()};
constexpr Color kWhite{255, 255, 255, 1};
constexpr Color kBlack{0, 0, 0, 1};
constexpr Color kRed{255, 0, 0, 1};
constexpr Color kBlue{0, 0, 255, 1};

/// With 256 bands every step of the arithmetic is exact: the value k / 256 has the level 255 k / 256, cut off.
float ofBand256(int k) { return float(k) / 256; }

/// Grey shows the level itself.
int levelOf(int nShades, float value) { return 255 - int(colorOf(nShades, 0, value).red); }

/// The values at and beside the ends of up to 600 bands, and some between.
std::vector<float> valuesFor(int nShades) {
  std::vector<float> values = oddFloats();
  const int bands = std::clamp(nShades, 1, 600);
  for (int k = 0; k <= bands + 1; ++k) {
    for (const float value : around(float(double(k) / bands)))
      values.push_back(value);
    values.push_back(float((k + 0.37) / bands));
  }
  return values;
}

} // namespace

TEST(ValidateColor, keepsWhatIsBelow255) {
  EXPECT_EQ(validateColor(0), 0U);
  EXPECT_EQ(validateColor(254), 254U);
}

TEST(ValidateColor, gives255From255On) {
  EXPECT_EQ(validateColor(255), 255U);
  EXPECT_EQ(validateColor(300), 255U);
  EXPECT_EQ(validateColor(std::numeric_limits<std::uint32_t>::max()), 255U);
}

TEST(GetColorValues, floorsToTheLowerOfEqualBands) {
  EXPECT_EQ(levelOf(4, 0), 0);
  EXPECT_EQ(levelOf(4, 0.24F), 0);
  EXPECT_EQ(levelOf(4, 0.25F), 63);  // 0.25 · 255 = 63.75
  EXPECT_EQ(levelOf(4, 0.99F), 191); // 0.75 · 255 = 191.25
  EXPECT_EQ(levelOf(4, 1), 255);
}

TEST(GetColorValues, whitensTheMiddleLevelOfRedWhiteBlue) {
  EXPECT_EQ(levelOf(256, ofBand256(129)), 128); // 129 · 255 / 256 = 128.496
  EXPECT_EQ(colorOf(256, 1, ofBand256(129)), kWhite);
}

TEST(GetColorValues, stepsByTwoBesideTheMiddleOfRedWhiteBlue) {
  EXPECT_EQ(levelOf(256, ofBand256(128)), 127); // 127.5
  EXPECT_EQ(colorOf(256, 1, ofBand256(128)), (Color{255, 254, 254, 1}));
  EXPECT_EQ(levelOf(256, ofBand256(130)), 129); // 129.49
  EXPECT_EQ(colorOf(256, 1, ofBand256(130)), (Color{252, 252, 255, 1}));
}

TEST(GetColorValues, giveTheEndsOfEachPaletteAt0And1) {
  EXPECT_EQ(colorOf(64, 0, 0), kWhite);
  EXPECT_EQ(colorOf(64, 0, 1), kBlack);
  EXPECT_EQ(colorOf(64, 1, 0), kRed);
  EXPECT_EQ(colorOf(64, 1, 1), kBlue);
  EXPECT_EQ(colorOf(64, 2, 0), (Color{255, 51, 0, 1}));
  EXPECT_EQ(colorOf(64, 2, 1), (Color{0, 51, 255, 1}));
  EXPECT_EQ(colorOf(64, 3, 0), (Color{0, 51, 255, 1}));
  EXPECT_EQ(colorOf(64, 3, 1), (Color{255, 51, 0, 1}));
  EXPECT_EQ(colorOf(64, 4, 0), (Color{165, 0, 33, 1}));
  EXPECT_EQ(colorOf(64, 4, 1), (Color{61, 135, 255, 1}));
}

TEST(GetColorValues, takeLevel0ForNegativeValuesInEveryPalette) {
  for (const float value : {-0.001F, -1.0F, -1e30F, -kInfinity, -std::numeric_limits<float>::denorm_min()}) {
    EXPECT_EQ(colorOf(64, 0, value), kWhite);
    EXPECT_EQ(colorOf(64, 1, value), kRed);
    EXPECT_EQ(colorOf(64, 2, value), rainbowRow(18)); // the rainbow's red
    EXPECT_EQ(colorOf(64, 3, value), rainbowRow(0));  // its blue
    EXPECT_EQ(colorOf(64, 4, value), divergingRow(18));
  }
}

TEST(GetColorValues, takeLevel255ForValuesAbove1) {
  for (const float value : {2.0F, 300.0F, 1e30F, kInfinity})
    EXPECT_EQ(levelOf(64, value), 255) << value;
}

TEST(GetColorValues, takeLevel0ForNaN) {
  for (const int nShades : {1, 64, 256, 0, -1}) {
    for (const int palette : kPalettes)
      EXPECT_EQ(colorOf(nShades, palette, kNaN), reckonPalette(palette, 0)) << nShades << ' ' << palette;
  }
}

TEST(GetColorValues, takeLevel0WithoutShades) {
  for (const float value : {0.0F, 0.5F, 1.0F, -1.0F, kInfinity, -kInfinity})
    EXPECT_EQ(levelOf(0, value), 0) << value;
}

TEST(GetColorValues, countPalettesBelow0As4) {
  for (int k = 0; k <= 256; ++k)
    EXPECT_EQ(colorOf(256, -1, ofBand256(k)), colorOf(256, 4, ofBand256(k)));
}

TEST(GetColorValues, neverReachTheFirstThreeDivergingColors) {
  EXPECT_EQ(colorOf(64, 4, 1), (Color{61, 135, 255, 1}));
  std::set<std::uint32_t> reds;
  for (int k = 0; k <= 256; ++k)
    reds.insert(colorOf(256, 4, ofBand256(k)).red);
  for (int row = 0; row < 3; ++row)
    EXPECT_EQ(reds.count(divergingRow(row).red), 0U) << row;
  EXPECT_EQ(reds.count(divergingRow(3).red), 1U);
}

TEST(GetColorValues, agreeWithTheReckoningAtEveryLevelOfEveryPalette) {
  std::set<std::uint32_t> levels;
  for (int level = 0; level <= 255; ++level) {
    // The middle of the values that have this level; the bands are far narrower.
    const auto value = float((level + 0.5) / 255);
    levels.insert(reckonLevel(65536, value));
    for (const int palette : kPalettes)
      EXPECT_EQ(colorOf(65536, palette, value), reckonPalette(palette, std::uint32_t(level)))
          << level << ' ' << palette;
  }
  EXPECT_EQ(levels.size(), 256U);
}

TEST(GetColorValues, agreeWithTheReckoningAtAndBesideEveryBandEnd) {
  for (const int nShades : shadeCounts()) {
    for (const float value : valuesFor(nShades)) {
      const std::uint32_t level = reckonLevel(nShades, value);
      for (const int palette : {0, 1, 2, 3, 4, -1})
        ASSERT_EQ(colorOf(nShades, palette, value), reckonPalette(palette, level))
            << "shades " << nShades << ", palette " << palette << ", value " << value;
    }
  }
}

TEST(GetColorValues, leaveOutResultsThatAreNotAskedFor) {
  std::uint32_t green = 999;
  getColorValues(64, 0, nullptr, &green, nullptr, nullptr, 1);
  EXPECT_EQ(green, 0U);
  getColorValues(64, 0, nullptr, nullptr, nullptr, nullptr, 1);
  getTopoColorValues(0, nullptr, &green, nullptr, nullptr, 0);
  EXPECT_EQ(green, 150U);
  getColorValuesFloat(0, nullptr, nullptr, nullptr, nullptr, 0);
}

namespace {

struct FloatColor {
  float red = -1, green = -1, blue = -1, alpha = -1;
};

FloatColor floatColorOf(float value, int nShades = 64) {
  FloatColor color;
  getColorValuesFloat(nShades, &color.red, &color.green, &color.blue, &color.alpha, value);
  return color;
}

void expectRow(const FloatColor& color, int row, float value) {
  const Color expected = rainbowRow(row);
  EXPECT_EQ(color.red, float(expected.red / 255.0)) << value;
  EXPECT_EQ(color.green, float(expected.green / 255.0)) << value;
  EXPECT_EQ(color.blue, float(expected.blue / 255.0)) << value;
  EXPECT_EQ(color.alpha, 1) << value;
}

} // namespace

TEST(GetColorValuesFloat, divideTheRainbowIntoEighteenthsOfTheUnit) {
  expectRow(floatColorOf(0), 0, 0);
  expectRow(floatColorOf(1), 18, 1);
  for (int row = 0; row < 18; ++row) {
    const auto middle = float((row + 0.5) / 18);
    expectRow(floatColorOf(middle), row, middle);
  }
}

TEST(GetColorValuesFloat, agreeWithTheReckoningAtAndBesideEveryStep) {
  const auto step = float(1.0 / 18);
  for (int k = 0; k <= 18; ++k) {
    for (const float value : around(float(k) * step)) {
      const auto quotient = float(double(value) / double(step));
      expectRow(floatColorOf(value), std::clamp(int(quotient), 0, 18), value);
    }
  }
}

TEST(GetColorValuesFloat, takeTheNearerEndOutsideOfTheUnit) {
  for (const float value : {-0.06F, -1.0F, -1e30F, -kInfinity, kNaN})
    expectRow(floatColorOf(value), 0, value);
  for (const float value : {1.06F, 2.0F, 1e30F, kInfinity})
    expectRow(floatColorOf(value), 18, value);
}

TEST(GetColorValuesFloat, ignoreTheNumberOfShades) {
  for (const int nShades : {0, 1, -7, std::numeric_limits<int>::min()})
    expectRow(floatColorOf(0.5F, nShades), 9, 0.5F);
}
