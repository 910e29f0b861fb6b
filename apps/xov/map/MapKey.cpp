#include "apps/xov/map/MapKey.h"

#include <XOV_Graphics/seismic/Undefined.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr int kMostMagnitudes = 7;
constexpr float kLeastMagnitude = -3;
constexpr float kMostMagnitude = 10;
constexpr double kLineWidth = 1.5;
constexpr double kDeepestKm = 700; // of the colours
constexpr double kMarkedDepthsKm[] = {0, 50, 150, 300, 500, 700};

} // namespace

MapLegendSection magnitudeKey(const HypocentreArray& events, const std::function<double(float magnitude)>& radius) {
  MapLegendSection key;
  key.title = QStringLiteral("Magnitude");
  float least = kMostMagnitude;
  float most = kLeastMagnitude;
  for (const std::shared_ptr<Hypocentre>& event : events) {
    if (!isDefined(event->magnitude())) continue;
    least = std::clamp(event->magnitude(), kLeastMagnitude, least);
    most = std::clamp(event->magnitude(), most, kMostMagnitude);
  }
  if (least > most) return key;
  const int last = int(std::lround(most));
  for (int magnitude = std::max(int(std::lround(least)), last - kMostMagnitudes + 1); magnitude <= last; ++magnitude)
    key.items.push_back({QString::number(magnitude), {}, radius(float(magnitude))});
  return key;
}

MapLegendSection depthKey(std::span<const QColor> colors, bool redFirst) {
  MapLegendSection key;
  key.title = QStringLiteral("Depth (km)");
  key.colors.assign(colors.begin(), colors.end());
  if (!redFirst) std::ranges::reverse(key.colors);
  for (const double depthKm : kMarkedDepthsKm)
    key.marks.push_back({std::sqrt(depthKm / kDeepestKm), QString::number(depthKm)});
  return key;
}

MapLegendSection lineKey(const std::vector<std::pair<QString, QColor>>& lines) {
  MapLegendSection key;
  for (const auto& [name, color] : lines)
    key.items.push_back({name, color, 0, kLineWidth});
  return key;
}

} // namespace xov::cli
