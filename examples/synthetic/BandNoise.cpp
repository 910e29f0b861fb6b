#include "examples/synthetic/BandNoise.h"

#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {
// A resonator at rest needs about q periods to reach its level; the noise starts at full level.
constexpr double kWarmUpPeriods = 3.0;
} // namespace

BandNoise::BandNoise(double centreHz, double q, double rateHz, std::uint64_t seed) : random_(seed) {
  // The bilinear transform of s·(w/q) / (s² + s·(w/q) + w²), its centre frequency kept.
  const double k = std::tan(std::numbers::pi * centreHz / rateHz);
  const double norm = 1.0 / (1.0 + k / q + k * k);
  feedback1_ = 2.0 * (k * k - 1.0) * norm;
  feedback2_ = (1.0 - k / q + k * k) * norm;
  // The mean square of g·(1 - z⁻²) / (1 + a·z⁻¹ + b·z⁻²) over the unit circle is 2·g² / (1 - b).
  gain_ = std::sqrt((1.0 - feedback2_) / 2.0);
  for (int i = int(kWarmUpPeriods * q * rateHz / centreHz); i > 0; --i)
    next();
}

double BandNoise::next() {
  const double in = random_.normal();
  const double out = gain_ * (in - in2_) - feedback1_ * out1_ - feedback2_ * out2_;
  in2_ = in1_;
  in1_ = in;
  out2_ = out1_;
  out1_ = out;
  return out;
}

} // namespace xov::synthetic
