#pragma once

#include "XOV_Graphics/platform/Patches.h"
#include "XOV_Graphics/seismic/mechanism/BeachBall.h"

namespace xov {

/// The colours of a beach ball, and the widths of its rim and of the line around its patches in view points; lines of
/// no width are not drawn.
struct BeachBallLook {
  QColor compressional;
  QColor dilatational;
  QColor lines;
  double rimWidth = 0.75;
  double nodalWidth = 0.4;
};

/// Beach balls as patches, many of them with one look after the other.
class BeachBallPatches {
public:
  /// Curves have as many points as a ball of that radius in view points needs on a screen of a pixel a point; with
  /// two or three pixels a point they are off by less than a tenth of a pixel.
  static int pointsFor(double radius) { return beachBallPoints(radius); }

  /// Adds a ball of that radius about `center`, in view points. One whose centre or radius is not finite, or whose
  /// radius is not positive, adds nothing.
  void add(const BeachBall& ball, QPointF center, double radius, const BeachBallLook& look);

  const Patches& patches() const { return patches_; }
  /// Takes all balls out and keeps their memory.
  void clear() { patches_.clear(); }

private:
  void findNormals();
  void addCircle(QPointF center, double radius, bool isHole);
  void addPatch(double aside, const QColor& color);

  Patches patches_;
  BeachBallLine unitCircle_;
  BeachBallLine normals_;
  BeachBallLine placed_;
  BeachBallLine shifted_;
};

} // namespace xov
