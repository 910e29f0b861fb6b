#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// What is written at the circles of constant slowness of an FK image.
enum class CircleLabelUnit : std::uint8_t {
  KilometresPerSecond, ///< "8 km/s", the apparent velocity
  SecondsPerKilometre, ///< "0.125 s/km"
  SecondsPerDegree,    ///< "13.9 s/°", on a sphere of 6371 km radius
};

/// The text of a circle; empty for a velocity that is not above 0 and finite.
QString circleText(double velocityKmPerS, CircleLabelUnit unit);

/// A circle that is to be labelled, and the size of its text, in view points.
struct LabelledCircle {
  double radius = 0;
  QSizeF text;
};

/// A label and the circle that it belongs to.
struct PlacedCircleLabel {
  std::size_t circle = 0;
  QRectF box;
};

/// Where labels stand: their middles on the diagonal that points away from `peak`, from the largest circle to the
/// smallest one, without those that would cover the one before or leave the frame.
std::vector<PlacedCircleLabel> placeCircleLabels(std::span<const LabelledCircle> circles, QPointF center,
                                                 QPointF peak, const QRectF& frame);

} // namespace xov
