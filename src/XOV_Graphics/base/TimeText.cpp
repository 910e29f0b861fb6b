#include "XOV_Graphics/base/TimeText.h"

#include <QRegularExpression>

#include <cmath>

namespace xov {

namespace {

constexpr qint64 kMillisecondsPerSecond = 1000;
constexpr qint64 kSecondsPerMinute = 60;
constexpr qint64 kMinutesPerHour = 60;
constexpr int kLastYear = 9999;

// The groups of the expression.
enum Group { Year = 1, Separator, Month, Day, Hour, Minute, Second, Fraction, ZoneSign, ZoneHour, ZoneMinute };

const QRegularExpression& timeExpression() {
  static const QRegularExpression expression(
      QStringLiteral(R"(\A(\d{4})([-/]?)(\d{2})\2(\d{2}))"
                     R"((?:[T ]\s*(\d{1,2}):(\d{2})(?::(\d{2})(\.\d{0,12})?)?)?)"
                     R"(\s*(?:Z|UTC|GMT|([-+])(\d{2}):?(\d{2})?)?\z)"),
      QRegularExpression::CaseInsensitiveOption);
  return expression;
}

/// The moment that lies an offset in seconds before a date and a clock.
std::optional<QDateTime> timeLess(qint64 offset, const DateAndClock& written) {
  const QDate date(written.year, written.month, written.day);
  const bool isClock = written.hour >= 0 && written.hour <= 23 && written.minute >= 0 && written.minute <= 59 &&
                       written.second >= 0 && written.second <= 60 && written.fraction >= 0 && written.fraction <= 1;
  if (!date.isValid() || !isClock) return {};
  const qint64 clock =
      (written.hour * kMinutesPerHour + written.minute) * kSecondsPerMinute + written.second - offset;
  const QDateTime midnight(date, QTime(0, 0), Qt::UTC);
  const QDateTime time = midnight.addMSecs(clock * kMillisecondsPerSecond +
                                           std::llround(written.fraction * double(kMillisecondsPerSecond)));
  if (time.date().year() < 1 || time.date().year() > kLastYear) return {};
  return time;
}

} // namespace

std::optional<QDateTime> utcTime(const DateAndClock& written) { return timeLess(0, written); }

std::optional<QDateTime> parseUtcTime(QStringView text) {
  const QRegularExpressionMatch match = timeExpression().match(text.trimmed().toString());
  if (!match.hasMatch()) return {};
  const auto number = [&](Group group) { return match.capturedView(group).toInt(); };
  const qint64 offset = (number(ZoneHour) * kMinutesPerHour + number(ZoneMinute)) * kSecondsPerMinute;
  const bool isWest = match.capturedView(ZoneSign) == QLatin1String("-");
  return timeLess(isWest ? -offset : offset, {number(Year), number(Month), number(Day), number(Hour), number(Minute),
                                              number(Second), match.capturedView(Fraction).toDouble()});
}

QString utcText(const QDateTime& time) { return time.toUTC().toString(Qt::ISODateWithMs); }

} // namespace xov
