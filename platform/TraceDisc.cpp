#include "platform/TraceDisc.h"

#include "platform/TraceVector.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// How much further away from a sub-column's middle than the middle of its neighbour the neighbour's extremes are
// taken to lie, in sub-columns. A smooth curve has them on the far border, half a sub-column further; a little less
// fits turning points. Tips lie anywhere, so that the distance of the middles is right on average; a little more
// makes up for the disc being round.
constexpr double kSmoothDistance = 0.4;
constexpr double kTipDistance = 0.1;

struct Pen {
  const float* heights;
  int reach;
  bool even;
  float middleHeight;
};

/// The ink of one vector of sub-columns.
template <class Vector>
XOV_INLINE void widenVector(const Pen& pen, const float* curveLow, const float* curveHigh, float* low, float* high) {
  Vector lowest = Vector{} + kNothingLow, highest = Vector{} + kNothingHigh, next, other;
  if (!pen.even) {
    loadVector(curveLow, lowest);
    loadVector(curveHigh, highest);
    lowest -= pen.middleHeight;
    highest += pen.middleHeight;
  }
  const int inner = pen.even ? 0 : 1;
  for (int k = 0; k < pen.reach; ++k) {
    loadVector(curveLow - k - inner, next);
    loadVector(curveLow + k + 1, other);
    keepSmaller(next, other);
    next -= pen.heights[k];
    keepSmaller(lowest, next);
    loadVector(curveHigh - k - inner, next);
    loadVector(curveHigh + k + 1, other);
    keepGreater(next, other);
    next += pen.heights[k];
    keepGreater(highest, next);
  }
  storeVector(lowest, low);
  storeVector(highest, high);
}

template <class Vector>
XOV_INLINE void widenCurveWith(const Pen& pen, const float* curveLow, const float* curveHigh, int count, float* low,
                               float* high) {
  constexpr int kWidth = kLanes<Vector>;
  int j = 0;
  for (; j + kWidth <= count; j += kWidth) {
    widenVector<Vector>(pen, curveLow + j, curveHigh + j, low + j, high + j);
  }
  if (j == count) return;
  if (count >= kWidth) { // once more, over the last ones
    j = count - kWidth;
    return widenVector<Vector>(pen, curveLow + j, curveHigh + j, low + j, high + j);
  }
  float rest[2][kWidth]; // the curves are readable beyond the count, the ink is not writable
  widenVector<Vector>(pen, curveLow, curveHigh, rest[0], rest[1]);
  std::copy_n(rest[0], count, low);
  std::copy_n(rest[1], count, high);
}

XOV_VECTOR_FUNCTION(void, widenCurve,
                    (const Pen& pen, const float* curveLow, const float* curveHigh, int count, float* low,
                     float* high),
                    (pen, curveLow, curveHigh, count, low, high))

} // namespace

TraceDisc::TraceDisc(double radius, int perColumn, Curve curve) {
  const double extraDistance = curve == Curve::Smooth ? kSmoothDistance : kTipDistance;
  const double reach = radius * perColumn;
  const int width = std::max(1, static_cast<int>(std::lround(2 * reach)));
  even_ = width % 2 == 0;
  middleHeight_ = static_cast<float>(radius);
  heights_.resize(static_cast<std::size_t>(width / 2));
  for (std::size_t k = 0; k < heights_.size(); ++k) {
    const double distance = double(k) + (even_ ? 0.5 : 1.0) + extraDistance;
    heights_[k] = static_cast<float>(std::sqrt(std::max(reach * reach - distance * distance, 0.0)) / perColumn);
  }
}

void TraceDisc::widen(const float* curveLow, const float* curveHigh, int count, float* low, float* high) const {
  widenCurve({heights_.data(), reach(), even_, middleHeight_}, curveLow, curveHigh, count, low, high);
}

} // namespace xov
