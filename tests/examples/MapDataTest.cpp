#include "XOV_Graphics/map/XOVPolygon.h"
#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "examples/synthetic/BoundaryMechanism.h"
#include "examples/synthetic/RegionalMotion.h"
#include "examples/synthetic/WorldCatalogue.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::synthetic {
namespace {

TEST(WorldCatalogue, isReadWhole) {
  const Result<EventFile> file = parseEvents(worldCatalogue(), QStringLiteral("catalogue"));
  ASSERT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->notes.isEmpty());
  EXPECT_GT(file->events.size(), 1000U);
  EXPECT_LT(file->events.size(), 4000U);
}

TEST(WorldCatalogue, hasATenthAsManyEventsAUnitOfMagnitudeHigher) {
  const Result<EventFile> file = parseEvents(worldCatalogue(), QStringLiteral("catalogue"));
  double above5 = 0;
  double above6 = 0;
  for (const auto& event : file->events) {
    above5 += event->magnitude() >= 5.0F ? 1 : 0;
    above6 += event->magnitude() >= 6.0F ? 1 : 0;
  }
  // Three standard deviations of some 150 drawings: 37.
  EXPECT_NEAR(above6, above5 / 10, 3 * std::sqrt(above5 / 10));
}

TEST(WorldCatalogue, hasDeepEventsOnlyWhereTheSlabGoes) {
  const Result<EventFile> file = parseEvents(worldCatalogue(), QStringLiteral("catalogue"));
  int deep = 0;
  for (const auto& event : file->events) {
    const HypocentreValues& values = event->values();
    EXPECT_GE(values.depthKm, 0);
    EXPECT_LE(values.depthKm, 660);
    const bool underSouthAmerica =
        values.longitudeDeg > -85 && values.longitudeDeg < -55 && values.latitudeDeg < -5 && values.latitudeDeg > -40;
    if (!underSouthAmerica || values.depthKm < 400) continue;
    ++deep;
    // 450 km, less three spreads of 15 km, are 3.6 degrees to the east of a trench that begins at 81.3 W.
    EXPECT_GT(values.longitudeDeg, -77.7) << "at latitude " << values.latitudeDeg;
  }
  EXPECT_GT(deep, 5);
}

// What lies under Chile above 50 km are thrusts on the slab.
TEST(WorldCatalogue, hasMechanismsAfterThePlateBoundaries) {
  const Result<EventFile> file = parseEvents(worldMechanisms(), QStringLiteral("mechanisms"));
  ASSERT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->notes.isEmpty()) << file->notes.join(QStringLiteral("; ")).toStdString();
  EXPECT_GT(file->events.size(), 30U);
  int thrusts = 0;
  for (const auto& event : file->events) {
    const HypocentreValues& values = event->values();
    EXPECT_GE(event->magnitude(), 6.0F);
    ASSERT_TRUE(values.mechanism.has_value());
    const NodalPlane& plane = values.mechanism->planes[0];
    const bool underChile = values.longitudeDeg > -76 && values.longitudeDeg < -66 && values.latitudeDeg < -20 &&
                            values.latitudeDeg > -34 && values.depthKm < 50;
    if (!underChile) continue;
    ++thrusts;
    // The trench runs north there within 20 degrees and the slab dips to the east; three spreads are 21 and 10.5.
    EXPECT_LT(std::abs(std::remainder(double(plane.strikeDeg), 360.0)), 41);
    EXPECT_NEAR(plane.dipDeg, 25, 11);
    EXPECT_NEAR(plane.rakeDeg, 90, 22);
  }
  EXPECT_GT(thrusts, 0);
}

TEST(BoundaryMechanism, isNormalAtRidgesAndDextralAtTransforms) {
  Random random(1);
  const FaultSlip transform = faultSlipAt(Boundary::Transform, -40, 8, random);
  EXPECT_NEAR(transform.strikeDeg, 320, 28);
  EXPECT_GT(std::abs(transform.rakeDeg), 150);
  int normal = 0;
  for (int i = 0; i < 200; ++i)
    normal += std::abs(faultSlipAt(Boundary::Ridge, 10, 8, random).rakeDeg + 90) < 30 ? 1 : 0;
  EXPECT_NEAR(normal, 130, 21) << "65 in a hundred, three deviations of 6.7";
  EXPECT_LT(faultSlipAt(Boundary::Trench, 0, 150, random).rakeDeg, 0) << "pulled down";
  EXPECT_GT(faultSlipAt(Boundary::Trench, 0, 500, random).rakeDeg, 0) << "pushed up";
}

TEST(RegionalMotion, isZeroFarInTheNorthEastAndTheWholeRateFarInTheSouthWest) {
  // 300 km from the fault the arctangent lacks 15/300 of a radian: 35 / pi / 20 = 0.56 mm/a, and less farther away.
  const QPointF east = regionalVelocity({-114.5, 39.5});
  EXPECT_LT(std::hypot(east.x(), east.y()), 0.6);
  const QPointF west = regionalVelocity({-124, 33});
  EXPECT_NEAR(std::hypot(west.x(), west.y()), 35, 0.6);
  EXPECT_LT(west.x(), 0) << "to the north-west";
  EXPECT_GT(west.y(), 0);
}

TEST(RegionalMotion, isHalfTheRateOnTheFault) {
  const QPointF middle = regionalVelocity({-121.55, 36.8}); // halfway between two of its points
  EXPECT_NEAR(std::hypot(middle.x(), middle.y()), 17.5, 0.5);
}

TEST(RegionalMotion, hasLinesThatCanBeRead) {
  for (const QByteArray& text : {regionalFaultLine(), regionalNetworkLine()}) {
    XOVPolygon line;
    QString error;
    EXPECT_TRUE(line.scanFromNXYString(QString::fromLatin1(text), &error)) << error.toStdString();
    EXPECT_GT(line.pointCount(), 4);
  }
}

TEST(RegionalMotion, hasATableOfNinetyPlacesWithinItsNetwork) {
  XOVPolygon network;
  ASSERT_TRUE(network.scanFromNXYString(QString::fromLatin1(regionalNetworkLine())));
  int rows = 0;
  for (const QByteArray& line : regionalVelocityTable().trimmed().split('\n').mid(1)) {
    const QByteArrayList fields = line.split(' ');
    ASSERT_EQ(fields.size(), 4);
    EXPECT_TRUE(network.pointInPolygonXY(fields[0].toFloat(), fields[1].toFloat())) << line.toStdString();
    ++rows;
  }
  EXPECT_EQ(rows, 90);
}

} // namespace
} // namespace xov::synthetic
