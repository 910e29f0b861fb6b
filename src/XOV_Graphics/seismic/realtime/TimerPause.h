#pragma once

#include <algorithm>
#include <cmath>

namespace xov {

/// The milliseconds of a timer that is to wait so many seconds: at least one, at most a day, whatever a host says.
inline int timerPauseMs(double seconds) {
  constexpr double kMillisecondsPerSecond = 1000;
  constexpr double kLongestSeconds = 86400;
  return int(std::clamp(std::isfinite(seconds) ? seconds : kLongestSeconds, 0.001, kLongestSeconds) *
             kMillisecondsPerSecond);
}

} // namespace xov
