#include "apps/xov/map/MapRegion.h"

#include "XOV_Graphics/views/map/MapProjection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace xov::cli {
namespace {

QRectF regionOf(const std::array<double, 4>& edges) {
  std::string problem;
  const auto region = MapRegion::fromEdges(edges, problem);
  EXPECT_TRUE(region) << problem;
  return region ? region->limits().rect() : QRectF();
}

std::string problemOf(const std::array<double, 4>& edges) {
  std::string problem;
  EXPECT_FALSE(MapRegion::fromEdges(edges, problem));
  return problem;
}

TEST(MapRegion, isTheGlobeFromGreenwichAtFirst) { EXPECT_EQ(MapRegion().limits().rect(), QRectF(0, -90, 360, 180)); }

TEST(MapRegion, keepsEdgesThatThePicturesHave) {
  EXPECT_EQ(regionOf({-180, 180, -90, 90}), QRectF(-180, -90, 360, 180));
  EXPECT_EQ(regionOf({0, 360, -90, 90}), QRectF(0, -90, 360, 180));
  EXPECT_EQ(regionOf({120, 290, -60, 60}), QRectF(120, -60, 170, 120));
  EXPECT_EQ(regionOf({-130, -105, 30, 52}), QRectF(-130, 30, 25, 22));
}

TEST(MapRegion, fromEastToWestCrossesTheDateLine) {
  EXPECT_EQ(regionOf({170, -170, -10, 10}), QRectF(170, -10, 20, 20));
  EXPECT_EQ(regionOf({350, 10, -10, 10}), QRectF(-10, -10, 20, 20));
}

TEST(MapRegion, isTurnedToWhereThePicturesAre) {
  EXPECT_EQ(regionOf({-250, -170, 0, 1}), QRectF(110, 0, 80, 1));
  EXPECT_EQ(regionOf({340, 380, 0, 1}), QRectF(-20, 0, 40, 1));
}

TEST(MapRegion, hasEdgesThatDiffer) {
  EXPECT_EQ(problemOf({10, 10, 0, 1}),
            "found 10 10, expected at most 360 degrees from west to east, within -180 to 360");
  EXPECT_EQ(problemOf({0, 361, 0, 1}),
            "found 0 361, expected at most 360 degrees from west to east, within -180 to 360");
  // 160 ... 460 or -200 ... 100: more than half a globe across the date line and Greenwich.
  EXPECT_FALSE(problemOf({160, 100, 0, 1}).empty());
  EXPECT_EQ(problemOf({0, 1, 5, 5}), "found 5 5, expected a southern edge below the northern one, from -90 to 90");
  EXPECT_FALSE(problemOf({0, 1, -91, 0}).empty());
  EXPECT_FALSE(problemOf({0, 1, 0, 91}).empty());
  EXPECT_FALSE(problemOf({0, 1, 10, -10}).empty());
}

TEST(MapRegion, liesWithinItself) {
  const MapRegion region({10, 20, 30, 40});
  EXPECT_TRUE(region.liesWithin({10, 20, 30, 40}));
  EXPECT_FALSE(region.liesWithin({11, 20, 30, 40}));
  EXPECT_FALSE(region.liesWithin({10, 19, 30, 40}));
  EXPECT_FALSE(region.liesWithin({10, 20, 31, 40}));
  EXPECT_FALSE(region.liesWithin({10, 20, 30, 39}));
}

TEST(MapRegion, isAsWideAsItsMiddleLatitudeSays) {
  EXPECT_DOUBLE_EQ(MapRegion().widthOverHeight(), 2);
  // cos 60 = 1/2: 40 degrees count for 20.
  EXPECT_NEAR(MapRegion({0, 40, 50, 70}).widthOverHeight(), 1, 1e-12);
}

// Longitudes of any turn, given to the view's own rules, are drawn in the turn nearest to the middle of the region.
TEST(MapRegion, hasEveryLongitudeDrawnNearestToItsMiddle) {
  std::mt19937 random(81);
  std::uniform_int_distribution<int> edges(-180, 359);
  std::uniform_int_distribution<int> longitudes(-540, 540);
  int inside = 0;
  for (int i = 0; i < 20000; ++i) {
    const int west = edges(random);
    const int east = std::uniform_int_distribution<int>(west + 1, std::min(west + 360, 360))(random);
    const MapRegion region({float(west), float(east), -90, 90});
    const MapProjection view({0, 0, 100, 100}, region.limits());
    const int lon = longitudes(random);
    for (const float drawn : {view.symbolLongitude(region.symbolLongitude(float(lon))),
                              view.lineLongitude(region.lineLongitude(float(lon)))}) {
      ASSERT_EQ(std::fmod(drawn - float(lon), 360.0F), 0) << west << ' ' << east << ' ' << lon;
      ASSERT_LE(std::abs(double(drawn) - (west + east) / 2.0), 180) << west << ' ' << east << ' ' << lon;
      inside += double(drawn) >= west && double(drawn) <= east ? 1 : 0;
    }
  }
  EXPECT_GT(inside, 5000);
}

TEST(MapRegion, leavesLongitudesOnBothEdgesOfTheGlobe) {
  const MapRegion globe({-180, 180, -90, 90});
  EXPECT_EQ(globe.lineLongitude(-180), -180);
  EXPECT_EQ(globe.lineLongitude(180), 180);
}

} // namespace
} // namespace xov::cli
