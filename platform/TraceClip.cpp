#include "platform/TraceClip.h"

#include <cmath>
#include <cstdint>
#include <utility>

namespace xov {

namespace {

constexpr double kLargestRounded = 0x1p52; // grid steps; every larger number is whole

/// The nearest whole number, halves away from zero; the library's own is several times slower without SSE 4.1.
double nearestWhole(double value) {
  if (!(std::abs(value) < kLargestRounded)) return value;
  return static_cast<double>(static_cast<std::int64_t>(value + std::copysign(0.5, value)));
}

} // namespace

TraceClip::TraceClip(const QRectF& box, double grid, Shape shape)
    : shape_(shape),
      sides_{Side{true, false, box.left()}, Side{true, true, box.right()}, Side{false, false, box.top()},
             Side{false, true, box.bottom()}},
      grid_(grid) {}

bool TraceClip::Side::keeps(QPointF point) const {
  const double value = vertical ? point.x() : point.y();
  return upper ? value <= bound : value >= bound;
}

QPointF TraceClip::Side::crossing(QPointF a, QPointF b) const {
  if (vertical) return {bound, a.y() + (bound - a.x()) / (b.x() - a.x()) * (b.y() - a.y())};
  return {a.x() + (bound - a.y()) / (b.y() - a.y()) * (b.x() - a.x()), bound};
}

bool TraceClip::contains(QPointF point) const {
  return sides_[0].bound <= point.x() && point.x() <= sides_[1].bound && sides_[2].bound <= point.y() &&
         point.y() <= sides_[3].bound;
}

void TraceClip::tellSides() {
  if (!inside_) return;
  for (Side& side : sides_)
    side.before = inside_;
  inside_.reset();
}

// From one point in the box to the next nothing is cut, and no side is asked.
void TraceClip::add(QPointF point) {
  const bool contained = contains(point);
  if (contained && inside_) {
    inside_ = point;
    return keep(point);
  }
  tellSides();
  passOn(0, point);
  if (contained) inside_ = point;
}

void TraceClip::passOn(std::size_t index, QPointF point) {
  if (index == sides_.size()) return keep(point);
  Side& side = sides_[index];
  const bool kept = side.keeps(point);
  if (side.before && side.keeps(*side.before) != kept) passOn(index + 1, side.crossing(*side.before, point));
  side.before = point;
  if (!side.first) side.first = point;
  if (kept) passOn(index + 1, point);
}

void TraceClip::keep(QPointF point) {
  if (grid_ > 0) point = QPointF(nearestWhole(point.x() / grid_) * grid_, nearestWhole(point.y() / grid_) * grid_);
  if (line_.isEmpty() || line_.last() != point) line_ << point;
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
  if (line_.size() > 1) lines_.push_back(line_);
  line_.clear();
}

std::vector<QPolygonF> TraceClip::takeLines() {
  endLine();
  return std::exchange(lines_, {});
}

} // namespace xov
