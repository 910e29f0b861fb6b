#pragma once

#include "XOV_Graphics/base/Export.h"

#include <span>

namespace xov {

/// The integral over time of each finite stretch, by trapezoids: 0 at its first value, and from there on the sum of
/// the means of neighbours times the interval.
XOV_EXPORT void integrate(std::span<double> values, double intervalSeconds);

/// The derivative with respect to time of each finite stretch, of second order in the interval: central differences
/// (y[i+1] − y[i−1])/2Δt, at the ends (−3 y[0] + 4 y[1] − y[2])/2Δt and its mirror image. Two values have their
/// difference as the derivative, a single one has none: NaN.
XOV_EXPORT void differentiate(std::span<double> values, double intervalSeconds);

} // namespace xov
