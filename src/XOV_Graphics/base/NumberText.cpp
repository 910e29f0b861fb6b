#include "XOV_Graphics/base/NumberText.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace xov {

namespace {

constexpr int kDefaultDecimals = 6;
// Sign, digits before the point of the largest number, point, exponent.
constexpr int kRoomBesideDecimals = std::numeric_limits<float>::max_exponent10 + 16;

// printf() would write the decimal sign of the host's locale.
std::string numberText(float value, std::chars_format format, int decimals, Sign sign) {
  if (decimals < 0) decimals = kDefaultDecimals;
  std::string text(std::size_t(kRoomBesideDecimals) + std::size_t(decimals), '\0');
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format, decimals).ptr;
  text.resize(std::size_t(end - text.data()));
  if (std::signbit(value) || sign == Sign::WhenNegative) return text;
  return (sign == Sign::Always ? '+' : ' ') + text;
}

} // namespace

std::string fixedText(float value, int width, int decimals, Sign sign) {
  std::string text = numberText(value, std::chars_format::fixed, decimals, sign);
  const std::size_t wanted = std::size_t(std::abs(width));
  if (text.size() >= wanted) return text;
  const std::string blanks(wanted - text.size(), ' ');
  return width < 0 ? text + blanks : blanks + text;
}

std::string exponentText(float value, int decimals, Sign sign) {
  return numberText(value, std::chars_format::scientific, decimals, sign);
}

std::string powerOfTenSuffix(int exponent) {
  char text[32];
  std::snprintf(text, sizeof text, " x 10^%+.2d", exponent);
  return text;
}

} // namespace xov
