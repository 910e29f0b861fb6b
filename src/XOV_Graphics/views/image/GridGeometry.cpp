#include "XOV_Graphics/views/image/GridGeometry.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/base/TaskPool.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace xov {

namespace {

// Any value above this one can be a peak.
constexpr float kBelowPeaks = -1e30F;

template <class Vector>
XOV_INLINE void widenWith(const float* values, std::size_t count, GridRange& range) {
  Vector low = Vector{} + range.lowest;
  Vector high = Vector{} + range.highest;
  std::size_t i = 0;
  for (; i + kLanes<Vector> <= count; i += kLanes<Vector>) {
    Vector smaller;
    loadVector(values + i, smaller);
    Vector greater = smaller;
    keepSmaller(smaller, low);
    keepGreater(greater, high);
    low = smaller;
    high = greater;
  }
  // Apart from each other: the lowest may lie above all values, and the highest below.
  for (int lane = 0; lane < kLanes<Vector>; ++lane) {
    if (low[lane] < range.lowest) range.lowest = low[lane];
    if (high[lane] > range.highest) range.highest = high[lane];
  }
  for (; i < count; ++i) {
    if (values[i] < range.lowest) range.lowest = values[i];
    if (values[i] > range.highest) range.highest = values[i];
  }
}
// Widens a range to hold the values that are numbers.
XOV_VECTOR_FUNCTION(void, widen, (const float* values, std::size_t count, GridRange& range), (values, count, range))

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
  constexpr std::size_t kPart = 1 << 18; // values that are looked through together
  std::vector<GridRange> ranges((values.size() + kPart - 1) / kPart, range);
  runTasks(int(ranges.size()), TaskStart::FirstAlone, [&](int k) {
    const std::size_t start = std::size_t(k) * kPart;
    widen(values.data() + start, std::min(kPart, values.size() - start), ranges[std::size_t(k)]);
  });
  for (const GridRange& part : ranges) {
    range.lowest = std::min(range.lowest, part.lowest);
    range.highest = std::max(range.highest, part.highest);
  }
  // Zeros of either sign are equal, and vectors come upon them in another order: the first one counts.
  if (range.highest == 0) range.highest = *std::find(first, values.end(), 0.0F);
  if (range.lowest == 0) range.lowest = *first == 0 ? -*first : *std::find(first, values.end(), 0.0F);
  return range;
}

} // namespace xov
