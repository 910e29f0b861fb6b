#pragma once

#include <QColor>

#include <cstdint>

namespace xov {

/// A pen colour, laid over premultiplied pixels of 32 bits by coverage.
class TraceInk {
public:
  explicit TraceInk(const QColor& color);

  bool isInvisible() const { return alpha_ == 0; }

  /// Lays the ink over `count` pixels; coverage is 0 to 255. Every channel is rounded once.
  void blend(const std::uint8_t* coverage, int count, std::uint32_t* pixels) const;

private:
  std::uint32_t alpha_ = 0;
  std::uint32_t channels_[4] = {}; // blue, green, red, alpha, each times alpha: 0 to 255²
  std::uint32_t solid_ = 0;        // the pixel under full coverage of an opaque colour
};

} // namespace xov
