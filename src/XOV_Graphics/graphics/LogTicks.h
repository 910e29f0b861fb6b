#pragma once

#include "XOV_Graphics/base/Export.h"

#include <functional>
#include <string>
#include <vector>

namespace xov {

/// A tick of a logarithmic axis that has a label: "200", or "10" with the exponent "-3" above it.
struct XOV_EXPORT LogTick {
  double log10 = 0;     ///< the decimal logarithm of the value that it stands at
  std::string text;     ///< without the exponent
  std::string exponent; ///< empty where the text is the whole number; a minus is U+2212
  bool operator==(const LogTick&) const = default;
};

/// What the ticks of a logarithmic axis follow from.
struct XOV_EXPORT LogTickRequest {
  double lower = 0;                             ///< decimal logarithm of the value at one end
  double upper = 0;                             ///< and at the other
  double length = 0;                            ///< of the axis, in points
  double gap = 0;                               ///< least distance of two labels, in points
  std::function<double(const LogTick&)> extent; ///< of a label along the axis, in points
};

/// The ticks of a logarithmic axis, from the smallest to the largest.
struct XOV_EXPORT LogTicks {
  std::vector<LogTick> major; ///< rising
  std::vector<double> minor;  ///< decimal logarithms, rising
};

/// The ticks between two values, both included, whichever is the larger one: the closest of these at which labels do
/// not touch: each digit of a decade, 1 2 5 of it, decades, and every second, fifth, tenth, ... decade. Where a
/// range is so short that fewer than three of the digits lie on it, ticks stand at multiples of 1, 2 or 5 times a
/// power of ten. Minor ticks are the digits between, or the decades, where they are not closer than two points.
///
/// Labels are plain numbers where all lie from 0.001 to 90,000, else powers of ten. Nothing where a limit or the
/// length is not finite, the limits are equal, or no numbers lie between them.
XOV_EXPORT LogTicks logTicks(const LogTickRequest& request);

/// "10" with an exponent above it, as LogTick::exponent has it.
XOV_EXPORT std::string exponentOf(int power);

} // namespace xov
