#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace xov {

/// A trace on paper keeps what a column of a quarter point shows: 288 columns an inch, with full vertical detail.
inline constexpr double kPaperTraceColumn = 0.25;
/// Its points stand on a grid of this many points.
inline constexpr double kPaperTraceGrid = 0.01;

/// The polylines that stand for a trace on paper, broken at gaps: every point where samples are few, else the first,
/// lowest, highest and last true sample of each column of `columnWidth` view points, in their order; with the two
/// neighbours of an extreme that stands alone, and with points on the way where the curve only rises or falls between
/// these and bends. Coordinates are rounded to 1/100 point. What lies further than `margin` outside `clip` (view
/// points) is cut off there, exactly; a line that leaves and comes back runs along that border in between, so that
/// its fill inside stays the same.
///
/// Works for every description; times that do not grow only cost more. A line of a single point is left out.
std::vector<QPolygonF> reduceTrace(const Trace& trace, double columnWidth, const QRectF& clip, double margin);

/// The polygons that stand for what fills cover of a trace, which is stroked afterwards: each piece between gaps,
/// closed from its last sample to its first however far outside `clip` those lie, or its lobes. Of a dense
/// column of `columnWidth` view points only the first sample counts. Inside `clip` and away from the trace's own
/// columns the polygons wind as the full ones do; outside they follow the border of `clip`.
std::vector<QPolygonF> traceAreas(const Trace& trace, double columnWidth, const QRectF& clip);

} // namespace xov
