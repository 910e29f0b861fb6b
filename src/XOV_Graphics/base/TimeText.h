#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QDateTime>
#include <QStringView>

#include <chrono>
#include <optional>

namespace xov {

/// A moment in UTC to the nanosecond, in the years 1678 to 2261; leap seconds do not count.
using UtcNanoseconds = std::chrono::sys_time<std::chrono::nanoseconds>;

/// A date and a clock in UTC, number by number.
struct XOV_EXPORT DateAndClock {
  int year = 1;        ///< of the Gregorian calendar
  int month = 1;       ///< 1 to 12
  int day = 1;         ///< 1 to 31
  int hour = 0;        ///< 0 to 23
  int minute = 0;      ///< 0 to 59
  int second = 0;      ///< up to 60, a leap second, which counts as the next minute
  double fraction = 0; ///< of a second
};

/// The moment of a date and a clock, rounded to the millisecond, years 1 to 9999. Nothing when there is no such date
/// or clock.
XOV_EXPORT std::optional<QDateTime> utcTime(const DateAndClock& written);

/// A moment as catalogues write it: 2011-03-11T05:46:24.12Z. The day may be written with slashes or without
/// separators; a blank may stand for the T; seconds or the whole clock may be missing, which counts as 0; the zone
/// may be Z, UTC, GMT, an offset such as +02:00, or missing, which is UTC. Second 60, a leap second, counts as the
/// next minute. Rounded to the millisecond, years 1 to 9999. Nothing when `text` is anything else.
XOV_EXPORT std::optional<QDateTime> parseUtcTime(QStringView text);

/// The moment in UTC to the millisecond, as parseUtcTime() reads it: "2011-03-11T05:46:24.120Z". Empty when it is
/// invalid.
XOV_EXPORT QString utcText(const QDateTime& time);

/// The moment that parseUtcTime() reads, rounded to the nanosecond; nothing outside the years 1678 to 2261.
XOV_EXPORT std::optional<UtcNanoseconds> parseUtcNanoseconds(QStringView text);

/// The moment with nine digits behind the point, as parseUtcNanoseconds() reads it:
/// "2011-03-11T05:46:24.120000000Z".
XOV_EXPORT QString utcText(UtcNanoseconds time);

/// The moment that lies `seconds` after one that is known to the millisecond, rounded to the nanosecond. Nothing when
/// that is not valid, `seconds` are not finite, or the moment lies outside the years 1678 to 2261.
XOV_EXPORT std::optional<UtcNanoseconds> utcAfter(const QDateTime& time, double seconds);

/// The seconds from one moment to another.
XOV_EXPORT double secondsFrom(const QDateTime& start, UtcNanoseconds end);

} // namespace xov
