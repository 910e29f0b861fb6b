#include "XOV_Graphics/base/TimeText.h"

#include <algorithm>
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

/// Takes a text to pieces from its front. Digits and blanks are those of ASCII.
class TimeCursor {
public:
  explicit TimeCursor(QStringView text) : rest_(text) {}

  bool isAtEnd() const { return rest_.isEmpty(); }
  /// The digits at the front, at most so many.
  QStringView digits(qsizetype most) {
    qsizetype count = 0;
    while (count < std::min(most, rest_.size()) && isDigit(rest_[count]))
      ++count;
    return take(count);
  }
  /// A number of exactly so many digits.
  std::optional<int> number(qsizetype count) {
    const QStringView taken = digits(count);
    return taken.size() == count ? std::optional(taken.toInt()) : std::nullopt;
  }
  /// One of these characters; a null one where none is at the front.
  QChar oneOf(QLatin1StringView characters) {
    if (rest_.isEmpty() || !characters.contains(rest_.front())) return {};
    return take(1).front();
  }
  bool word(QLatin1StringView expected) {
    if (!rest_.startsWith(expected, Qt::CaseInsensitive)) return false;
    take(expected.size());
    return true;
  }
  void blanks() {
    while (!oneOf(QLatin1StringView(" \t\n\v\f\r")).isNull()) {
    }
  }

private:
  static bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }
  QStringView take(qsizetype count) {
    const QStringView taken = rest_.first(count);
    rest_ = rest_.sliced(count);
    return taken;
  }

  QStringView rest_;
};

/// "2011-03-11", also with slashes or nothing between its numbers.
bool takeDate(TimeCursor& text, DateAndClock& clock) {
  const std::optional<int> year = text.number(4);
  const QChar separator = text.oneOf(QLatin1StringView("-/"));
  const std::optional<int> month = text.number(2);
  if (!separator.isNull() && text.oneOf(QLatin1StringView("-/")) != separator) return false;
  const std::optional<int> day = text.number(2);
  if (!year || !month || !day) return false;
  clock.year = *year;
  clock.month = *month;
  clock.day = *day;
  return true;
}

/// "T05:46:24.12" or less of it; takes nothing where no clock follows.
void takeClock(TimeCursor& text, DateAndClock& clock) {
  constexpr qsizetype kMostFractionDigits = 12;
  TimeCursor after = text;
  if (after.oneOf(QLatin1StringView("Tt ")).isNull()) return;
  after.blanks();
  const QStringView hour = after.digits(2);
  if (hour.isEmpty() || after.oneOf(QLatin1StringView(":")).isNull()) return;
  const std::optional<int> minute = after.number(2);
  if (!minute) return;
  clock.hour = hour.toInt();
  clock.minute = *minute;
  text = after;
  if (after.oneOf(QLatin1StringView(":")).isNull()) return;
  const std::optional<int> second = after.number(2);
  if (!second) return;
  clock.second = *second;
  if (!after.oneOf(QLatin1StringView(".")).isNull())
    clock.fraction = (QStringLiteral("0.") + after.digits(kMostFractionDigits).toString()).toDouble();
  text = after;
}

/// Blanks and "Z", "UTC", "GMT" or "+05:30", "+0530", "+05"; seconds east, 0 where nothing follows.
qint64 takeZone(TimeCursor& text) {
  text.blanks();
  for (const char* utc : {"Z", "UTC", "GMT"}) {
    if (text.word(QLatin1StringView(utc))) return 0;
  }
  TimeCursor after = text;
  const QChar sign = after.oneOf(QLatin1StringView("+-"));
  const std::optional<int> hours = after.number(2);
  if (sign.isNull() || !hours) return 0;
  after.oneOf(QLatin1StringView(":"));
  text = after;
  const std::optional<int> minutes = after.number(2);
  if (minutes) text = after;
  const qint64 offset = (*hours * kMinutesPerHour + minutes.value_or(0)) * kSecondsPerMinute;
  return sign == QLatin1Char('-') ? -offset : offset;
}

std::optional<WrittenMoment> writtenMoment(QStringView written) {
  TimeCursor text(written.trimmed());
  WrittenMoment moment;
  if (!takeDate(text, moment.clock)) return {};
  takeClock(text, moment.clock);
  moment.offset = takeZone(text);
  return text.isAtEnd() ? std::optional(moment) : std::nullopt;
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
