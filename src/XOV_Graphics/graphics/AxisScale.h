#pragma once

#include "XOV_Graphics/graphics/LinearAxis.h"

#include <cstdint>
#include <optional>

namespace xov {

/// The distance of major ticks: `step` = mantissa · 10^exponent when it was chosen, with mantissa 1, 2 or 5; a given
/// interval has mantissa 0.
struct TickInterval {
  float step = 0;
  int exponent = 0;
  int mantissa = 0;
};

/// The multiples of the step that lie on the axis. Where there are none (count <= 0), `first` is the would-be tick.
struct TickRange {
  float first = 0;
  float last = 0;
  std::int64_t count = 0;
};

/// What the digits of labels are estimated from: the decimal logarithms of the largest tick value and of the step,
/// moved away from zero by about one. A step below zero has no logarithm: NaN.
struct DigitEstimates {
  float value = 0;
  float step = 0;
};

/// The interval of the request, or one that suits the axis length and the font size. `length` is that of the axis,
/// `fontSize` carries the sign that turns ticks of a right Y axis inwards.
TickInterval tickInterval(const LinearAxisRequest& request, float length, float fontSize);

/// None when a limit or the step is not finite, the step is 0, or the ticks are too many to be counted.
std::optional<TickRange> tickRange(float lower, float upper, float step);

DigitEstimates digitEstimates(const TickRange& range, float step);

/// How many secondary ticks fit between major ticks that are `spacing` points apart on an axis of `length` points.
int minorTickCount(AxisDirection direction, float spacing, float length, int mantissa);

} // namespace xov
