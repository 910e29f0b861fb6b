#include "XOV_Graphics/base/Numbers.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <type_traits>

namespace xov {

namespace {

constexpr int kDefaultDecimals = 6;
// Sign, digits before the point of the largest number, point, exponent.
constexpr int kRoomBesideDecimals = std::numeric_limits<float>::max_exponent10 + 16;
constexpr int kErrorDigits = 9;

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Where the number begins: after a plus sign, which from_chars does not know. Nothing else may follow the plus but
/// the number itself.
const char* withoutPlus(QByteArrayView text) {
  const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
  return text.data() + (plus ? 1 : 0);
}

/// The number between `from` and `to`, which its type cannot hold.
template <typename Number>
std::optional<Number> outOfRangeNumber(const char* from, const char* to, OutOfRange outOfRange) {
  if constexpr (std::is_integral_v<Number>) {
    return {};
  } else {
    // Infinity or 0 where not even a double holds it.
    const double wide = QString::fromLatin1(from, to - from).toDouble();
    if (outOfRange == OutOfRange::Nearest) return Number(toSinglePrecision(wide));
    const bool isTiny = std::is_same_v<Number, float> && wide != 0 && std::abs(wide) < 1;
    return isTiny ? std::optional<Number>(Number(wide)) : std::nullopt;
  }
}

// printf() would write the decimal sign of the host's locale.
std::string signedText(float value, std::chars_format format, int decimals, Sign sign) {
  if (decimals < 0) decimals = kDefaultDecimals;
  std::string text(std::size_t(kRoomBesideDecimals) + std::size_t(decimals), '\0');
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format, decimals).ptr;
  text.resize(std::size_t(end - text.data()));
  if (std::signbit(value) || sign == Sign::WhenNegative) return text;
  return (sign == Sign::Always ? '+' : ' ') + text;
}

} // namespace

template <typename Number>
std::optional<Number> takeNumber(QByteArrayView& rest, OutOfRange outOfRange) {
  const char* const from = withoutPlus(rest);
  const char* const to = rest.data() + rest.size();
  Number value{};
  const auto [end, fault] = std::from_chars(from, to, value);
  if (fault == std::errc::invalid_argument) return {};
  const std::optional<Number> number =
      fault == std::errc() ? std::optional(value) : outOfRangeNumber<Number>(from, end, outOfRange);
  if (number) rest = QByteArrayView(end, to);
  return number;
}

template <typename Number>
std::optional<Number> toNumber(QByteArrayView text, OutOfRange outOfRange) {
  const std::optional<Number> number = takeNumber<Number>(text, outOfRange);
  return text.isEmpty() ? number : std::nullopt;
}

template std::optional<float> takeNumber<float>(QByteArrayView&, OutOfRange);
template std::optional<double> takeNumber<double>(QByteArrayView&, OutOfRange);
template std::optional<std::int32_t> takeNumber<std::int32_t>(QByteArrayView&, OutOfRange);
template std::optional<float> toNumber<float>(QByteArrayView, OutOfRange);
template std::optional<double> toNumber<double>(QByteArrayView, OutOfRange);
template std::optional<std::int32_t> toNumber<std::int32_t>(QByteArrayView, OutOfRange);

void skipSpace(QByteArrayView& rest) {
  const char* const end = rest.data() + rest.size();
  rest = QByteArrayView(std::find_if_not(rest.data(), end, isSpace), end);
}

float toSinglePrecision(double value) {
  constexpr double kLargest = double(std::numeric_limits<float>::max());
  if (std::abs(value) > kLargest) return value > 0 ? HUGE_VALF : -HUGE_VALF;
  return float(value);
}

std::string fixedText(float value, int width, int decimals, Sign sign) {
  std::string text = signedText(value, std::chars_format::fixed, decimals, sign);
  const std::size_t wanted = std::size_t(std::abs(width));
  if (text.size() >= wanted) return text;
  const std::string blanks(wanted - text.size(), ' ');
  return width < 0 ? text + blanks : blanks + text;
}

std::string exponentText(float value, int decimals, Sign sign) {
  return signedText(value, std::chars_format::scientific, decimals, sign);
}

template <typename Text>
void appendFixed(Text& text, float value) {
  std::array<char, kRoomBesideDecimals + kDefaultDecimals> digits;
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, kDefaultDecimals);
  text.append(digits.data(), end.ptr - digits.data());
}

template void appendFixed<QByteArray>(QByteArray&, float);
template void appendFixed<std::string>(std::string&, float);

std::string powerOfTenSuffix(int exponent) {
  char text[32];
  std::snprintf(text, sizeof text, " x 10^%+.2d", exponent);
  return text;
}

QString numberText(double value) { return QString::number(value, 'g', kErrorDigits); }

} // namespace xov
