#pragma once

#include "XOV_Graphics/map/XOVPolygon.h"
#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/Symbols.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QPointF>
#include <QRectF>

namespace xov {

/// From longitude and latitude to view points: degrees are equally long everywhere along each axis.
class MapProjection {
public:
  /// `frame` is where the map is drawn, `limits` what it shows, in degrees.
  MapProjection(const QRectF& frame, const PlotLimits& limits);

  /// Of a symbol or vector: a negative longitude stands for the one 360 degrees further east on a map that reaches
  /// beyond 180 degrees.
  float symbolLongitude(float lon) const;
  /// Of a point of a line: as for a symbol, and then, on a map that begins west of Greenwich, a longitude beyond 180
  /// degrees stands for the one 360 degrees further west.
  float lineLongitude(float lon) const;

  /// The view point of a longitude that has been moved already. Differences from the limits are taken in single
  /// precision, the rest in double.
  QPointF place(float lon, float lat) const;

  /// The line through the points of a polygon, broken where neighbours are more than 350 degrees of longitude apart:
  /// there it goes around the back of the globe. Points that are not finite break it, too.
  Path line(const XOVPolygon& polygon) const;

  /// Symbols at places, longitudes moved already, under this projection. Borrows the places.
  Symbols symbols(std::span<const float> lons, std::span<const float> lats) const;

private:
  QRectF frame_;
  PlotLimits limits_;
  double xScale_; // view points a degree
  double yScale_;
};

} // namespace xov
