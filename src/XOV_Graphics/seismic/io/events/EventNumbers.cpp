#include "XOV_Graphics/seismic/io/events/EventNumbers.h"

#include "XOV_Graphics/base/Numbers.h"

#include <cmath>

namespace xov {

namespace {

constexpr qsizetype kQuotedCharacters = 40;

template <typename Value>
QString take(const EventNumber& number, QStringView text, double factor, Value& value) {
  if (text.isEmpty()) return {};
  const QByteArray digits = text.trimmed().toUtf8();
  const double read = toNumber<double>(digits, OutOfRange::Nearest).value_or(std::nan("")) * factor;
  if (read >= number.lowest && read <= number.highest) {
    value = Value(read);
    return {};
  }
  return QLatin1String(number.name) + ": found \"" + text.left(kQuotedCharacters).toString().simplified() +
         "\", expected " + numberText(number.lowest) + " to " + numberText(number.highest);
}

} // namespace

QString takeEventNumber(const EventNumber& number, QStringView text, double factor, float& value) {
  return take(number, text, factor, value);
}

QString takeEventNumber(const EventNumber& number, QStringView text, double factor, double& value) {
  return take(number, text, factor, value);
}

} // namespace xov
