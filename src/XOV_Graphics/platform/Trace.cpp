#include "XOV_Graphics/platform/Trace.h"

#include "XOV_Graphics/platform/trace/TraceTimeline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

/// a - b in single precision; a difference beyond the range of single precision stays at its end, so that the line
/// keeps running off the picture instead of breaking.
double singleDifference(float a, float b) {
  const float difference = a - b;
  constexpr float kLargest = std::numeric_limits<float>::max();
  return double(std::clamp(difference, -kLargest, kLargest));
}

} // namespace

std::optional<float> Trace::valueAt(std::int64_t i) const {
  float value = samples[i];
  if (i == first && firstValue) value = *firstValue;
  if (!std::isfinite(value)) return std::nullopt;
  if (i == first && firstValue) return value;
  if (clampLow && value < *clampLow) value = *clampLow;
  if (clampHigh && value > *clampHigh) value = *clampHigh;
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

double Trace::xOf(float t) const { return singleDifference(t, tOrigin) * xScale + xOffset; }

double Trace::yOf(float value) const { return singleDifference(value, vOrigin) * yScale + yOffset; }

void Trace::forEachPoint(const std::function<void(QPointF)>& visit) const {
  if (isEmpty()) return;
  const TraceTimeline timeline(*this);
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  for (std::int64_t i = first; i < last; ++i) {
    const bool timed = i >= timeline.first() && i < timeline.last();
    const float t = timed ? timeline.time(i) : std::numeric_limits<float>::quiet_NaN();
    const std::optional<float> value = std::isfinite(t) ? valueAt(i) : std::nullopt;
    visit(value ? QPointF(xOf(t), yOf(*value)) : QPointF(kNan, kNan));
  }
}

std::vector<QPointF> Trace::points() const {
  std::vector<QPointF> result;
  result.reserve(static_cast<std::size_t>(size()));
  forEachPoint([&result](QPointF point) { result.push_back(point); });
  return result;
}

} // namespace xov
