#pragma once

#include "XOV_Graphics/base/Export.h"

#include <span>

namespace xov {

/// Of higher order a polynomial follows the signal instead of what lies below it.
inline constexpr int kMostPolynomialOrder = 30;

/// Takes away the polynomial of that order over the index that fits all finite values best, in least squares: order 0
/// is the mean, 1 the linear trend. One polynomial for all of them, so that the parts beside a gap keep their height
/// to each other; what is not finite stays. Values as few as the polynomial's coefficients become 0. The order is
/// taken to be in 0 ... kMostPolynomialOrder.
XOV_EXPORT void removePolynomial(std::span<double> values, int order);

} // namespace xov
