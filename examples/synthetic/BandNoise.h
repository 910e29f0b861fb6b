#pragma once

#include "examples/synthetic/Random.h"

namespace xov::synthetic {

/// A random signal around one frequency: white noise through a digital resonator. Root mean square 1.
class BandNoise {
public:
  /// `q` is the centre frequency divided by the width of the band, at half the power.
  BandNoise(double centreHz, double q, double rateHz, std::uint64_t seed);

  double next();

private:
  Random random_;
  double gain_;      // of the input and, negative, of the input before the last
  double feedback1_; // of the last output
  double feedback2_; // of the output before
  double in1_ = 0, in2_ = 0, out1_ = 0, out2_ = 0;
};

} // namespace xov::synthetic
