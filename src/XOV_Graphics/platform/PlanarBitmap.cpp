#include "XOV_Graphics/platform/PlanarBitmap.h"

#include "XOV_Graphics/base/LargePages.h"

#include <limits>
#include <new>

namespace xov {

PlanarBitmap::PlanarBitmap(int width, int height) {
  if (width <= 0 || height <= 0 || std::int64_t(width) * height > std::numeric_limits<int>::max()) return;
  width_ = width;
  height_ = height;
  bytes_ = decltype(bytes_)(std::size_t(width) * std::size_t(height) * kPlanes);
}

void* PlanarBitmap::clearedMemory(std::size_t bytes) {
  void* const memory = std::calloc(bytes, 1);
  if (memory == nullptr) throw std::bad_alloc();
  askForLargePages(memory, bytes);
  return memory;
}

std::span<const std::uint8_t> PlanarBitmap::plane(int index) const {
  if (index < 0 || index >= kPlanes) return {};
  const std::size_t size = bytes_.size() / kPlanes;
  return std::span(bytes_).subspan(std::size_t(index) * size, size);
}

std::span<std::uint8_t> PlanarBitmap::plane(int index) {
  if (index < 0 || index >= kPlanes) return {};
  const std::size_t size = bytes_.size() / kPlanes;
  return std::span(bytes_).subspan(std::size_t(index) * size, size);
}

QImage PlanarBitmap::toImage() const {
  if (isNull()) return {};
  QImage image(width_, height_, QImage::Format_ARGB32);
  if (image.isNull()) return image;
  const auto red = plane(0);
  const auto green = plane(1);
  const auto blue = plane(2);
  const auto alpha = plane(3);
  std::size_t i = 0;
  for (int y = 0; y < height_; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width_; ++x, ++i)
      line[x] = qRgba(red[i], green[i], blue[i], alpha[i]);
  }
  return image;
}

QImage PlanarBitmap::toOpaqueImage() const {
  if (isNull()) return {};
  QImage image(width_, height_, QImage::Format_RGB32);
  if (image.isNull()) return image;
  const std::uint8_t* red = plane(0).data();
  const std::uint8_t* green = plane(1).data();
  const std::uint8_t* blue = plane(2).data();
  for (int y = 0; y < height_; ++y, red += width_, green += width_, blue += width_) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width_; ++x)
      line[x] = qRgb(red[x], green[x], blue[x]);
  }
  return image;
}

} // namespace xov
