#include "XOV_Graphics/platform/trace/RowMap.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

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
  Vector value, broken = {};
  float rest = 0;
  int i = 0;
  for (; i + kLanes<Vector> <= count; i += kLanes<Vector>) {
    loadVector(samples + i, value);
    addUnlessFinite(value, broken);
    toRows(toRow, unbounded, value);
    storeVector(value, rows + i);
  }
  for (; i < count; ++i) {
    addUnlessFinite(samples[i], rest);
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
    lower = XOV_CHOOSE(empty, Vector{} + kNothingLow, lower);
    upper = XOV_CHOOSE(empty, Vector{} + kNothingHigh, upper);
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

} // namespace

float RowMap::operator()(float value) const {
  // Comparisons with the bound first take the bound when the value is NaN: the result is always a number.
  const float held = std::min(high, std::max(low, value));
  const float difference = std::min(kLargest, std::max(-kLargest, held - valueOrigin)) - middle;
  return std::min(kFarRow, std::max(-kFarRow, difference * scale + offset));
}

XOV_VECTOR_FUNCTION(bool, findRows, (const float* samples, int count, const RowMap& toRow, float* rows),
                    (samples, count, toRow, rows))

XOV_VECTOR8_FUNCTION(void, orderRows, (const RowMap& toRow, float* low, float* high, int count),
                     (toRow, low, high, count))

} // namespace xov
