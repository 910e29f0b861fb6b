#pragma once

#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/graphics/LogTicks.h"

#include <functional>
#include <vector>

namespace xov {

/// What the layout of a logarithmic axis follows from: that of LinearAxisRequest, as far as it has the same names.
struct LogAxisRequest {
  AxisDirection direction = AxisDirection::X;
  AxisFrame frame;
  AxisLine line = AxisLine::AtStart;
  int fontSize = 18; ///< points
  double lower = 0;  ///< decimal logarithm of the value at the left or lower end
  double upper = 1;  ///< and at the right or upper end
  bool minorTicks = true;
  std::function<double(const LogTick&)> textWidth; ///< of a label with its exponent, in points
};

/// A tick label and the lower left corner of its text, in view points.
struct LogAxisLabel {
  LogTick tick;
  double x = 0;
  double y = 0;
  bool operator==(const LogAxisLabel&) const = default;
};

/// A logarithmic axis ready to be drawn.
struct LogAxis {
  std::vector<AxisSegment> frame;
  std::vector<AxisSegment> ticks; ///< the major ones, then the minor ones
  std::vector<LogAxisLabel> labels;
};

/// How large the exponent of a label is, in parts of the label, and how high above its lower edge it stands.
inline constexpr double kExponentSize = 0.7;
inline constexpr double kExponentRise = 0.5;

/// Lays out the axis along both edges of the frame, with the ticks of logTicks() and tick lengths and labels where
/// layoutLinearAxis() has them; labels of an axis at the right end stand right of it.
LogAxis layoutLogAxis(const LogAxisRequest& request);

} // namespace xov
