#pragma once

#include <QImage>

namespace xov {

/// An image of that size and format, of 4 bytes a pixel, whose memory goes on to the next one like it: what it takes
/// to get 130 MB from the system, as a view on an 8K screen needs, is longer than to fill them. Its pixels are
/// undefined. Null where memory does not allow it.
///
/// Small ones come from the heap, which does the same by itself. Of large ones the last that was given up is kept, up
/// to kMostKept bytes; the system may take that back when it runs short.
QImage reusedImage(QSize size, QImage::Format format);

inline constexpr qsizetype kLeastKept = qsizetype(1) << 22;
inline constexpr qsizetype kMostKept = qsizetype(1) << 28;

} // namespace xov
