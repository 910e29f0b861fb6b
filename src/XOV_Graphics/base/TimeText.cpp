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

} // namespace

std::optional<QDateTime> parseUtcTime(QStringView text) {
  const QRegularExpressionMatch match = timeExpression().match(text.trimmed().toString());
  if (!match.hasMatch()) return {};
  const auto number = [&](Group group) { return match.capturedView(group).toInt(); };
  const QDate date(number(Year), number(Month), number(Day));
  if (!date.isValid() || number(Hour) > 23 || number(Minute) > 59 || number(Second) > 60) return {};
  const double fraction = match.capturedView(Fraction).toDouble();
  const qint64 offset = (number(ZoneHour) * kMinutesPerHour + number(ZoneMinute)) * kSecondsPerMinute;
  const bool isWest = match.capturedView(ZoneSign) == QLatin1String("-");
  const qint64 clock = (number(Hour) * kMinutesPerHour + number(Minute)) * kSecondsPerMinute + number(Second) +
                       (isWest ? offset : -offset);
  const QDateTime midnight(date, QTime(0, 0), Qt::UTC);
  const QDateTime time =
      midnight.addMSecs(clock * kMillisecondsPerSecond + std::llround(fraction * double(kMillisecondsPerSecond)));
  if (time.date().year() < 1 || time.date().year() > kLastYear) return {};
  return time;
}

QString utcText(const QDateTime& time) { return time.toUTC().toString(Qt::ISODateWithMs); }

} // namespace xov
