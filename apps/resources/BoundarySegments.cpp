#include "apps/resources/BoundarySegments.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

namespace xov::maker {

namespace {

constexpr double kHalfCircleDeg = 180;
constexpr double kHairDeg = 1e-4;

bool isWest(const QPointF& point) { return point.x() < 0; }

/// The latitude at which the shorter way from `a` to `b` crosses the meridian between them, and which meridian that
/// is.
struct Crossing {
  double latitude;
  bool isGreenwich;
};

Crossing crossingBetween(const QPointF& a, const QPointF& b) {
  const bool isGreenwich = std::abs(a.x() - b.x()) <= kHalfCircleDeg;
  // Longitudes counted from the meridian.
  const auto fromMeridian = [&](double longitude) {
    if (isGreenwich) return longitude;
    return longitude < 0 ? longitude + kHalfCircleDeg : longitude - kHalfCircleDeg;
  };
  const double from = fromMeridian(a.x());
  const double to = fromMeridian(b.x());
  const double part = from == to ? 0 : from / (from - to);
  return {a.y() + part * (b.y() - a.y()), isGreenwich};
}

QPointF onMeridian(const Crossing& crossing, bool west) {
  if (crossing.isGreenwich) return {west ? -kHairDeg : 0, crossing.latitude};
  return {west ? -(kHalfCircleDeg - kHairDeg) : kHalfCircleDeg, crossing.latitude};
}

double distanceFromLine(const QPointF& point, const QPointF& a, const QPointF& b) {
  const QPointF along = b - a;
  const double length2 = QPointF::dotProduct(along, along);
  const double part = length2 > 0 ? std::clamp(QPointF::dotProduct(point - a, along) / length2, 0.0, 1.0) : 0;
  return QLineF(a + part * along, point).length();
}

void addPiece(Segments& pieces, Segment& piece) {
  if (piece.size() > 1) pieces.push_back(std::move(piece));
  piece.clear();
}

} // namespace

Segments cutAtMeridians(const Segment& segment) {
  Segments pieces;
  Segment piece;
  for (const QPointF& point : segment) {
    if (!piece.empty() && isWest(piece.back()) != isWest(point)) {
      const Crossing crossing = crossingBetween(piece.back(), point);
      const QPointF before = onMeridian(crossing, isWest(piece.back()));
      if (piece.back() != before) piece.push_back(before);
      addPiece(pieces, piece);
      const QPointF after = onMeridian(crossing, isWest(point));
      if (point != after) piece.push_back(after);
    }
    piece.push_back(point);
  }
  addPiece(pieces, piece);
  return pieces;
}

Segment thinned(const Segment& segment, double tolerance) {
  if (segment.size() < 3) return segment;
  std::vector<bool> stays(segment.size(), false);
  stays.front() = stays.back() = true;
  std::vector<std::pair<std::size_t, std::size_t>> open{{0, segment.size() - 1}};
  while (!open.empty()) {
    const auto [first, last] = open.back();
    open.pop_back();
    std::size_t farthest = first;
    double distance = tolerance;
    for (std::size_t i = first + 1; i < last; ++i) {
      const double candidate = distanceFromLine(segment[i], segment[first], segment[last]);
      if (candidate > distance) {
        distance = candidate;
        farthest = i;
      }
    }
    if (farthest == first) continue;
    stays[farthest] = true;
    open.emplace_back(first, farthest);
    open.emplace_back(farthest, last);
  }
  Segment kept;
  for (std::size_t i = 0; i < segment.size(); ++i) {
    if (stays[i]) kept.push_back(segment[i]);
  }
  return kept;
}

Segments inPieces(const Segment& segment, std::size_t mostPoints) {
  Segments pieces;
  for (std::size_t first = 0; first + 1 < segment.size(); first += mostPoints - 1) {
    const auto from = segment.begin() + std::ptrdiff_t(first);
    pieces.emplace_back(from, from + std::ptrdiff_t(std::min(mostPoints, segment.size() - first)));
  }
  return pieces;
}

} // namespace xov::maker
