#pragma once

#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace xov {

/// The pieces of a polyline that lie inside a rectangle, each as a polyline of its own. Where the line crosses the
/// edge it is cut there. A polyline of fewer than two points has no pieces.
std::vector<QPolygonF> clipPolyline(const QPolygonF& line, const QRectF& bounds);

} // namespace xov
