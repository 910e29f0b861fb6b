#include "XOV_Graphics/platform/surface/Picture.h"

#include "XOV_Graphics/platform/surface/PixelContext.h"
#include "XOV_Graphics/platform/surface/PixelMemory.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <new>

namespace xov {

namespace {

constexpr double kPointsPerMetre = 72 / 0.0254;
// Larger pictures than this many pixels a side are beyond what the painter's arithmetic holds.
constexpr double kLargestSide = 32767;

QImage drawOnImage(QSize size, double ratio, const QTransform& viewToDevice, const Drawing& draw, KeptPixels* kept) {
  QImage image = reusedImage(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) throw std::bad_alloc();
  const PixelTarget target{image.bits(), image.bytesPerLine(), image.width(), image.height()};
  {
    QPainter painter(&image);
    PixelContext context(painter, viewToDevice, target, kept);
    draw(context);
  }
  image.setDevicePixelRatio(ratio);
  const int dotsPerMetre = int(std::lround(kPointsPerMetre * ratio));
  image.setDotsPerMeterX(dotsPerMetre);
  image.setDotsPerMeterY(dotsPerMetre);
  return image;
}

// The transform from view points to pixels whose upper left one starts at `topLeft` (view points, y upwards).
QTransform toPixels(QPointF topLeft, double ratio) {
  return {ratio, 0, 0, -ratio, -topLeft.x() * ratio, topLeft.y() * ratio};
}

// Whole pixels; empty where there are none, or more than a picture holds.
QSize pixelSize(const QRectF& rect, double ratio) {
  const double width = std::round(rect.width() * ratio);
  const double height = std::round(rect.height() * ratio);
  if (!(width >= 1 && height >= 1 && width <= kLargestSide && height <= kLargestSide)) return {};
  return {int(width), int(height)};
}

} // namespace

QImage picture(const QRectF& rect, double ratio, const Drawing& draw, KeptPixels* kept) {
  const QSize size = pixelSize(rect, ratio);
  if (size.isEmpty()) return {};
  return drawOnImage(size, ratio, toPixels({rect.left(), rect.y() + rect.height()}, ratio), draw, kept);
}

QImage pictureOfPart(const QRectF& rect, const QRectF& bounds, double ratio, const Drawing& draw, KeptPixels* kept) {
  const QSize part = pixelSize(rect, ratio);
  const QSize whole = pixelSize(bounds, ratio);
  const bool isInside = bounds.contains(rect) && !whole.isEmpty();
  if (part.isEmpty() || !isInside || double(whole.width()) * whole.height() > kLargestWhole)
    return picture(rect, ratio, draw, kept);
  // Rounding must not move the part off the whole.
  const auto place = [ratio](double distance, int most) {
    return std::min(int(std::lround(distance * ratio)), most);
  };
  const QPoint corner(place(rect.left() - bounds.left(), whole.width() - part.width()),
                      place(bounds.y() + bounds.height() - rect.y() - rect.height(), whole.height() - part.height()));
  const QImage all = picture(bounds, ratio, draw, kept);
  return part == whole ? all : all.copy(QRect(corner, part));
}

AlignedPicture alignedPicture(const QSizeF& size, double ratio, QPointF cornerInPixels, const Drawing& draw,
                              KeptPixels* kept) {
  const QSize pixels(int(std::ceil(cornerInPixels.x() + size.width() * ratio)),
                     int(std::ceil(cornerInPixels.y() + size.height() * ratio)));
  if (size.isEmpty()) return {};
  const QPointF topLeft = -cornerInPixels / ratio;
  return {drawOnImage(pixels, ratio, toPixels({topLeft.x(), size.height() - topLeft.y()}, ratio), draw, kept),
          topLeft};
}

} // namespace xov
