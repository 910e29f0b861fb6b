#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>

// Numbers from and to text, with a decimal point in every locale.

namespace xov {

/// What becomes of a number that its type cannot hold.
enum class OutOfRange : std::uint8_t {
  Refused, ///< it is none; but what only single precision takes for 0 is 0
  Nearest, ///< infinity with its sign when it is too large, 0 when it is too small
};

/// Takes a number off the front of `rest`: a sign, digits with a point, an exponent; "inf" and "nan" are numbers of
/// the floating types. What follows stays, so that "12km" gives 12. Nothing, with `rest` as it was, when it begins
/// with anything else, white space included. For float, double and std::int32_t.
template <typename Number>
XOV_EXPORT std::optional<Number> takeNumber(QByteArrayView& rest, OutOfRange outOfRange = OutOfRange::Refused);

/// The number that a text is; nothing when it holds anything else besides, or is empty.
template <typename Number>
XOV_EXPORT std::optional<Number> toNumber(QByteArrayView text, OutOfRange outOfRange = OutOfRange::Refused);

/// Skips the white space at the front of `rest`: blanks, tabulators and line ends of every kind.
XOV_EXPORT void skipSpace(QByteArrayView& rest);

/// The value in single precision; infinity with its sign where it is beyond its range.
XOV_EXPORT float toSinglePrecision(double value);

/// What stands before a number that is not negative. Negative numbers, -0 included, always have a minus.
enum class Sign : std::uint8_t { WhenNegative, BlankWhenPositive, Always };

/// `value` with `decimals` digits behind the point, rounded as printf() rounds. A text shorter than `width` gets
/// blanks in front of it, or behind it when `width` is negative. Negative `decimals` mean 6.
XOV_EXPORT std::string fixedText(float value, int width, int decimals, Sign sign);

/// `value` as one digit, `decimals` digits behind the point and an exponent of at least two digits: "+1.25e-07".
XOV_EXPORT std::string exponentText(float value, int decimals, Sign sign);

/// Appends `value` to `text` with six digits behind the point, as printf()'s "%f" writes it. `Text` is QByteArray or
/// std::string.
template <typename Text>
XOV_EXPORT void appendFixed(Text& text, float value);

/// What says in an axis label that its numbers are to be multiplied by ten to the power of `exponent`: " x 10^+03".
XOV_EXPORT std::string powerOfTenSuffix(int exponent);

/// A number as error lines show it, with nine digits.
XOV_EXPORT QString numberText(double value);

} // namespace xov
