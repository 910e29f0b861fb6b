#include "XOV_Graphics/views/map/MapPoints.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

const std::vector<QColor> kColors = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

geoMapPoint pointOf(int colorIndex, float symbolSize = 0.5F, float alpha = 1) {
  geoMapPoint point;
  point.setColorIndex(colorIndex);
  point.setSymbolSize(symbolSize);
  point.setAlpha(alpha);
  return point;
}

TEST(MapPointLook, hasTwelvePointsRadiusASize) {
  EXPECT_EQ(mapPointLook(pointOf(0, 0.5F), kColors, true).radius, 6);
  EXPECT_EQ(mapPointLook(pointOf(0, 2), kColors, true).radius, 24);
  EXPECT_EQ(mapPointLook(pointOf(0, -0.5F), kColors, true).radius, 6) << "a box turned around holds the same circle";
}

TEST(MapPointLook, withoutSizeShowsNothing) {
  EXPECT_FALSE(mapPointLook(pointOf(0, 0), kColors, true).hasSize());
  EXPECT_FALSE(mapPointLook(pointOf(0, kNan), kColors, true).hasSize());
  EXPECT_FALSE(mapPointLook(pointOf(0, std::numeric_limits<float>::infinity()), kColors, true).hasSize());
}

TEST(MapPointLook, isFilledInTheColorOfItsIndexWithItsOwnOpacity) {
  EXPECT_EQ(mapPointLook(pointOf(1), kColors, true).fill, QColor(0, 255, 0));
  const QColor translucent = mapPointLook(pointOf(2, 1, 0.25F), kColors, true).fill;
  EXPECT_EQ(translucent.rgb(), QColor(0, 0, 255).rgb());
  EXPECT_NEAR(translucent.alphaF(), 0.25, 1.0 / 65535);
}

TEST(MapPointLook, replacesTheOpacityOfTheColor) {
  const std::vector<QColor> faint = {QColor(10, 20, 30, 40)};
  EXPECT_EQ(mapPointLook(pointOf(0), faint, true).fill.alpha(), 255);
}

TEST(MapPointLook, keepsOpacityBetween0And1) {
  EXPECT_EQ(mapPointLook(pointOf(0, 1, 7), kColors, true).fill.alpha(), 255);
  EXPECT_EQ(mapPointLook(pointOf(0, 1, -7), kColors, true).fill.alpha(), 0);
  EXPECT_EQ(mapPointLook(pointOf(0, 1, kNan), kColors, true).fill.alpha(), 0);
}

TEST(MapPointLook, isOutlinedInHalfTransparentBlackOnePointWide) {
  const SymbolLook look = mapPointLook(pointOf(0), kColors, false);
  EXPECT_EQ(look.stroke.rgb(), QColor(0, 0, 0).rgb());
  EXPECT_NEAR(look.stroke.alphaF(), 0.5, 1.0 / 65535);
  EXPECT_EQ(look.lineWidth, 1);
}

TEST(MapPointLook, isOutlinedTwiceWhenAllAreOutlinedAndItHasAColor) {
  EXPECT_EQ(mapPointLook(pointOf(0), kColors, true).strokes, 2);
  EXPECT_EQ(mapPointLook(pointOf(0), kColors, false).strokes, 1);
}

TEST(MapPointLook, withoutAColorIndexIsOutlinedOnlyWhenAllAre) {
  EXPECT_FALSE(mapPointLook(pointOf(-1), kColors, true).fill.isValid());
  EXPECT_EQ(mapPointLook(pointOf(-1), kColors, true).strokes, 1);
  EXPECT_FALSE(mapPointLook(pointOf(-1), kColors, false).hasOutline());
}

TEST(MapPointLook, withoutColorsIsOutlinedOnlyWhenAllAre) {
  EXPECT_FALSE(mapPointLook(pointOf(0), {}, true).fill.isValid());
  EXPECT_EQ(mapPointLook(pointOf(0), {}, true).strokes, 1);
  EXPECT_FALSE(mapPointLook(pointOf(0), {}, false).hasOutline());
}

TEST(MapPointLook, withAnIndexBeyondTheColorsHasTheOutlineOnly) {
  for (const int index : {3, 1000, std::numeric_limits<int>::max()}) {
    EXPECT_FALSE(mapPointLook(pointOf(index), kColors, false).fill.isValid());
    EXPECT_EQ(mapPointLook(pointOf(index), kColors, false).strokes, 1);
    EXPECT_EQ(mapPointLook(pointOf(index), kColors, true).strokes, 2);
  }
}

TEST(MapPoints, standWhereTheirLongitudesAreShown) {
  const auto west = std::make_shared<geoMapPoint>(pointOf(0));
  const auto south = std::make_shared<geoMapPoint>(pointOf(0));
  west->setLatLonDepth(45, -10, 30);
  south->setLatLonDepth(-90, 20, 600);
  const std::vector<std::shared_ptr<geoMapPoint>> points = {west, nullptr, south};
  // One point a degree: longitude -10 is drawn at 350.
  const MapProjection projection({0, 0, 360, 180}, {0, 360, -90, 90});
  const MapPoints drawn(points, kColors, true, projection);
  const Symbols symbols = drawn.symbols(projection);
  ASSERT_EQ(symbols.size(), 2);
  EXPECT_EQ(*symbols.center(0), QPointF(350, 135));
  EXPECT_EQ(*symbols.center(1), QPointF(20, 0));
}

TEST(MapPoints, thatAreNoneDrawNothing) {
  const MapProjection projection({0, 0, 360, 180}, {0, 360, -90, 90});
  const MapPoints none({}, kColors, true, projection);
  EXPECT_TRUE(none.symbols(projection).isEmpty());
}

} // namespace
} // namespace xov
