#include "XOV_Graphics/views/image/ColorBar.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kGap = 14;
constexpr double kWidth = 14;
constexpr float kTickLength = 4;
constexpr int kLabelGap = 7;  // from the bar
constexpr double kTitle = 74; // from the picture

bool isWithinReach(const QRectF& rect) {
  return std::abs(rect.left()) <= kAxisReach && std::abs(rect.right()) <= kAxisReach &&
         std::abs(rect.top()) <= kAxisReach && std::abs(rect.bottom()) <= kAxisReach;
}

} // namespace

// A rectangle's top() is its lower edge: y grows upwards.
ColorBar layoutColorBar(const ColorBarRequest& request) {
  const QRectF& picture = request.picture;
  ColorBar bar;
  bar.bar = {picture.right() + kGap, picture.top(), kWidth, picture.height()};
  bar.title = {picture.right() + kTitle, picture.center().y()};
  if (!isWithinReach(bar.bar)) return bar;

  const double right = bar.bar.right();
  LinearAxisRequest axis;
  axis.direction = AxisDirection::Y;
  axis.frame = axisFrame(float(bar.bar.left()), float(right), float(bar.bar.bottom()), float(bar.bar.top()));
  axis.fontSize = request.fontSize;
  axis.lower = request.lowest;
  axis.upper = request.highest;
  axis.mayScaleLabels = request.mayScaleLabels;
  axis.minorTicks = false;
  LinearAxis laidOut = layoutLinearAxis(axis);
  for (const AxisSegment& tick : laidOut.ticks) {
    if (tick.x1 == float(axis.frame.left))
      bar.ticks.push_back({float(right), tick.y1, float(right) + kTickLength, tick.y1});
  }
  for (AxisLabel& label : laidOut.labels)
    bar.labels.push_back({std::move(label.text), towardZero(float(right)) + kLabelGap, label.y});
  bar.suffix = std::move(laidOut.suffix);
  return bar;
}

} // namespace xov
