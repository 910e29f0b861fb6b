#include "XOV_Graphics/views/base/RecordTraces.h"

#include "XOV_Graphics/seismic/prepare/RecordTexts.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"
#include "XOV_Graphics/views/base/TraceReading.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

/// How well a trace answers to a point: less is better, in the order of the members.
struct Nearness {
  double height = 0;
  double level = 0;

  bool operator<=(const Nearness& other) const {
    return height < other.height || (height == other.height && level <= other.level);
  }
};

std::optional<Nearness> nearnessOf(const RecordTrace& candidate, QPointF point) {
  const auto height = heightFromTrace(candidate.trace, point);
  if (candidate.level) {
    const double level = std::abs(point.y() - *candidate.level);
    if (!std::isfinite(level)) return {};
    return Nearness{height ? std::min(*height, level) : level, level};
  }
  if (!height) return {};
  const auto sample = sampleUnder(candidate.trace, point);
  return Nearness{*height, sample ? sample->distance : 0};
}

// No line runs nearer than that.
double leastHeight(const RecordTrace& candidate, QPointF point) {
  const Trace& trace = candidate.trace;
  const auto held = [&trace](float value) {
    const float raised = trace.clampLow ? std::max(value, *trace.clampLow) : value;
    return trace.clampHigh ? std::min(raised, *trace.clampHigh) : raised;
  };
  double low = trace.yOf(held(candidate.record->smin()));
  double high = trace.yOf(held(candidate.record->smax()));
  if (low > high) std::swap(low, high);
  if (candidate.level) {
    low = std::min(low, *candidate.level);
    high = std::max(high, *candidate.level);
  }
  return std::max({low - point.y(), point.y() - high, 0.0});
}

} // namespace

double RecordTrace::secondsAt(double x) const { return traceTimeAt(trace, x) * secondsPerUnit + zeroSeconds; }

const RecordTrace* traceAt(std::span<const RecordTrace> traces, QPointF point) {
  const RecordTrace* nearest = nullptr;
  Nearness best;
  for (const RecordTrace& candidate : traces) {
    if (!candidate.record || !containsPoint(candidate.rect, point)) continue;
    if (nearest != nullptr && leastHeight(candidate, point) > best.height) continue;
    const auto nearness = nearnessOf(candidate, point);
    if (!nearness || (nearest != nullptr && !(*nearness <= best))) continue;
    nearest = &candidate;
    best = *nearness;
  }
  return nearest;
}

std::vector<std::size_t> recordsInBox(std::span<const RecordTrace> traces, const QRectF& box) {
  const QRectF area = box.normalized();
  std::vector<std::size_t> held;
  for (const RecordTrace& candidate : traces) {
    if (!candidate.record) continue;
    const auto reach = reachBetween(candidate.trace, area.left(), area.right());
    if (!reach) continue;
    const double lowest = candidate.level ? *candidate.level : reach->lowest;
    const double highest = candidate.level ? *candidate.level : reach->highest;
    if (highest >= area.top() && lowest <= area.bottom()) held.push_back(candidate.index);
  }
  std::ranges::sort(held);
  return held;
}

QString nameOfRecord(const SeismogramRecord& record) {
  const QString name = (stationText(record) + QLatin1Char(' ') + record.kcmpnm()).trimmed();
  return name.isEmpty() ? QFileInfo(record.path()).fileName() : name;
}

void addAmplitude(PlotReadout& readout, const RecordTrace& trace, QPointF point, const QString& unit) {
  const auto sample = sampleUnder(trace.trace, point);
  if (!sample) return;
  readout.add(QLatin1String("amplitude"), double(sample->value),
              unit.isEmpty() ? amplitudeUnit({trace.record}) : unit);
}

} // namespace xov
