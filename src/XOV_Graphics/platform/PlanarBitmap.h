#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QImage>

#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace xov {

/// A bitmap whose colour channels are stored one after the other: a plane of bytes each for red, green, blue and
/// alpha, rows from the top. Alpha is not premultiplied.
class XOV_EXPORT PlanarBitmap {
public:
  static constexpr int kPlanes = 4; ///< red, green, blue and alpha

  PlanarBitmap() = default;
  /// All bytes 0. A size that is not positive, or beyond 2³¹ − 1 pixels, gives a bitmap without pixels.
  PlanarBitmap(int width, int height);

  /// Pixels beside each other.
  int width() const { return width_; }
  /// Rows of pixels.
  int height() const { return height_; }
  /// Whether it has no pixels.
  bool isNull() const { return width_ == 0; }

  /// Plane 0 red, 1 green, 2 blue, 3 alpha: width · height bytes. Empty for any other index.
  std::span<std::uint8_t> plane(int index);
  std::span<const std::uint8_t> plane(int index) const;

  /// The bitmap as an image, for drawing.
  QImage toImage() const;
  /// The same without regard to the alpha plane: every pixel is opaque.
  QImage toOpaqueImage() const;

private:
  static void* clearedMemory(std::size_t bytes);

  /// Memory that comes cleared, so that large bitmaps are not written twice.
  template <class Byte>
  struct ClearedMemory {
    using value_type = Byte;
    ClearedMemory() = default;
    template <class Other>
    ClearedMemory(const ClearedMemory<Other>&) noexcept {}
    Byte* allocate(std::size_t count) { return static_cast<Byte*>(clearedMemory(count * sizeof(Byte))); }
    void deallocate(Byte* memory, std::size_t) noexcept { std::free(memory); }
    void construct(Byte*) noexcept {} // is 0 already
    void construct(Byte* place, Byte value) noexcept { *place = value; }
    bool operator==(const ClearedMemory&) const = default;
  };

  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t, ClearedMemory<std::uint8_t>> bytes_;
};

} // namespace xov
