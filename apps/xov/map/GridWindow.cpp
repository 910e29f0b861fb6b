#include "apps/xov/map/GridWindow.h"

#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr double kTurn = 360;
constexpr double kWholeTurn = 1e-3; // degrees that a grid may lack of one
// An edge this close to that of a cell, in cells, is on it.
constexpr double kOnEdge = 1e-3;

// Cells first … last - 1 along an axis; the edges of cells lie at from + i · cell.
struct CellRange {
  int first;
  int last;
};

CellRange reached(double from, double cell, double lower, double upper) {
  return {int(std::floor((lower - from) / cell + kOnEdge)), int(std::ceil((upper - from) / cell - kOnEdge))};
}

int wrapped(int column, int columns) { return ((column % columns) + columns) % columns; }

} // namespace

GridWindow cutGrid(std::span<const float> values, int rows, int columns, const PlotLimits& extent,
                   const PlotLimits& limits) {
  if (rows <= 0 || columns <= 0 || values.size() < std::size_t(rows) * std::size_t(columns)) return {};
  const double dx = (double(extent.xmax) - double(extent.xmin)) / columns;
  const double dy = (double(extent.ymax) - double(extent.ymin)) / rows;
  const bool isGlobal = dx * columns > kTurn - kWholeTurn;
  CellRange across = reached(extent.xmin, dx, limits.xmin, limits.xmax);
  if (!isGlobal) across = {std::max(across.first, 0), std::min(across.last, columns)};
  // From the north.
  CellRange down = reached(-double(extent.ymax), dy, -double(limits.ymax), -double(limits.ymin));
  down = {std::max(down.first, 0), std::min(down.last, rows)};
  if (across.first >= across.last || down.first >= down.last) return {};

  GridWindow window;
  window.rows = down.last - down.first;
  window.columns = across.last - across.first;
  window.extent = {float(extent.xmin + across.first * dx), float(extent.xmin + across.last * dx),
                   float(extent.ymax - down.last * dy), float(extent.ymax - down.first * dy)};
  window.values.reserve(std::size_t(window.rows) * std::size_t(window.columns));
  for (int row = down.first; row < down.last; ++row) {
    const auto line = values.subspan(std::size_t(row) * std::size_t(columns), std::size_t(columns));
    for (int column = across.first; column < across.last; ++column)
      window.values.push_back(line[std::size_t(wrapped(column, columns))]);
  }
  return window;
}

} // namespace xov::cli
