#pragma once

#include "apps/xov/inputs/ColumnFile.h"
#include "apps/xov/inputs/ColumnInputs.h"
#include "apps/xov/options/Options.h"

#include <XOV_Graphics/views/base/PlotGeometry.h>
#include <optional>

namespace xov::cli {

/// The options --log-x and --log-y of the commands that draw columns of numbers.
class LogAxisOptions {
public:
  void addOptions(const Options& options);

  /// Hands them to a view.
  template <typename View>
  void apply(View& view) const {
    view.setLogX(axes_.x);
    view.setLogY(axes_.y);
  }
  LogAxes axes() const { return axes_; }

  /// Makes NaN of what has no place on a logarithmic axis, and says of how many rows.
  void leaveOutWhatHasNoPlace(ColumnData& data, const ColumnInputs& inputs) const;
  /// The limits of a plot of these points (limitsOfPoints()); none, which has been said, without a finite number to
  /// draw along each axis.
  std::optional<PlotLimits> limitsOf(const ColumnData& data, const ColumnInputs& inputs) const;

private:
  LogAxes axes_;
};

} // namespace xov::cli
