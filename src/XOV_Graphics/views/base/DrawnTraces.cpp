#include "XOV_Graphics/views/base/DrawnTraces.h"

#include "XOV_Graphics/platform/GraphicsContext.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace xov {

namespace {

constexpr int kColumns = 16;
constexpr std::int64_t kMostLooks = 256; // at samples of a column

// The samples between two x, by the even times that other rules keep to within half a point.
std::pair<std::int64_t, std::int64_t> samplesBetween(const Trace& trace, double left, double right) {
  const std::int64_t origin = trace.time.rule == TraceTime::Rule::Even          ? trace.time.origin
                              : trace.time.rule == TraceTime::Rule::Accumulated ? trace.first
                                                                                : 0;
  const auto indexAt = [&](double x) {
    const double t = (x - trace.xOffset) / trace.xScale + double(trace.tOrigin);
    const double index = std::ceil((t - double(trace.time.start)) / double(trace.time.step)) + double(origin);
    // What is no number is no sample.
    if (!(index > double(trace.first))) return trace.first;
    return index < double(trace.last) ? std::int64_t(index) : trace.last;
  };
  return {indexAt(left), indexAt(right)};
}

double coveredOfColumn(const QRectF& column, const Trace& trace) {
  auto [first, last] = samplesBetween(trace, column.x(), column.x() + column.width());
  // With the samples at both sides, where lines from and to them are drawn.
  if (first > trace.first && first < trace.last) --first;
  if (last > trace.first && last < trace.last) ++last;
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  const std::int64_t step = std::max<std::int64_t>((last - first) / kMostLooks, 1);
  for (std::int64_t i = first; i < last; i += step) {
    const auto value = trace.valueAt(i);
    if (!value) continue;
    low = std::min(low, trace.yOf(*value));
    high = std::max(high, trace.yOf(*value));
  }
  if (!(low <= high)) return 0;
  const double line = 1; // a flat trace covers its own width
  const double inside =
      std::min(high + line / 2, column.y() + column.height()) - std::max(low - line / 2, column.y());
  return std::max(inside, 0.0) / column.height();
}

} // namespace

void addStrokes(TraceStrokes& strokes, std::span<const DrawnTrace> traces) {
  std::vector<QColor> colors;
  for (const DrawnTrace& drawn : traces) {
    if (std::ranges::find(colors, drawn.color) == colors.end()) colors.push_back(drawn.color);
  }
  for (const QColor& color : colors) {
    strokes.begin(color);
    for (const DrawnTrace& drawn : traces) {
      if (drawn.color == color) strokes.addTrace(drawn.trace);
    }
  }
}

void drawStrokes(const TraceStrokes& strokes) {
  if (strokes.isEmpty()) return;
  GraphicsContext& context = GraphicsContext::current();
  context.strokeTraces(strokes);
  context.setColor(strokes.color(strokes.count() - 1));
}

void strokeTraces(std::span<const DrawnTrace> traces, double lineWidth) {
  TraceStrokes strokes(lineWidth);
  addStrokes(strokes, traces);
  drawStrokes(strokes);
}

double coveredByTraces(const QRectF& box, std::span<const DrawnTrace> traces) {
  double covered = 0;
  for (const DrawnTrace& drawn : traces) {
    if (drawn.trace.isEmpty() || drawn.trace.time.rule == TraceTime::Rule::Explicit) continue;
    for (int i = 0; i < kColumns; ++i) {
      const double width = box.width() / kColumns;
      covered += coveredOfColumn({box.x() + i * width, box.y(), width, box.height()}, drawn.trace);
    }
  }
  return covered;
}

} // namespace xov
