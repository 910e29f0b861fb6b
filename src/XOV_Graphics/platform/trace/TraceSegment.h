#pragma once

#include "XOV_Graphics/platform/trace/RoundPen.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <algorithm>

namespace xov {

/// A point of a trace inside a strip: pixels right of the strip's left edge, rows downwards from the picture's top.
struct TracePoint {
  double x = 0;
  double y = 0;
};

/// Where the ink of a strip's sub-columns lies: one interval of rows each, empty while low > high.
struct InkRows {
  float* low = nullptr;
  float* high = nullptr;
  /// The sub-columns that may be written, begin <= j < end.
  int begin = 0;
  int end = 0;

  void clear(int from, int to) const {
    std::fill(low + from, low + to, kNothingLow);
    std::fill(high + from, high + to, kNothingHigh);
  }
  void include(int j, float from, float to) const {
    if (from < low[j]) low[j] = from;
    if (to > high[j]) high[j] = to;
  }
};

/// Adds the ink of a segment with round ends, at the middles of the sub-columns.
void addRoundSegment(TracePoint from, TracePoint to, const TraceStrip& strip, const InkRows& ink);

/// Adds the ink of a segment with butt ends. A segment without length has no ink.
void addButtSegment(TracePoint from, TracePoint to, const TraceStrip& strip, const InkRows& ink);

} // namespace xov
