#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRectF>

namespace xov {

/// A picture on the pixels of a device.
struct ResampledImage {
  QImage image;   ///< premultiplied; null where nothing shows
  QPoint topLeft; ///< the device pixel of its upper left corner
};

/// Shows the part `source` of an image (pixels) in the rectangle `device` (device pixels), both with y downwards, as
/// far as it lies in `visible`. In each direction by itself: where the image has fewer pixels than the device, each
/// device pixel takes the one that its middle lies in, so that cells keep sharp edges; where it has more, it takes
/// their average by area. Device pixels on the edge of the rectangle are covered by their share.
ResampledImage resampleImage(const QImage& image, const QRectF& source, const QRectF& device, const QRect& visible);

/// The image of its own that stands for the part `source` of an image on paper, stretched over `size` points, where
/// viewers smooth as they like: cells become many pixels, and more pixels than a printer's dots are averaged.
QImage imageForPaper(const QImage& image, const QRectF& source, const QSizeF& size);

} // namespace xov
