#include "apps/xov/map/MapEvents.h"

#include <XOV_Graphics/seismic/Undefined.h>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace xov::cli {

namespace {

constexpr int kRampLevels = 21; // as many as the other tables have

constexpr DepthColors kTables[] = {
    {"seis", [](geoMapView& view) { view.buildSeisColorTable(); }, true},
    {"nogreen", [](geoMapView& view) { view.buildNoGreenColorTable(); }, false},
    {"polar", [](geoMapView& view) { view.buildPolarColorTable(); }, false},
    {"red", [](geoMapView& view) { view.buildGrayScaleColorsNLevels(kRampLevels); }, true},
};

constexpr double kDeepestKm = 700;
constexpr double kBaseMagnitude = 4;
constexpr double kBaseRadius = 2; // points
constexpr double kGrowth = 1.5;
constexpr double kSmallestRadius = 1;
constexpr double kLargestRadius = 20;
constexpr double kRadiusOfSize1 = 12; // of the view

// What is not known has the size of the base magnitude, and its place in the order.
float drawnMagnitude(const Hypocentre& event) {
  const float magnitude = event.magnitude();
  return isDefined(magnitude) ? magnitude : float(kBaseMagnitude);
}

} // namespace

const DepthColors& depthColorsNamed(const std::string& name) {
  const auto* const found = std::find_if(std::begin(kTables), std::end(kTables),
                                         [&](const DepthColors& table) { return name == table.name; });
  return found == std::end(kTables) ? kTables[0] : *found;
}

std::vector<std::string> depthColorNames() {
  std::vector<std::string> names;
  for (const DepthColors& table : kTables)
    names.emplace_back(table.name);
  return names;
}

int depthColorIndex(float depthKm, std::size_t colors, bool redFirst) {
  if (!isDefined(depthKm) || !std::isfinite(depthKm) || colors == 0) return -1;
  const double share = std::sqrt(std::clamp(double(depthKm) / kDeepestKm, 0.0, 1.0));
  const int last = int(colors) - 1;
  const int fromRed = int(std::lround(share * last));
  return redFirst ? fromRed : last - fromRed;
}

float magnitudeSymbolSize(float magnitude) {
  const double known = isDefined(magnitude) && std::isfinite(magnitude) ? double(magnitude) : kBaseMagnitude;
  const double radius = kBaseRadius * std::pow(kGrowth, known - kBaseMagnitude);
  return float(std::clamp(radius, kSmallestRadius, kLargestRadius) / kRadiusOfSize1);
}

bool hasPlace(const Hypocentre& event) {
  return isDefined(event.values().latitudeDeg) && isDefined(event.values().longitudeDeg);
}

GeoMapPointArray eventPoints(const HypocentreArray& events, const MapRegion& region, std::size_t colors,
                             bool redFirst) {
  HypocentreArray placed;
  std::copy_if(events.begin(), events.end(), std::back_inserter(placed),
               [](const std::shared_ptr<Hypocentre>& event) { return hasPlace(*event); });
  std::stable_sort(placed.begin(), placed.end(),
                   [](const auto& a, const auto& b) { return drawnMagnitude(*a) > drawnMagnitude(*b); });
  GeoMapPointArray points;
  points.reserve(placed.size());
  for (const std::shared_ptr<Hypocentre>& event : placed) {
    const HypocentreValues& values = event->values();
    auto point = std::make_shared<geoMapPoint>();
    point->setLatLonDepth(values.latitudeDeg, region.symbolLongitude(values.longitudeDeg), values.depthKm);
    point->setColorIndex(depthColorIndex(values.depthKm, colors, redFirst));
    point->setSymbolSize(magnitudeSymbolSize(event->magnitude()));
    points.push_back(std::move(point));
  }
  return points;
}

} // namespace xov::cli
