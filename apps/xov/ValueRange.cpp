#include "apps/xov/ValueRange.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov::cli {

namespace {

constexpr float kWidening = 0.05F; // of the value, to both sides
constexpr float kWideningAboutZero = 1;

struct Range {
  float min = std::numeric_limits<float>::infinity();
  float max = -std::numeric_limits<float>::infinity();
};

Range finiteRange(std::span<const float> values) {
  Range range;
  for (const float value : values) {
    if (!std::isfinite(value)) continue;
    range.min = std::min(range.min, value);
    range.max = std::max(range.max, value);
  }
  return range;
}

Range widened(Range range) {
  if (range.min < range.max) return range;
  const float margin = range.min == 0 ? kWideningAboutZero : std::abs(range.min) * kWidening;
  return {range.min - margin, range.max + margin};
}

} // namespace

std::optional<PlotLimits> limitsOfPoints(std::span<const float> x, std::span<const float> y) {
  const Range xRange = finiteRange(x);
  const Range yRange = finiteRange(y);
  if (!(xRange.min <= xRange.max) || !(yRange.min <= yRange.max)) return {};
  const Range xs = widened(xRange);
  const Range ys = widened(yRange);
  return PlotLimits{xs.min, xs.max, ys.min, ys.max};
}

} // namespace xov::cli
