#pragma once

#include "examples/synthetic/BandNoise.h"

namespace xov::synthetic {

enum class Sensor { Vertical, Horizontal };

/// Ground noise of a site in nm/s: the microseisms of ocean waves at twice their frequency (0.1 to 0.3 Hz) and,
/// weaker, at their frequency (0.07 Hz), slow tilt (stronger on horizontal sensors), and traffic and machines above 1
/// Hz. The bands are those of J. Peterson, "Observations and modeling of seismic background noise", USGS Open-File
/// Report 93-322 (1993).
class SiteNoise {
public:
  /// `level` is the root mean square of the microseisms in nm/s.
  SiteNoise(Sensor sensor, double level, double rateHz, std::uint64_t seed);

  /// The next sample, `activity` times the usual traffic in it.
  double next(double activity = 1.0);

private:
  double level_;
  double tilt_;
  BandNoise doubleFrequency_, singleFrequency_, slow_, traffic_;
};

} // namespace xov::synthetic
