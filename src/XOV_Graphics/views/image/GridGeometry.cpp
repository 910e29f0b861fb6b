#include "XOV_Graphics/views/image/GridGeometry.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Any value above this one can be a peak.
constexpr float kBelowPeaks = -1e30F;

float spacing(float range, std::int32_t count) { return count == 1 ? 0 : range / float(double(count) - 1); }

} // namespace

GridValues GridValues::held(std::span<const float> buffer, std::int32_t nr, std::int32_t nc) {
  if (nr <= 0 || nc <= 0 || buffer.empty()) return {};
  const std::size_t columns = std::min(std::size_t(nc), buffer.size());
  const std::size_t rows = std::min(std::size_t(nr), buffer.size() / columns);
  // A first row that is cut short is all that there is.
  const std::size_t shown = columns < std::size_t(nc) ? 1 : rows;
  return {buffer.first(shown * columns), std::int32_t(shown), std::int32_t(columns)};
}

GridNodes::GridNodes(const PlotLimits& limits, std::int32_t nr, std::int32_t nc)
    : xmin(limits.xmin),
      ymax(limits.ymax),
      dx(spacing(limits.xmax - limits.xmin, nc)),
      dy(spacing(limits.ymax - limits.ymin, nr)),
      stride(nr) {}

std::optional<GridPeak> findPeak(const GridNodes& nodes, const GridValues& grid) {
  float best = kBelowPeaks;
  std::optional<GridPeak> peak;
  for (std::int32_t row = 0; row < grid.rows; ++row) {
    for (std::int32_t column = 0; column < grid.columns; ++column) {
      const std::optional<float> value = nodes.value(grid, row, column);
      if (!value) break;
      if (*value > best) {
        best = *value;
        peak = {nodes.x(column), nodes.y(row), {row, column}};
      }
    }
  }
  return peak;
}

std::optional<GridRange> gridRange(std::span<const float> values) {
  const auto first = std::find_if_not(values.begin(), values.end(), [](float v) { return std::isnan(v); });
  if (first == values.end()) return {};
  GridRange range{-*first, *first};
  for (auto value = first; value != values.end(); ++value) {
    if (*value > range.highest) range.highest = *value;
    if (*value < range.lowest) range.lowest = *value;
  }
  return range;
}

} // namespace xov
