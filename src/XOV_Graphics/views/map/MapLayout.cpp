#include "XOV_Graphics/views/map/MapLayout.h"

#include <cmath>

namespace xov {

namespace {

double lowerEdge(const QRectF& frame, double height, MapAlign align) {
  if (align == MapAlign::Bottom) return frame.y();
  const double room = frame.height() - height;
  return frame.y() + (align == MapAlign::Top ? room : room * 0.5);
}

struct TickRow {
  float aboveDeg;
  float intervalDeg;
};

// From the widest span down.
constexpr TickRow kTicks[] = {{500, 90}, {200, 45}, {100, 30}, {50, 15}, {10, 10}};

} // namespace

QRectF mapRectangle(const QRectF& frame, const PlotLimits& limits, MapAlign align) {
  const auto radiansPerDegree = float(std::acos(-1.0) / 180);
  const float latitudes = limits.ymax - limits.ymin;
  const float middleDeg = (limits.ymax + limits.ymin) * 0.5F;
  const double longitudes = double(limits.xmax - limits.xmin) * std::cos(double(middleDeg * radiansPerDegree));

  double width = frame.width();
  double height = width / longitudes * double(latitudes);
  if (height > frame.height()) {
    height = frame.height();
    width = height / double(latitudes) * longitudes;
  }
  const QRectF map(frame.x() + (frame.width() - width) * 0.5, lowerEdge(frame, height, align), width, height);
  const bool hasShape = std::isfinite(width) && std::isfinite(height) && width != 0 && height != 0;
  return hasShape ? map : frame;
}

float mapTickInterval(float spanDeg) {
  for (const TickRow& row : kTicks) {
    if (spanDeg > row.aboveDeg) return row.intervalDeg;
  }
  return 0;
}

} // namespace xov
