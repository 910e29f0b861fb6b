#pragma once

#include <XOV_Graphics/views/base/PlotGeometry.h>
#include <span>
#include <vector>

namespace xov::cli {

/// A part of a grid in longitude and latitude, row after row from the north.
struct GridWindow {
  int rows = 0;
  int columns = 0;
  std::vector<float> values;
  PlotLimits extent; ///< degrees
};

/// Cuts out of a grid of rows × columns values that covers `extent` the whole cells that `limits` reach into. A grid
/// that goes around the globe is continued at its edges, so that the limits may lie in any turn; of another one, what
/// lies beyond is left out. Empty where nothing is left, or where the grid has fewer values than it should.
GridWindow cutGrid(std::span<const float> values, int rows, int columns, const PlotLimits& extent,
                   const PlotLimits& limits);

} // namespace xov::cli
