#include "XOV_Graphics/views/map/MapProjection.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr float kFullCircleDeg = 360;
constexpr float kHalfCircleDeg = 180;
constexpr float kLongestStepDeg = 350;

} // namespace

MapProjection::MapProjection(const QRectF& frame, const PlotLimits& limits)
    : frame_(frame),
      limits_(limits),
      xScale_(frame.width() / double(limits.xmax - limits.xmin)),
      yScale_(frame.height() / double(limits.ymax - limits.ymin)) {}

float MapProjection::symbolLongitude(float lon) const {
  return limits_.xmax > kHalfCircleDeg && lon < 0 ? lon + kFullCircleDeg : lon;
}

float MapProjection::lineLongitude(float lon) const {
  const float eastwards = symbolLongitude(lon);
  return limits_.xmin < 0 && eastwards > kHalfCircleDeg ? eastwards - kFullCircleDeg : eastwards;
}

QPointF MapProjection::place(float lon, float lat) const {
  return {double(lon - limits_.xmin) * xScale_ + frame_.x(), double(lat - limits_.ymin) * yScale_ + frame_.y()};
}

Path MapProjection::line(const XOVPolygon& polygon) const {
  Path path;
  float before = 0;
  for (std::size_t i = 0; i < std::size_t(polygon.pointCount()); ++i) {
    const float lon = lineLongitude(polygon.xp()[i]);
    const QPointF point = place(lon, polygon.yp()[i]);
    if (i > 0 && std::abs(before - lon) <= kLongestStepDeg) {
      path.lineTo(point);
    } else {
      path.moveTo(point);
    }
    before = lon;
  }
  return path;
}

Symbols MapProjection::symbols(std::span<const float> lons, std::span<const float> lats) const {
  Symbols symbols;
  symbols.x = lons.data();
  symbols.y = lats.data();
  symbols.last = std::int64_t(std::min(lons.size(), lats.size()));
  symbols.xOrigin = limits_.xmin;
  symbols.xScale = xScale_;
  symbols.xOffset = frame_.x();
  symbols.yOrigin = limits_.ymin;
  symbols.yScale = yScale_;
  symbols.yOffset = frame_.y();
  return symbols;
}

} // namespace xov
