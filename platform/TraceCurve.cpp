#include "platform/TraceCurve.h"

#include "platform/TraceDisc.h"
#include "platform/TraceScan.h"
#include "platform/TraceVector.h"

#include <algorithm>
#include <limits>

namespace xov {

namespace {

constexpr float kLargest = std::numeric_limits<float>::max();

/// TraceRows for a vector.
template <class Vector>
XOV_INLINE void toRows(const TraceRows& toRow, Vector& value) {
  keepGreater(value, Vector{} + toRow.low);
  keepSmaller(value, Vector{} + toRow.high);
  value -= toRow.valueOrigin;
  keepGreater(value, Vector{} - kLargest);
  keepSmaller(value, Vector{} + kLargest);
  value = (value - toRow.middle) * toRow.scale + toRow.offset;
  keepGreater(value, Vector{} - kFarRow);
  keepSmaller(value, Vector{} + kFarRow);
}

template <class Vector>
XOV_INLINE void convertRowsWith(const float* samples, int count, const TraceRows& toRow, float* rows) {
  int i = 0;
  for (; i + kLanes<Vector> <= count; i += kLanes<Vector>) {
    Vector value;
    loadVector(samples + i, value);
    toRows(toRow, value);
    storeVector(value, rows + i);
  }
  for (; i < count; ++i)
    rows[i] = toRow(samples[i]);
}
XOV_VECTOR_FUNCTION(void, convertRows, (const float* samples, int count, const TraceRows& toRow, float* rows),
                    (samples, count, toRow, rows))

template <class Vector>
XOV_INLINE void orderRowsWith(const TraceRows& toRow, float* low, float* high, int count) {
  int k = 0;
  for (; k + kLanes<Vector> <= count; k += kLanes<Vector>) {
    Vector a, b;
    loadVector(low + k, a);
    loadVector(high + k, b);
    const auto empty = a > b;
    toRows(toRow, a);
    toRows(toRow, b);
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

template <class Vector>
XOV_INLINE void blendEdgesWith(const float* before, const float* after, const float* fraction, int blocks,
                               float* edges) {
  int k = 1;
  for (; k + kLanes<Vector> <= blocks; k += kLanes<Vector>) {
    Vector a, b, part;
    loadVector(before + k, a);
    loadVector(after + k, b);
    loadVector(fraction + k, part);
    a += part * (b - a);
    storeVector(a, edges + k);
  }
  for (; k < blocks; ++k)
    edges[k] = before[k] + fraction[k] * (after[k] - before[k]);
}
XOV_VECTOR_FUNCTION(void, blendEdges,
                    (const float* before, const float* after, const float* fraction, int blocks, float* edges),
                    (before, after, fraction, blocks, edges))

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
  for (int lane = 0; lane < kLanes<Vector>; ++lane) {
    extent += extents[lane];
    share += shares[lane];
  }
  for (; k < blocks; ++k) {
    extent += std::max(high[k] - low[k], 0.0F);
    share += std::max(std::min(high[k], high[k - 1]) - std::max(low[k], low[k - 1]), 0.0F);
  }
  return extent > 0 ? share / extent : 1.0F;
}

} // namespace

bool findRows(const float* samples, int count, const TraceRows& toRow, float* rows) {
  if (!allFinite(samples, count)) return false;
  convertRows(samples, count, toRow, rows);
  return true;
}

XOV_VECTOR_FUNCTION(void, orderRows, (const TraceRows& toRow, float* low, float* high, int count),
                    (toRow, low, high, count))

void findEdgeRows(const float* rows, const std::int32_t* cuts, const float* fraction, int blocks, float* before,
                  float* after, float* edges) {
  for (int k = 1; k < blocks; ++k) {
    before[k] = rows[cuts[k] - 1];
    after[k] = rows[cuts[k]];
  }
  blendEdges(before, after, fraction, blocks, edges);
}

XOV_VECTOR_FUNCTION(void, includeEdgeRows, (const float* edges, int blocks, float* low, float* high),
                    (edges, blocks, low, high))

XOV_VECTOR_FUNCTION(void, findShortBlocks,
                    (const std::int32_t* cuts, const float* before, const float* after, const float* edges,
                     int blocks, float* low, float* high),
                    (cuts, before, after, edges, blocks, low, high))

XOV_VECTOR_FUNCTION(std::int32_t, largestBlock, (const std::int32_t* cuts, int blocks), (cuts, blocks))

XOV_VECTOR_FUNCTION(float, findOverlap, (const float* low, const float* high, int blocks), (low, high, blocks))

} // namespace xov
