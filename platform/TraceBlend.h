#pragma once

#include <QColor>

#include <cstdint>

namespace xov {

/// A pen colour, laid over premultiplied pixels of 32 bits by coverage.
class TraceInk {
public:
  explicit TraceInk(const QColor& color);

  bool isInvisible() const { return alpha_ == 0; }

  /// Lays the ink over `count` pixels; coverage is 0 to 255.
  void blend(const std::uint8_t* coverage, int count, std::uint32_t* pixels) const;

private:
  std::uint32_t color_ = 0; // opaque
  std::uint32_t alpha_ = 0;
};

} // namespace xov
