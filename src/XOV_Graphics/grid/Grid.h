#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <vector>

namespace xov {

/// Values on a regular grid, row after row from the one with the largest y, each row from the smallest x on.
struct XOV_EXPORT Grid {
  std::int32_t rows = 0;     ///< above each other
  std::int32_t columns = 0;  ///< beside each other
  std::vector<float> values; ///< rows × columns; NaN where there is none
  /// The places of the outermost columns and rows; from 0 to the last column and row where the file does not tell.
  double xmin = 0;
  double xmax = 0; ///< of the last column
  double ymin = 0; ///< of the last row
  double ymax = 0; ///< of the first row
};

} // namespace xov
