#include "XOV_Graphics/base/TimeText.h"

#include <QRegularExpression>

#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr qint64 kMillisecondsPerSecond = 1000;
constexpr qint64 kSecondsPerMinute = 60;
constexpr qint64 kMinutesPerHour = 60;
constexpr int kLastYear = 9999;
constexpr qint64 kNanosecondsPerSecond = 1'000'000'000;
constexpr qint64 kNanosecondsPerMillisecond = 1'000'000;
// What 64 bits of nanoseconds hold, less the parts of years at both ends.
constexpr int kFirstNanosecondYear = 1678;
constexpr int kLastNanosecondYear = 2261;
constexpr int kNanosecondDigits = 9;
constexpr double kMostSeconds = 2e10; // from one end to the other, and more

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

/// A clock whose fraction has been taken off, and that fraction.
struct WrittenMoment {
  DateAndClock clock;
  qint64 offset = 0; ///< of the zone, in seconds
};

std::optional<WrittenMoment> writtenMoment(QStringView text) {
  const QRegularExpressionMatch match = timeExpression().match(text.trimmed().toString());
  if (!match.hasMatch()) return {};
  const auto number = [&](Group group) { return match.capturedView(group).toInt(); };
  const qint64 offset = (number(ZoneHour) * kMinutesPerHour + number(ZoneMinute)) * kSecondsPerMinute;
  const bool isWest = match.capturedView(ZoneSign) == QLatin1String("-");
  return WrittenMoment{{number(Year), number(Month), number(Day), number(Hour), number(Minute), number(Second),
                        match.capturedView(Fraction).toDouble()},
                       isWest ? -offset : offset};
}

/// The moment so many nanoseconds after another, at most some seconds.
std::optional<UtcNanoseconds> nanosecondsAfter(const QDateTime& time, qint64 nanoseconds) {
  const QDateTime utc = time.toUTC();
  const int year = utc.date().year();
  if (!utc.isValid() || year < kFirstNanosecondYear || year > kLastNanosecondYear) return {};
  const UtcNanoseconds moment(std::chrono::milliseconds(utc.toMSecsSinceEpoch()));
  const auto first = UtcNanoseconds(std::chrono::sys_days(std::chrono::year(kFirstNanosecondYear) / 1 / 1));
  const auto last = UtcNanoseconds(std::chrono::sys_days(std::chrono::year(kLastNanosecondYear + 1) / 1 / 1));
  const UtcNanoseconds after = moment + std::chrono::nanoseconds(nanoseconds);
  return after >= first && after < last ? std::optional(after) : std::nullopt;
}

} // namespace

std::optional<QDateTime> utcTime(const DateAndClock& written) { return timeLess(0, written); }

std::optional<QDateTime> parseUtcTime(QStringView text) {
  const std::optional<WrittenMoment> written = writtenMoment(text);
  return written ? timeLess(written->offset, written->clock) : std::nullopt;
}

QString utcText(const QDateTime& time) { return time.toUTC().toString(Qt::ISODateWithMs); }

std::optional<UtcNanoseconds> parseUtcNanoseconds(QStringView text) {
  std::optional<WrittenMoment> written = writtenMoment(text);
  if (!written) return {};
  const double fraction = std::exchange(written->clock.fraction, 0);
  const std::optional<QDateTime> second = timeLess(written->offset, written->clock);
  if (!second) return {};
  return nanosecondsAfter(*second, std::llround(fraction * double(kNanosecondsPerSecond)));
}

QString utcText(UtcNanoseconds time) {
  const auto second = std::chrono::floor<std::chrono::seconds>(time);
  const QDateTime whole = QDateTime::fromSecsSinceEpoch(second.time_since_epoch().count(), Qt::UTC);
  return whole.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) +
         QStringLiteral(".%1Z").arg((time - second).count(), kNanosecondDigits, 10, QLatin1Char('0'));
}

std::optional<UtcNanoseconds> utcAfter(const QDateTime& time, double seconds) {
  if (!(std::abs(seconds) < kMostSeconds)) return {};
  // Whole milliseconds on their own: 64 bits hold no nanoseconds of centuries twice over.
  const double milliseconds = std::floor(seconds * double(kMillisecondsPerSecond));
  const double rest = seconds * double(kNanosecondsPerSecond) - milliseconds * double(kNanosecondsPerMillisecond);
  return nanosecondsAfter(time.addMSecs(qint64(milliseconds)), std::llround(rest));
}

double secondsFrom(const QDateTime& start, UtcNanoseconds end) {
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(end);
  const qint64 whole = milliseconds.time_since_epoch().count() - start.toMSecsSinceEpoch();
  return double(whole) / double(kMillisecondsPerSecond) +
         double((end - milliseconds).count()) / double(kNanosecondsPerSecond);
}

} // namespace xov
