#include "apps/xov/map/MapRegion.h"

#include <QString>

#include <cmath>
#include <numbers>

namespace xov::cli {

namespace {

constexpr double kTurn = 360;
constexpr double kHalfTurn = 180;
constexpr double kWesternmost = -180;
constexpr double kEasternmost = 360;
constexpr double kPole = 90;

std::string expected(double a, double b, const char* what) {
  return QStringLiteral("found %1 %2, expected %3").arg(a).arg(b).arg(QLatin1String(what)).toStdString();
}

} // namespace

std::optional<MapRegion> MapRegion::fromEdges(const std::array<double, 4>& edges, std::string& problem) {
  auto [west, east, south, north] = edges;
  if (!(-kPole <= south && south < north && north <= kPole)) {
    problem = expected(south, north, "a southern edge below the northern one, from -90 to 90");
    return {};
  }
  if (east < west) east += kTurn;
  if (west < kWesternmost) {
    west += kTurn;
    east += kTurn;
  }
  if (east > kEasternmost && west - kTurn >= kWesternmost) {
    west -= kTurn;
    east -= kTurn;
  }
  if (!(west < east && east - west <= kTurn && west >= kWesternmost && east <= kEasternmost)) {
    problem = expected(edges[0], edges[1], "at most 360 degrees from west to east, within -180 to 360");
    return {};
  }
  return MapRegion({float(west), float(east), float(south), float(north)});
}

bool MapRegion::liesWithin(const PlotLimits& outer) const {
  return outer.xmin <= limits_.xmin && limits_.xmax <= outer.xmax && outer.ymin <= limits_.ymin &&
         limits_.ymax <= outer.ymax;
}

double MapRegion::widthOverHeight() const {
  const double middle = (double(limits_.ymin) + double(limits_.ymax)) / 2;
  const double wide = (double(limits_.xmax) - double(limits_.xmin)) * std::cos(middle * std::numbers::pi / kHalfTurn);
  return wide / (double(limits_.ymax) - double(limits_.ymin));
}

float MapRegion::nearestTurn(float lon) const {
  const double middle = (double(limits_.xmin) + double(limits_.xmax)) / 2;
  const double away = double(lon) - middle;
  // Of two turns equally near, both edges of a map of the globe, the given one.
  if (std::abs(away) <= kHalfTurn) return lon;
  return float(double(lon) - kTurn * std::floor((away + kHalfTurn) / kTurn));
}

// The view adds a turn to what is negative on a map that reaches beyond 180 degrees: here it gets one less.
float MapRegion::symbolLongitude(float lon) const {
  const float shown = nearestTurn(lon);
  return double(limits_.xmax) > kHalfTurn && shown < 0 ? shown - float(kTurn) : shown;
}

// It then takes a turn from what is above 180 degrees on a map that begins in the west.
float MapRegion::lineLongitude(float lon) const {
  const float given = symbolLongitude(lon);
  return limits_.xmin < 0 && double(given) > kHalfTurn ? given + float(kTurn) : given;
}

} // namespace xov::cli
