#pragma once

#include <QPolygonF>

#include <vector>

namespace xov {

/// On which side of a level lobes lie, y growing upwards.
enum class LobeSide { Above, Below };

/// Adds what lies between a line and a level on one side of it: a polygon for each stretch of the line there, cut
/// exactly where the line crosses the level. A line that goes right gives polygons that wind clockwise on both sides.
void appendLobes(const QPolygonF& line, double level, LobeSide side, std::vector<QPolygonF>& lobes);

} // namespace xov
