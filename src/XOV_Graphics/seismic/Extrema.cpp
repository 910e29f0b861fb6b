#include "XOV_Graphics/seismic/Extrema.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/base/SampleSource.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr std::int64_t kBlocksTogether = 1024; // of an index

// A comparison with NaN is false, so with the new value on the left a NaN never replaces a running extreme; this is
// also the order of operands of the processor's own minimum and maximum instructions.
float lower(float value, float running) { return value < running ? value : running; }
float higher(float value, float running) { return value > running ? value : running; }

Extrema extremaOneByOne(std::span<const float> values) {
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
  constexpr std::size_t kTogether = 4096; // stay in the fastest cache while they are looked at twice
  Extrema extrema{kInfinity, -kInfinity};
  for (; !values.empty(); values = values.subspan(std::min(kTogether, values.size()))) {
    const auto some = values.first(std::min(kTogether, values.size()));
    const std::int32_t cuts[] = {0, std::int32_t(some.size())};
    Extrema own;
    if (!findBlockExtremes(some.data(), cuts, 1, &own.min, &own.max)) own = extremaOneByOne(some);
    extrema.min = lower(own.min, extrema.min);
    extrema.max = higher(own.max, extrema.max);
  }
  return extrema;
}

void include(std::span<const float> values, SampleSource* source, Extrema& extrema) {
  const HeldSamples held(source, values.data(), values.data() + values.size());
  const Extrema own = extremaOfFinite(values);
  extrema.min = lower(own.min, extrema.min);
  extrema.max = higher(own.max, extrema.max);
}

// Of the blocks from..end-1 of an index; false where one of them holds a gap.
bool includeWhole(const SampleIndex::Blocks& blocks, std::int64_t from, std::int64_t end, Extrema& extrema) {
  const std::int32_t cuts[] = {0, std::int32_t(end - from)};
  Extrema lows, highs;
  if (!findBlockExtremes(blocks.lowest + from, cuts, 1, &lows.min, &lows.max) ||
      !findBlockExtremes(blocks.highest + from, cuts, 1, &highs.min, &highs.max))
    return false;
  extrema.min = lower(lows.min, extrema.min);
  extrema.max = higher(highs.max, extrema.max);
  return true;
}

// The samples of those that hold a gap are read.
void includeOneByOne(std::span<const float> values, SampleSource* source, const SampleIndex::Blocks& blocks,
                     std::int64_t from, std::int64_t end, Extrema& extrema) {
  for (std::int64_t k = from; k < end; ++k) {
    if (std::isfinite(blocks.lowest[k])) {
      extrema.min = lower(blocks.lowest[k], extrema.min);
      extrema.max = higher(blocks.highest[k], extrema.max);
    } else {
      include(values.subspan(std::size_t(blocks.begin + k * SampleIndex::kBlock), std::size_t(SampleIndex::kBlock)),
              source, extrema);
    }
  }
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
  Extrema inner{kInfinity, -kInfinity};
  for (std::int64_t k = 0; k < blocks.count; k += kBlocksTogether) {
    const std::int64_t end = std::min(k + kBlocksTogether, blocks.count);
    if (!includeWhole(blocks, k, end, inner)) includeOneByOne(values, source, blocks, k, end, inner);
  }
  // What lies at the ends is not read where all of its block is nearer to the middle than what was found.
  const auto canBeExtreme = [&](std::int64_t i) {
    const auto [lowest, highest] = index->extremesAround(values.data(), i);
    return !(lowest > inner.min && highest < inner.max);
  };
  Extrema extrema{kInfinity, -kInfinity};
  if (blocks.begin > 0 && canBeExtreme(0)) include(values.first(std::size_t(blocks.begin)), source, extrema);
  extrema.min = lower(inner.min, extrema.min);
  extrema.max = higher(inner.max, extrema.max);
  if (blocks.end() < count && canBeExtreme(count - 1))
    include(values.subspan(std::size_t(blocks.end())), source, extrema);
  if (extrema.min > extrema.max) return {};
  return extrema;
}

} // namespace xov
