#include "XOV_Graphics/views/map/MapPoints.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kRadiusOfSize1 = 12;
const QColor kOutline = QColor::fromRgbF(0, 0, 0, 0.5F);

QColor withAlpha(QColor color, float alpha) {
  color.setAlphaF(alpha > 0 ? std::min(alpha, 1.0F) : 0.0F); // also where it is not a number
  return color;
}

} // namespace

SymbolLook mapPointLook(const geoMapPoint& point, std::span<const QColor> colors, bool outlineAll) {
  SymbolLook look;
  look.radius = kRadiusOfSize1 * std::abs(double(point.symbolSize()));
  look.stroke = kOutline;
  const bool hasData = !colors.empty() && point.colorIndex() >= 0;
  if (hasData && std::size_t(point.colorIndex()) < colors.size())
    look.fill = withAlpha(colors[std::size_t(point.colorIndex())], point.alpha());
  look.strokes = (hasData ? 1 : 0) + (outlineAll ? 1 : 0);
  return look;
}

MapPoints::MapPoints(std::span<const std::shared_ptr<geoMapPoint>> points, std::span<const QColor> colors,
                     bool outlineAll, const MapProjection& projection) {
  lons_.reserve(points.size());
  lats_.reserve(points.size());
  looks_.reserve(points.size());
  for (const std::shared_ptr<geoMapPoint>& point : points) {
    if (!point) continue;
    lons_.push_back(projection.symbolLongitude(point->lon()));
    lats_.push_back(point->lat());
    looks_.push_back(mapPointLook(*point, colors, outlineAll));
  }
}

Symbols MapPoints::symbols(const MapProjection& projection) const {
  Symbols symbols = projection.symbols(lons_, lats_);
  symbols.looks = looks_.data();
  return symbols;
}

} // namespace xov
