#pragma once

#include "XOV_Graphics/platform/trace/InkBits.h"
#include "XOV_Graphics/platform/trace/TraceSegment.h"

#include <cstdint>

namespace xov {

/// A segment with its two ends, which are half a disc each or a butt.
struct TangledSegment {
  TracePoint from, to;
  bool buttFrom = false;
  bool buttTo = false;
};

/// Strokes segments of any direction onto a strip, with one width of line.
class TangledStroke {
public:
  /// `radius` is half the line width, in pixels.
  TangledStroke(double radius, InkBits& bits) : radius_(radius), bits_(bits) {}

  /// Adds the ink of a segment, which may lie anywhere.
  void add(TangledSegment segment);

private:
  void addRound(TracePoint from, TracePoint to, RowRange rows);
  void addDisc(TracePoint middle);
  void addLevel(TracePoint from, TracePoint to);
  void addRectangle(TracePoint from, TracePoint to, double length);
  bool cut(TangledSegment& segment) const;
  bool runsOverFullInk(double left, double right, RowRange rows) const;

  double radius_;
  InkBits& bits_;
};

} // namespace xov
