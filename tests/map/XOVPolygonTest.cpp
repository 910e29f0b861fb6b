#include "XOV_Graphics/map/XOVPolygon.h"

#include "tests/map/MapPrinting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace xov;
using namespace xov::test;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

const Points kUnitSquare = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};

} // namespace

TEST(XOVPolygon, isUntitledAndEmptyAtFirst) {
  const XOVPolygon polygon;
  EXPECT_EQ(polygon.title(), QStringLiteral("Untitled"));
  EXPECT_TRUE(polygon.fileName().isNull());
  EXPECT_EQ(polygon.npts(), 0);
  EXPECT_EQ(polygon.pointCount(), 0);
  EXPECT_TRUE(polygon.xp().empty());
  EXPECT_TRUE(polygon.yp().empty());
  EXPECT_EQ(polygon.bRect(), QRectF(0, 0, 0, 0));
}

TEST(XOVPolygon, describesItselfByTitleAndNumberWithoutASpace) {
  XOVPolygon polygon;
  polygon.setNpts(5);
  EXPECT_EQ(polygon.description(), QStringLiteral("UntitledNpts:5"));
  polygon.setTitle(QStringLiteral("Trench "));
  polygon.setNpts(-1);
  EXPECT_EQ(polygon.description(), QStringLiteral("Trench Npts:-1"));
}

TEST(XOVPolygon, keepsTitleAndFileName) {
  XOVPolygon polygon;
  polygon.setTitle(QStringLiteral("Rücken"));
  polygon.setFileName(QStringLiteral("ridge.txt"));
  EXPECT_EQ(polygon.title(), QStringLiteral("Rücken"));
  EXPECT_EQ(polygon.fileName(), QStringLiteral("ridge.txt"));
}

TEST(XOVPolygon, letsItsCoordinatesBeChangedInPlace) {
  XOVPolygon polygon = polygonOf({{1, 2}});
  polygon.xp()[0] = 7;
  polygon.yp()[0] = 8;
  EXPECT_EQ(pointsOf(polygon), (Points{{7, 8}}));
}

TEST(XOVPolygon, usesOnlyPointsThatItHas) {
  XOVPolygon polygon = polygonOf(kUnitSquare);
  polygon.setNpts(1000);
  EXPECT_EQ(polygon.npts(), 1000);
  EXPECT_EQ(polygon.pointCount(), 4);
  polygon.setYp({1, 2, 3});
  EXPECT_EQ(polygon.pointCount(), 3);
  polygon.setNpts(2);
  EXPECT_EQ(polygon.pointCount(), 2);
  polygon.setNpts(std::numeric_limits<int>::min());
  EXPECT_EQ(polygon.pointCount(), 0);
  EXPECT_FALSE(polygon.pointInPolygonXY(0, 0));
}

TEST(XOVPolygon, isCopiedAndMovedWithItsPoints) {
  XOVPolygon polygon = polygonOf(kUnitSquare);
  polygon.setTitle(QStringLiteral("square"));
  polygon.computeBoundingRect();
  XOVPolygon copy = polygon;
  copy.xp()[0] = 9;
  EXPECT_EQ(pointsOf(polygon), kUnitSquare);
  const XOVPolygon moved = std::move(polygon);
  EXPECT_EQ(pointsOf(moved), kUnitSquare);
  EXPECT_EQ(moved.title(), QStringLiteral("square"));
  EXPECT_EQ(moved.bRect(), QRectF(0, 0, 1, 1));
  polygon = copy;
  EXPECT_EQ(polygon.xp()[0], 9);
}

TEST(XOVPolygon, hasTheLeftAndTheLowerSideOfTheUnitSquareInside) {
  const XOVPolygon square = polygonOf(kUnitSquare);
  EXPECT_TRUE(square.pointInPolygonXY(0.5F, 0.5F));
  EXPECT_TRUE(square.pointInPolygonXY(0, 0.5F));
  EXPECT_FALSE(square.pointInPolygonXY(1, 0.5F));
  EXPECT_FALSE(square.pointInPolygonXY(0.5F, 1));
  EXPECT_TRUE(square.pointInPolygonXY(0.5F, 0));
}

TEST(XOVPolygon, hasNothingBesideTheUnitSquareInside) {
  const XOVPolygon square = polygonOf(kUnitSquare);
  for (const auto& [x, y] : Points{{-0.1F, 0.5F}, {1.1F, 0.5F}, {0.5F, -0.1F}, {0.5F, 1.1F}, {2, 2}, {-1, -1}})
    EXPECT_FALSE(square.pointInPolygonXY(x, y)) << x << ' ' << y;
}

TEST(XOVPolygon, meansTheSameWhicheverWayItRuns) {
  const XOVPolygon square = polygonOf({{0, 1}, {1, 1}, {1, 0}, {0, 0}});
  EXPECT_TRUE(square.pointInPolygonXY(0.5F, 0.5F));
  EXPECT_TRUE(square.pointInPolygonXY(0, 0.5F));
  EXPECT_FALSE(square.pointInPolygonXY(1, 0.5F));
  EXPECT_FALSE(square.pointInPolygonXY(0.5F, 1));
}

