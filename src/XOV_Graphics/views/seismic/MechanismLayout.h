#pragma once

#include "XOV_Graphics/seismic/FocalMechanism.h"

#include <QPointF>
#include <QRectF>
#include <QStringList>

#include <vector>

namespace xov {

/// Where beach balls stand in a rectangle: as large as they can be, all alike, in rows from the upper left on, with
/// room for a caption below each.
struct BallGrid {
  double radius = 0;
  double cellWidth = 0; ///< that each ball and its caption have to themselves
  std::vector<QPointF> centers;
};

/// For so many balls; captions are `captionHeight` points high.
BallGrid layOutBalls(const QRectF& room, std::size_t count, double captionHeight);

/// What is told of a mechanism beside its ball, one line each: both nodal planes, the principal axes, the shares of a
/// tensor that is no double couple, and scalar moment and moment magnitude where the tensor has a size in N m. Planes
/// that the mechanism has come before those of its tensor. Empty for a mechanism that does not tell how it radiates.
QStringList mechanismLines(const FocalMechanism& mechanism);

} // namespace xov
