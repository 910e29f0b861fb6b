#pragma once

#include <QByteArray>
#include <QSize>

namespace xov {

/// Whether a PNG, JPEG or TIFF file of a picture is there from its beginning to its end and of that size, by its
/// structure alone: chunks and their sums, markers, strips that lie within the file. No pixel is unpacked.
bool isWholePicture(QByteArrayView file, const QSize& size);

} // namespace xov
