#pragma once

#include "XOV_Graphics/graphics/LinearAxis.h"

#include <QRectF>
#include <QString>

#include <vector>

namespace xov {

/// How much narrower a picture is that has a colour bar at its right side, in points.
inline constexpr double kColorBarRoom = 88;

/// What a colour bar shows.
struct ColorBarRequest {
  QRectF picture;    ///< the frame that the bar stands beside
  float lowest = 0;  ///< the value at the lower end
  float highest = 0; ///< at the upper end
  int fontSize = 14; ///< points
  bool mayScaleLabels = true;
};

/// A colour bar ready to be drawn.
struct ColorBar {
  QRectF bar;
  std::vector<AxisSegment> ticks; ///< at the right edge of the bar, outwards
  std::vector<AxisLabel> labels;  ///< beginning at their points
  std::string suffix;             ///< " x 10^+03" where the labels were divided by a power of ten, else empty
  QPointF title;                  ///< the middle of the text along the labels, read upwards
};

/// Lays out a bar beside a picture, as high as it, with the ticks of a linear axis. Limits that have no ticks leave
/// the bar alone.
ColorBar layoutColorBar(const ColorBarRequest& request);

} // namespace xov
