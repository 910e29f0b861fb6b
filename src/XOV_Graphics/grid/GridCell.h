#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// A cell of a grid, counted from the upper left one.
struct XOV_EXPORT GridCell {
  std::int32_t row = 0;    ///< from the top, 0 the first
  std::int32_t column = 0; ///< from the left, 0 the first

  /// Whether it lies in an outermost row or column of a grid of that size, so that a peak there may be the flank of
  /// one that lies beyond the grid.
  bool isOnEdge(std::int32_t rows, std::int32_t columns) const {
    return row == 0 || row == rows - 1 || column == 0 || column == columns - 1;
  }
};

/// The first of a grid's largest values, which stand row after row. None without a value that is a number, and where
/// `columns` is not positive.
XOV_EXPORT std::optional<GridCell> largestCell(std::span<const float> values, std::int32_t columns);

} // namespace xov
