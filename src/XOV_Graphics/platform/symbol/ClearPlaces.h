#pragma once

#include <QPointF>

#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace xov {

/// Circles of a picture in which nothing can change any more, found while discs are drawn front to back. A disc
/// inside one of them needs no look at the pixels under it: this is what keeps large discs that crowd in few places
/// cheap.
class ClearPlaces {
public:
  /// Remembers a circle for the unit square that its centre lies in.
  void add(QPointF center, double radius) { circles_[key(center)] = {center, radius}; }

  /// Whether a disc lies in the circle remembered for its place.
  bool contains(QPointF center, double radius) const {
    const auto found = circles_.find(key(center));
    if (found == circles_.end()) return false;
    const QPointF apart = center - found->second.center;
    return std::hypot(apart.x(), apart.y()) + radius <= found->second.radius;
  }

private:
  struct Circle {
    QPointF center;
    double radius = 0;
  };
  static std::uint64_t key(QPointF place) { return std::uint64_t(cell(place.x())) << 32 | cell(place.y()); }
  static std::uint32_t cell(double coordinate) {
    constexpr double kFarthest = 2147483647;
    return std::uint32_t(std::int64_t(std::fmax(-kFarthest, std::fmin(std::floor(coordinate), kFarthest))));
  }

  std::unordered_map<std::uint64_t, Circle> circles_;
};

} // namespace xov
