#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

namespace xov {

/// A disc that belongs to a point of a map, all in view points.
struct PlacedDisc {
  QPointF anchor;
  QPointF center; ///< the anchor, unless it was moved aside
  double radius = 0;

  bool isMoved() const { return center != anchor; }
};

/// More discs than this stay where they are: there would be no room for them, and it would take long.
inline constexpr std::size_t kMostMovedDiscs = 400;

/// Moves discs that overlap earlier ones aside, to the nearest place inside of `frame` where they do not, or where
/// that is not found stay over each other. Those that lie outside of the frame stay. The largest ones should stand
/// first.
void moveApart(std::vector<PlacedDisc>& discs, const QRectF& frame);

} // namespace xov
