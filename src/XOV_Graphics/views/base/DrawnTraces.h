#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QColor>
#include <QRectF>

#include <span>

namespace xov {

/// A trace in its colour.
struct DrawnTrace {
  Trace trace;
  QColor color;
};

/// Strokes traces in the current context, in the order of the first of each colour: those of one colour are one path,
/// whose ink never doubles.
void strokeTraces(std::span<const DrawnTrace> traces, double lineWidth);

/// How much of a box traces cover: the heights of their extremes within each of 16 columns, as shares of the column,
/// added up over columns and traces. Of long records it looks at some samples only, so that it costs the same for
/// all.
double coveredByTraces(const QRectF& box, std::span<const DrawnTrace> traces);

} // namespace xov
