#include "XOV_Graphics/platform/trace/TraceStrips.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr int kWidestStrip = 64;      // columns
constexpr int kLayerBudget = 1 << 17; // intervals of a strip that stay in a fast cache

} // namespace

bool projectTraces(std::span<const Trace> traces, const QTransform& viewToDevice, const QRect& visible,
                   std::vector<TraceProjection>& projections) {
  projections.clear();
  projections.reserve(traces.size());
  for (const Trace& trace : traces) {
    if (trace.isEmpty()) continue;
    projections.emplace_back(trace, viewToDevice, visible.top(), visible.height());
    if (!projections.back().grows()) return false;
    if (projections.back().isEmpty()) projections.pop_back();
  }
  return true;
}

double samplesPerPixel(const std::vector<TraceProjection>& projections) {
  double samples = 0, pixels = 0;
  for (const TraceProjection& projection : projections) {
    samples += double(projection.last() - projection.first());
    pixels += projection.column(projection.last() - 1) - projection.column(projection.first());
  }
  return samples / std::max(pixels, 1.0);
}

int stripColumns(int perColumn, std::size_t traces, double radius) {
  const auto lines = static_cast<int>(std::min<std::size_t>(traces, kLayerBudget));
  const int wished = kLayerBudget / (perColumn * std::max(lines, 1));
  const int narrowest = std::max(kInkColumns, static_cast<int>(2 * radius)); // else most work is done twice
  return std::clamp(wished, narrowest, std::max(narrowest, kWidestStrip)) / kInkColumns * kInkColumns;
}

InkExtent::InkExtent(const std::vector<TraceProjection>& projections, double reach) {
  for (const TraceProjection& projection : projections) {
    left_ = std::min(left_, projection.column(projection.first()) - reach);
    right_ = std::max(right_, projection.column(projection.last() - 1) + reach);
  }
}

void InkExtent::markUsed(TraceStrip& strip) const {
  const auto clamped = [&](double column) {
    return static_cast<int>(std::clamp(column, 0.0, double(strip.columns)));
  };
  strip.firstUsed = clamped(std::floor(left_) - strip.left - 1);
  strip.lastUsed = clamped(std::floor(right_) - strip.left + 2);
}

int InkExtent::beginAt(const QRect& visible, TraceStrip& first) const {
  int end = visible.left();
  bool isFound = false;
  const auto stripOf = [&](double column) {
    const double place = std::clamp(column, double(visible.left()), double(visible.right() + 1)) - visible.left();
    return static_cast<int>(place / first.columns);
  };
  const int from = visible.left() + std::max(stripOf(left_) - 1, 0) * first.columns;
  const int last = std::min(visible.left() + (stripOf(right_) + 1) * first.columns, visible.right());
  for (int at = from; at <= last; at += first.columns) {
    if (!touches(at, std::min(first.columns, visible.right() + 1 - at))) continue;
    if (!std::exchange(isFound, true)) first.left = at;
    end = std::min(at + first.columns, visible.right() + 1);
  }
  return end - first.left;
}

void layStrip(TraceCoverage& coverage, const TraceStrip& strip, const TraceInk& ink, const PixelTarget& target,
              int top) {
  const std::ptrdiff_t pixelsPerLine = target.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  const int firstGroup = strip.firstUsed / kInkColumns * kInkColumns;
  for (int column = firstGroup; column < strip.lastUsed; column += kInkColumns) {
    const RowRange rows = coverage.unite(strip, column);
    uchar* const line = target.bits + (top + rows.first) * target.bytesPerLine;
    const InkedColumns columns{std::max(strip.firstUsed - column, 0), std::min(strip.lastUsed - column, kInkColumns),
                               std::min(strip.columns - column, kInkColumns)};
    ink.lay(coverage.changes(), rows, strip.perColumn, columns,
            reinterpret_cast<std::uint32_t*>(line) + strip.left + column, pixelsPerLine);
  }
}

} // namespace xov
