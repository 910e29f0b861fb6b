#pragma once

#include <XOV_Graphics/views/base/PlotGeometry.h>
#include <optional>
#include <span>

namespace xov::cli {

/// Lower and upper end of values.
struct ValueRange {
  float min = 0;
  float max = 0;
};

/// The value in single precision; the largest number that this holds, with its sign, for values beyond.
float nearestFinite(double value);

/// The range from min to max. One of no width is widened by a twentieth of its value to both sides, or by 1 about
/// zero, so that there is an axis to draw.
ValueRange nonEmptyRange(float min, float max);

/// The limits of a plot of points (x[i], y[i]): the extremes of the finite values of each axis as nonEmptyRange() has
/// them. Empty when no value of an axis is finite.
std::optional<PlotLimits> limitsOfPoints(std::span<const float> x, std::span<const float> y);

/// The limits moved outwards by a share of the ranges, at both ends; of the ranges of logarithms where an axis has
/// these, and its limits are above 0.
PlotLimits widenedBy(const PlotLimits& limits, double share, LogAxes axes = {});

} // namespace xov::cli
