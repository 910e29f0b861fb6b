#pragma once

#include "XOV_Graphics/platform/GraphicsContext.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRectF>

namespace xov {

/// What a device pixel shows that lies on several pixels of an image that has fewer of them than the device.
enum class CellEdges : std::uint8_t {
  Sharp,  ///< the one that the middle of the device pixel lies in
  Shared, ///< their average by area
};

/// A picture on the pixels of a device.
struct ResampledImage {
  QImage image;   ///< premultiplied; null where nothing shows
  QPoint topLeft; ///< the device pixel of its upper left corner
};

/// Shows the part `source` of an image (pixels) in the rectangle `device` (device pixels), both with y downwards, as
/// far as it lies in `visible`. In each direction by itself: where the image has fewer pixels than the device, each
/// device pixel takes what `edges` says; where it has more, it takes their average by area. Device pixels on the edge
/// of the rectangle are covered by their share.
ResampledImage resampleImage(const QImage& image, const QRectF& source, const QRectF& device, const QRect& visible,
                             CellEdges edges = CellEdges::Sharp);

/// The image of its own that stands for the part `source` of an image on paper, stretched over `size` points, where
/// viewers smooth as they like: cells become many pixels, and more pixels than paper shows are averaged: of cells,
/// more than a printer's 600 dots an inch, of pictures more than 300.
QImage imageForPaper(const QImage& image, const QRectF& source, const QSizeF& size,
                     ImageKind kind = ImageKind::Cells);

/// Whether an image of a page is kept as JPEG, of kPageJpegQuality: a picture without transparency, unless it is so
/// small that nothing would be won.
bool isJpegOnPaper(const QImage& page, bool isOpaque, ImageKind kind);
/// That of the writer of PDF files, which leaves no choice.
inline constexpr int kPageJpegQuality = 94;

} // namespace xov
