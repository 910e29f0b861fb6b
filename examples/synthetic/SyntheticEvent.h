#pragma once

#include "examples/synthetic/BodyWaves.h"
#include "examples/synthetic/SurfaceWaves.h"

namespace xov::synthetic {

/// What an analyst would pick, in seconds after the origin time.
struct ArrivalTimes {
  double p = 0, s = 0;
  double rayleigh = 0, love = 0; ///< waves of kOnsetPeriodS, the first that stand out of a broadband record
};

inline constexpr double kOnsetPeriodS = 60.0;

/// An earthquake as distant stations record it: body waves, surface waves and their coda. Amplitudes follow published
/// magnitude formulas and simple decay laws; the records are those of a plausible Earth, not of a real one.
class SyntheticEvent {
public:
  explicit SyntheticEvent(const Source& source);

  const Source& source() const;

  /// None where the core hides P or S, from about 98 degrees.
  std::optional<ArrivalTimes> arrivals(double distanceDeg) const;

  /// Ground velocity without noise. Only the first 2^17 samples of a window hold waves; those that would arrive later
  /// come out at its start instead (6553 s at 20 Hz are enough for any distance that has arrivals).
  GroundMotion groundMotion(const Path& path, const TimeWindow& window) const;

private:
  Source source_;
  BodyWaves bodyWaves_;
  SurfaceWaves surfaceWaves_;
};

/// Turns two horizontal components, in place, into those `angleDeg` anticlockwise of them, seen from above: radial
/// and transverse with the direction of propagation into north and east, and with its negative back.
void rotateHorizontals(std::vector<double>& first, std::vector<double>& second, double angleDeg);

} // namespace xov::synthetic
