#pragma once

#include "XOV_Graphics/views/seismic/PickSource.h"

#include <QLineF>
#include <QPolygonF>

namespace xov {

/// What is drawn of a pick beside its label.
struct MarkedPickShape {
  QLineF line;                 ///< from its lower to its upper end
  std::optional<QLineF> range; ///< the bar of its uncertainty, from early to late
  QPolygonF polarity;          ///< a triangle at the upper end; empty where there is none
};

/// The shape of a pick with that line, of which `pointsPerSecond` lie in a second.
MarkedPickShape shapeOf(const MarkedPick& pick, const QLineF& line, double pointsPerSecond);

/// Draws it in the pick's colour, which stays.
void drawShape(const MarkedPick& pick, const MarkedPickShape& shape);

} // namespace xov
