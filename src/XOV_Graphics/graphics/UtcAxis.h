#pragma once

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/LinearAxis.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <vector>

namespace xov {

/// What the layout of an X axis that shows UTC follows from.
struct UtcAxisRequest {
  AxisFrame frame;
  int fontSize = 18; ///< points, see LinearAxisRequest
  bool minorTicks = true;
  QDateTime reference; ///< the moment that the axis counts from
  double lower = 0;    ///< seconds since the reference at the left end
  double upper = 0;    ///< at the right end
  QString title;
  std::function<double(const QString&)> textWidth; ///< in points
};

struct UtcAxisText {
  AxisLabel label;
  AJustify justify = AJustify::Center;
  bool operator==(const UtcAxisText&) const = default;
};

/// A UTC axis ready to be drawn.
struct UtcAxis {
  std::vector<AxisSegment> frame;
  std::vector<AxisSegment> ticks;
  std::vector<UtcAxisText> texts; ///< the labels, then the title, then the dates at both ends
};

/// Lays out the axis along both horizontal edges of the frame, as layoutLinearAxis() does, with the ticks of
/// utcTicks(). Below the labels stand the title, the date of the lower limit at the left end and, where the upper
/// limit lies in another day and there is room, its date at the right end. On an axis so short that the title would
/// touch the date, it stands at the right end.
UtcAxis layoutUtcAxis(const UtcAxisRequest& request);

} // namespace xov
