#include "XOV_Graphics/seismic/array/ArrayOffsets.h"

#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;
constexpr double kFullTurnDeg = 360;
constexpr double kEquatorRadiusKm = 6378.137;
constexpr double kFlattening = 1 / 298.257223563;
constexpr double kEccentricitySquared = kFlattening * (2 - kFlattening);

// The way from one longitude to another, the shorter one around the globe.
double eastward(double fromDeg, double toDeg) { return std::remainder(toDeg - fromDeg, kFullTurnDeg); }

} // namespace

std::vector<StationOffset> stationOffsets(std::span<const StationPlace> places) {
  if (places.empty()) return {};
  double latitude = 0;
  double east = 0; // of the first station
  for (const StationPlace& place : places) {
    latitude += place.latitudeDeg / double(places.size());
    east += eastward(places.front().longitudeDeg, place.longitudeDeg) / double(places.size());
  }
  const double sine = std::sin(latitude * kRadiansPerDegree);
  const double shrunk = 1 - kEccentricitySquared * sine * sine;
  const double primeVerticalKm = kEquatorRadiusKm / std::sqrt(shrunk);
  const double meridianKm = primeVerticalKm * (1 - kEccentricitySquared) / shrunk;
  const double eastKmPerDegree = kRadiansPerDegree * primeVerticalKm * std::cos(latitude * kRadiansPerDegree);
  std::vector<StationOffset> offsets;
  for (const StationPlace& place : places) {
    offsets.push_back({(eastward(places.front().longitudeDeg, place.longitudeDeg) - east) * eastKmPerDegree,
                       (place.latitudeDeg - latitude) * kRadiansPerDegree * meridianKm});
  }
  return offsets;
}

} // namespace xov
