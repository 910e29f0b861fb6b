#include "platform/TraceBlend.h"

#include "platform/TraceVector.h"

namespace xov {

namespace {

using Bytes16 = std::uint8_t __attribute__((vector_size(16)));
using Shorts16 = std::uint16_t __attribute__((vector_size(32)));
using Words4 = std::uint32_t __attribute__((vector_size(16)));

constexpr std::uint32_t kFull = 255;

/// value / 255, rounded; exact for value <= 255².
template <class Number>
XOV_INLINE void divideBy255(Number& value) {
  value += 128;
  value = (value + (value >> 8)) >> 8;
}

XOV_INLINE void blendPixel(std::uint32_t color, std::uint32_t covered, std::uint32_t& pixel) {
  std::uint32_t result = 0;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    std::uint32_t mixed = ((color >> shift) & kFull) * covered + ((pixel >> shift) & kFull) * (kFull - covered);
    divideBy255(mixed);
    result |= mixed << shift;
  }
  pixel = result;
}

/// Four pixels at a time; those without ink are left alone, so that a sparse picture costs little.
template <class Vector>
XOV_INLINE void blendRowWith(std::uint32_t color, std::uint32_t alpha, const std::uint8_t* coverage, int count,
                             std::uint32_t* pixels) {
  const Words4 solid = Words4{} + color;
  const Shorts16 source = __builtin_convertvector(Bytes16(solid), Shorts16);
  int i = 0;
  for (; i + 4 <= count; i += 4) {
    std::uint32_t four;
    std::memcpy(&four, coverage + i, sizeof four);
    if (four == 0) continue;
    if (four == 0xFFFFFFFFU && alpha == kFull) {
      storeVector(solid, pixels + i);
      continue;
    }
    Words4 spread{coverage[i], coverage[i + 1], coverage[i + 2], coverage[i + 3]};
    spread |= spread << 8;
    spread |= spread << 16;
    Shorts16 covered = __builtin_convertvector(Bytes16(spread), Shorts16);
    covered *= static_cast<std::uint16_t>(alpha);
    divideBy255(covered);
    Bytes16 under;
    loadVector(pixels + i, under);
    Shorts16 mixed = source * covered + __builtin_convertvector(under, Shorts16) * (255 - covered);
    divideBy255(mixed);
    storeVector(__builtin_convertvector(mixed, Bytes16), pixels + i);
  }
  for (; i < count; ++i) {
    std::uint32_t covered = coverage[i] * alpha;
    divideBy255(covered);
    if (covered > 0) blendPixel(color, covered, pixels[i]);
  }
}

XOV_VECTOR_FUNCTION(void, blendRow,
                    (std::uint32_t color, std::uint32_t alpha, const std::uint8_t* coverage, int count,
                     std::uint32_t* pixels),
                    (color, alpha, coverage, count, pixels))

} // namespace

TraceInk::TraceInk(const QColor& color)
    : color_(color.rgb()),
      alpha_(static_cast<std::uint32_t>(qAlpha(color.rgba()))) {}

void TraceInk::blend(const std::uint8_t* coverage, int count, std::uint32_t* pixels) const {
  blendRow(color_, alpha_, coverage, count, pixels);
}

} // namespace xov
