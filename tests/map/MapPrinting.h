#pragma once

#include "XOV_Graphics/map/XOVPolygon.h"
#include "tests/seismic/TemporaryFiles.h"

#include <ostream>
#include <utility>
#include <vector>

namespace xov::test {

using Points = std::vector<std::pair<float, float>>;

inline Points pointsOf(const XOVPolygon& polygon) {
  Points points;
  for (std::size_t i = 0; i < std::size_t(polygon.pointCount()); ++i)
    points.emplace_back(polygon.xp()[i], polygon.yp()[i]);
  return points;
}

inline XOVPolygon polygonOf(const Points& points) {
  std::vector<float> xp;
  std::vector<float> yp;
  for (const auto& [x, y] : points) {
    xp.push_back(x);
    yp.push_back(y);
  }
  XOVPolygon polygon;
  polygon.setXp(std::move(xp));
  polygon.setYp(std::move(yp));
  polygon.setNpts(int(points.size()));
  return polygon;
}

} // namespace xov::test

/// Lets a failing comparison show a rectangle.
inline void PrintTo(const QRectF& rect, std::ostream* out) {
  *out << '(' << rect.x() << ", " << rect.y() << ", " << rect.width() << ", " << rect.height() << ')';
}
