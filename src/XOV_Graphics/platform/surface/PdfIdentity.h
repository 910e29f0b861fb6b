#pragma once

#include <QByteArray>

namespace xov {

/// A PDF file as Qt writes it with fixed dates and identifiers, those of its XMP metadata included, so that the same
/// drawing gives the same bytes at any time, in every time zone and on every run. A file whose table of objects is
/// not found keeps the place of every byte: of it only those are fixed that are as long as what replaces them.
QByteArray withFixedIdentity(const QByteArray& pdf);

} // namespace xov
