#include "XOV_Graphics/views/map/DiscPlaces.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kGap = 2;      // between discs
constexpr int kDirections = 24; // that are tried at each distance
constexpr int kDistances = 24;  // from the anchor, that are tried
constexpr double kStepRadii = 0.5;
constexpr double kFromAnchor = 6; // between an anchor and a disc that was moved away from it

double distance(QPointF a, QPointF b) { return std::hypot(a.x() - b.x(), a.y() - b.y()); }

class Mover {
public:
  Mover(std::vector<PlacedDisc>& discs, const QRectF& frame) : discs_(discs), frame_(frame.normalized()) {}

  void run() {
    for (PlacedDisc& disc : discs_) {
      if (!frame_.contains(disc.anchor)) continue;
      if (!isFree(disc.anchor, disc.radius)) {
        away_ = directionAway(disc.anchor);
        moveAside(disc);
      }
      placed_.push_back(&disc);
    }
  }

private:
  bool isFree(QPointF center, double radius) const {
    return std::ranges::none_of(placed_, [&](const PlacedDisc* other) {
      return distance(center, other->center) < radius + other->radius + kGap;
    });
  }

  // Of the discs that are in the way, so that lines to their anchors fan out.
  double directionAway(QPointF anchor) const {
    QPointF sum;
    for (const PlacedDisc& other : discs_) {
      const double far = distance(anchor, other.anchor);
      if (far > 0) sum += (anchor - other.anchor) / (far * far);
    }
    return sum.isNull() ? std::numbers::pi / 2 : std::atan2(sum.y(), sum.x());
  }

  bool hasRoom(QPointF center, double radius) const {
    return frame_.adjusted(radius, radius, -radius, -radius).contains(center) && isFree(center, radius);
  }

  void moveAside(PlacedDisc& disc) const {
    for (int ring = 0; ring < kDistances; ++ring) {
      const double far = disc.radius + kFromAnchor + ring * kStepRadii * disc.radius;
      for (int i = 0; i < kDirections; ++i) {
        // By turns to either side of the direction away.
        const int side = (i + 1) / 2 * (i % 2 == 0 ? 1 : -1);
        const double angle = away_ + 2 * std::numbers::pi * side / kDirections;
        const QPointF center = disc.anchor + far * QPointF(std::cos(angle), std::sin(angle));
        if (!hasRoom(center, disc.radius)) continue;
        disc.center = center;
        return;
      }
    }
  }

  std::vector<PlacedDisc>& discs_;
  QRectF frame_;
  std::vector<const PlacedDisc*> placed_;
  double away_ = 0;
};

} // namespace

void moveApart(std::vector<PlacedDisc>& discs, const QRectF& frame) {
  if (discs.size() <= kMostMovedDiscs) Mover(discs, frame).run();
}

} // namespace xov
