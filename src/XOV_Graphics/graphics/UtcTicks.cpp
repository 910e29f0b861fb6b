#include "XOV_Graphics/graphics/UtcTicks.h"

#include "XOV_Graphics/base/LeapSeconds.h"
#include "XOV_Graphics/graphics/LinearAxis.h"

#include <QTimeZone>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace xov {

namespace {

constexpr qint64 kSecond = 1000;
constexpr qint64 kMinute = 60 * kSecond;
constexpr qint64 kHour = 60 * kMinute;
constexpr qint64 kDay = 24 * kHour;
constexpr double kDaysOfMonth = 30.4;
constexpr double kDaysOfYear = 365.25;

enum class Unit : quint8 { Millisecond, Day, Month, Year };

// A round time: so many units. Days count from the first of each month, months from January.
struct Step {
  Unit unit = Unit::Millisecond;
  qint64 count = 0;

  double seconds() const {
    switch (unit) {
    case Unit::Millisecond:
      return double(count) / double(kSecond);
    case Unit::Day:
      return double(count * kDay) / double(kSecond);
    case Unit::Month:
      return double(count) * kDaysOfMonth * double(kDay) / double(kSecond);
    case Unit::Year:
      break;
    }
    return double(count) * kDaysOfYear * double(kDay) / double(kSecond);
  }
};

struct Interval {
  Step major;
  Step minor;
};

constexpr Interval ofTime(qint64 major, qint64 minor) {
  return {{Unit::Millisecond, major}, {Unit::Millisecond, minor}};
}

constexpr Interval kIntervals[] = {ofTime(1, 0),
                                   ofTime(2, 1),
                                   ofTime(5, 1),
                                   ofTime(10, 2),
                                   ofTime(20, 5),
                                   ofTime(50, 10),
                                   ofTime(100, 20),
                                   ofTime(200, 50),
                                   ofTime(500, 100),
                                   ofTime(kSecond, kSecond / 5),
                                   ofTime(2 * kSecond, kSecond / 2),
                                   ofTime(5 * kSecond, kSecond),
                                   ofTime(10 * kSecond, 2 * kSecond),
                                   ofTime(15 * kSecond, 5 * kSecond),
                                   ofTime(30 * kSecond, 10 * kSecond),
                                   ofTime(kMinute, 15 * kSecond),
                                   ofTime(2 * kMinute, 30 * kSecond),
                                   ofTime(5 * kMinute, kMinute),
                                   ofTime(10 * kMinute, 2 * kMinute),
                                   ofTime(15 * kMinute, 5 * kMinute),
                                   ofTime(30 * kMinute, 10 * kMinute),
                                   ofTime(kHour, 15 * kMinute),
                                   ofTime(2 * kHour, 30 * kMinute),
                                   ofTime(3 * kHour, kHour),
                                   ofTime(6 * kHour, kHour),
                                   ofTime(12 * kHour, 3 * kHour),
                                   {{Unit::Day, 1}, {Unit::Millisecond, 6 * kHour}},
                                   {{Unit::Day, 2}, {Unit::Day, 1}},
                                   {{Unit::Day, 5}, {Unit::Day, 1}},
                                   {{Unit::Day, 10}, {Unit::Day, 2}},
                                   {{Unit::Month, 1}, {Unit::Day, 10}},
                                   {{Unit::Month, 3}, {Unit::Month, 1}},
                                   {{Unit::Month, 6}, {Unit::Month, 1}},
                                   {{Unit::Year, 1}, {Unit::Month, 3}},
                                   {{Unit::Year, 2}, {Unit::Month, 6}},
                                   {{Unit::Year, 5}, {Unit::Year, 1}},
                                   {{Unit::Year, 10}, {Unit::Year, 2}},
                                   {{Unit::Year, 20}, {Unit::Year, 5}},
                                   {{Unit::Year, 50}, {Unit::Year, 10}},
                                   {{Unit::Year, 100}, {Unit::Year, 20}},
                                   {{Unit::Year, 200}, {Unit::Year, 50}},
                                   {{Unit::Year, 500}, {Unit::Year, 100}},
                                   {{Unit::Year, 1000}, {Unit::Year, 200}}};

// Even minor ticks are no more than this: the widest screen has no room for them.
constexpr double kMostTicks = 5000;
// Labels of a line of any length, by the average length of months: days of months may make a tenth more.
constexpr double kMostLabels = 0.9 * kMostTickLabels;

QDateTime momentOf(qint64 utc) { return QDateTime::fromMSecsSinceEpoch(utc, QTimeZone::utc()); }

qint64 startOf(QDate day) { return QDateTime(day, QTime(0, 0), QTimeZone::utc()).toMSecsSinceEpoch(); }

// The axis: moments of UTC on a line of seconds that pass evenly.
class Span {
public:
  Span(const QDateTime& reference, double lower, double upper)
      : reference_(reference.toMSecsSinceEpoch()),
        lower_(lower),
        upper_(upper) {}

