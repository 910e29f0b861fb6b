#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QPointF>
#include <QString>

#include <optional>

namespace xov {

/// A bar that shows how long a round number of units is.
struct XOV_EXPORT ScaleBar {
  double value = 0;  ///< 1, 2 or 5 times a power of ten
  double length = 0; ///< of the bar, in points
  QString text;      ///< the value with its unit: "500 nm/s"
};

/// The longest bar of at most `most` points where a unit takes `pointsPerUnit`; `unit` may be empty. Nothing where
/// either is not above 0 or not finite, or the value is beyond what a double holds.
XOV_EXPORT std::optional<ScaleBar> scaleBar(double pointsPerUnit, double most, const QString& unit);

/// How long the lines at both ends of a bar are, in points.
inline constexpr double kScaleBarCap = 6;

/// How much room an upright bar takes with its text, to the right and the left together.
double uprightBarWidth(const ScaleBar& bar);

/// Draws a bar from its foot upwards into the current context, dark grey, with the text to its left.
void drawUprightBar(const ScaleBar& bar, QPointF foot);

} // namespace xov