TEST(XOVPolygon, hasHolesWhereItCoversTwice) {
  // A square run around twice: every ray crosses an even number of edges.
  const XOVPolygon twice = polygonOf({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}});
  EXPECT_FALSE(twice.pointInPolygonXY(0.5F, 0.5F));
}

TEST(XOVPolygon, isTakenAsClosedAcrossANotch) {
  // An arrow head whose closing edge, from (0, 4) to (0, 0), is not spelled out.
  const XOVPolygon arrow = polygonOf({{0, 0}, {4, 2}, {0, 4}});
  EXPECT_TRUE(arrow.pointInPolygonXY(1, 2));
  EXPECT_FALSE(arrow.pointInPolygonXY(-1, 2));
  EXPECT_FALSE(arrow.pointInPolygonXY(3, 0.5F)); // the lower edge is at x = 1 there
}

TEST(XOVPolygon, neverContainsAnythingWithFewerThanThreePoints) {
  EXPECT_FALSE(XOVPolygon().pointInPolygonXY(0, 0));
  EXPECT_FALSE(polygonOf({{0, 0}}).pointInPolygonXY(0, 0));
  EXPECT_FALSE(polygonOf({{0, 0}, {0, 2}}).pointInPolygonXY(-1, 1));
  // There and back, rounding can put the crossing on either side of a point of the edge.
  std::mt19937 random(3);
  std::uniform_real_distribution<float> coordinate(-1, 1);
  for (int i = 0; i < 20000; ++i) {
    const Points edge = {{coordinate(random), coordinate(random)}, {coordinate(random), coordinate(random)}};
    const float t = (coordinate(random) + 1) / 2;
    const float x = edge[0].first + t * (edge[1].first - edge[0].first);
    const float y = edge[0].second + t * (edge[1].second - edge[0].second);
    ASSERT_FALSE(polygonOf(edge).pointInPolygonXY(x, y));
    ASSERT_FALSE(polygonOf(edge).pointInPolygonXY(std::nextafter(x, 2.0F), y));
    ASSERT_FALSE(polygonOf(edge).pointInPolygonXY(std::nextafter(x, -2.0F), y));
  }
}

TEST(XOVPolygon, findsCrossingsInSinglePrecision) {
  // The right edge, from (0, 0) to (1, 3), at y = 1: (0 - 1) · (1 - 3) / (0 - 3) + 1, where 2/3 rounds up to
  // 11184811 / 2^24. That leaves 5592405 / 2^24, which is below 1/3: a point there is on the crossing, though it
  // would be left of it with more precision.
  const XOVPolygon triangle = polygonOf({{0, 0}, {1, 3}, {-5, 3}});
  const float crossing = 5592405.0F / 16777216.0F;
  EXPECT_FALSE(triangle.pointInPolygonXY(crossing, 1));
  EXPECT_TRUE(triangle.pointInPolygonXY(std::nextafter(crossing, 0.0F), 1));
}

TEST(XOVPolygon, survivesNaN) {
  const XOVPolygon polygon = polygonOf({{0, 0}, {kNaN, 1}, {1, kNaN}, {0, 1}});
  (void)polygon.pointInPolygonXY(0.5F, 0.5F);
  EXPECT_FALSE(polygonOf(kUnitSquare).pointInPolygonXY(kNaN, 0.5F));
  EXPECT_FALSE(polygonOf(kUnitSquare).pointInPolygonXY(0.5F, kNaN));
}

TEST(XOVPolygon, boundsItsPoints) {
  XOVPolygon polygon = polygonOf({{3, -1}, {-2, 4}, {1, 1}});
  polygon.computeBoundingRect();
  EXPECT_EQ(polygon.bRect(), QRectF(-2, -1, 5, 5));
}

TEST(XOVPolygon, boundsOnePointByABoxWithoutSize) {
  XOVPolygon polygon = polygonOf({{350, 5}});
  polygon.computeBoundingRect();
  EXPECT_EQ(polygon.bRect(), QRectF(350, 5, 0, 0));
}

TEST(XOVPolygon, hasAnInsideOutBoxWithoutPoints) {
  XOVPolygon polygon;
  polygon.computeBoundingRect();
  const QRectF box = polygon.bRect();
  EXPECT_EQ(box.x(), 1e9);
  EXPECT_EQ(box.y(), 1e9);
  EXPECT_EQ(box.width(), -2e9);
  EXPECT_EQ(box.height(), -2e9);
}

TEST(XOVPolygon, leavesNaNOutOfItsBox) {
  XOVPolygon polygon = polygonOf({{kNaN, 2}, {1, kNaN}, {3, 4}});
  polygon.computeBoundingRect();
  EXPECT_EQ(polygon.bRect(), QRectF(1, 2, 2, 2));
}
