#include "XOV_Graphics/grid/GridCell.h"

#include <algorithm>
#include <cmath>

namespace xov {

std::optional<GridCell> largestCell(std::span<const float> values, std::int32_t columns) {
  const auto lower = [](float a, float b) { return std::isnan(a) ? !std::isnan(b) : a < b; };
  const auto largest = std::max_element(values.begin(), values.end(), lower);
  if (columns <= 0 || largest == values.end() || std::isnan(*largest)) return {};
  const std::ptrdiff_t index = largest - values.begin();
  return GridCell{std::int32_t(index / columns), std::int32_t(index % columns)};
}

} // namespace xov