  double secondsOf(qint64 utc) const { return secondsBetween(reference_, utc); }
  bool holds(double seconds) const { return lower_ <= seconds && seconds <= upper_; }

  // The moment in UTC; of a leap second, the midnight after it.
  qint64 utcAt(double seconds) const {
    const qint64 even = reference_ + qint64(std::floor(seconds * double(kSecond)));
    // A leap second is counted in one of the two steps and not in the other.
    const qint64 near = lessLeaps(even, even);
    const qint64 utc = lessLeaps(even, near);
    const qint64 leap = lastLeapUpTo(std::max(near, utc));
    return std::min(near, utc) < leap ? leap : utc;
  }
  QDate dateAt(double seconds) const {
    const qint64 utc = utcAt(seconds);
    return momentOf(secondsOf(utc) > seconds ? utc - 1 : utc).date();
  }
  qint64 first() const { return utcAt(lower_); }
  qint64 last() const { return utcAt(upper_); }
  QDate firstDate() const { return dateAt(lower_); }
  QDate lastDate() const { return dateAt(upper_); }
  double length() const { return upper_ - lower_; }

private:
  qint64 lessLeaps(qint64 even, qint64 utc) const {
    return even - kSecond * (secondsOfTaiAheadOfUtc(utc) - secondsOfTaiAheadOfUtc(reference_));
  }

