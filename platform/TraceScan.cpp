#include "platform/TraceScan.h"

#include "platform/TraceVector.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
// Samples that are looked at together for gaps, and then again for extremes: they stay in the fastest cache.
constexpr std::int64_t kCached = 4096;

/// Lowest and highest of a block, still in four lanes.
struct Lanes {
  Float4 low, high;
};

template <class Vector>
XOV_INLINE void extremesOfVectors(const float* samples, std::int64_t count, Lanes& lanes) {
  constexpr int kWidth = kLanes<Vector>;
  Vector low, high, next;
  loadVector(samples + count - kWidth, low); // the last vector overlaps the one before
  high = low;
  for (std::int64_t i = 0; i + kWidth < count; i += kWidth) {
    loadVector(samples + i, next);
    keepSmaller(low, next);
    keepGreater(high, next);
  }
  Float4 parts[2][kWidth / 4];
  std::memcpy(parts[0], &low, sizeof low);
  std::memcpy(parts[1], &high, sizeof high);
  lanes.low = parts[0][0];
  lanes.high = parts[1][0];
  for (int k = 1; k < kWidth / 4; ++k) {
    keepSmaller(lanes.low, parts[0][k]);
    keepGreater(lanes.high, parts[1][k]);
  }
}

template <class Vector>
XOV_INLINE void blockLanes(const float* samples, std::int64_t count, Lanes& lanes) {
  if (count >= 4 * kLanes<Vector>) return extremesOfVectors<Vector>(samples, count, lanes);
  if (kLanes<Vector> >= 8 && count >= 8) return extremesOfVectors<Float8>(samples, count, lanes);
  if (count >= 4) return extremesOfVectors<Float4>(samples, count, lanes);
  lanes.low = Float4{} + kInfinity;
  lanes.high = -lanes.low;
  for (std::int64_t i = 0; i < count; ++i) {
    const Float4 sample = Float4{} + samples[i];
    keepSmaller(lanes.low, sample);
    keepGreater(lanes.high, sample);
  }
}

/// One number for each of four blocks.
template <class Keep>
XOV_INLINE void acrossLanes(const Float4& a, const Float4& b, const Float4& c, const Float4& d, const Keep& keep,
                            float* result) {
  Float4 ab = __builtin_shufflevector(a, b, 0, 4, 1, 5), cd = __builtin_shufflevector(c, d, 0, 4, 1, 5);
  keep(ab, __builtin_shufflevector(a, b, 2, 6, 3, 7));
  keep(cd, __builtin_shufflevector(c, d, 2, 6, 3, 7));
  Float4 all = __builtin_shufflevector(ab, cd, 0, 1, 4, 5);
  keep(all, __builtin_shufflevector(ab, cd, 2, 3, 6, 7));
  storeVector(all, result);
}

template <class Vector>
XOV_INLINE void blockExtremesWith(const float* samples, const std::int32_t* cuts, int blocks, float* lowest,
                                  float* highest) {
  const auto smaller = [](Float4& a, const Float4& b) XOV_INLINE_LAMBDA { keepSmaller(a, b); };
  const auto greater = [](Float4& a, const Float4& b) XOV_INLINE_LAMBDA { keepGreater(a, b); };
  int k = 0;
  for (; k + 4 <= blocks; k += 4) {
    Lanes lanes[4];
    for (int b = 0; b < 4; ++b)
      blockLanes<Vector>(samples + cuts[k + b], cuts[k + b + 1] - cuts[k + b], lanes[b]);
    acrossLanes(lanes[0].low, lanes[1].low, lanes[2].low, lanes[3].low, smaller, lowest + k);
    acrossLanes(lanes[0].high, lanes[1].high, lanes[2].high, lanes[3].high, greater, highest + k);
  }
  for (; k < blocks; ++k) {
    Lanes lanes;
    blockLanes<Vector>(samples + cuts[k], cuts[k + 1] - cuts[k], lanes);
    lowest[k] = std::min(std::min(lanes.low[0], lanes.low[1]), std::min(lanes.low[2], lanes.low[3]));
    highest[k] = std::max(std::max(lanes.high[0], lanes.high[1]), std::max(lanes.high[2], lanes.high[3]));
  }
}

template <class Vector>
XOV_INLINE bool allFiniteWith(const float* samples, std::int64_t count) {
  constexpr int kWidth = kLanes<Vector>;
  Vector broken[4] = {}, next; // x - x is 0 for a number and NaN for everything else, and NaN stays in a sum
  std::int64_t i = 0;
  for (; i + 4 * kWidth <= count; i += 4 * kWidth) {
    for (int k = 0; k < 4; ++k) {
      loadVector(samples + i + k * kWidth, next);
      broken[k] += next - next;
    }
  }
  for (; i + kWidth <= count; i += kWidth) {
    loadVector(samples + i, next);
    broken[0] += next - next;
  }
  float rest = 0;
  if (i < count && count >= kWidth) { // some of them once more
    loadVector(samples + count - kWidth, next);
    broken[1] += next - next;
    i = count;
  }
  for (; i < count; ++i)
    rest += samples[i] - samples[i];
  broken[0] += (broken[1] + broken[2]) + broken[3];
  for (int lane = 0; lane < kWidth; ++lane)
    rest += broken[0][lane];
  return rest == 0;
}

/// Blocks are checked for gaps and scanned in groups whose samples stay in the cache.
template <class Vector>
XOV_INLINE bool findBlockExtremesWith(const float* samples, const std::int32_t* cuts, int blocks, float* lowest,
                                      float* highest) {
  int done = 0;
  while (done < blocks) {
    int next = done + 1;
    while (next < blocks && cuts[next + 1] - cuts[done] <= kCached)
      ++next;
    if (!allFiniteWith<Vector>(samples + cuts[done], cuts[next] - cuts[done])) return false;
    blockExtremesWith<Vector>(samples, cuts + done, next - done, lowest + done, highest + done);
    done = next;
  }
  return true;
}

} // namespace

XOV_VECTOR_FUNCTION(bool, findBlockExtremes,
                    (const float* samples, const std::int32_t* cuts, int blocks, float* lowest, float* highest),
                    (samples, cuts, blocks, lowest, highest))

XOV_VECTOR_FUNCTION(bool, allFinite, (const float* samples, std::int64_t count), (samples, count))

std::int64_t findFinite(const float* samples, std::int64_t begin, std::int64_t end, bool finite) {
  while (begin < end && std::isfinite(samples[begin]) != finite)
    ++begin;
  return begin;
}

} // namespace xov
