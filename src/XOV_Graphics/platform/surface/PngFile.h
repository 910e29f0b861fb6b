#pragma once

#include <QByteArray>
#include <QImage>

namespace xov {

/// The bytes of a PNG file with a picture and its resolution, in the least kind of pixels that holds it: greys of 1
/// to 8 bits, a palette, or all channels, without alpha where all is opaque. The same on any number of threads. Takes
/// every format of QImage; texts and colour spaces are left out. Throws std::bad_alloc.
QByteArray pngFile(const QImage& image);

} // namespace xov
