#pragma once

#include <cstdint>
#include <span>

namespace xov::synthetic {

/// Scattered waves after an arrival: noise around one frequency whose strength rises quickly and falls off slowly.
struct Burst {
  double startS = 0;    ///< on the axis of the samples, whose first is at 0
  double level = 0;     ///< root mean square when the envelope is 1
  double riseS = 1;     ///< time constant of the rise
  double decayS = 10;   ///< time constant of the decay
  double tailShare = 0; ///< part of the level that falls off with tailDecayS instead
  double tailDecayS = 100;
  double centreHz = 1;
  double q = 1; ///< see BandNoise
  std::uint64_t seed = 0;
};

/// Strength at a time after the start, at most 1; 0 before.
double envelope(const Burst& burst, double timeS);

/// Adds the burst to evenly spaced samples. Parts before and after them are left out.
void addBurst(std::span<double> samples, double rateHz, const Burst& burst);

} // namespace xov::synthetic
