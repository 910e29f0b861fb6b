#include "XOV_Graphics/platform/pixels/LineClip.h"

#include <optional>
#include <utility>

namespace xov {

namespace {

// Narrows the part [t0, t1] of a segment to where `start + t · delta` lies within [low, high].
bool narrow(double start, double delta, double low, double high, double& t0, double& t1) {
  if (delta == 0) return start >= low && start <= high;
  double enter = (low - start) / delta;
  double leave = (high - start) / delta;
  if (enter > leave) std::swap(enter, leave);
  t0 = std::max(t0, enter);
  t1 = std::min(t1, leave);
  return t0 <= t1;
}

// The part of the segment inside the rectangle (Liang and Barsky 1984), as parameters along the segment.
std::optional<std::pair<double, double>> insidePart(QPointF from, QPointF to, const QRectF& bounds) {
  double t0 = 0;
  double t1 = 1;
  const QPointF delta = to - from;
  if (!narrow(from.x(), delta.x(), bounds.left(), bounds.right(), t0, t1)) return std::nullopt;
  if (!narrow(from.y(), delta.y(), bounds.top(), bounds.bottom(), t0, t1)) return std::nullopt;
  return std::pair(t0, t1);
}

} // namespace

std::vector<QPolygonF> clipPolyline(const QPolygonF& line, const QRectF& bounds) {
  std::vector<QPolygonF> pieces;
  bool joined = false;
  for (qsizetype i = 1; i < line.size(); ++i) {
    const QPointF from = line[i - 1];
    const QPointF to = line[i];
    const auto part = insidePart(from, to, bounds);
    if (!part) {
      joined = false;
      continue;
    }
    const auto [enter, leave] = *part;
    const QPointF first = enter > 0 ? from + enter * (to - from) : from;
    const QPointF last = leave < 1 ? from + leave * (to - from) : to;
    if (!joined || enter > 0) pieces.push_back(QPolygonF{first});
    pieces.back() << last;
    joined = leave >= 1;
  }
  return pieces;
}

} // namespace xov
