#include "XOV_Graphics/seismic/Geodesy.h"

#include "TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace xov;

namespace {

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

} // namespace

TEST(GreatCircle, alongTheEquatorIsTheDifferenceInLongitude) {
  const GreatCircle east = greatCircle(0, 10, 0, 100);
  EXPECT_NEAR(east.distanceDeg, 90, 1e-12);
  EXPECT_NEAR(east.azimuthDeg, 90, 1e-12);
  EXPECT_NEAR(east.backAzimuthDeg, 270, 1e-12);
}

TEST(GreatCircle, crossesTheDateLineTheShortWay) {
  const GreatCircle across = greatCircle(0, 170, 0, -170);
  EXPECT_NEAR(across.distanceDeg, 20, 1e-12);
  EXPECT_NEAR(across.azimuthDeg, 90, 1e-12);
}

TEST(GreatCircle, toThePoleIsAQuarterTurnNorth) {
  const GreatCircle north = greatCircle(0, 30, 90, 0);
  EXPECT_NEAR(north.distanceDeg, 90, 1e-12);
  EXPECT_NEAR(north.azimuthDeg, 0, 1e-12);
}

TEST(GreatCircle, measuresAlongGeocentricLatitudes) {
  // Geodetic 45° N is geocentric 44.8075768°: tan φ' = (1 - 1/298.257223563)² = 0.993305620.
  const GreatCircle north = greatCircle(0, 0, 45, 0);
  EXPECT_NEAR(north.distanceDeg, 44.8075768, 1e-7);
  EXPECT_NEAR(north.azimuthDeg, 0, 1e-12);
  EXPECT_NEAR(north.backAzimuthDeg, 180, 1e-12);
}

TEST(GreatCircle, startsNorthOfEastTowardsAPlaceOnTheSameNorthernLatitude) {
  // For two points on one latitude, tan(azimuth) = 1 / (sin φ' · tan(Δλ/2)) by Napier's rules.
  const double tangent = 0.993305620; // of the geocentric latitude, see above
  const double sine = tangent / std::sqrt(1 + tangent * tangent);
  const double expected = std::atan(1 / (sine * std::tan(0.5))) * 57.29577951308232;
  const GreatCircle circle = greatCircle(45, 0, 45, 57.29577951308232); // one radian apart
  EXPECT_NEAR(circle.azimuthDeg, expected, 1e-7);
  EXPECT_NEAR(circle.backAzimuthDeg, 360 - expected, 1e-7);
}

TEST(GreatCircle, keepsItsDigitsBetweenNeighbours) {
  // A microdegree on the equator; an arc cosine would see no distance at all.
  EXPECT_NEAR(greatCircle(0, 0, 0, 1e-6).distanceDeg, 1e-6, 1e-15);
}

TEST(GreatCircle, betweenOnePlaceIsZero) {
  const GreatCircle none = greatCircle(12, 34, 12, 34);
  EXPECT_NEAR(none.distanceDeg, 0, 1e-13);
  EXPECT_GE(none.azimuthDeg, 0);
  EXPECT_LT(none.azimuthDeg, 360);
}

TEST(CoordinatesText, namesTheHemispheres) {
  EXPECT_EQ(coordinatesText(38.3, 142.5), text("38.30°N 142.50°E"));
  EXPECT_EQ(coordinatesText(-33.456, -70.648), text("33.46°S 70.65°W"));
}

TEST(CoordinatesText, hasNoSouthernOrWesternZero) {
  EXPECT_EQ(coordinatesText(0, 0), text("0.00°N 0.00°E"));
  EXPECT_EQ(coordinatesText(-0.001, -0.001), text("0.00°N 0.00°E"));
}

TEST(CoordinatesText, foldsLongitudesBeyondTheDateLine) {
  EXPECT_EQ(coordinatesText(10, 190), text("10.00°N 170.00°W"));
  EXPECT_EQ(coordinatesText(10, 360), text("10.00°N 0.00°E"));
  EXPECT_EQ(coordinatesText(10, 180), text("10.00°N 180.00°E"));
}

TEST(CoordinatesText, isEmptyForWhatIsNoPlace) {
  EXPECT_EQ(coordinatesText(-12345, -12345), QString());
  EXPECT_EQ(coordinatesText(90.5, 0), QString());
  EXPECT_EQ(coordinatesText(std::numeric_limits<double>::quiet_NaN(), 0), QString());
  EXPECT_EQ(coordinatesText(0, std::numeric_limits<double>::infinity()), QString());
}
