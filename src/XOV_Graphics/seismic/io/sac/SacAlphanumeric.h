#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <QByteArrayView>
#include <QIODevice>

#include <memory>

namespace xov {

/// The alphanumeric form of a SAC file, lines of ASCII text:
///
///     lines  1 to 14   the 70 floats of the header, five a line, 15 columns each
///     lines 15 to 22   the 40 integers, five a line, 10 columns each
///     line  23         kstnm in 8 columns, kevnm in 16
///     lines 24 to 30   the other 21 text fields, three a line, 8 columns each
///     from line 31     the samples, five a line, 15 columns each
///
/// Numbers may instead be separated by blanks and as wide as they like, and so may the text fields on a line that is
/// shorter than its columns, where those would cut through one. Lines end with LF or CR LF. Lines after the last
/// sample are ignored.

/// Whether a file that begins with `head` is text, as the alphanumeric form is.
bool isSacText(QByteArrayView head);

/// Whether a file that begins with `head` is the alphanumeric form: its first line holds five numbers.
bool isSacAlphanumeric(QByteArrayView head);

/// Reads the alphanumeric form from a device at its start. Only what the device's size warrants is allocated.
Result<std::shared_ptr<SacSeismogram>> readSacAlphanumeric(QIODevice& device, const QString& name,
                                                           const QString& path);

/// Writes the alphanumeric form in its columns. Every number is as short as its single-precision value allows, and
/// reads back as that value; only a negative one that needs nine digits and an exponent is cut to eight digits, so
/// that blanks separate all floats. An integer of eleven characters has blanks instead of columns on its line.
/// `header` goes out as it is, control characters in its texts as blanks.
Status writeSacAlphanumeric(QIODevice& device, const SacHeader& header, std::span<const float> samples,
                            const QString& name);

} // namespace xov
