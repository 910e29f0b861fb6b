#include "XOV_Graphics/views/map/geoMapView.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

using namespace testing;
using Indices = std::vector<std::size_t>;

std::shared_ptr<geoMapPoint> placed(float lon, float lat, float size = 0.5F) {
  auto point = std::make_shared<geoMapPoint>();
  point->setLatLonDepth(lat, lon, 0);
  point->setSymbolSize(size);
  return point;
}

// Of the whole globe from Greenwich on: 504 by 252 points at (64, 84), 1.4 points a degree.
class MapReadout : public ::testing::Test {
protected:
  MapReadout() { recorded(view); }
  static QPointF at(double lon, double lat) { return {64 + 1.4 * lon, 84 + 1.4 * (lat + 90)}; }
  static QRectF box(double west, double east, double south, double north) {
    return {at(west, south), at(east, north)};
  }
  geoMapView view{QRectF(0, 0, 600, 400)};
};

TEST_F(MapReadout, tellsLongitudeAndLatitude) {
  const PlotReadout readout = view.readout(at(142, 38));
  EXPECT_NEAR(readout.value(QLatin1String("longitude")), 142, 1e-4);
  EXPECT_NEAR(readout.value(QLatin1String("latitude")), 38, 1e-4);
  EXPECT_EQ(readout.text(), QStringLiteral("longitude 142.0°   latitude 38.0°"));
  for (const QPointF odd : {at(-1, 0), at(10, 91), QPointF(1e30, 1e30), QPointF(double(kNan), 100)})
    EXPECT_TRUE(view.readout(odd).isEmpty());
}

TEST_F(MapReadout, tellsDistanceAndAzimuthFromTheReferencePlace) {
  EXPECT_EQ(view.readout(at(90, 0)).find(QLatin1String("distance")), nullptr);
  view.setReferencePlace(MapPlace{.longitudeDeg = 0, .latitudeDeg = 0});
  const PlotReadout east = view.readout(at(90, 0)); // a quarter of the equator
  EXPECT_NEAR(east.value(QLatin1String("distance")), 90, 1e-3);
  EXPECT_NEAR(east.value(QLatin1String("distanceKm")), 10007.5, 0.2);
  EXPECT_NEAR(east.value(QLatin1String("azimuth")), 90, 1e-3);
  EXPECT_NEAR(view.readout(at(270, 0)).value(QLatin1String("azimuth")), 270, 1e-3);
  view.setReferencePlace(MapPlace{.longitudeDeg = -170, .latitudeDeg = 0}); // across the date line
  EXPECT_NEAR(view.readout(at(170, 0)).value(QLatin1String("distance")), 20, 1e-3);
  view.setReferencePlace(MapPlace{.longitudeDeg = 0, .latitudeDeg = 1e30});
  EXPECT_EQ(view.readout(at(90, 0)).find(QLatin1String("distance")), nullptr);
}

TEST_F(MapReadout, tellsTheHeightOfATopographyThatShows) {
  // Quarters of the globe from Greenwich, the north first.
  view.setupImageDataNROWSNCOLS(
      std::make_shared<const std::vector<float>>(std::vector<float>{1, 2, 3, 4, -5, -6, -7, -8}), 2, 4);
  recorded(view);
  EXPECT_EQ(view.readout(at(45, 45)).value(QLatin1String("height")), 1);
  EXPECT_EQ(view.readout(at(200, -10)).value(QLatin1String("height")), -7);
  EXPECT_EQ(view.readout(at(200, -10)).find(QLatin1String("height"))->unit, QStringLiteral("m"));
  view.setHideImage(true);
  EXPECT_EQ(view.readout(at(45, 45)).find(QLatin1String("height")), nullptr);
}

