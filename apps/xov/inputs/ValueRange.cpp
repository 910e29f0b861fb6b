#include "apps/xov/inputs/ValueRange.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov::cli {

namespace {

constexpr float kWidening = 0.05F; // of the value, to both sides
constexpr float kWideningAboutZero = 1;

// Of no values at all, the lower end is above the upper one.
ValueRange finiteRange(std::span<const float> values) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  ValueRange range{kInfinity, -kInfinity};
  for (const float value : values) {
    if (!std::isfinite(value)) continue;
    range.min = std::min(range.min, value);
    range.max = std::max(range.max, value);
  }
  return range;
}

ValueRange widenedBy(ValueRange range, double share, bool logarithmic) {
  if (logarithmic) {
    const LogRange logs = logRange(range.min, range.max);
    const double margin = share * (logs.upper - logs.lower);
    return {nearestFinite(std::pow(10.0, logs.lower - margin)), nearestFinite(std::pow(10.0, logs.upper + margin))};
  }
  const double margin = share * (double(range.max) - double(range.min));
  return {nearestFinite(range.min - margin), nearestFinite(range.max + margin)};
}

} // namespace

float nearestFinite(double value) {
  constexpr double kLargest = double(std::numeric_limits<float>::max());
  return float(std::clamp(value, -kLargest, kLargest));
}

ValueRange nonEmptyRange(float min, float max) {
  if (min < max) return {min, max};
  const float margin = min == 0 ? kWideningAboutZero : std::abs(min) * kWidening;
  return {min - margin, max + margin};
}

std::optional<PlotLimits> limitsOfPoints(std::span<const float> x, std::span<const float> y) {
  const ValueRange xRange = finiteRange(x);
  const ValueRange yRange = finiteRange(y);
  if (!(xRange.min <= xRange.max) || !(yRange.min <= yRange.max)) return {};
  const ValueRange xs = nonEmptyRange(xRange.min, xRange.max);
  const ValueRange ys = nonEmptyRange(yRange.min, yRange.max);
  return PlotLimits{xs.min, xs.max, ys.min, ys.max};
}

PlotLimits widenedBy(const PlotLimits& limits, double share, LogAxes axes) {
  const ValueRange x = widenedBy(ValueRange{limits.xmin, limits.xmax}, share, axes.x);
  const ValueRange y = widenedBy(ValueRange{limits.ymin, limits.ymax}, share, axes.y);
  return {x.min, x.max, y.min, y.max};
}

} // namespace xov::cli
