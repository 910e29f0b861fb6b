#pragma once

#include <cmath>
#include <cstddef>
#include <span>

namespace xov::synthetic {

/// Root mean square after the mean is taken off.
template <typename Sample>
double strength(std::span<const Sample> samples) {
  double sum = 0;
  double squares = 0;
  for (const Sample sample : samples) {
    sum += double(sample);
    squares += double(sample) * double(sample);
  }
  const double mean = sum / double(samples.size());
  return std::sqrt(squares / double(samples.size()) - mean * mean);
}

/// Mean time between upward crossings of zero, in samples.
inline double meanPeriod(std::span<const double> samples) {
  std::size_t first = 0;
  std::size_t last = 0;
  std::size_t crossings = 0;
  for (std::size_t i = 1; i < samples.size(); ++i) {
    if (!(samples[i - 1] < 0 && samples[i] >= 0)) continue;
    if (crossings++ == 0) first = i;
    last = i;
  }
  return crossings < 2 ? 0 : double(last - first) / double(crossings - 1);
}

} // namespace xov::synthetic
