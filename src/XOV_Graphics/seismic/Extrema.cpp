#include "XOV_Graphics/seismic/Extrema.h"

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/base/SampleSource.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

// Independent running extremes, so that the compiler may keep them in one vector register each.
constexpr std::size_t kLanes = 16;

// A comparison with NaN is false, so with the new value on the left a NaN never replaces a running extreme; this is
// also the order of operands of the processor's own minimum and maximum instructions.
float lower(float value, float running) { return value < running ? value : running; }
float higher(float value, float running) { return value > running ? value : running; }

Extrema extremaWithoutNaN(std::span<const float> values) {
  std::array<float, kLanes> low;
  std::array<float, kLanes> high;
  low.fill(kInfinity);
  high.fill(-kInfinity);
  std::size_t i = 0;
  for (; i + kLanes <= values.size(); i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      low[lane] = lower(values[i + lane], low[lane]);
      high[lane] = higher(values[i + lane], high[lane]);
    }
  }
  for (; i < values.size(); ++i) {
    low[0] = lower(values[i], low[0]);
    high[0] = higher(values[i], high[0]);
  }
  return {*std::min_element(low.begin(), low.end()), *std::max_element(high.begin(), high.end())};
}

Extrema extremaWithoutInfinities(std::span<const float> values) {
  Extrema extrema{kInfinity, -kInfinity};
  for (const float value : values) {
    if (!std::isfinite(value)) continue;
    extrema.min = lower(value, extrema.min);
    extrema.max = higher(value, extrema.max);
  }
  return extrema;
}

// The lowest lies above the highest where none is finite.
Extrema extremaOfFinite(std::span<const float> values) {
  const Extrema extrema = extremaWithoutNaN(values);
  const bool areFinite = std::isfinite(extrema.min) && std::isfinite(extrema.max);
  return areFinite ? extrema : extremaWithoutInfinities(values);
}

void include(std::span<const float> values, SampleSource* source, Extrema& extrema) {
  const HeldSamples held(source, values.data(), values.data() + values.size());
  const Extrema own = extremaOfFinite(values);
  extrema.min = lower(own.min, extrema.min);
  extrema.max = higher(own.max, extrema.max);
}

} // namespace

Extrema finiteExtrema(std::span<const float> values) {
  const Extrema extrema = extremaOfFinite(values);
  if (extrema.min > extrema.max) return {};
  return extrema;
}

Extrema finiteExtrema(std::span<const float> values, const SampleIndex* index, SampleSource* source) {
  const auto count = std::int64_t(values.size());
  if (index == nullptr || !index->covers(values.data(), 0, count)) {
    const HeldSamples held(source, values.data(), values.data() + values.size());
    return finiteExtrema(values);
  }
  const SampleIndex::Blocks blocks = index->blocksWithin(values.data(), 0, count);
  Extrema extrema{kInfinity, -kInfinity};
  include(values.first(std::size_t(blocks.begin)), source, extrema);
  for (std::int64_t k = 0; k < blocks.count; ++k) {
    if (std::isfinite(blocks.lowest[k])) {
      extrema.min = lower(blocks.lowest[k], extrema.min);
      extrema.max = higher(blocks.highest[k], extrema.max);
    } else {
      include(values.subspan(std::size_t(blocks.begin + k * SampleIndex::kBlock), std::size_t(SampleIndex::kBlock)),
              source, extrema);
    }
  }
  include(values.subspan(std::size_t(blocks.end())), source, extrema);
  if (extrema.min > extrema.max) return {};
  return extrema;
}

} // namespace xov
