#pragma once

#include "XOV_Graphics/grid/GridCell.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// Values on a regular grid, row after row from the top, as a buffer holds them: `rows` × `columns` of them, or
/// fewer.
struct GridValues {
  /// Cuts a grid of `nr` × `nc` cells to the whole rows that the buffer holds; where it holds not even one, to the
  /// beginning of the first row. Empty when a count is not positive.
  static GridValues held(std::span<const float> buffer, std::int32_t nr, std::int32_t nc);

  std::span<const float> values; ///< rows · columns of them
  std::int32_t rows = 0;
  std::int32_t columns = 0;
};

/// Where the cells of a grid stand in the world, and where their values stand in the buffer, for the search of the
/// peak and the text of the grid: the outermost cells lie on the limits. A value is looked up with the number of rows
/// as the stride between rows, deliberately: only for square grids is that the cell that is drawn there.
struct GridNodes {
  GridNodes(const PlotLimits& limits, std::int32_t nr, std::int32_t nc);

  /// The place of a column and of a row, in single precision. A grid of one column or row has no spacing.
  float x(std::int32_t column) const { return xmin + float(column) * dx; }
  float y(std::int32_t row) const { return ymax - float(row) * dy; }
  /// The value that belongs to a cell; none beyond the grid.
  std::optional<float> value(const GridValues& grid, std::int32_t row, std::int32_t column) const {
    const std::size_t index = std::size_t(column) + std::size_t(stride) * std::size_t(row);
    if (index >= grid.values.size()) return {};
    return grid.values[index];
  }

  float xmin;
  float ymax;
  float dx;
  float dy;
  std::int32_t stride;
};

/// The place of a grid's largest value.
struct GridPeak {
  float x = 0;
  float y = 0;
  GridCell cell;
};

/// The first of the largest values above −1e30; none where no value is.
std::optional<GridPeak> findPeak(const GridNodes& nodes, const GridValues& grid);

/// The value range of a grid: `highest` its largest value, `lowest` its smallest one, but never above the negative of
/// the first value. Values that are not a number do not count; none when no value is a number.
struct GridRange {
  float lowest = 0;
  float highest = 0;
};
std::optional<GridRange> gridRange(std::span<const float> values);

} // namespace xov
