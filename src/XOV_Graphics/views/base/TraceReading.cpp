#include "XOV_Graphics/views/base/TraceReading.h"

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/platform/TraceTimeline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kBesideLine = 1.5; // points
constexpr double kHalfPoint = 0.5;
constexpr std::int64_t kMostSamplesRead = 1 << 16; // at samples, so that a pointer can move over anything

// Samples first <= i < last.
struct SampleSpan {
  std::int64_t first = 0;
  std::int64_t last = 0;
};

class TraceReader {
public:
  explicit TraceReader(const Trace& trace) : trace_(trace), timeline_(trace) {}

  bool isReadable() const {
    const bool hasScales = std::isfinite(trace_.xScale) && trace_.xScale != 0 && std::isfinite(trace_.yScale);
    return !trace_.isEmpty() && trace_.time.rule != TraceTime::Rule::Explicit && hasScales &&
           !timeline_.decreases() && timeline_.last() > timeline_.first();
  }
  std::int64_t first() const { return timeline_.first(); }
  std::int64_t last() const { return timeline_.last(); }
  double x(std::int64_t i) const { return timeline_.since(trace_.tOrigin, i) * trace_.xScale + trace_.xOffset; }

  // The samples drawn between two x, both included.
  SampleSpan between(double left, double right) const {
    double from = (left - trace_.xOffset) / trace_.xScale;
    double to = (right - trace_.xOffset) / trace_.xScale;
    if (from > to) std::swap(from, to);
    return {partition([from](double since) { return since < from; }),
            partition([to](double since) { return since <= to; })};
  }

  std::optional<double> y(std::int64_t i) const {
    if (i < first() || i >= last()) return {};
    const auto value = trace_.valueAt(i);
    return value ? std::optional(trace_.yOf(*value)) : std::nullopt;
  }

private:
  // The first sample whose time since the origin does not belong before.
  template <typename Before>
  std::int64_t partition(Before belongsBefore) const {
    std::int64_t from = first();
    std::int64_t end = last();
    while (from < end) {
      const std::int64_t middle = from + (end - from) / 2;
      if (belongsBefore(timeline_.since(trace_.tOrigin, middle)))
        from = middle + 1;
      else
        end = middle;
    }
    return from;
  }

  const Trace& trace_;
  TraceTimeline timeline_;
};

class ReachSum {
public:
  void add(double y) {
    reach_.lowest = std::min(reach_.lowest, y);
    reach_.highest = std::max(reach_.highest, y);
  }
  std::optional<TraceReach> found() const {
    return reach_.lowest <= reach_.highest ? std::optional(reach_) : std::nullopt;
  }

private:
  TraceReach reach_{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
};

// Where the line between two neighbouring samples crosses an x.
void addCrossing(const TraceReader& reader, std::int64_t before, double x, ReachSum& sum) {
  const auto y0 = reader.y(before);
  const auto y1 = reader.y(before + 1);
  if (!y0 || !y1) return;
  const double x0 = reader.x(before);
  const double x1 = reader.x(before + 1);
  const double share = x1 != x0 ? (x - x0) / (x1 - x0) : 0;
  sum.add(*y0 + std::clamp(share, 0.0, 1.0) * (*y1 - *y0));
}

void addSamples(const Trace& trace, const TraceReader& reader, const SampleSpan& range, ReachSum& sum) {
  const std::int64_t step = std::max<std::int64_t>((range.last - range.first) / kMostSamplesRead, 1);
  const HeldSamples there = trace.held(range.first, range.last);
  for (std::int64_t i = range.first; i < range.last; i += step)
    if (const auto y = reader.y(i)) sum.add(*y);
}

// Extremes of whole blocks as their index knows them, which may be clamped as samples are.
void addBlocks(const Trace& trace, const TraceReader& reader, const SampleIndex::Blocks& blocks, ReachSum& sum) {
  for (std::int64_t k = 0; k < blocks.count; ++k) {
    if (!std::isfinite(blocks.lowest[k]) || !std::isfinite(blocks.highest[k])) {
      const std::int64_t begin = blocks.begin + k * SampleIndex::kBlock;
      addSamples(trace, reader, {begin, begin + SampleIndex::kBlock}, sum);
      continue;
    }
    for (float value : {blocks.lowest[k], blocks.highest[k]}) {
      if (trace.clampLow) value = std::max(value, *trace.clampLow);
      if (trace.clampHigh) value = std::min(value, *trace.clampHigh);
      sum.add(trace.yOf(value));
    }
  }
}

} // namespace

double traceTimeAt(const Trace& trace, double x) {
  return double(trace.tOrigin) + (x - trace.xOffset) / trace.xScale;
}

std::optional<TraceReach> reachBetween(const Trace& trace, double left, double right) {
  const TraceReader reader(trace);
  if (!reader.isReadable() || !std::isfinite(left) || !std::isfinite(right)) return {};
  SampleSpan inside = reader.between(left, right);
  ReachSum sum;
  const bool isForward = trace.xScale > 0;
  if (inside.first > reader.first()) addCrossing(reader, inside.first - 1, isForward ? left : right, sum);
  if (inside.last < reader.last() && inside.last > reader.first())
    addCrossing(reader, inside.last - 1, isForward ? right : left, sum);
  const bool isIndexed = trace.index != nullptr && inside.last - inside.first > SampleIndex::kBlock &&
                         trace.index->covers(trace.samples, inside.first, inside.last);
  if (isIndexed) {
    if (inside.first == trace.first && trace.firstValue) {
      if (const auto y = reader.y(inside.first)) sum.add(*y);
      ++inside.first;
    }
    const SampleIndex::Blocks blocks = trace.index->blocksWithin(trace.samples, inside.first, inside.last);
    if (blocks.count > 0) {
      addSamples(trace, reader, {inside.first, blocks.begin}, sum);
      addBlocks(trace, reader, blocks, sum);
      inside.first = blocks.end();
    }
  }
  addSamples(trace, reader, inside, sum);
  return sum.found();
}

std::optional<double> heightFromTrace(const Trace& trace, QPointF point) {
  const auto reach = reachBetween(trace, point.x() - kBesideLine, point.x() + kBesideLine);
  if (!reach) return {};
  return std::max({reach->lowest - point.y(), point.y() - reach->highest, 0.0});
}

std::optional<TraceSample> sampleUnder(const Trace& trace, QPointF point) {
  const TraceReader reader(trace);
  if (!reader.isReadable() || !std::isfinite(point.x()) || !std::isfinite(point.y())) return {};
  SampleSpan near = reader.between(point.x() - kHalfPoint, point.x() + kHalfPoint);
  if (near.first == near.last) { // between two samples, or beyond the ends
    if (near.first == reader.first() || near.last == reader.last()) return {};
    const double before = std::abs(point.x() - reader.x(near.first - 1));
    const double behind = std::abs(point.x() - reader.x(near.first));
    near = before <= behind ? SampleSpan{near.first - 1, near.first} : SampleSpan{near.first, near.first + 1};
  }
  const HeldSamples there = trace.held(near.first, near.last);
  const std::int64_t step = std::max<std::int64_t>((near.last - near.first) / kMostSamplesRead, 1);
  std::optional<TraceSample> found;
  for (std::int64_t i = near.first; i < near.last; i += step) {
    const auto y = reader.y(i);
    if (!y || !std::isfinite(trace.samples[i])) continue;
    const double distance = std::abs(*y - point.y());
    if (!found || distance < found->distance) found = TraceSample{i, trace.samples[i], distance};
  }
  return found;
}

} // namespace xov
