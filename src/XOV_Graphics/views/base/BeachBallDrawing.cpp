#include "XOV_Graphics/views/base/BeachBallDrawing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

void BeachBallPatches::addCircle(QPointF center, double radius, bool isHole) {
  placed_.clear();
  for (const QPointF point : unitCircle_)
    placed_.push_back(center + radius * point);
  if (isHole) std::ranges::reverse(placed_);
  patches_.addContour(placed_);
}

// A strip along the closed line that was placed last: one edge of it at half of the width to its right, the other
// edge back at its left.
void BeachBallPatches::addOutline(double width, const QColor& color) {
  const std::size_t n = placed_.size();
  strip_.resize(2 * n);
  for (std::size_t i = 0; i < n; ++i) {
    const QPointF along = placed_[(i + 1) % n] - placed_[(i + n - 1) % n];
    const double length = std::hypot(along.x(), along.y());
    const QPointF aside = length > 0 ? QPointF(along.y(), -along.x()) * (width / 2 / length) : QPointF();
    strip_[i] = placed_[i] + aside;
    strip_[2 * n - 1 - i] = placed_[i] - aside;
  }
  patches_.begin(color);
  patches_.addContour(std::span(strip_).first(n));
  patches_.addContour(std::span(strip_).last(n));
}

void BeachBallPatches::add(const BeachBall& ball, QPointF center, double radius, const BeachBallLook& look) {
  if (!(radius > 0) || !std::isfinite(radius) || !std::isfinite(center.x()) || !std::isfinite(center.y())) return;
  const auto points = std::size_t(pointsFor(radius));
  if (unitCircle_.size() != points) {
    unitCircle_.resize(points);
    for (std::size_t i = 0; i < points; ++i) {
      const double angle = 2 * std::numbers::pi * double(i) / double(points);
      unitCircle_[i] = {std::cos(angle), std::sin(angle)};
    }
  }
  patches_.begin(ball.groundIsCompressional ? look.compressional : look.dilatational);
  addCircle(center, radius, false);
  for (const BeachBallLine& patch : ball.patches) {
    patches_.begin(ball.groundIsCompressional ? look.dilatational : look.compressional);
    placed_.clear();
    for (const QPointF point : patch)
      placed_.push_back(center + radius * point);
    patches_.addContour(placed_);
    if (look.nodalWidth > 0) addOutline(look.nodalWidth, look.lines);
  }
  if (!(look.rimWidth > 0)) return;
  patches_.begin(look.lines);
  addCircle(center, radius + look.rimWidth / 2, false);
  addCircle(center, std::max(radius - look.rimWidth / 2, 0.0), true);
}

} // namespace xov
