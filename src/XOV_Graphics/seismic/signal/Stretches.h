#pragma once

#include <algorithm>
#include <cmath>
#include <span>

namespace xov {

/// Calls `work` with each run of finite values, from the first one on. What is not finite separates the runs and
/// stays as it is: no operation carries anything from one side of a gap to the other.
template <class Values, class Work>
void forEachStretch(Values&& samples, const Work& work) {
  const std::span values(samples);
  const auto isFinite = [](double value) { return std::isfinite(value); };
  auto begin = std::find_if(values.begin(), values.end(), isFinite);
  while (begin != values.end()) {
    const auto end = std::find_if_not(begin, values.end(), isFinite);
    work(std::span(begin, end));
    begin = std::find_if(end, values.end(), isFinite);
  }
}

} // namespace xov
