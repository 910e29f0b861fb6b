#include "XOV_Graphics/seismic/mechanism/BeachBall.h"

#include "XOV_Graphics/seismic/mechanism/SourceMatrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;
constexpr int kFewestPoints = 36;
constexpr int kMostPoints = 720;
// A chord of an angle a is off by r · a² / 8.
constexpr double kLargestErrorPx = 0.02;
// Rays this close to the horizontal, in radians, are on it: where the null axis of a double couple is horizontal,
// both corners of a cone are, and rounding would put them above or below at its whim.
constexpr double kOnRim = 1e-7;

// A ray that points down, or along the rim: Lambert's projection, in which (east, north) / √(1 − up) has the rim
// at 1.
QPointF projected(const Vector3& ray) {
  const double scale = 1 / std::sqrt(1 - ray[2]);
  return {ray[0] * scale, ray[1] * scale};
}

Vector3 times(double factor, const Vector3& v) { return {factor * v[0], factor * v[1], factor * v[2]}; }

// An elliptical cone about an axis: its half-width at the angle φ about the axis, from `first`, is atan √(own /
// (first cos²φ + second sin²φ)).
struct Cone {
  Vector3 axis;
  Vector3 first;
  Vector3 second;
  double own = 0;
  double firstValue = 0;
  double secondValue = 0;

  Vector3 edgeRay(double cosine, double sine) const {
    const double other = firstValue * cosine * cosine + secondValue * sine * sine;
    const double whole = 1 / (other + own);
    const double along = std::sqrt(other * whole);
    const double across = std::sqrt(own * whole);
    Vector3 ray;
    for (std::size_t i = 0; i < 3; ++i)
      ray[i] = along * axis[i] + across * (cosine * first[i] + sine * second[i]);
    return ray;
  }

  // All around; a multiple of 4 has the angles at which the cone of a double couple has its corners.
  std::vector<Vector3> edge(int points) const {
    std::vector<Vector3> rays;
    rays.reserve(std::size_t(points));
    const int quarter = points / 4;
    for (int i = 0; i < quarter; ++i) {
      const double angle = 2 * std::numbers::pi * i / points;
      rays.push_back({std::cos(angle), std::sin(angle), 0});
    }
    // The other quarters are the first one, turned, without rounding at their ends.
    for (int i = quarter; i < points; ++i) {
      const Vector3& before = rays[std::size_t(i - quarter)];
      rays.push_back({-before[1], before[0], 0});
    }
    for (Vector3& ray : rays)
      ray = edgeRay(ray[0], ray[1]);
    return rays;
  }
};

// Where the line from a ray below the horizontal to one above crosses it, of length 1.
QPointF crossing(const Vector3& below, const Vector3& above) {
  const double share = std::clamp(below[2] / (below[2] - above[2]), 0.0, 1.0);
  const QPointF point(below[0] + share * (above[0] - below[0]), below[1] + share * (above[1] - below[1]));
  const double length = std::hypot(point.x(), point.y());
  return length > 0 ? point / length : QPointF(0, 1);
}

// Along the rim, without its ends: the shorter way, or for half a circle that one which lies about the axis.
void appendRim(BeachBallLine& line, QPointF from, QPointF to, const Vector3& axis, int points) {
  constexpr double kNearlyHalf = 3; // radians
  double angle = std::atan2(from.x() * to.y() - from.y() * to.x(), from.x() * to.x() + from.y() * to.y());
  if (std::abs(angle) > kNearlyHalf) {
    const double half = angle / 2;
    const QPointF middle(from.x() * std::cos(half) - from.y() * std::sin(half),
                         from.x() * std::sin(half) + from.y() * std::cos(half));
    if (middle.x() * axis[0] + middle.y() * axis[1] < 0) angle -= std::copysign(2 * std::numbers::pi, angle);
  }
  const int steps = int(std::ceil(std::abs(angle) / (2 * std::numbers::pi) * points));
  const double cosine = std::cos(angle / steps);
  const double sine = std::sin(angle / steps);
  QPointF point = from;
  for (int i = 1; i < steps; ++i) {
    point = {point.x() * cosine - point.y() * sine, point.x() * sine + point.y() * cosine};
    line.push_back(point);
  }
}

