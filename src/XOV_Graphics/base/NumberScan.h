#pragma once

#include <QByteArrayView>

namespace xov {

/// Skips the white space at the front of `rest`: blanks, tabulators and line ends of every kind.
void skipSpace(QByteArrayView& rest);

/// Takes white space and a number off the front of `rest`, digits with a point whatever the locale, as scanf does
/// with %f: what follows the number stays, and "inf" and "nan" are numbers. What is too close to 0 for single
/// precision is 0. False, with `value` unchanged and only the white space taken, when there is no number, or one that
/// is too large for single precision or out of the range of double precision.
bool takeFloat(QByteArrayView& rest, float& value);

/// The same for a whole number.
bool takeInt(QByteArrayView& rest, int& value);

} // namespace xov
