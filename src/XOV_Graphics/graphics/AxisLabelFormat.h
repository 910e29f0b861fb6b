#pragma once

#include "XOV_Graphics/graphics/AxisScale.h"

namespace xov {

/// How the labels of an axis are written.
struct AxisLabelFormat {
  int width = 0; ///< in characters, blanks in front; negative for blanks behind
  int decimals = 0;
  float factor = 1;    ///< labels show the value times this
  bool scaled = false; ///< `factor` is a power of ten that the axis label has to show
};

/// The format for the labels of an axis of `length` points, with a font size as for tickInterval().
AxisLabelFormat axisLabelFormat(const LinearAxisRequest& request, float length, float fontSize,
                                const TickInterval& interval, const TickRange& range);

} // namespace xov