TEST_F(MapReadout, findsPointsWhereTheyWereDrawnAndTheUppermostOfSeveral) {
  view.setThePoints(std::make_shared<GeoMapPointArray>(
      GeoMapPointArray{placed(10, 10), nullptr, placed(-170, 20), placed(300, -40, 2), placed(301, -40)}));
  const auto recording = recorded(view);
  const Symbols drawn = symbolsOf(*recording).at(0);
  const Indices indices{0, 2, 3, 4};
  for (std::int64_t i = drawn.first; i < drawn.last; ++i) {
    const QPointF center(double(drawn.x[i] - drawn.xOrigin) * drawn.xScale + drawn.xOffset,
                         double(drawn.y[i] - drawn.yOrigin) * drawn.yScale + drawn.yOffset);
    EXPECT_EQ(view.pointAt(center),
              i == 2 ? 4 : indices[std::size_t(i)]); // the last covers the middle of the large one
  }
  EXPECT_EQ(view.pointAt(at(300, -40) - QPointF(20, 0)), 3u); // a radius of 24 points
  EXPECT_FALSE(view.pointAt(at(300, -40) - QPointF(25, 0)));
  EXPECT_FALSE(view.pointAt({double(kNan), 100}));
}

TEST_F(MapReadout, aBoxHoldsPointsOnBothSidesOfTheDateLine) {
  view.setThePoints(std::make_shared<GeoMapPointArray>(
      GeoMapPointArray{placed(175, 0), placed(-175, 5), placed(165, 0), nullptr, placed(195, 0), placed(180, 30)}));
  recorded(view);
  EXPECT_EQ(view.pointsIn(box(170, 190, -10, 10)), (Indices{0, 1}));
  EXPECT_EQ(view.pointsIn(box(190, 170, 10, -10)), (Indices{0, 1})); // dragged the other way
  EXPECT_EQ(view.pointsIn(box(170, 190, -10, 40)), (Indices{0, 1, 5}));
  EXPECT_EQ(view.pointsIn(box(-60, 1e9, -90, 90)).size(), 5u);
  EXPECT_TRUE(view.pointsIn(QRectF(0, 0, 10, 10)).empty()); // beside the map
  EXPECT_TRUE(view.pointsIn(QRectF(double(kNan), 0, 10, 10)).empty());
}

TEST_F(MapReadout, aBoxHoldsMechanismsWhereTheyBelong) {
  MapMechanism mechanism;
  mechanism.longitudeDeg = -175;
  mechanism.latitudeDeg = 5;
  MapMechanism neighbour = mechanism;
  neighbour.longitudeDeg = -174;
  view.setMechanisms({mechanism, neighbour});
  view.setMovesMechanismsApart(true); // the second one is drawn elsewhere
  recorded(view);
  EXPECT_EQ(view.mechanismsIn(box(184, 185.5, 0, 10)), Indices{0});
  EXPECT_EQ(view.mechanismsIn(box(184, 187, 0, 10)), (Indices{0, 1}));
}

TEST_F(MapReadout, aBoxOfTheGlobeKnowsPlacesAWholeTurnAway) {
  const auto found = view.mapBoxOf(box(170, 200, -10, 20));
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->westDeg, 170, 1e-4);
  EXPECT_NEAR(found->eastDeg, 200, 1e-4);
  EXPECT_NEAR(found->southDeg, -10, 1e-4);
  EXPECT_NEAR(found->northDeg, 20, 1e-4);
  for (const double inside : {171.0, 199.0, -161.0, -189.0, 531.0})
    EXPECT_TRUE(found->contains({inside, 0})) << inside;
  for (const double outside : {169.0, 201.0, -159.0, 0.0, double(kNan), double(kInfinity)})
    EXPECT_FALSE(found->contains({outside, 0})) << outside;
  EXPECT_FALSE(found->contains({180, 21}));
  EXPECT_FALSE(found->contains({180, double(kNan)}));
  EXPECT_TRUE((MapBox{-180, 180, -90, 90}.contains({1000, 0})));
  EXPECT_FALSE(view.mapBoxOf(QRectF(0, 0, 10, 10)));
}

} // namespace
} // namespace xov
