#pragma once

#include "XOV_Graphics/platform/GraphicsContext.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

#include <functional>

namespace xov {

struct KeptPixels;

using Drawing = std::function<void(GraphicsContext&)>;

/// Draws the part of a view inside `rect` (view points) into an image of `rect` × `ratio` pixels, rounded to whole
/// ones, with its pixel ratio and resolution (72 · ratio dots an inch) set. Transparent where nothing is drawn. A
/// null image for an empty rectangle and where memory does not allow it. Scaled images and texts are taken from
/// `kept`, here and below, where it is given.
QImage picture(const QRectF& rect, double ratio, const Drawing& draw, KeptPixels* kept = nullptr);

/// The part inside `rect` of the picture of a whole view of those bounds: what lies on its edges, and how fine dense
/// traces are drawn, is as in the whole. A rectangle that reaches out of the bounds, and one of a picture of more
/// than kLargestWhole pixels, is drawn by itself.
QImage pictureOfPart(const QRectF& rect, const QRectF& bounds, double ratio, const Drawing& draw,
                     KeptPixels* kept = nullptr);
inline constexpr double kLargestWhole = 1 << 26;

/// A picture of a window, on the screen's own pixels.
struct AlignedPicture {
  QImage image;
  /// Where its upper left corner goes, in widget coordinates (y downwards).
  QPointF topLeft;
};

/// Draws a view of that size whose upper left corner lies `cornerInPixels` into a pixel of the screen, as it may
/// where the pixel ratio is not a whole number.
AlignedPicture alignedPicture(const QSizeF& size, double ratio, QPointF cornerInPixels, const Drawing& draw,
                              KeptPixels* kept = nullptr);

} // namespace xov
