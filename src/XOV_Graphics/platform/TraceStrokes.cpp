#include "XOV_Graphics/platform/TraceStrokes.h"

#include "XOV_Graphics/platform/Path.h"

#include <algorithm>
#include <cmath>

namespace xov {

TraceStrokes::TraceStrokes(double lineWidth)
    : lineWidth_(std::isfinite(lineWidth) ? std::max(0.0, lineWidth) : 0.0) {}

void TraceStrokes::begin(const QColor& color) {
  const bool isTold = color.isValid() || strokes_.empty();
  strokes_.push_back({isTold ? color : strokes_.back().color, traces_.size()});
}

void TraceStrokes::addTrace(const Trace& trace) {
  if (!strokes_.empty() && !trace.isEmpty()) traces_.push_back(trace);
}

void TraceStrokes::reserve(std::size_t strokes) {
  strokes_.reserve(strokes);
  traces_.reserve(strokes);
}

void TraceStrokes::clear() {
  strokes_.clear();
  traces_.clear();
}

std::span<const Trace> TraceStrokes::traces(std::size_t stroke) const {
  const std::size_t first = strokes_[stroke].firstTrace;
  const std::size_t last = stroke + 1 < strokes_.size() ? strokes_[stroke + 1].firstTrace : traces_.size();
  return {traces_.data() + first, last - first};
}

Path TraceStrokes::path(std::size_t stroke) const {
  Path path;
  path.setLineWidth(lineWidth_);
  for (const Trace& trace : traces(stroke))
    path.appendTrace(trace);
  return path;
}

} // namespace xov
