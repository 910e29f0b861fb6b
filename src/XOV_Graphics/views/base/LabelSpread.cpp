#include "XOV_Graphics/views/base/LabelSpread.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kTouching = 1e-6; // points by which rounding may let neighbours overlap
constexpr double kCellWidth = 64;  // points; about a label
constexpr double kCellHeight = 16; // points
constexpr double kFarthest = 1e6;  // points from 0; nothing is drawn beyond
constexpr double kLargest = 1e4;   // points; no label is
constexpr std::int64_t kRows = 1024 * 1024;

struct Cells {
  std::int64_t left, right, bottom, top;
};

Cells cellsOf(const QRectF& box) {
  return {std::int64_t(std::floor(box.left() / kCellWidth)), std::int64_t(std::floor(box.right() / kCellWidth)),
          std::int64_t(std::floor(box.top() / kCellHeight)), std::int64_t(std::floor(box.bottom() / kCellHeight))};
}

bool overlap(const QRectF& a, const QRectF& b) {
  return a.left() + kTouching < b.right() && b.left() + kTouching < a.right() && a.top() + kTouching < b.bottom() &&
         b.top() + kTouching < a.bottom();
}

bool isWithinReach(const QRectF& box) {
  return std::abs(box.width()) <= kLargest && std::abs(box.height()) <= kLargest &&
         std::abs(box.left()) <= kFarthest && std::abs(box.right()) <= kFarthest &&
         std::abs(box.top()) <= kFarthest && std::abs(box.bottom()) <= kFarthest;
}

} // namespace

std::vector<std::optional<double>> spreadLabels(std::span<const double> wishes, double height, double reach) {
  std::vector<std::optional<double>> places(wishes.size());
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < wishes.size(); ++i)
    if (std::isfinite(wishes[i])) order.push_back(i);
  std::ranges::stable_sort(order, {}, [&](std::size_t i) { return wishes[i]; });
  const double least = std::max(height, 0.0);
  const double farthest = std::max(reach, 0.0);

  // As early as each may stand: that leaves room for the most. Then, from the last one on, as near as they may to
  // where they wish.
  std::vector<std::size_t> kept;
  for (const std::size_t i : order) {
    double earliest = wishes[i] - farthest;
    if (!kept.empty()) earliest = std::max(earliest, *places[kept.back()] + least);
    if (earliest > wishes[i] + farthest + kTouching) continue;
    places[i] = earliest;
    kept.push_back(i);
  }
  double end = std::numeric_limits<double>::infinity();
  for (auto i = kept.rbegin(); i != kept.rend(); ++i) {
    places[*i] = std::min(std::max(wishes[*i], *places[*i]), end - least);
    end = *places[*i];
  }
  return places;
}

bool LabelField::take(const QRectF& box) {
  if (!isWithinReach(box)) return false;
  if (!(box.width() > 0) || !(box.height() > 0)) return true;
  const Cells cells = cellsOf(box);
  const auto forEachCell = [&](auto visit) {
    for (std::int64_t column = cells.left; column <= cells.right; ++column) {
      for (std::int64_t row = cells.bottom; row <= cells.top; ++row)
        if (!visit(column * kRows + row)) return false;
    }
    return true;
  };
  const bool isFree = forEachCell([&](std::int64_t cell) {
    const auto found = cells_.find(cell);
    return found == cells_.end() ||
           std::ranges::none_of(found->second, [&](const QRectF& taken) { return overlap(taken, box); });
  });
  if (!isFree) return false;
  return forEachCell([&](std::int64_t cell) {
    cells_[cell].push_back(box);
    return true;
  });
}

} // namespace xov
