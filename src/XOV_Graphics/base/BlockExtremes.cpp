#include "XOV_Graphics/base/BlockExtremes.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace xov {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
// Samples that are looked at together for gaps, and then again for extremes: they stay in the fastest cache.
constexpr std::int64_t kCached = 4096;
constexpr std::int64_t kWorthWidest = 40;  // samples of a block, from which on the widest vectors take fewer steps
constexpr std::int64_t kShortStretch = 64; // samples that are asked together whether one of them is a gap, at first

/// The extremes of a block are left in this many lanes, and as many blocks are then reduced together.
template <class Vector>
using LanesOf = std::conditional_t<kLanes<Vector> == 4, Float4, Float8>;

/// Two of each in turn, since one of these waits longer for the last than for the samples.
template <class Vector>
XOV_INLINE void extremesOfVectors(const float* samples, std::int64_t count, Vector& low, Vector& high) {
  constexpr int kWidth = kLanes<Vector>;
  Vector next, oddLow, oddHigh;
  loadVector(samples + count - kWidth, low); // the last vector overlaps the one before
  high = oddLow = oddHigh = low;
  std::int64_t i = 0;
  for (; i + 2 * kWidth < count; i += 2 * kWidth) {
    loadVector(samples + i, next);
    keepSmaller(low, next);
    keepGreater(high, next);
    loadVector(samples + i + kWidth, next);
    keepSmaller(oddLow, next);
    keepGreater(oddHigh, next);
  }
  if (i + kWidth < count) {
    loadVector(samples + i, next);
    keepSmaller(low, next);
    keepGreater(high, next);
  }
  keepSmaller(low, oddLow);
  keepGreater(high, oddHigh);
}

/// Of samples that two vectors hold.
template <class Vector>
XOV_INLINE void extremesOfTwo(const float* samples, std::int64_t count, Vector& low, Vector& high) {
  Vector last;
  loadVector(samples, low);
  loadVector(samples + count - kLanes<Vector>, last); // it overlaps the first
  high = low;
  keepSmaller(low, last);
  keepGreater(high, last);
}

template <class Vector>
XOV_INLINE void blockLanes(const float* samples, std::int64_t count, LanesOf<Vector>& low, LanesOf<Vector>& high) {
  if constexpr (kLanes<Vector> == 16) {
    const bool isTwo = count >= kLanes<Vector> && count <= 2 * kLanes<Vector>;
    if (isTwo || count >= kWorthWidest) {
      Float16 lows, highs;
      if (isTwo) {
        extremesOfTwo(samples, count, lows, highs);
      } else {
        extremesOfVectors(samples, count, lows, highs);
      }
      low = XOV_PICK(lows, lows, 0, 1, 2, 3, 4, 5, 6, 7);
      high = XOV_PICK(highs, highs, 0, 1, 2, 3, 4, 5, 6, 7);
      keepSmaller(low, XOV_PICK(lows, lows, 8, 9, 10, 11, 12, 13, 14, 15));
      keepGreater(high, XOV_PICK(highs, highs, 8, 9, 10, 11, 12, 13, 14, 15));
      return;
    }
  }
  if (count >= kLanes<LanesOf<Vector>>) return extremesOfVectors(samples, count, low, high);
  low = LanesOf<Vector>{} + kInfinity;
  high = -low;
  if constexpr (kLanes<Vector> != 4) {
    if (count >= kLanes<Float4>) {
      Float4 lows, highs;
      extremesOfVectors(samples, count, lows, highs);
      low = XOV_PICK(lows, lows, 0, 1, 2, 3, 0, 1, 2, 3);
      high = XOV_PICK(highs, highs, 0, 1, 2, 3, 0, 1, 2, 3);
      return;
    }
  }
  for (std::int64_t i = 0; i < count; ++i) {
    const LanesOf<Vector> sample = LanesOf<Vector>{} + samples[i];
    keepSmaller(low, sample);
    keepGreater(high, sample);
  }
}

/// One number for each of as many blocks as there are lanes.
template <class Keep>
XOV_INLINE void acrossLanes(const Float4* blocks, const Keep& keep, float* result) {
  Float4 pairs[2];
  for (int p = 0; p < 2; ++p) {
    const Float4 &a = blocks[2 * p], &b = blocks[2 * p + 1];
    pairs[p] = XOV_PICK(a, b, 0, 4, 1, 5);
    keep(pairs[p], XOV_PICK(a, b, 2, 6, 3, 7));
  }
  Float4 all = XOV_PICK(pairs[0], pairs[1], 0, 1, 4, 5);
  keep(all, XOV_PICK(pairs[0], pairs[1], 2, 3, 6, 7));
  storeVector(all, result);
}
template <class Keep>
XOV_INLINE void acrossLanes(const Float8* blocks, const Keep& keep, float* result) {
  Float8 pairs[4], fours[2];
  for (int p = 0; p < 4; ++p) {
    const Float8 &a = blocks[2 * p], &b = blocks[2 * p + 1];
    pairs[p] = XOV_PICK(a, b, 0, 8, 1, 9, 4, 12, 5, 13);
    keep(pairs[p], XOV_PICK(a, b, 2, 10, 3, 11, 6, 14, 7, 15));
  }
  for (int f = 0; f < 2; ++f) {
    const Float8 &a = pairs[2 * f], &b = pairs[2 * f + 1];
    fours[f] = XOV_PICK(a, b, 0, 1, 8, 9, 4, 5, 12, 13);
    keep(fours[f], XOV_PICK(a, b, 2, 3, 10, 11, 6, 7, 14, 15));
  }
  Float8 all = XOV_PICK(fours[0], fours[1], 0, 1, 2, 3, 8, 9, 10, 11);
  keep(all, XOV_PICK(fours[0], fours[1], 4, 5, 6, 7, 12, 13, 14, 15));
  storeVector(all, result);
}

