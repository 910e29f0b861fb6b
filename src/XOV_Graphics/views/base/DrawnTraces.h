#pragma once

#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/platform/TraceStrokes.h"

#include <QColor>
#include <QRectF>

#include <span>

namespace xov {

/// A trace in its colour.
struct DrawnTrace {
  Trace trace;
  QColor color;
};

/// Adds strokes of traces, in the order of the first of each colour: those of one colour are one stroke, whose ink
/// never doubles.
void addStrokes(TraceStrokes& strokes, std::span<const DrawnTrace> traces);
/// Draws these strokes in the current context, whose colour becomes that of the last one.
void drawStrokes(const TraceStrokes& strokes);
/// Does both with strokes of these traces alone.
void strokeTraces(std::span<const DrawnTrace> traces, double lineWidth);

/// How much of a box traces cover: the heights of their extremes within each of 16 columns, as shares of the column,
/// added up over columns and traces. Of long records it looks at some samples only, so that it costs the same for
/// all.
double coveredByTraces(const QRectF& box, std::span<const DrawnTrace> traces);

} // namespace xov
