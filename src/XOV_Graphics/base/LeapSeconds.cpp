#include "XOV_Graphics/base/LeapSeconds.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <limits>

namespace xov {

namespace {

constexpr int kAheadIn1972 = 10;

using std::chrono::January;
using std::chrono::July;

constexpr qint64 midnight(std::chrono::month month, int year) {
  const std::chrono::sys_days day = std::chrono::year(year) / month / 1;
  return std::chrono::milliseconds(day.time_since_epoch()).count();
}

// The first moment after each leap second.
constexpr std::array kLeaps = {
    midnight(July, 1972),    midnight(January, 1973), midnight(January, 1974), midnight(January, 1975),
    midnight(January, 1976), midnight(January, 1977), midnight(January, 1978), midnight(January, 1979),
    midnight(January, 1980), midnight(July, 1981),    midnight(July, 1982),    midnight(July, 1983),
    midnight(July, 1985),    midnight(January, 1988), midnight(January, 1990), midnight(January, 1991),
    midnight(July, 1992),    midnight(July, 1993),    midnight(July, 1994),    midnight(January, 1996),
    midnight(July, 1997),    midnight(January, 1999), midnight(January, 2006), midnight(January, 2009),
    midnight(July, 2012),    midnight(July, 2015),    midnight(January, 2017)};

auto firstAfter(qint64 utcMilliseconds) { return std::upper_bound(kLeaps.begin(), kLeaps.end(), utcMilliseconds); }

} // namespace

int secondsOfTaiAheadOfUtc(qint64 utcMilliseconds) {
  return kAheadIn1972 + int(std::distance(kLeaps.begin(), firstAfter(utcMilliseconds)));
}

double secondsBetween(qint64 fromUtcMilliseconds, qint64 toUtcMilliseconds) {
  return (double(toUtcMilliseconds) - double(fromUtcMilliseconds)) / 1000 +
         double(secondsOfTaiAheadOfUtc(toUtcMilliseconds) - secondsOfTaiAheadOfUtc(fromUtcMilliseconds));
}

qint64 lastLeapUpTo(qint64 utcMilliseconds) {
  const auto after = firstAfter(utcMilliseconds);
  return after == kLeaps.begin() ? std::numeric_limits<qint64>::min() : *std::prev(after);
}

} // namespace xov
