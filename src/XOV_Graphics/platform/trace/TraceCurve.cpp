#include "XOV_Graphics/platform/trace/TraceCurve.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/trace/RoundPen.h"
#include "XOV_Graphics/platform/trace/TraceScan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kLargest = std::numeric_limits<float>::max();

/// True when no value needs to be held in bounds before it becomes a row: without a clamp, and with an origin so
/// small that no difference from it is too large.
bool isUnbounded(const RowMap& toRow) {
  constexpr float kSmallOrigin = 1e30F;
  return toRow.low <= -kLargest && toRow.high >= kLargest && std::abs(toRow.valueOrigin) <= kSmallOrigin;
}

/// RowMap for a vector.
template <class Vector>
XOV_INLINE void toRows(const RowMap& toRow, bool unbounded, Vector& value) {
  if (!unbounded) {
    keepGreater(value, Vector{} + toRow.low);
    keepSmaller(value, Vector{} + toRow.high);
  }
  value -= toRow.valueOrigin;
  if (!unbounded) {
    keepGreater(value, Vector{} - kLargest);
    keepSmaller(value, Vector{} + kLargest);
  }
  value = (value - toRow.middle) * toRow.scale + toRow.offset;
  keepGreater(value, Vector{} - kFarRow);
  keepSmaller(value, Vector{} + kFarRow);
}

template <class Vector>
XOV_INLINE bool findRowsWith(const float* samples, int count, const RowMap& toRow, float* rows) {
  const bool unbounded = isUnbounded(toRow);
  Vector value, broken = {}; // x - x is 0 for a number and NaN for everything else, and NaN stays in a sum
  float rest = 0;
  int i = 0;
  for (; i + kLanes<Vector> <= count; i += kLanes<Vector>) {
    loadVector(samples + i, value);
    broken += value - value;
    toRows(toRow, unbounded, value);
    storeVector(value, rows + i);
  }
  for (; i < count; ++i) {
    rest += samples[i] - samples[i];
    rows[i] = toRow(samples[i]);
  }
  return rest + sumOfLanes(broken) == 0;
}

template <class Vector>
XOV_INLINE void orderRowsWith(const RowMap& toRow, float* low, float* high, int count) {
  const bool unbounded = isUnbounded(toRow);
  int k = 0;
  for (; k + kLanes<Vector> <= count; k += kLanes<Vector>) {
    Vector a, b;
    loadVector(low + k, a);
    loadVector(high + k, b);
    const auto empty = a > b;
    toRows(toRow, unbounded, a);
    toRows(toRow, unbounded, b);
    Vector lower = a, upper = a;
    keepSmaller(lower, b);
    keepGreater(upper, b);
    lower = empty ? Vector{} + kNothingLow : lower;
    upper = empty ? Vector{} + kNothingHigh : upper;
    storeVector(lower, low + k);
    storeVector(upper, high + k);
  }
  for (; k < count; ++k) {
    const bool empty = low[k] > high[k];
    const float a = toRow(low[k]), b = toRow(high[k]);
    low[k] = empty ? kNothingLow : std::min(a, b);
    high[k] = empty ? kNothingHigh : std::max(a, b);
  }
}

/// Lane i becomes number index[i] of the two vectors of numbers that begin at `numbers`.
template <class Vector>
XOV_INLINE void lookUp(const float* numbers, const WordsOf<Vector>& index, Vector& result) {
#if defined(__GNUC__) && !defined(__clang__)
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
XOV_INLINE void findEdgeRowsWith(const float* rows, const std::int32_t* cuts, const float* fraction, int blocks,
                                 float* before, float* after, float* edges) {
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
      storeVector(a + part * (b - a), edges + k);
      k += kWidth;
      continue;
    }
    before[k] = rows[first];
    after[k] = rows[first + 1];
    edges[k] = before[k] + fraction[k] * (after[k] - before[k]);
    ++k;
  }
}