// The part of a cone's end that lies below the horizontal; of the opposite end, where `sense` is -1. The end is
// convex and at most half of the sphere: its edge goes up at most once, and comes down as often.
BeachBallLine lowerPart(const std::vector<Vector3>& edge, const Vector3& axis, double sense, int points) {
  const std::size_t n = edge.size();
  const auto isBelow = [&](std::size_t i) { return sense * edge[i][2] < kOnRim; };
  const auto ray = [&](std::size_t i) { return times(sense, edge[i]); };
  std::size_t start = 0; // the first ray that came down
  bool wasBelow = isBelow(n - 1);
  for (; start < n; ++start) {
    const bool below = isBelow(start);
    if (below && !wasBelow) break;
    wasBelow = below;
  }
  BeachBallLine line;
  if (start == n) {
    if (!isBelow(0)) return line;
    line.reserve(n);
    for (std::size_t i = 0; i < n; ++i)
      line.push_back(projected(ray(i)));
    return line;
  }
  line.reserve(n + std::size_t(points) / 2);
  const QPointF down = crossing(ray(start), ray((start + n - 1) % n));
  line.push_back(down);
  std::size_t i = start;
  for (; isBelow(i); i = i + 1 < n ? i + 1 : 0)
    line.push_back(projected(ray(i)));
  const QPointF up = crossing(ray((i + n - 1) % n), ray(i));
  line.push_back(up);
  appendRim(line, up, down, times(sense, axis), points);
  return line;
}

bool isFinite(const SymmetricMatrix& m) {
  return std::isfinite(m.xx) && std::isfinite(m.yy) && std::isfinite(m.zz) && std::isfinite(m.xy) &&
         std::isfinite(m.xz) && std::isfinite(m.yz);
}

} // namespace

int beachBallPoints(double radiusPx) {
  if (!(radiusPx > 0)) return kFewestPoints;
  const double points = 2 * std::numbers::pi / std::sqrt(8 * kLargestErrorPx / radiusPx);
  return int(std::clamp(std::ceil(points / 4) * 4, double(kFewestPoints), double(kMostPoints)));
}

BeachBall beachBallOf(const MomentTensor& tensor, int points) {
  BeachBall ball;
  const SymmetricMatrix matrix = sourceMatrix(tensor);
  if (!isFinite(matrix)) return ball;
  const auto [t, n, p] = eigenPairs(matrix);
  ball.groundIsCompressional = t.value > 0 && n.value >= 0;
  // The value with a sign of its own; a ball whose values have all the same sign has no patch.
  const EigenPair& lone = ball.groundIsCompressional ? p : t;
  const EigenPair& like = ball.groundIsCompressional ? t : p;
  if (!(ball.groundIsCompressional ? p.value < 0 : t.value > 0)) return ball;

  points = (std::clamp(points, kFewestPoints, kMostPoints) + 3) / 4 * 4;
  const Cone cone{lone.vector, n.vector, like.vector, std::abs(lone.value), std::abs(n.value), std::abs(like.value)};
  const std::vector<Vector3> edge = cone.edge(points);
  for (const double sense : {1.0, -1.0}) {
    BeachBallLine patch = lowerPart(edge, cone.axis, sense, points);
    if (patch.size() > 2) ball.patches.push_back(std::move(patch));
  }
  return ball;
}

QPointF onBeachBall(double azimuthDeg, double plungeDeg) {
  const double azimuth = azimuthDeg * kRadiansPerDegree;
  const double plunge = plungeDeg * kRadiansPerDegree;
  return projected({std::cos(plunge) * std::sin(azimuth), std::cos(plunge) * std::cos(azimuth), -std::sin(plunge)});
}

std::optional<BeachBallDirection> directionOnBeachBall(QPointF place) {
  const double distance = std::hypot(place.x(), place.y());
  if (!(distance <= 1)) return {};
  const double azimuth = std::atan2(place.x(), place.y()) / kRadiansPerDegree;
  const double fromBelow = 2 * std::asin(distance / std::numbers::sqrt2) / kRadiansPerDegree;
  constexpr double kFullTurnDeg = 360;
  constexpr double kQuarterTurnDeg = 90;
  return BeachBallDirection{azimuth < 0 ? azimuth + kFullTurnDeg : azimuth,
                            std::max(kQuarterTurnDeg - fromBelow, 0.0)};
}

BeachBallLine beachBallPlane(double strikeDeg, double dipDeg, int points) {
  const double strike = strikeDeg * kRadiansPerDegree;
  const double dip = dipDeg * kRadiansPerDegree;
  points = std::clamp(points, 2, kMostPoints);
  BeachBallLine line;
  line.reserve(std::size_t(points));
  for (int i = 0; i < points; ++i) {
    const double rake = std::numbers::pi * i / (points - 1);
    const double along = std::cos(rake);
    const double down = std::sin(rake);
    line.push_back(projected({along * std::sin(strike) + down * std::cos(dip) * std::cos(strike),
                              along * std::cos(strike) - down * std::cos(dip) * std::sin(strike),
                              std::min(-down * std::sin(dip), 0.0)}));
  }
  return line;
}

} // namespace xov