  qint64 reference_;
  double lower_;
  double upper_;
};

// Days 1, 11, 21 … of a month; the last one is left out where the next month is nearer than half a step.
bool isDayOfStep(QDate day, qint64 count) {
  const qint64 toNext = day.daysInMonth() + 1 - day.day();
  return (day.day() - 1) % count == 0 && (day.day() == 1 || count == 1 || 2 * toNext > count);
}

qint64 multipleAtOrBelow(qint64 value, qint64 step) { return value - ((value % step) + step) % step; }

std::vector<qint64> daysFrom(QDate first, QDate last, qint64 count) {
  std::vector<qint64> moments;
  for (QDate day = first; day <= last; day = day.addDays(1)) {
    if (isDayOfStep(day, count)) moments.push_back(startOf(day));
  }
  return moments;
}

std::vector<qint64> monthsFrom(QDate first, QDate last, qint64 count) {
  std::vector<qint64> moments;
  const auto monthsSinceYear0 = qint64(first.year()) * 12 + first.month() - 1;
  for (qint64 month = multipleAtOrBelow(monthsSinceYear0, count);; month += count) {
    if (month < 12) continue; // there is no year 0
    const QDate day(int(month / 12), int(month % 12) + 1, 1);
    if (day > last) return moments;
    moments.push_back(startOf(day));
  }
}

// Moments of a step from shortly before the first to the last.
std::vector<qint64> momentsOf(const Step& step, qint64 first, qint64 last) {
  const QDate firstDay = momentOf(first).date();
  const QDate lastDay = momentOf(last).date();
  switch (step.unit) {
  case Unit::Millisecond:
    break;
  case Unit::Day:
    return daysFrom(firstDay, lastDay, step.count);
  case Unit::Month:
    return monthsFrom(firstDay, lastDay, step.count);
  case Unit::Year:
    return monthsFrom(firstDay, lastDay, 12 * step.count);
  }
  std::vector<qint64> moments;
  for (qint64 moment = multipleAtOrBelow(first, step.count); moment <= last; moment += step.count)
    moments.push_back(moment);
  return moments;
}

// Digits behind the point of the seconds: as many as the step has.
int decimalsOf(const Step& step) {
  if (step.count % 1000 == 0) return 0;
  if (step.count % 100 == 0) return 1;
  return step.count % 10 == 0 ? 2 : 3;
}

bool isOfTime(const Step& step) { return step.unit == Unit::Millisecond; }

QString secondsText(const QString& minutes, int seconds, int milliseconds, int decimals) {
  QString text = QStringLiteral("%1:%2").arg(minutes).arg(seconds, 2, 10, QLatin1Char('0'));
  if (decimals > 0) {
    text += QLatin1Char('.');
    text += QStringLiteral("%1").arg(milliseconds, 3, 10, QLatin1Char('0')).left(decimals);
  }
  return text;
}

QString clockText(QTime time, const Step& step) {
  const QString minutes = time.toString(QStringLiteral("HH:mm"));
  if (step.count % kMinute == 0) return minutes;
  return secondsText(minutes, time.second(), time.msec(), decimalsOf(step));
}

QString dateText(QDate date) { return date.toString(Qt::ISODate); }

QString shortDayText(QDate date) { return date.toString(QStringLiteral("MM-dd")); }

// As narrow as a label of the step can be.
QString narrowText(qint64 utc, const Step& step) {
  const QDateTime moment = momentOf(utc);
  switch (step.unit) {
  case Unit::Millisecond:
    break;
  case Unit::Day:
    return shortDayText(moment.date());
  case Unit::Month:
    return moment.date().toString(QStringLiteral("yyyy-MM"));
  case Unit::Year:
    return moment.date().toString(QStringLiteral("yyyy"));
  }
  return clockText(moment.time(), step);
}

// The day in full at midnight, and at New Year where ticks are days.
std::optional<QDate> dayToShow(qint64 utc, const Step& step) {
  const QDateTime moment = momentOf(utc);
  if (isOfTime(step) && moment.time() == QTime(0, 0)) return moment.date();
  if (step.unit == Unit::Day && moment.date().dayOfYear() == 1) return moment.date();
  return std::nullopt;
}

class TickMaker {
public:
  explicit TickMaker(const UtcTickRequest& request)
      : request_(request),
        span_(request.reference, request.lower, request.upper),
        first_(span_.first()),
        last_(span_.last()) {}

  UtcTicks make() const {
    UtcTicks ticks;
    ticks.firstDate = dateText(span_.firstDate());
    ticks.lastDate = dateText(span_.lastDate());
    const Interval& interval = shortestWithRoom();
    if (span_.length() / interval.major.seconds() > kMostTicks) return ticks;
    ticks.major = majorTicks(interval.major);
    if (interval.minor.count > 0) ticks.minor = minorTicks(interval.minor, ticks.major);
    return ticks;
  }

private:
  double spacing(const Step& step) const { return request_.length * step.seconds() / span_.length(); }

  const Interval& shortestWithRoom() const {
    const auto found = std::find_if(std::begin(kIntervals), std::end(kIntervals), [this](const Interval& interval) {
      return request_.textWidth(narrowText(first_, interval.major)) + request_.gap <= spacing(interval.major) &&
             span_.length() <= kMostLabels * interval.major.seconds();
    });
    return found == std::end(kIntervals) ? *std::prev(found) : *found;
  }

