#pragma once

#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QRectF>
#include <QString>

#include <optional>

namespace xov {

/// How many kilometres a degree of longitude is long at a latitude, on the WGS 84 ellipsoid.
double kilometresOfLongitudeDegree(double latitudeDeg);

/// A bar that shows how long so many kilometres are on a map.
struct MapScaleBar {
  double kilometres = 0;
  double length = 0;      ///< view points
  double latitudeDeg = 0; ///< where it is right: the middle of the map
  QString text;           ///< "200 km", on maps where other latitudes differ by more than a tenth "200 km at 45°N"
};

/// The longest of 1, 2 or 5 times a power of ten kilometres that takes at most a quarter of a map's width. None for a
/// map without a shape, or whose middle is a pole.
std::optional<MapScaleBar> mapScaleBar(const QRectF& map, const PlotLimits& limits);

} // namespace xov
