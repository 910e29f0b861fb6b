#include "XOV_Graphics/seismic/Geodesy.h"

#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
constexpr double kFullTurnDeg = 360.0;

// 1 - e² of the WGS 84 ellipsoid (flattening 1/298.257223563), which is (1 - f)².
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kAxisRatioSquared = (1.0 - kFlattening) * (1.0 - kFlattening);

double geocentricLatitude(double latitudeDeg) {
  const double latitude = latitudeDeg * kRadiansPerDegree;
  // As a quotient of sine and cosine, which holds at the poles too.
  return std::atan2(kAxisRatioSquared * std::sin(latitude), std::cos(latitude));
}

double compassDeg(double radians) {
  const double degrees = radians / kRadiansPerDegree;
  const double wrapped = degrees < 0 ? degrees + kFullTurnDeg : degrees;
  return wrapped < kFullTurnDeg ? wrapped : 0;
}

QString hemisphereText(double degrees, const char* positive, const char* negative) {
  // Rounded first, so that -0.001 does not become a zero degrees south.
  const double hundredths = std::round(degrees * 100.0);
  return QString::number(std::abs(hundredths) / 100.0, 'f', 2) + QChar(0x00B0) +
         QLatin1String(hundredths < 0 ? negative : positive);
}

} // namespace

bool isGeographicPoint(double latitudeDeg, double longitudeDeg) {
  return std::abs(latitudeDeg) <= kFullTurnDeg / 4 && std::abs(longitudeDeg) <= kFullTurnDeg;
}

GreatCircle greatCircle(double eventLatitudeDeg, double eventLongitudeDeg, double stationLatitudeDeg,
                        double stationLongitudeDeg) {
  const double event = geocentricLatitude(eventLatitudeDeg);
  const double station = geocentricLatitude(stationLatitudeDeg);
  const double dLongitude = (stationLongitudeDeg - eventLongitudeDeg) * kRadiansPerDegree;

  const double east = std::cos(station) * std::sin(dLongitude);
  const double north =
      std::cos(event) * std::sin(station) - std::sin(event) * std::cos(station) * std::cos(dLongitude);
  const double towards =
      std::sin(event) * std::sin(station) + std::cos(event) * std::cos(station) * std::cos(dLongitude);
  const double backEast = -std::cos(event) * std::sin(dLongitude);
  const double backNorth =
      std::cos(station) * std::sin(event) - std::sin(station) * std::cos(event) * std::cos(dLongitude);

  // The arc cosine of (5-3) loses half its digits near 0 and 180 degrees; sine and cosine together keep them.
  return {std::atan2(std::hypot(east, north), towards) / kRadiansPerDegree, compassDeg(std::atan2(east, north)),
          compassDeg(std::atan2(backEast, backNorth))};
}

QString coordinatesText(double latitudeDeg, double longitudeDeg) {
  if (!isGeographicPoint(latitudeDeg, longitudeDeg)) return {};
  const double longitude = std::remainder(longitudeDeg, kFullTurnDeg);
  return hemisphereText(latitudeDeg, "N", "S") + QLatin1Char(' ') + hemisphereText(longitude, "E", "W");
}

} // namespace xov
