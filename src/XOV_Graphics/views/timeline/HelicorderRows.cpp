#include "XOV_Graphics/views/timeline/HelicorderRows.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

float rowOf(const PieceTimes& times, float rowDuration, std::int64_t i) {
  const float elapsed = times.step * float(i);
  const float t = times.start + elapsed;
  return std::floor(t / rowDuration);
}

// The rows of a piece that runs from one row to another.
PageRows rowsToKeep(double first, double last, const PageRows& inView) {
  if (last - first < kMostRows) return {first, last};
  const double start = std::max(first, std::ceil(inView.first));
  return {start, std::min({last, inView.last, start + kMostRows - 1})};
}

} // namespace

std::vector<HelicorderRow> splitIntoRows(const PieceTimes& times, float rowDuration, const PageRows& inView) {
  std::vector<HelicorderRow> rows;
  if (times.count <= 0 || !std::isfinite(times.start) || !(times.step >= 0) || !(rowDuration > 0)) return rows;
  const auto row = [&](std::int64_t i) { return rowOf(times, rowDuration, i); };
  // Every rounding keeps the order, so rows never decrease with the index.
  const auto firstBeyond = [&](std::int64_t from, auto&& belongsBefore) {
    std::int64_t end = times.count;
    while (from < end) {
      const std::int64_t middle = from + (end - from) / 2;
      if (belongsBefore(middle))
        from = middle + 1;
      else
        end = middle;
    }
    return from;
  };
  const PageRows kept = rowsToKeep(double(row(0)), double(row(times.count - 1)), inView);
  const float lastRow = row(times.count - 1);
  std::int64_t i = 0;
  if (double(row(0)) < kept.first) i = firstBeyond(0, [&](std::int64_t k) { return double(row(k)) < kept.first; });
  while (i < times.count && double(row(i)) <= kept.last) {
    const float here = row(i);
    const float begin = here * rowDuration;
    const std::int64_t end =
        here == lastRow ? times.count : firstBeyond(i, [&](std::int64_t k) { return row(k) == here; });
    if (std::isfinite(begin)) rows.push_back({i, end, begin, begin / rowDuration});
    i = end;
  }
  return rows;
}

std::optional<double> amplitudeScale(float gain, double rowHeight, float maxAmplitude) {
  if (maxAmplitude == 0) return 0;
  const double scale = double(gain) * rowHeight / (2 * double(maxAmplitude));
  return std::isfinite(scale) ? std::optional(scale) : std::nullopt;
}

std::vector<Trace> rowTraces(const HelicorderPage& page, const PieceTimes& times, const float* samples,
                             double pointsPerCount, double reach) {
  std::vector<Trace> traces;
  for (const HelicorderRow& row : splitIntoRows(times, page.rowDuration, page.rowsInView(reach))) {
    Trace trace;
    trace.samples = samples;
    trace.first = row.first;
    trace.last = row.last;
    trace.time = TraceTime::uniform(times.start, times.step);
    trace.tOrigin = row.begin;
    trace.xScale = page.xScale();
    trace.xOffset = page.rect.x();
    trace.yScale = pointsPerCount;
    trace.yOffset = page.zeroLine(double(row.row));
    traces.push_back(trace);
  }
  return traces;
}

} // namespace xov
