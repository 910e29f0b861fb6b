#include "XOV_Graphics/colour/ColorValues.h"
#include "tests/colour/ColorReckoning.h"

#include <gtest/gtest.h>

#include <limits>

using namespace xov;
using namespace xov::test;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

} // namespace

TEST(GetTopoColorValues, takeTheFirstRowWhoseBoundIsStrictlyGreater) {
  EXPECT_EQ(topoColorOf(-8000), topoRow(1));
  EXPECT_EQ(topoColorOf(-8000.5F), topoRow(0));
  EXPECT_EQ(topoColorOf(-20000), topoRow(0));
}

TEST(GetTopoColorValues, areWhiteFrom6000MetersOn) {
  EXPECT_EQ(topoColorOf(6000), (Color{255, 255, 255, 1}));
  EXPECT_EQ(topoColorOf(8848), (Color{255, 255, 255, 1}));
  EXPECT_EQ(topoColorOf(5999), topoRow(32)); // which has the same colour: its bound is the first that is greater
  EXPECT_EQ(topoColorOf(4999.9F), topoRow(31));
}

TEST(GetTopoColorValues, drawTheCoastBetweenNearWhiteAndGreen) {
  EXPECT_EQ(topoColorOf(0), (Color{100, 150, 100, 1}));
  EXPECT_EQ(topoColorOf(-0.0F), (Color{100, 150, 100, 1}));
  EXPECT_EQ(topoColorOf(-0.5F), (Color{240, 240, 255, 1}));
  EXPECT_EQ(topoColorOf(-std::numeric_limits<float>::denorm_min()), (Color{240, 240, 255, 1}));
}

TEST(GetTopoColorValues, keepTheDarkRowAmongTheGreys) {
  EXPECT_EQ(topoColorOf(2000), (Color{125, 125, 125, 1}));
  EXPECT_EQ(topoColorOf(1900), (Color{150, 125, 100, 1}));
  EXPECT_EQ(topoColorOf(2200), (Color{140, 140, 140, 1}));
}

TEST(GetTopoColorValues, agreeWithTheReckoningAtAndBesideEveryBound) {
  for (const int bound : topoBounds()) {
    for (const float elevation : around(float(bound)))
      EXPECT_EQ(topoColorOf(elevation), topoRow(reckonTopoRow(elevation))) << elevation;
  }
}

TEST(GetTopoColorValues, agreeWithTheReckoningAtEveryQuarterMeter) {
  for (int quarter = 4 * -12000; quarter <= 4 * 9000; ++quarter) {
    const float elevation = float(quarter) / 4;
    ASSERT_EQ(topoColorOf(elevation), topoRow(reckonTopoRow(elevation))) << elevation;
  }
}

TEST(GetTopoColorValues, agreeWithTheReckoningForOddNumbers) {
  for (const float elevation : oddFloats())
    EXPECT_EQ(topoColorOf(elevation), topoRow(reckonTopoRow(elevation))) << elevation;
}

TEST(GetTopoColorValues, areWhiteWithoutAnElevation) {
  EXPECT_EQ(topoColorOf(std::numeric_limits<float>::quiet_NaN()), (Color{255, 255, 255, 1}));
  EXPECT_EQ(topoColorOf(kInfinity), (Color{255, 255, 255, 1}));
  EXPECT_EQ(topoColorOf(-kInfinity), topoRow(0));
}

TEST(GetTopoColorValues, ignoreThePalette) {
  for (const int palette : {-1, 1, 4, std::numeric_limits<int>::max()}) {
    Color color{};
    getTopoColorValues(palette, &color.red, &color.green, &color.blue, &color.alpha, 700);
    EXPECT_EQ(color, (Color{255, 225, 125, 1}));
  }
}
