#pragma once

#include "views/base/PlotGeometry.h"

#include <optional>
#include <span>

namespace xov::cli {

/// The limits of a plot of points (x[i], y[i]): the extremes of the finite values of each axis. A range of no width
/// is widened by a twentieth of its value to both sides, or by 1 about zero, so that there is an axis to draw. Empty
/// when no value of an axis is finite.
std::optional<PlotLimits> limitsOfPoints(std::span<const float> x, std::span<const float> y);

} // namespace xov::cli
