#include "XOV_Graphics/views/xy/HistogramBins.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace xov {

namespace {

constexpr std::size_t kBlock = 1024;
constexpr std::size_t kRows = 4;
constexpr std::size_t kMostBinsInRows = 4096; // four rows of which stay in a fast cache

} // namespace

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

// Whether the place of a value alone tells its bin: that of values above the range lies beyond the last bin.
bool HistogramBins::isRegular() const {
  constexpr std::int32_t kExactAsFloat = 1 << 24;
  return width > 0 && std::isfinite(width) && (max - min) / width >= float(count) && count <= kExactAsFloat;
}

void HistogramBins::countInto(std::span<const float> values, std::span<std::int32_t> counts) const {
  std::ranges::fill(counts, 0);
  if (!isRegular()) {
    for (const float value : values) {
      if (const auto bin = indexOf(value)) ++counts[std::size_t(*bin)];
    }
    return;
  }
  // First the bins of a block of values, without a branch, then the counting. Values in a row that share a bin would
  // wait for each other, so they take turns in several rows of counts.
  std::array<std::int32_t, kBlock> bins;
  std::vector<std::int32_t> rows(std::size_t(count) * (std::size_t(count) <= kMostBinsInRows ? kRows : 1));
  const std::size_t stride = rows.size() == std::size_t(count) ? 0 : std::size_t(count);
  const float last = float(count - 1);
  std::int32_t notNumbers = 0;
  for (std::size_t begin = 0; begin < values.size(); begin += kBlock) {
    const std::size_t size = std::min(kBlock, values.size() - begin);
    const float* const block = values.data() + begin;
    for (std::size_t i = 0; i < size; ++i) {
      const float place = (block[i] - min) / width;
      const float low = place > 0 ? place : 0; // NaN, too
      bins[i] = std::int32_t(low < last ? low : last);
      notNumbers += block[i] != block[i] ? 1 : 0;
    }
    for (std::size_t i = 0; i < size; ++i)
      ++rows[std::size_t(bins[i]) + (i % kRows) * stride];
  }
  for (std::size_t i = 0; i < rows.size(); ++i)
    counts[i % std::size_t(count)] += rows[i];
  counts[0] -= notNumbers;
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
