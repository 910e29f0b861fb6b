#include "XOV_Graphics/views/map/LabelPlaces.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Where a text stands seen from its place; to the right is what readers expect.
constexpr QPointF kSides[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}};

// Rectangles, found by the cells of a grid that they touch, so that thousands of labels do not all ask each other.
class Taken {
public:
  explicit Taken(const QRectF& frame)
      : frame_(frame),
        columns_(cells(frame.width())),
        rows_(cells(frame.height())),
        cells_(columns_ * rows_) {}

  void add(const QRectF& rect, std::size_t owner) {
    forEachCell(rect, [&](std::vector<Entry>& cell) {
      cell.push_back({rect, owner});
      return true;
    });
  }

  bool isFree(const QRectF& rect, std::size_t owner) {
    return forEachCell(rect, [&](const std::vector<Entry>& cell) {
      return std::ranges::none_of(
          cell, [&](const Entry& entry) { return entry.owner != owner && entry.rect.intersects(rect); });
    });
  }

private:
  static constexpr double kCell = 40;
  static constexpr double kMostCells = 200;

  struct Entry {
    QRectF rect;
    std::size_t owner;
  };

  static std::size_t cells(double length) {
    return std::size_t(std::clamp(std::ceil(length / kCell), 1.0, kMostCells));
  }
  // The nearest one, for what lies outside or is no number, too.
  static std::size_t index(double at, std::size_t count) {
    const double cell = std::min(std::floor(at / kCell), double(count - 1));
    return cell > 0 ? std::size_t(cell) : 0;
  }

  template <typename Look>
  bool forEachCell(const QRectF& rect, Look look) {
    const std::size_t left = index(rect.left() - frame_.left(), columns_);
    const std::size_t right = index(rect.right() - frame_.left(), columns_);
    const std::size_t low = index(rect.top() - frame_.top(), rows_);
    const std::size_t high = index(rect.bottom() - frame_.top(), rows_);
    for (std::size_t row = low; row <= high; ++row) {
      for (std::size_t column = left; column <= right; ++column) {
        if (!look(cells_[row * columns_ + column])) return false;
      }
    }
    return true;
  }

  QRectF frame_;
  std::size_t columns_;
  std::size_t rows_;
  std::vector<std::vector<Entry>> cells_;
};

QRectF standing(const LabelledPlace& place, QPointF side) {
  const double reach = side.x() != 0 && side.y() != 0 ? place.clearance * M_SQRT1_2 : place.clearance;
  const QPointF middle =
      place.at + QPointF(side.x() * (reach + place.size.width() / 2), side.y() * (reach + place.size.height() / 2));
  return {middle.x() - place.size.width() / 2, middle.y() - place.size.height() / 2, place.size.width(),
          place.size.height()};
}

} // namespace

std::vector<std::optional<QRectF>> placeLabels(std::span<const LabelledPlace> places,
                                               std::span<const QRectF> obstacles, const QRectF& map) {
  std::vector<std::optional<QRectF>> standings(places.size());
  const QRectF frame = map.normalized();
  const auto isOnMap = [&](const LabelledPlace& place) { return frame.contains(place.at); };
  if (!std::isfinite(frame.width()) || !std::isfinite(frame.height())) return standings;
  Taken taken(frame);
  for (const QRectF& obstacle : obstacles) {
    if (frame.intersects(obstacle)) taken.add(obstacle, places.size());
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    const double r = places[i].clearance / 2;
    if (isOnMap(places[i])) taken.add({places[i].at.x() - r, places[i].at.y() - r, 2 * r, 2 * r}, i);
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!isOnMap(places[i])) continue;
    for (const QPointF side : kSides) {
      const QRectF rect = standing(places[i], side);
      if (!frame.contains(rect) || !taken.isFree(rect, i)) continue;
      standings[i] = rect;
      taken.add(rect, places.size());
      break;
    }
  }
  return standings;
}

} // namespace xov
