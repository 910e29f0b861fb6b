#include "XOV_Graphics/seismic/signal/NoiseModelCurve.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kIntervals = 400;

} // namespace

NoiseModelCurve::NoiseModelCurve(NoiseModel model, double fromHz, double toHz) {
  const double lowest = std::max(std::min(fromHz, toHz), 1 / kLongestNoisePeriod);
  const double highest = std::min(std::max(fromHz, toHz), 1 / kShortestNoisePeriod);
  if (!(lowest < highest)) return;
  for (int i = 0; i <= kIntervals; ++i) {
    const double frequency = lowest * std::pow(highest / lowest, double(i) / kIntervals);
    const double period = std::clamp(1 / frequency, kShortestNoisePeriod, kLongestNoisePeriod);
    hz.push_back(float(frequency));
    decibels.push_back(float(*noiseModelDb(model, period)));
  }
}

} // namespace xov
