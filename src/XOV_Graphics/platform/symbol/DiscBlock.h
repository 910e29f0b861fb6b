#pragma once

#include <QPointF>
#include <QRect>

#include <array>

namespace xov {

/// How much of each cell of a small block a disc covers: the numbers of DiscCoverage, bit for bit, for all cells at
/// once. Cells that the disc covers wholly, or not at all, hold exactly 1 and 0.
class DiscBlock {
public:
  static constexpr int kMostCells = 16; // a side
  static bool fits(const QRect& cells) { return cells.width() <= kMostCells && cells.height() <= kMostCells; }

  /// For cells that fit. The disc may be larger, but for those that DiscCoverage samples.
  void cover(QPointF center, double radius, const QRect& cells);
  /// 0 … 1, for a cell that is counted from the first of the block.
  double at(int column, int row) const { return coverage_[std::size_t(row * kMostCells + column)]; }

private:
  std::array<double, std::size_t(kMostCells) * kMostCells> coverage_;
};

} // namespace xov
