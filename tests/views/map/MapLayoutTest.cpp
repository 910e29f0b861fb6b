#include "XOV_Graphics/views/map/MapLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace xov {
namespace {

constexpr QRectF kFrame(64, 50, 504, 320);
constexpr PlotLimits kGlobe = {0, 360, -90, 90};
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

void expectNear(const QRectF& found, const QRectF& expected, double tolerance) {
  EXPECT_NEAR(found.x(), expected.x(), tolerance);
  EXPECT_NEAR(found.y(), expected.y(), tolerance);
  EXPECT_NEAR(found.width(), expected.width(), tolerance);
  EXPECT_NEAR(found.height(), expected.height(), tolerance);
}

TEST(MapRectangle, ofTheGlobeIsFittedToTheWidth) {
  // cos 0 = 1: 504 / 360 · 180 = 252 points high, (320 - 252) / 2 = 34 above the frame's lower edge.
  EXPECT_EQ(mapRectangle(kFrame, kGlobe, MapAlign::Centre), QRectF(64, 84, 504, 252));
}

TEST(MapRectangle, standsAtTheTopOrTheBottomWhenAskedTo) {
  // 50 + 320 - 252 = 118.
  EXPECT_EQ(mapRectangle(kFrame, kGlobe, MapAlign::Top), QRectF(64, 118, 504, 252));
  EXPECT_EQ(mapRectangle(kFrame, kGlobe, MapAlign::Bottom), QRectF(64, 50, 504, 252));
}

TEST(MapRectangle, thatWouldBeTooHighIsFittedToTheHeight) {
  // cos 45 = 0.70710678: the longitudes count for 28.284271. At full width it would be 504 / 28.284271 · 30 = 534.57
  // high; so it is 320 high and 320 / 30 · 28.284271 = 301.69889 wide, 64 + (504 - 301.69889) / 2 = 165.15055.
  for (const MapAlign align : {MapAlign::Centre, MapAlign::Top, MapAlign::Bottom})
    expectNear(mapRectangle(kFrame, {0, 40, 30, 60}, align), QRectF(165.15055, 50, 301.69889, 320), 1e-4);
}

TEST(MapRectangle, isAsHighAsTheFrameInBothWays) {
  // 640 points for 360 degrees by 320 for 180: neither way leaves room.
  EXPECT_EQ(mapRectangle({10, 20, 640, 320}, kGlobe, MapAlign::Centre), QRectF(10, 20, 640, 320));
}

TEST(MapRectangle, takesItsShapeFromTheMiddleLatitudeWhicheverSideOfTheEquator) {
  EXPECT_EQ(mapRectangle(kFrame, {0, 40, -60, -30}, MapAlign::Centre),
            mapRectangle(kFrame, {0, 40, 30, 60}, MapAlign::Centre));
}

TEST(MapRectangle, doesNotDependOnWhereTheMeridiansAre) {
  EXPECT_EQ(mapRectangle(kFrame, {-180, 180, -90, 90}, MapAlign::Centre), QRectF(64, 84, 504, 252));
  EXPECT_EQ(mapRectangle(kFrame, {120, 290, -60, 60}, MapAlign::Top),
            mapRectangle(kFrame, {-85, 85, -60, 60}, MapAlign::Top));
}

TEST(MapRectangle, isTheFrameForLimitsWithoutAShape) {
  const PlotLimits shapeless[] = {
      {10, 10, 0, 5},  {0, 5, 10, 10},       {3, 3, 4, 4},         {kNan, 5, 0, 5},
      {0, 5, 0, kNan}, {0, kInfinity, 0, 5}, {0, 5, 0, kInfinity}, {-kInfinity, kInfinity, -1, 1}};
  for (const PlotLimits& limits : shapeless)
    EXPECT_EQ(mapRectangle(kFrame, limits, MapAlign::Centre), kFrame) << limits.xmax << ' ' << limits.ymax;
}

TEST(MapRectangle, ofReversedLatitudesHangsDown) {
  // 504 / 360 · -180 = -252 points, which is not above 320; (320 + 252) / 2 + 50 = 336.
  EXPECT_EQ(mapRectangle(kFrame, {0, 360, 90, -90}, MapAlign::Centre), QRectF(64, 336, 504, -252));
}

// Another way to the same: points a degree of latitude, the smaller of what width and height allow.
TEST(MapRectangle, agreesWithASingleScaleOverRandomRegions) {
  std::mt19937 random(71);
  const auto between = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
  int byHeight = 0;
  for (int i = 0; i < 1000; ++i) {
    const QRectF frame(between(-50, 50), between(-50, 50), between(1, 2000), between(1, 2000));
    const auto west = float(between(-180, 350));
    const auto east = float(west + between(0.01, 360));
    const auto south = float(between(-89, 88));
    const auto north = float(south + between(0.01, 89.0 - double(south)));
    const auto align = MapAlign(std::uniform_int_distribution<int>(0, 2)(random));
    const QRectF map = mapRectangle(frame, {west, east, south, north}, align);

    const double tall = double(north) - double(south);
    const double wide =
        (double(east) - double(west)) * std::cos((double(north) + double(south)) / 2 * std::numbers::pi / 180);
    const double scale = std::min(frame.width() / wide, frame.height() / tall);
    byHeight += frame.height() / tall < frame.width() / wide ? 1 : 0;
    const double room = frame.height() - tall * scale;
    const double above = align == MapAlign::Top ? room : align == MapAlign::Centre ? room / 2 : 0;
    SCOPED_TRACE(i);
    // Single precision holds differences of limits of up to 360 degrees to 3e-5 of a hundredth of a degree.
    const double tolerance = 1e-2 + 1e-5 * (frame.width() + frame.height());
    expectNear(map, {frame.x() + (frame.width() - wide * scale) / 2, frame.y() + above, wide * scale, tall * scale},
               tolerance);
    ASSERT_FALSE(::testing::Test::HasFailure());
  }
  EXPECT_GT(byHeight, 200);
  EXPECT_LT(byHeight, 800);
}

TEST(MapTickInterval, isLeftToTheAxisUpToTenDegrees) {
  EXPECT_EQ(mapTickInterval(10), 0);
  EXPECT_EQ(mapTickInterval(0.5F), 0);
  EXPECT_EQ(mapTickInterval(0), 0);
  EXPECT_EQ(mapTickInterval(-360), 0);
  EXPECT_EQ(mapTickInterval(kNan), 0);
}

TEST(MapTickInterval, growsStrictlyAboveEachBound) {
  const struct {
    float bound;
    float below;
    float above;
  } rows[] = {{10, 0, 10}, {50, 10, 15}, {100, 15, 30}, {200, 30, 45}, {500, 45, 90}};
  for (const auto& row : rows) {
    EXPECT_EQ(mapTickInterval(row.bound), row.below) << row.bound;
    EXPECT_EQ(mapTickInterval(std::nextafter(row.bound, kInfinity)), row.above) << row.bound;
  }
  EXPECT_EQ(mapTickInterval(360), 45);
  EXPECT_EQ(mapTickInterval(540), 90);
  EXPECT_EQ(mapTickInterval(kInfinity), 90);
}

TEST(MapTickInterval, agreesWithAChainOfComparisonsOverRandomSpans) {
  std::mt19937 random(72);
  std::uniform_real_distribution<float> spans(0, 700);
  for (int i = 0; i < 1000; ++i) {
    const float span = spans(random);
    float expected = 0;
    if (span > 10) expected = 10;
    if (span > 50) expected = 15;
    if (span > 100) expected = 30;
    if (span > 200) expected = 45;
    if (span > 500) expected = 90;
    ASSERT_EQ(mapTickInterval(span), expected) << span;
  }
}

} // namespace
} // namespace xov
