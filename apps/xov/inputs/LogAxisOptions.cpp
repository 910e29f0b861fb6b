#include "apps/xov/inputs/LogAxisOptions.h"

#include "apps/xov/inputs/ValueRange.h"

#include <cmath>
#include <limits>

namespace xov::cli {

void LogAxisOptions::addOptions(const Options& options) {
  options.addFlag("--log-x", axes_.x, "Make the X axis logarithmic; what is not above 0 is left out");
  options.addFlag("--log-y", axes_.y, "Make the Y axis logarithmic; what is not above 0 is left out");
}

void LogAxisOptions::leaveOutWhatHasNoPlace(ColumnData& data, const ColumnInputs& inputs) const {
  const bool isLog[] = {axes_.x, axes_.y && data.columns.size() > 1};
  const std::size_t rows = data.columns[0].size();
  std::size_t leftOut = 0;
  for (std::size_t row = 0; row < rows; ++row) {
    bool hasPlace = true;
    for (std::size_t axis = 0; axis < data.columns.size() && axis < std::size(isLog); ++axis) {
      float& value = data.columns[axis][row];
      if (!isLog[axis] || std::isnan(value) || value > 0) continue;
      value = std::numeric_limits<float>::quiet_NaN();
      hasPlace = false;
    }
    if (!hasPlace) ++leftOut;
  }
  if (leftOut == 0) return;
  inputs.noteOf(
      QStringLiteral("%1 of %2 rows are not above 0 and have no place on a logarithmic axis").arg(leftOut).arg(rows));
}

std::optional<PlotLimits> LogAxisOptions::limitsOf(const ColumnData& data, const ColumnInputs& inputs) const {
  const auto limits = limitsOfPoints(data.columns[0], data.columns[1]);
  if (!limits) inputs.complainOf(QStringLiteral("holds no finite numbers to draw"));
  return limits;
}

} // namespace xov::cli
