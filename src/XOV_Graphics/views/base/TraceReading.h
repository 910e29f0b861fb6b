#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QPointF>

#include <cstdint>
#include <optional>

namespace xov {

// What a trace that has been drawn shows at a place, in the positions that it was drawn at. Traces whose times run
// backwards or are listed one by one show nothing.

/// The time that an x stands for, in the trace's unit; not finite for a trace without a scale.
double traceTimeAt(const Trace& trace, double x);

/// A sample of a trace as it is held, neither clamped nor replaced.
struct TraceSample {
  std::int64_t index = 0;
  float value = 0;
  double distance = 0; ///< between its height and the point's, in view points
};

/// The sample that stands for a point: the one drawn nearest in time, or where several share a view point, of these
/// the one at the nearest height. None beyond the ends of the trace, and in a gap.
std::optional<TraceSample> sampleUnder(const Trace& trace, QPointF point);

/// How far above or below the point the line runs, within 1.5 points to both sides of it; 0 where it runs through.
/// Nothing where there is no line.
std::optional<double> heightFromTrace(const Trace& trace, QPointF point);

/// The lowest and the highest y of the line between two x.
struct TraceReach {
  double lowest = 0;
  double highest = 0;
};
std::optional<TraceReach> reachBetween(const Trace& trace, double left, double right);

} // namespace xov
