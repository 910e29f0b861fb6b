#pragma once

#include <cmath>

namespace xov {

/// Stands for a time, pick, distance or magnitude that is not set (the undefined value of the SAC format).
inline constexpr float kUndefinedValue = -12345.0F;

/// Stands for a pick label that is not set.
inline constexpr const char* kUndefinedLabel = "-12345";

/// True when `value` is a finite number other than kUndefinedValue.
inline bool isDefined(double value) { return std::isfinite(value) && value != double(kUndefinedValue); }

} // namespace xov
