#include "XOV_Graphics/base/FiniteSum.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kSums = 8;
constexpr std::size_t kTogether = 4096; // values that are asked together whether one of them is a gap

using Doubles = LanesWith<double, kSums>::Vector;

/// The sum of all values; infinity or NaN when one is not finite, as no sum of finite ones leaves double precision.
template <class Vector>
XOV_INLINE double sumOfAllWith(const float* values, std::size_t count) {
  static_assert(kLanes<Float8> == kSums);
  Doubles sums = {};
  std::size_t i = 0;
  for (; i + kSums <= count; i += kSums) {
    Float8 next;
    loadVector(values + i, next);
    sums += XOV_CONVERT(Doubles, next);
  }
  double sum = 0;
  for (int lane = 0; lane < kSums; ++lane)
    sum += sums[lane];
  for (; i < count; ++i)
    sum += double(values[i]);
  return sum;
}
XOV_VECTOR_FUNCTION(double, sumOfAll, (const float* values, std::size_t count), (values, count))

} // namespace

void addFinite(std::span<const float> values, FiniteSum& sum) {
  for (; !values.empty(); values = values.subspan(std::min(kTogether, values.size()))) {
    const auto some = values.first(std::min(kTogether, values.size()));
    if (const double all = sumOfAll(some.data(), some.size()); std::isfinite(all)) {
      sum.sum += all;
      sum.count += std::ssize(some);
      continue;
    }
    for (const float value : some) {
      if (!std::isfinite(value)) continue;
      sum.sum += double(value);
      ++sum.count;
    }
  }
}

} // namespace xov