  std::vector<UtcTick> majorTicks(const Step& step) const {
    std::vector<UtcTick> ticks;
    for (const qint64 utc : momentsOf(step, first_, last_))
      addTick(ticks, span_.secondsOf(utc), labelOf(utc, step));
    for (const LeapPart& part : leapParts(step))
      addTick(ticks, part.seconds, secondsText(QStringLiteral("23:59"), 60, part.milliseconds, decimalsOf(step)));
    std::stable_sort(ticks.begin(), ticks.end(),
                     [](const UtcTick& one, const UtcTick& other) { return one.seconds < other.seconds; });
    return ticks;
  }

  void addTick(std::vector<UtcTick>& ticks, double seconds, const QString& label) const {
    if (span_.holds(seconds)) ticks.push_back({seconds, label});
  }

  QString labelOf(qint64 utc, const Step& step) const {
    const QString narrow = narrowText(utc, step);
    const std::optional<QDate> day = dayToShow(utc, step);
    if (!day || span_.secondsOf(utc) == request_.lower)
      return narrow; // the date of the lower limit is told beside it
    const auto fits = [&](const QString& text) {
      return (request_.textWidth(text) + request_.textWidth(narrow)) / 2 + request_.gap <= spacing(step);
    };
    const QString full = dateText(*day);
    if (fits(full)) return full;
    const QString shorter = shortDayText(*day);
    return fits(shorter) ? shorter : narrow;
  }

  std::vector<double> minorTicks(const Step& step, const std::vector<UtcTick>& major) const {
    std::vector<double> ticks;
    const auto add = [&](double seconds) {
      const bool isMajor = std::any_of(major.begin(), major.end(), [seconds](const UtcTick& tick) {
        return std::abs(tick.seconds - seconds) < 1e-4;
      });
      if (span_.holds(seconds) && !isMajor) ticks.push_back(seconds);
    };
    for (const qint64 utc : momentsOf(step, first_, last_))
      add(span_.secondsOf(utc));
    for (const LeapPart& part : leapParts(step))
      add(part.seconds);
    std::sort(ticks.begin(), ticks.end());
    return ticks;
  }

  struct LeapPart {
    double seconds;
    int milliseconds;
  };

  // Ticks within leap seconds, which no count of milliseconds since 1970 tells from those of the second after them.
  std::vector<LeapPart> leapParts(const Step& step) const {
    std::vector<LeapPart> parts;
    if (!isOfTime(step) || step.count > kSecond) return parts;
    for (qint64 leap = lastLeapUpTo(last_); leap >= first_; leap = lastLeapUpTo(leap - 1)) {
      for (qint64 part = 0; part < kSecond; part += step.count)
        parts.push_back({span_.secondsOf(leap) - 1 + double(part) / double(kSecond), int(part)});
    }
    return parts;
  }

  const UtcTickRequest& request_;
  Span span_;
  qint64 first_;
  qint64 last_;
};

bool isDrawable(const UtcTickRequest& request) {
  if (!request.reference.isValid() || !request.textWidth) return false;
  if (!std::isfinite(request.lower) || !std::isfinite(request.upper) || !(request.lower < request.upper))
    return false;
  if (!(request.length > 0) || !std::isfinite(request.length) || !std::isfinite(request.gap)) return false;
  const auto isInRange = [&](double seconds) {
    const double moment = double(request.reference.toMSecsSinceEpoch()) + seconds * double(kSecond);
    return moment >= double(startOf(QDate(1, 1, 2))) && moment <= double(startOf(QDate(9999, 12, 31)));
  };
  return isInRange(0) && isInRange(request.lower) && isInRange(request.upper);
}

} // namespace

UtcTicks utcTicks(const UtcTickRequest& request) {
  return isDrawable(request) ? TickMaker(request).make() : UtcTicks();
}

} // namespace xov
