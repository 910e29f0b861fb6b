#pragma once

#include <string>

namespace xov {

/// What stands before a number that is not negative. Negative numbers, -0 included, always have a minus.
enum class Sign { WhenNegative, BlankWhenPositive, Always };

/// `value` with `decimals` digits behind the point, rounded as printf() rounds but with a point in every locale. A
/// text shorter than `width` gets blanks in front of it, or behind it when `width` is negative. Negative `decimals`
/// mean 6.
std::string fixedText(float value, int width, int decimals, Sign sign);

/// `value` as one digit, `decimals` digits behind the point and an exponent of at least two digits: "+1.25e-07".
std::string exponentText(float value, int decimals, Sign sign);

/// What says in an axis label that its numbers are to be multiplied by ten to the power of `exponent`: " x 10^+03".
std::string powerOfTenSuffix(int exponent);

} // namespace xov
