#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/FocalMechanism.h"

#include <QPointF>

#include <optional>
#include <vector>

namespace xov {

/// Points of a polygon, which is closed, or of a line, on a beach ball: x to the east, y to the north, the rim at
/// distance 1.
using BeachBallLine = std::vector<QPointF>;

/// The first motions of P around a source, on the lower half of the focal sphere in equal-area projection: a disc of
/// one polarity with at most two patches of the other one. Nothing of a patch lies outside of the disc.
struct XOV_EXPORT BeachBall {
  bool groundIsCompressional = false; ///< whether first motions are away from the source where there is no patch
  /// What is coloured otherwise than the ground.
  std::vector<BeachBallLine> patches;
};

/// How many points the curves of a ball of that radius in pixels need, so that nothing is off by more than a fiftieth
/// of a pixel; at most 720.
XOV_EXPORT int beachBallPoints(double radiusPx);

/// The ball of a moment tensor of any kind: where r·M·r is positive for rays r from the source, first motions are
/// compressional. `points` are those of a curve that goes all around, rounded up to a multiple of 4. A tensor that is
/// zero or not finite gives an empty dilatational ball.
///
/// The patches are the two ends of a cone about the principal axis whose value has a sign of its own; those of a
/// double couple, whose null axis lies on both, are quadrants.
XOV_EXPORT BeachBall beachBallOf(const MomentTensor& tensor, int points = 180);

/// Where a direction lies, of a plunge of 0 to 90 degrees below the horizontal.
XOV_EXPORT QPointF onBeachBall(double azimuthDeg, double plungeDeg);

/// The direction that lies at a place of a ball: the inverse of onBeachBall(). None outside of the rim.
struct XOV_EXPORT BeachBallDirection {
  double azimuthDeg = 0; ///< clockwise from north, 0 to below 360; 0 in the middle
  double plungeDeg = 0;  ///< below the horizontal, 0 to 90
};
/// The direction that a place of the ball stands for; nothing outside of it.
XOV_EXPORT std::optional<BeachBallDirection> directionOnBeachBall(QPointF place);

/// The line in which a plane through the source cuts the ball, from rim to rim.
XOV_EXPORT BeachBallLine beachBallPlane(double strikeDeg, double dipDeg, int points = 90);

} // namespace xov
