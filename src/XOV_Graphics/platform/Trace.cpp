#include "XOV_Graphics/platform/Trace.h"

#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/platform/TraceTimeline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kFarthestSum = 0.5; // view points; times that are added up may lie so far from the even ones

} // namespace

void Trace::settleTimes(float firstTime, const TraceTime& even) {
  time = TraceTime::accumulated(firstTime, even.step);
  if (isEmpty() || !std::isfinite(firstTime) || !std::isfinite(even.step) || !std::isfinite(xScale)) return;
  const TraceTimeline sums(*this);
  const bool reachesAll = sums.last() == last; // and has not left single precision on the way
  if (!reachesAll || sums.distanceFrom(even) * std::abs(xScale) > kFarthestSum) time = even;
}

std::optional<float> Trace::valueAt(std::int64_t i) const {
  const HeldSamples there = held(i, i + 1);
  float value = samples[i];
  if (i == first && firstValue) value = *firstValue;
  if (!std::isfinite(value)) return std::nullopt;
  if (i == first && firstValue) return value;
  if (clampLow && value < *clampLow) value = *clampLow;
  if (clampHigh && value > *clampHigh) value = *clampHigh;
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

double Trace::xOf(float t) const { return double(singleDifference(t, tOrigin)) * xScale + xOffset; }

double Trace::yOf(float value) const { return double(singleDifference(value, vOrigin)) * yScale + yOffset; }

void Trace::forEachPoint(const std::function<void(QPointF)>& visit) const {
  if (isEmpty()) return;
  const TraceTimeline timeline(*this);
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  for (std::int64_t i = first; i < last; ++i) {
    const bool timed = i >= timeline.first() && i < timeline.last();
    const double since = timed && std::isfinite(timeline.time(i)) ? timeline.since(tOrigin, i) : kNan;
    const std::optional<float> value = std::isfinite(since) ? valueAt(i) : std::nullopt;
    visit(value ? QPointF(since * xScale + xOffset, yOf(*value)) : QPointF(kNan, kNan));
  }
}

std::vector<QPointF> Trace::points() const {
  std::vector<QPointF> result;
  result.reserve(static_cast<std::size_t>(size()));
  forEachPoint([&result](QPointF point) { result.push_back(point); });
  return result;
}

} // namespace xov
