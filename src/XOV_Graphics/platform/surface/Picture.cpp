#include "XOV_Graphics/platform/surface/Picture.h"

#include "XOV_Graphics/platform/surface/PixelContext.h"

#include <QPainter>

#include <cmath>

namespace xov {

namespace {

constexpr double kPointsPerMetre = 72 / 0.0254;
// Larger pictures than this many pixels a side are beyond what the painter's arithmetic holds.
constexpr double kLargestSide = 32767;

QImage drawOnImage(QSize size, double ratio, const QTransform& viewToDevice, const Drawing& draw) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  const PixelTarget target{image.bits(), image.bytesPerLine(), image.width(), image.height()};
  {
    QPainter painter(&image);
    PixelContext context(painter, viewToDevice, target);
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

} // namespace

QImage picture(const QRectF& rect, double ratio, const Drawing& draw) {
  const double width = std::round(rect.width() * ratio);
  const double height = std::round(rect.height() * ratio);
  if (!(width >= 1 && height >= 1 && width <= kLargestSide && height <= kLargestSide)) return {};
  return drawOnImage(QSize(int(width), int(height)), ratio, toPixels({rect.left(), rect.y() + rect.height()}, ratio),
                     draw);
}

AlignedPicture alignedPicture(const QRectF& area, const QRectF& bounds, double ratio, QPointF cornerInPixels,
                              const Drawing& draw) {
  // Widget coordinates of the area, in pixels from the pixel that the view's corner lies in.
  const double left = area.left() * ratio + cornerInPixels.x();
  const double top = (bounds.height() - area.y() - area.height()) * ratio + cornerInPixels.y();
  const QPoint first(int(std::floor(left)), int(std::floor(top)));
  const QSize size(int(std::ceil(left + area.width() * ratio)) - first.x(),
                   int(std::ceil(top + area.height() * ratio)) - first.y());
  if (size.isEmpty()) return {};
  const QPointF topLeft = (QPointF(first) - cornerInPixels) / ratio;
  return {drawOnImage(size, ratio, toPixels({topLeft.x(), bounds.height() - topLeft.y()}, ratio), draw), topLeft};
}

} // namespace xov
