#include "XOV_Graphics/views/seismic/MotionPanels.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kLeft = 60; // of each panel
constexpr double kRight = 20;
constexpr double kTop = 42;
constexpr double kAxis = 44;
constexpr double kText = 24;

constexpr float kLargestPlain = 20000;
constexpr float kSmallestPlain = 0.02F;
constexpr double kMostIntervals = 5;

} // namespace

MotionPanels layOutMotionPanels(const QRectF& bounds) {
  const double across = (bounds.width() - 3 * kLeft - kRight) / 3;
  const double upright = bounds.height() - kTop - kAxis - kText;
  const double side = std::max(std::min(across, upright), 0.0);
  const double slack = std::max(bounds.width() - 3 * (kLeft + side) - kRight, 0.0) / 2;
  const double bottom = bounds.y() + kText + kAxis + std::max(upright - side, 0.0) / 2;
  MotionPanels panels;
  double left = bounds.x() + slack + kLeft;
  for (QRectF& panel : panels.panel) {
    panel = {left, bottom, side, side};
    left += side + kLeft;
  }
  panels.frame = panels.panel.front().united(panels.panel.back());
  return panels;
}

MotionScale motionScale(float range) {
  MotionScale scale;
  if (!(range > 0) || !std::isfinite(range)) return scale;
  if (range > kLargestPlain || range < kSmallestPlain) {
    scale.exponent = int(std::floor(std::log10(double(range) / 2)));
    scale.factor = float(std::pow(10.0, -scale.exponent));
    if (!std::isfinite(scale.factor) || !(scale.factor > 0)) return {};
  }
  const double least = double(range) * double(scale.factor) / kMostIntervals;
  const double unit = std::pow(10, std::floor(std::log10(least)));
  for (const double step : {10.0, 5.0, 2.0, 1.0}) {
    if (step * unit >= least) scale.interval = float(step * unit);
  }
  return scale;
}

} // namespace xov