template <class Vector>
XOV_INLINE void blockExtremesWith(const float* samples, const std::int32_t* cuts, int blocks, std::int32_t end,
                                  float* lowest, float* highest) {
  using Lanes = LanesOf<Vector>;
  constexpr int kGroup = kLanes<Lanes>;
  const auto smaller = [](Lanes& a, const Lanes& b) XOV_INLINE_LAMBDA { keepSmaller(a, b); };
  const auto greater = [](Lanes& a, const Lanes& b) XOV_INLINE_LAMBDA { keepGreater(a, b); };
  Lanes low[kGroup], high[kGroup];
  for (int k = 0; k < blocks; k += kGroup) {
    const int count = std::min(kGroup, blocks - k);
    for (std::int64_t i = cuts[k] + kCached; i < std::min(cuts[k + count] + kCached, std::int64_t(end));
         i += kCacheLine)
      XOV_PREFETCH(samples + i);
    for (int b = 0; b < count; ++b)
      blockLanes<Vector>(samples + cuts[k + b], cuts[k + b + 1] - cuts[k + b], low[b], high[b]);
    if (count == kGroup) {
      acrossLanes(low, smaller, lowest + k);
      acrossLanes(high, greater, highest + k);
      continue;
    }
    for (int b = count; b < kGroup; ++b) {
      low[b] = low[0];
      high[b] = high[0];
    }
    float lowestOfAll[kGroup], highestOfAll[kGroup];
    acrossLanes(low, smaller, lowestOfAll);
    acrossLanes(high, greater, highestOfAll);
    std::copy_n(lowestOfAll, count, lowest + k);
    std::copy_n(highestOfAll, count, highest + k);
  }
}

template <class Vector>
XOV_INLINE bool areFiniteWith(const float* samples, std::int64_t count) {
  constexpr int kWidth = kLanes<Vector>;
  Vector broken[4] = {}, next;
  std::int64_t i = 0;
  for (; i + 4 * kWidth <= count; i += 4 * kWidth) {
    for (int k = 0; k < 4; ++k) {
      loadVector(samples + i + k * kWidth, next);
      addUnlessFinite(next, broken[k]);
    }
  }
  for (; i + kWidth <= count; i += kWidth) {
    loadVector(samples + i, next);
    addUnlessFinite(next, broken[0]);
  }
  float rest = 0;
  if (i < count && count >= kWidth) { // some of them once more
    loadVector(samples + count - kWidth, next);
    addUnlessFinite(next, broken[1]);
    i = count;
  }
  for (; i < count; ++i)
    addUnlessFinite(samples[i], rest);
  broken[0] += (broken[1] + broken[2]) + broken[3];
  return rest + sumOfLanes(broken[0]) == 0;
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
    if (!areFiniteWith<Vector>(samples + cuts[done], cuts[next] - cuts[done])) return false;
    blockExtremesWith<Vector>(samples, cuts + done, next - done, cuts[blocks], lowest + done, highest + done);
    done = next;
  }
  return true;
}

/// Blocks whose samples are all numbers.
template <class Vector>
XOV_INLINE void findFiniteBlockExtremesWith(const float* samples, const std::int32_t* cuts, int blocks, float* lowest,
                                            float* highest) {
  blockExtremesWith<Vector>(samples, cuts, blocks, cuts[blocks], lowest, highest);
}

} // namespace

XOV_VECTOR_FUNCTION(void, findFiniteBlockExtremes,
                    (const float* samples, const std::int32_t* cuts, int blocks, float* lowest, float* highest),
                    (samples, cuts, blocks, lowest, highest))

XOV_VECTOR_FUNCTION(bool, findBlockExtremes,
                    (const float* samples, const std::int32_t* cuts, int blocks, float* lowest, float* highest),
                    (samples, cuts, blocks, lowest, highest))

XOV_VECTOR_FUNCTION(bool, areFinite, (const float* samples, std::int64_t count), (samples, count))

std::int64_t findFinite(const float* samples, std::int64_t begin, std::int64_t end, bool finite) {
  // Lines without gaps are passed in growing stretches.
  for (std::int64_t stretch = kShortStretch; !finite && stretch < end - begin && areFinite(samples + begin, stretch);
       stretch = std::min(2 * stretch, kCached))
    begin += stretch;
  while (begin < end && std::isfinite(samples[begin]) != finite)
    ++begin;
  return begin;
}

} // namespace xov
