#include "XOV_Graphics/platform/trace/BlockBorders.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>

namespace xov {

namespace {

// Up to here positions counted from a vector's first one keep a thousandth of a sample in single precision.
constexpr double kLongestSingle = 8192;

/// Splits positions start + k · step, 0 <= k < count, into the whole number above, held between two bounds, and how
/// far the position has come towards it. As many positions are counted from the first of them as the widest vector
/// has lanes: so they round alike at every width.
template <class Vector>
XOV_INLINE void cutEvenlyWith(double start, double step, int count, std::int32_t lowest, std::int32_t highest,
                              std::int32_t* cuts, float* fraction) {
  constexpr int kGroup = kWidestVector, kParts = kGroup / kLanes<Vector>;
  using Words = WordsOf<Vector>;
  Vector steps[kParts];
  for (int i = 0; i < kGroup; ++i)
    steps[i / kLanes<Vector>][i % kLanes<Vector>] = float(i) * float(step);
  const bool isShort = step * kGroup < kLongestSingle;
  int k = 0;
  while (k < count) {
    const double first = start + k * step;
    if (isShort && k + kGroup <= count && first >= lowest - 1 && first + kGroup * step < highest) {
      const auto whole = static_cast<std::int32_t>(first);
      for (const Vector& part : steps) {
        const Vector position = part + float(first - whole);
        const Words before = XOV_CONVERT(Words, position);
        storeVector(before + (whole + 1), cuts + k);
        if (fraction != nullptr) storeVector(position - XOV_CONVERT(Vector, before), fraction + k);
        k += kLanes<Vector>;
      }
      continue;
    }
    const double position = std::clamp(first, double(lowest - 1), double(highest));
    const std::int32_t sample = std::min(static_cast<std::int32_t>(position) + 1, highest);
    cuts[k] = sample;
    if (fraction != nullptr) fraction[k] = static_cast<float>(position - double(sample - 1));
    ++k;
  }
}

/// Lane i becomes number index[i] of the two vectors of numbers that begin at `numbers`.
template <class Vector>
XOV_INLINE void lookUp(const float* numbers, const WordsOf<Vector>& index, Vector& result) {
#if XOV_VECTOR_EXTENSIONS && !defined(__clang__)
  Vector first, second;
  loadVector(numbers, first);
  loadVector(numbers + kLanes<Vector>, second);
  result = __builtin_shuffle(first, second, index);
#else
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    result[lane] = numbers[index[lane]];
#endif
}

template <class Vector>
XOV_INLINE void findBorderRowsWith(const float* rows, const std::int32_t* cuts, const float* fraction, int blocks,
                                   float* before, float* after, float* borders) {
  constexpr int kWidth = kLanes<Vector>;
  const std::int32_t end = cuts[blocks];
  int k = 1;
  while (k < blocks) {
    const std::int32_t first = cuts[k] - 1;
    const bool isNear = kWidth > 4 && k + kWidth <= blocks && cuts[k + kWidth - 1] - first < 2 * kWidth;
    if (isNear && first + 2 * kWidth <= end) {
      WordsOf<Vector> index;
      Vector a, b, part;
      loadVector(cuts + k, index);
      lookUp(rows + first, index - cuts[k], a);
      lookUp(rows + first, index - first, b);
      storeVector(a, before + k);
      storeVector(b, after + k);
      loadVector(fraction + k, part);
      storeVector(a + part * (b - a), borders + k);
      k += kWidth;
      continue;
    }
    before[k] = rows[first];
    after[k] = rows[first + 1];
    borders[k] = before[k] + fraction[k] * (after[k] - before[k]);
    ++k;
  }
}

template <class Vector>
XOV_INLINE void includeBorderRowsWith(const float* borders, int blocks, float* low, float* high) {
  int k = 1;
  for (; k + kLanes<Vector> < blocks; k += kLanes<Vector>) {
    Vector lowest, highest, border;
    loadVector(low + k, lowest);
    loadVector(high + k, highest);
    for (int side = 0; side < 2; ++side) {
      loadVector(borders + k + side, border);
      keepSmaller(lowest, border);
      keepGreater(highest, border);
    }
    storeVector(lowest, low + k);
    storeVector(highest, high + k);
  }
  const auto include = [&](int block, float border) {
    low[block] = std::min(low[block], border);
    high[block] = std::max(high[block], border);
  };
  for (; k + 1 < blocks; ++k) {
    include(k, borders[k]);
    include(k, borders[k + 1]);
  }
  if (blocks < 2) return;
  include(0, borders[1]);
  include(blocks - 1, borders[blocks - 1]);
}

template <class Vector>
XOV_INLINE void findShortBlocksWith(const std::int32_t* cuts, const float* before, const float* after,
                                    const float* borders, int blocks, float* low, float* high) {
  using Ints = WordsOf<Vector>;
  int k = 1;
  for (; k + kLanes<Vector> < blocks; k += kLanes<Vector>) {
    Vector border, nextBorder, first, last;
    Ints from, to;
    loadVector(borders + k, border);
    loadVector(borders + k + 1, nextBorder);
    loadVector(after + k, first);     // the first sample right of this border
    loadVector(before + k + 1, last); // the last one left of the next: the same one or the one after
    loadVector(cuts + k, from);
    loadVector(cuts + k + 1, to);
    const auto empty = to <= from;
    first = XOV_CHOOSE(empty, border, first);
    last = XOV_CHOOSE(empty, border, last);
    Vector lowest = border, highest = border;
    keepSmaller(lowest, nextBorder);
    keepGreater(highest, nextBorder);
    keepSmaller(lowest, first);
    keepGreater(highest, first);
    keepSmaller(lowest, last);
    keepGreater(highest, last);
    storeVector(lowest, low + k);
    storeVector(highest, high + k);
  }
  for (; k + 1 < blocks; ++k) {
    const bool empty = cuts[k + 1] <= cuts[k];
    const float first = empty ? borders[k] : after[k], last = empty ? borders[k] : before[k + 1];
    low[k] = std::min(std::min(borders[k], borders[k + 1]), std::min(first, last));
    high[k] = std::max(std::max(borders[k], borders[k + 1]), std::max(first, last));
  }
}

template <class Vector>
XOV_INLINE std::int32_t largestBlockWith(const std::int32_t* cuts, int blocks) {
  WordsOf<Vector> most = {}, from, to;
  std::int32_t largest = 0;
  int k = 1;
  for (; k + kLanes<Vector> < blocks; k += kLanes<Vector>) {
    loadVector(cuts + k, from);
    loadVector(cuts + k + 1, to);
    keepGreater(most, to - from);
  }
  for (; k + 1 < blocks; ++k)
    largest = std::max(largest, cuts[k + 1] - cuts[k]);
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    largest = std::max(largest, most[lane]);
  return largest;
}

template <class Vector>
XOV_INLINE float findOverlapWith(const float* low, const float* high, int blocks) {
  constexpr int kGroup = kWidestVector, kParts = kGroup / kLanes<Vector>;
  Vector extents[kParts] = {}, shares[kParts] = {};
  int k = 1;
  for (; k + kGroup <= blocks; k += kGroup) {
    for (int part = 0; part < kParts; ++part) {
      const int first = k + part * kLanes<Vector>;
      Vector lower, upper, before;
      loadVector(low + first, lower);
      loadVector(high + first, upper);
      Vector size = upper - lower;
      keepGreater(size, Vector{});
      extents[part] += size;
      loadVector(low + first - 1, before);
      keepGreater(lower, before);
      loadVector(high + first - 1, before);
      keepSmaller(upper, before);
      size = upper - lower;
      keepGreater(size, Vector{});
      shares[part] += size;
    }
  }
  float extent = sumOfLanes(extents), share = sumOfLanes(shares);
  for (; k < blocks; ++k) {
    extent += std::max(high[k] - low[k], 0.0F);
    share += std::max(std::min(high[k], high[k - 1]) - std::max(low[k], low[k - 1]), 0.0F);
  }
  return extent > 0 ? share / extent : 1.0F;
}

} // namespace

XOV_VECTOR_FUNCTION(void, cutEvenly,
                    (double start, double step, int count, std::int32_t lowest, std::int32_t highest,
                     std::int32_t* cuts, float* fraction),
                    (start, step, count, lowest, highest, cuts, fraction))

XOV_VECTOR_FUNCTION(void, findBorderRows,
                    (const float* rows, const std::int32_t* cuts, const float* fraction, int blocks, float* before,
                     float* after, float* borders),
                    (rows, cuts, fraction, blocks, before, after, borders))

XOV_VECTOR_FUNCTION(void, includeBorderRows, (const float* borders, int blocks, float* low, float* high),
                    (borders, blocks, low, high))

XOV_VECTOR8_FUNCTION(void, findShortBlocks,
                     (const std::int32_t* cuts, const float* before, const float* after, const float* borders,
                      int blocks, float* low, float* high),
                     (cuts, before, after, borders, blocks, low, high))

XOV_VECTOR_FUNCTION(std::int32_t, largestBlock, (const std::int32_t* cuts, int blocks), (cuts, blocks))

XOV_VECTOR_FUNCTION(float, findOverlap, (const float* low, const float* high, int blocks), (low, high, blocks))

} // namespace xov
