#pragma once

#include "XOV_Graphics/base/Result.h"

#include <vector>

namespace xov {

/// A grid of elevations in metres, row after row from north to south.
struct TopoGrid {
  int rows = 0;
  int columns = 0;
  std::vector<float> values;
};

/// The size of a file of headerless 16-bit cells.
struct TopoFileSize {
  int rows = 0;
  int columns = 0;
};

/// Reads every `factor`-th row and column, the first of each included, of a file of signed 16-bit integers in the
/// machine's byte order, as many as divide the size without a rest. Only the cells that are kept are held in memory.
///
/// Refuses a size or factor that is not positive, a factor larger than the grid, a file that cannot be read, and one
/// of another size, which the line names beside the expected one.
Result<TopoGrid> readTopoGrid(const QString& path, const TopoFileSize& size, int factor) noexcept;

} // namespace xov
