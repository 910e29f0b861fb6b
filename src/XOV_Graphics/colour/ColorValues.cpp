#include "XOV_Graphics/colour/ColorValues.h"

#include "XOV_Graphics/colour/ColorIndex.h"
#include "XOV_Graphics/colour/PerceptualTables.h"

#include <algorithm>

namespace xov {

namespace {

template <typename Component>
void write(Component* to, Component value) {
  if (to != nullptr) *to = value;
}

void writeColor(const Rgb& color, std::uint32_t* red, std::uint32_t* green, std::uint32_t* blue,
                std::uint32_t* alpha) {
  write(red, std::uint32_t(color.red));
  write(green, std::uint32_t(color.green));
  write(blue, std::uint32_t(color.blue));
  write(alpha, kAlpha);
}

std::uint8_t intensity(std::uint32_t value) { return std::uint8_t(validateColor(value)); }

Rgb colorOf(std::uint32_t packed) {
  return {std::uint8_t(packed >> 16), std::uint8_t(packed >> 8), std::uint8_t(packed)};
}

Rgb grey(std::uint32_t level) {
  const std::uint8_t shade = intensity(kHighestLevel - level);
  return {shade, shade, shade};
}

Rgb redWhiteBlue(std::uint32_t level) {
  constexpr std::uint32_t kMiddle = 128;
  const std::uint8_t full = intensity(kHighestLevel);
  if (level < kMiddle) return {full, intensity(2 * level), intensity(2 * level)};
  const std::uint8_t fading = intensity(2 * (kHighestLevel - level));
  if (level > kMiddle) return {fading, fading, full};
  return {full, full, full};
}

/// Counted from the red end.
int rainbowStep(std::uint32_t level) {
  const float product = float(kLastStep) * float(level);
  return std::clamp(int(double(product) / double(kHighestLevel)), 0, kLastStep);
}

/// The level is divided by the number of steps and not scaled to them, so that the palette ends at step 3.
int divergingStep(std::uint32_t level) {
  return std::clamp(int(double(kLastStep) - double(level) / double(kLastStep)), 0, kLastStep);
}

} // namespace

Rgb paletteColor(int palette, std::uint32_t level) {
  switch (palette) {
  case 0:
    return grey(level);
  case 1:
    return redWhiteBlue(level);
  case 2:
    return kRainbow[std::size_t(kLastStep - rainbowStep(level))];
  case 3:
    return kRainbow[std::size_t(rainbowStep(level))];
  case kViridisPalette:
    return colorOf(kViridis[level]);
  case kCividisPalette:
    return colorOf(kCividis[level]);
  case kDawnPalette:
    return colorOf(kDawn[level]);
  default:
    return kDiverging[std::size_t(divergingStep(level))];
  }
}

std::uint32_t validateColor(std::uint32_t value) { return std::min(value, kHighestLevel); }

void getColorValues(int nShades, int palette, std::uint32_t* red, std::uint32_t* green, std::uint32_t* blue,
                    std::uint32_t* alpha, float value) {
  toLevel(bandWidth(nShades), value);
  writeColor(paletteColor(palette, std::uint32_t(value)), red, green, blue, alpha);
}

void getColorValuesFloat(int /*nShades*/, float* red, float* green, float* blue, float* alpha, float value) {
  constexpr auto kBand = float(1.0 / kLastStep);
  const float place = value / kBand;
  const float notBelow = place > 0 ? place : 0;
  const Rgb& color = kRainbow[std::size_t(std::min(notBelow, float(kLastStep)))];
  const auto fraction = [](std::uint8_t component) { return float(component / double(kHighestLevel)); };
  write(red, fraction(color.red));
  write(green, fraction(color.green));
  write(blue, fraction(color.blue));
  write(alpha, 1.0F);
}

void getTopoColorValues(int /*palette*/, std::uint32_t* red, std::uint32_t* green, std::uint32_t* blue,
                        std::uint32_t* alpha, float elevation) {
  toMeterPlace(elevation);
  const std::uint8_t row = kRowOfMeter[std::size_t(elevation)];
  writeColor(kTopography[row].color, red, green, blue, alpha);
}

} // namespace xov
