#include "XOV_Graphics/seismic/io/events/EventNumbers.h"

#include "XOV_Graphics/seismic/io/sac/SacChecks.h"

namespace xov {

namespace {

constexpr qsizetype kQuotedCharacters = 40;

} // namespace

QString takeEventNumber(const EventNumber& number, QStringView text, double factor, float& value) {
  if (text.isEmpty()) return {};
  bool isNumber = false;
  const double read = text.toDouble(&isNumber) * factor;
  if (isNumber && read >= number.lowest && read <= number.highest) {
    value = float(read);
    return {};
  }
  return QLatin1String(number.name) + ": found \"" + text.left(kQuotedCharacters).toString().simplified() +
         "\", expected " + numberText(number.lowest) + " to " + numberText(number.highest);
}

} // namespace xov
