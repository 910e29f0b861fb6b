#include "platform/TraceBlend.h"

namespace xov {

namespace {

constexpr std::uint32_t kFull = 255;

} // namespace

TraceInk::TraceInk(const QColor& color) {
  const QRgb rgba = color.rgba();
  alpha_ = static_cast<std::uint32_t>(qAlpha(rgba));
  channels_[0] = static_cast<std::uint32_t>(qBlue(rgba)) * alpha_;
  channels_[1] = static_cast<std::uint32_t>(qGreen(rgba)) * alpha_;
  channels_[2] = static_cast<std::uint32_t>(qRed(rgba)) * alpha_;
  channels_[3] = kFull * alpha_;
  solid_ = rgba;
}

void TraceInk::blend(const std::uint8_t* coverage, int count, std::uint32_t* pixels) const {
  for (int i = 0; i < count; ++i) {
    const std::uint32_t covered = coverage[i];
    if (covered == 0) continue;
    if (covered * alpha_ == kFull * kFull) {
      pixels[i] = solid_;
      continue;
    }
    const std::uint32_t kept = kFull * kFull - covered * alpha_;
    std::uint32_t result = 0;
    for (unsigned channel = 0; channel < 4; ++channel) {
      const std::uint32_t under = (pixels[i] >> (8 * channel)) & kFull;
      const std::uint32_t mixed = channels_[channel] * covered + under * kept;
      result |= ((mixed + kFull * kFull / 2) / (kFull * kFull)) << (8 * channel);
    }
    pixels[i] = result;
  }
}

} // namespace xov