template <class Vector>
XOV_INLINE void includeEdgeRowsWith(const float* edges, int blocks, float* low, float* high) {
  int k = 1;
  for (; k + kLanes<Vector> < blocks; k += kLanes<Vector>) {
    Vector lowest, highest, edge;
    loadVector(low + k, lowest);
    loadVector(high + k, highest);
    for (int side = 0; side < 2; ++side) {
      loadVector(edges + k + side, edge);
      keepSmaller(lowest, edge);
      keepGreater(highest, edge);
    }
    storeVector(lowest, low + k);
    storeVector(highest, high + k);
  }
  const auto include = [&](int block, float edge) {
    low[block] = std::min(low[block], edge);
    high[block] = std::max(high[block], edge);
  };
  for (; k + 1 < blocks; ++k) {
    include(k, edges[k]);
    include(k, edges[k + 1]);
  }
  if (blocks < 2) return;
  include(0, edges[1]);
  include(blocks - 1, edges[blocks - 1]);
}

template <class Vector>
XOV_INLINE void findShortBlocksWith(const std::int32_t* cuts, const float* before, const float* after,
                                    const float* edges, int blocks, float* low, float* high) {
  using Ints = WordsOf<Vector>;
  int k = 1;
  for (; k + kLanes<Vector> < blocks; k += kLanes<Vector>) {
    Vector edge, nextEdge, first, last;
    Ints from, to;
    loadVector(edges + k, edge);
    loadVector(edges + k + 1, nextEdge);
    loadVector(after + k, first);     // the first sample right of this edge
    loadVector(before + k + 1, last); // the last one left of the next: the same one or the one after
    loadVector(cuts + k, from);
    loadVector(cuts + k + 1, to);
    const auto empty = to <= from;
    first = empty ? edge : first;
    last = empty ? edge : last;
    Vector lowest = edge, highest = edge;
    keepSmaller(lowest, nextEdge);
    keepGreater(highest, nextEdge);
    keepSmaller(lowest, first);
    keepGreater(highest, first);
    keepSmaller(lowest, last);
    keepGreater(highest, last);
    storeVector(lowest, low + k);
    storeVector(highest, high + k);
  }
  for (; k + 1 < blocks; ++k) {
    const bool empty = cuts[k + 1] <= cuts[k];
    const float first = empty ? edges[k] : after[k], last = empty ? edges[k] : before[k + 1];
    low[k] = std::min(std::min(edges[k], edges[k + 1]), std::min(first, last));
    high[k] = std::max(std::max(edges[k], edges[k + 1]), std::max(first, last));
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
  Vector extents = {}, shares = {};
  float extent = 0, share = 0;
  int k = 1;
  for (; k + kLanes<Vector> <= blocks; k += kLanes<Vector>) {
    Vector lower, upper, before;
    loadVector(low + k, lower);
    loadVector(high + k, upper);
    Vector size = upper - lower;
    keepGreater(size, Vector{});
    extents += size;
    loadVector(low + k - 1, before);
    keepGreater(lower, before);
    loadVector(high + k - 1, before);
    keepSmaller(upper, before);
    size = upper - lower;
    keepGreater(size, Vector{});
    shares += size;
  }
  extent += sumOfLanes(extents);
  share += sumOfLanes(shares);
  for (; k < blocks; ++k) {
    extent += std::max(high[k] - low[k], 0.0F);
    share += std::max(std::min(high[k], high[k - 1]) - std::max(low[k], low[k - 1]), 0.0F);
  }
  return extent > 0 ? share / extent : 1.0F;
}

} // namespace

XOV_VECTOR_FUNCTION(bool, findRows, (const float* samples, int count, const RowMap& toRow, float* rows),
                    (samples, count, toRow, rows))

XOV_VECTOR8_FUNCTION(void, orderRows, (const RowMap& toRow, float* low, float* high, int count),
                     (toRow, low, high, count))

XOV_VECTOR_FUNCTION(void, findEdgeRows,
                    (const float* rows, const std::int32_t* cuts, const float* fraction, int blocks, float* before,
                     float* after, float* edges),
                    (rows, cuts, fraction, blocks, before, after, edges))

XOV_VECTOR_FUNCTION(void, includeEdgeRows, (const float* edges, int blocks, float* low, float* high),
                    (edges, blocks, low, high))

XOV_VECTOR8_FUNCTION(void, findShortBlocks,
                     (const std::int32_t* cuts, const float* before, const float* after, const float* edges,
                      int blocks, float* low, float* high),
                     (cuts, before, after, edges, blocks, low, high))

XOV_VECTOR_FUNCTION(std::int32_t, largestBlock, (const std::int32_t* cuts, int blocks), (cuts, blocks))

XOV_VECTOR_FUNCTION(float, findOverlap, (const float* low, const float* high, int blocks), (low, high, blocks))

} // namespace xov
