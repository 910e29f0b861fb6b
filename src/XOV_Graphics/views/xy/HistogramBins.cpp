#include "XOV_Graphics/views/xy/HistogramBins.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

float HistogramBins::widthFor(std::int32_t count, float min, float max) {
  return (max - min) / float(std::int64_t(count) + 1);
}

std::int32_t HistogramBins::countFor(float width, float min, float max) { return towardZero((max - min) / width); }

std::optional<std::int32_t> HistogramBins::indexOf(float value) const {
  if (std::isnan(value)) return std::nullopt;
  if (value < min) return 0;
  if (value > max) return count - 1;
  return std::clamp(towardZero((value - min) / width), 0, count - 1);
}

ValueExtremes valueExtremes(std::span<const float> values) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  ValueExtremes extremes{kInfinity, -kInfinity};
  for (const float value : values) {
    if (value < extremes.min) extremes.min = value;
    if (value > extremes.max) extremes.max = value;
  }
  return extremes;
}

} // namespace xov
