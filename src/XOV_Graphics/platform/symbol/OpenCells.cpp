#include "XOV_Graphics/platform/symbol/OpenCells.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// The grid line at or below `position` (or at or above it), held inside the grid. Truncation does for floor() what a
// call of it would cost several times as much for.
int lineBelow(double position, int cells) { return int(std::clamp(position, 0.0, double(cells))); }
int lineAbove(double position, int cells) {
  const double held = std::clamp(position, 0.0, double(cells));
  const int below = int(held);
  return double(below) < held ? below + 1 : below;
}

} // namespace

CellSpan CellDisc::touchedRows(int rows) const { return {lineBelow(y - radius, rows), lineAbove(y + radius, rows)}; }

CellSpan CellDisc::touchedColumns(int columns) const {
  return {lineBelow(x - radius, columns), lineAbove(x + radius, columns)};
}

CellSpan CellDisc::touchedIn(int row, int columns) const {
  // The chord is longest at the row's edge nearest to the centre, or at the centre itself.
  const double nearest = std::max({0.0, row - y, y - (row + 1)});
  if (!(nearest < radius)) return {};
  const double half = std::sqrt(radius * radius - nearest * nearest);
  return {lineBelow(x - half, columns), lineAbove(x + half, columns)};
}

CellSpan CellDisc::coveredIn(int row, int columns) const {
  const double farthest = std::max(std::abs(row - y), std::abs(row + 1 - y));
  if (!(farthest < radius)) return {};
  const double half = std::sqrt(radius * radius - farthest * farthest);
  return {lineAbove(x - half, columns), lineBelow(x + half, columns)};
}

OpenCells::OpenCells(int columns, int rows)
    : columns_(columns),
      rows_(rows),
      wordsPerRow_((columns + kBits - 1) / kBits),
      openCount_(std::int64_t(columns) * rows),
      words_(std::size_t(wordsPerRow_) * std::size_t(rows), ~Word(0)) {}

bool OpenCells::anyOpenUnder(const CellDisc& disc) const {
  if (openCount_ == 0) return false;
  const CellSpan rows = disc.touchedRows(rows_);
  const CellSpan box = disc.touchedColumns(columns_);
  // What shows at all mostly shows at its middle, too.
  const int middle = rows.first + (rows.last - rows.first) / 2;
  if (!rows.isEmpty() && anyOpen(middle, disc.touchedIn(middle, columns_))) return true;
  for (int row = rows.first; row < rows.last; ++row) {
    // The box around the disc settles most rows without a square root.
    if (anyOpen(row, box) && anyOpen(row, disc.touchedIn(row, columns_))) return true;
  }
  return false;
}

void OpenCells::close(int row, CellSpan columns) {
  visitOpen(row, columns, [](int) { return true; });
}

} // namespace xov
