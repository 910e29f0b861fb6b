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

// Of length 1, to the outside of the closed line that was placed last.
void BeachBallPatches::findNormals() {
  const std::size_t n = placed_.size();
  normals_.resize(n);
  double area = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const QPointF before = placed_[i > 0 ? i - 1 : n - 1];
    const QPointF behind = placed_[i + 1 < n ? i + 1 : 0];
    const QPointF along = behind - before;
    area += before.x() * placed_[i].y() - before.y() * placed_[i].x();
    const double length = std::sqrt(along.x() * along.x() + along.y() * along.y());
    normals_[i] = length > 0 ? QPointF(along.y(), -along.x()) / length : QPointF();
  }
  if (area >= 0) return;
  for (QPointF& normal : normals_)
    normal = -normal;
}

// A patch whose line lies half of the width of a line further out, in the colour of the lines, under one that lies as
// much further in: the line between them has its middle on the edge of the patch.
void BeachBallPatches::addPatch(double aside, const QColor& color) {
  patches_.begin(color);
  shifted_.resize(placed_.size());
  for (std::size_t i = 0; i < placed_.size(); ++i)
    shifted_[i] = placed_[i] + aside * normals_[i];
  patches_.addContour(shifted_);
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
    placed_.clear();
    for (const QPointF point : patch)
      placed_.push_back(center + radius * point);
    findNormals();
    const double half = std::max(look.nodalWidth / 2, 0.0);
    if (half > 0) addPatch(half, look.lines);
    addPatch(-half, ball.groundIsCompressional ? look.dilatational : look.compressional);
  }
  if (!(look.rimWidth > 0)) return;
  patches_.begin(look.lines);
  addCircle(center, radius + look.rimWidth / 2, false);
  addCircle(center, std::max(radius - look.rimWidth / 2, 0.0), true);
}

} // namespace xov
