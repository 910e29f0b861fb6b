#include "XOV_Graphics/base/NumberScan.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace xov {

namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Where the number begins: after a plus sign, which from_chars does not know. Nothing else may follow the plus but
/// the number itself.
const char* withoutPlus(QByteArrayView text) {
  const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
  return text.data() + (plus ? 1 : 0);
}

/// Numbers that are out of single precision's range because they are too small.
bool readTiny(const char* from, const char* to, float& value) {
  double wide = 0;
  if (std::from_chars(from, to, wide).ec != std::errc() || std::abs(wide) >= 1) return false;
  value = float(wide);
  return true;
}

} // namespace

void skipSpace(QByteArrayView& rest) {
  const char* const end = rest.data() + rest.size();
  rest = QByteArrayView(std::find_if_not(rest.data(), end, isSpace), end);
}

bool takeFloat(QByteArrayView& rest, float& value) {
  skipSpace(rest);
  const char* const from = withoutPlus(rest);
  const char* const to = rest.data() + rest.size();
  const auto [end, fault] = std::from_chars(from, to, value);
  if (fault == std::errc::invalid_argument) return false;
  if (fault == std::errc::result_out_of_range && !readTiny(from, to, value)) return false;
  rest = QByteArrayView(end, to);
  return true;
}

bool takeInt(QByteArrayView& rest, int& value) {
  skipSpace(rest);
  const char* const to = rest.data() + rest.size();
  const auto [end, fault] = std::from_chars(withoutPlus(rest), to, value);
  if (fault != std::errc()) return false;
  rest = QByteArrayView(end, to);
  return true;
}

} // namespace xov
