#pragma once

#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QRectF>

namespace xov {

/// Where a map stands in a rectangle that it does not fill in height.
enum class MapAlign : int { Centre = 0, Top = 1, Bottom = 2 };

/// The largest rectangle inside `frame` for a map of these limits, longitudes along x and latitudes along y, on which
/// a degree of longitude is cos(mid-latitude) times as long as a degree of latitude. It is centred from left to
/// right. Reversed limits turn the rectangle around; limits that leave no shape (equal, not finite) give the whole
/// frame.
QRectF mapRectangle(const QRectF& frame, const PlotLimits& limits, MapAlign align);

/// The distance of ticks on both axes of a map that is `spanDeg` degrees of longitude wide: 90 degrees above 500, 45
/// above 200, 30 above 100, 15 above 50, 10 above 10; 0, which leaves it to the axis, for smaller and unknown spans.
float mapTickInterval(float spanDeg);

} // namespace xov
