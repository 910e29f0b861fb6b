#include "XOV_Graphics/platform/trace/TraceClip.h"

#include <QtGlobal>

#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr double kLargestRounded = 0x1p52; // every larger number is whole

/// As std::round, which is a slow call on processors of the baseline.
double nearestWhole(double value) { return std::abs(value) < kLargestRounded ? double(qRound64(value)) : value; }

} // namespace

TraceClip::TraceClip(const QRectF& box, double grid, Shape shape)
    : shape_(shape),
      sides_{Side{true, false, box.left()}, Side{true, true, box.right()}, Side{false, false, box.top()},
             Side{false, true, box.bottom()}},
      grid_(grid > 0 ? grid : 1),
      steps_(1 / grid_),
      rounds_(grid > 0) {}

bool TraceClip::Side::keeps(QPointF point) const {
  const double value = vertical ? point.x() : point.y();
  return upper ? value <= bound : value >= bound;
}

QPointF TraceClip::Side::crossing(QPointF a, QPointF b) const {
  if (vertical) return {bound, a.y() + (bound - a.x()) / (b.x() - a.x()) * (b.y() - a.y())};
  return {a.x() + (bound - a.y()) / (b.y() - a.y()) * (b.x() - a.x()), bound};
}

bool TraceClip::contains(double x, double y) const {
  return sides_[0].bound <= x && x <= sides_[1].bound && sides_[2].bound <= y && y <= sides_[3].bound;
}

void TraceClip::tellSides() {
  if (!inside_) return;
  for (Side& side : sides_)
    side.before = QPointF(beforeX_, beforeY_);
  inside_ = false;
}

// From one point in the box to the next nothing is cut, and no side is asked.
void TraceClip::add(double x, double y) {
  const bool contained = contains(x, y);
  if (contained && inside_) {
    keep(x, y);
  } else {
    tellSides();
    passOn(0, QPointF(x, y));
    inside_ = contained;
  }
  beforeX_ = x;
  beforeY_ = y;
}

void TraceClip::passOn(std::size_t index, QPointF point) {
  if (index == sides_.size()) return keep(point.x(), point.y());
  Side& side = sides_[index];
  const bool kept = side.keeps(point);
  if (side.before && side.keeps(*side.before) != kept) passOn(index + 1, side.crossing(*side.before, point));
  side.before = point;
  if (!side.first) side.first = point;
  if (kept) passOn(index + 1, point);
}

void TraceClip::keep(double x, double y) {
  const Kept point = rounds_ ? Kept{nearestWhole(x * steps_), nearestWhole(y * steps_)} : Kept{x, y};
  if (line_.empty() || line_.back().x != point.x || line_.back().y != point.y) line_.push_back(point);
}

// The way from the last point back to the first; each side hands its crossing on before the next one closes.
void TraceClip::close() {
  for (std::size_t i = 0; i < sides_.size(); ++i) {
    const Side& side = sides_[i];
    if (!side.before || side.keeps(*side.before) == side.keeps(*side.first)) continue;
    passOn(i + 1, side.crossing(*side.before, *side.first));
  }
}

void TraceClip::endLine() {
  tellSides();
  if (shape_ == Shape::Polygon) close();
  for (Side& side : sides_) {
    side.before.reset();
    side.first.reset();
  }
  if (line_.size() > 1) {
    QPolygonF& line = lines_.emplace_back();
    line.reserve(qsizetype(line_.size()));
    for (const Kept& point : line_)
      line.append(QPointF(point.x * grid_, point.y * grid_));
  }
  line_.clear();
}

std::vector<QPolygonF> TraceClip::takeLines() {
  endLine();
  return std::exchange(lines_, {});
}

} // namespace xov
