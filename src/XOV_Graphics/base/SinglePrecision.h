#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

namespace xov {

// Ticks are defined by a sequence of single-precision steps: each operation rounds to float, and what follows uses
// the rounded value. Arithmetic that keeps more digits in between, or fuses a multiply and an add, would move a tick
// or a label by a point, or lose the tick at the end of an axis.
static_assert(FLT_EVAL_METHOD == 0, "axis ticks need arithmetic that rounds to float at every step");

/// The value without its fraction, held inside the range of int; 0 for NaN.
inline int towardZero(float value) {
  constexpr float kFirstAbove = 2147483648.0f;
  if (std::isnan(value)) return 0;
  if (value >= kFirstAbove) return std::numeric_limits<int>::max();
  if (value < -kFirstAbove) return std::numeric_limits<int>::min();
  return int(value);
}

/// a - b rounded to single precision; a difference beyond its range stays at its end, so that a line keeps running
/// off the picture instead of breaking.
inline float singleDifference(float a, float b) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  return std::clamp(a - b, -kLargest, kLargest);
}

/// The decimal logarithm of `value`, rounded to single precision; NaN for negative values.
inline float log10Single(double value) { return float(std::log10(value)); }

/// Ten to the power of `exponent`, rounded to single precision: infinity beyond its range, 0 below it.
inline float powerOfTen(int exponent) {
  if (exponent > std::numeric_limits<float>::max_exponent10) return std::numeric_limits<float>::infinity();
  return float(std::pow(10.0, exponent));
}

} // namespace xov
