#pragma once

#include <algorithm>
#include <cmath>

namespace xov {

/// Seconds as a timer takes them: from a millisecond to a day, which what is no number counts as, too.
inline int timerMilliseconds(double seconds) {
  constexpr double kShortestTimer = 0.001; // seconds
  constexpr double kLongestTimer = 86400;
  constexpr double kTimerUnits = 1000; // a second
  const double known = std::isnan(seconds) ? kLongestTimer : seconds;
  return int(std::clamp(known, kShortestTimer, kLongestTimer) * kTimerUnits);
}

} // namespace xov
