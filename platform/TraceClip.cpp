#include "platform/TraceClip.h"

#include <cmath>
#include <utility>

namespace xov {

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
  if (grid_ > 0) point = QPointF(std::round(point.x() / grid_) * grid_, std::round(point.y() / grid_) * grid_);
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
