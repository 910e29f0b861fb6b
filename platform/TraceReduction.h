#pragma once

#include "platform/Trace.h"

#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace xov {

/// The polylines that stand for a trace on paper, broken at gaps: every point where samples are few, else the first,
/// lowest, highest and last true sample of each column of `columnWidth` view points, in their order. Coordinates are
/// rounded to 1/100 point. What lies further than `margin` outside `clip` (view points) is cut off there, exactly; a
/// line that leaves and comes back runs along that border in between, so that its fill inside stays the same.
///
/// Works for every description; times that do not grow only cost more. A line of a single point is left out.
std::vector<QPolygonF> reduceTrace(const Trace& trace, double columnWidth, const QRectF& clip, double margin);

} // namespace xov
