#pragma once

#include "examples/synthetic/GroundMotion.h"
#include "examples/synthetic/Source.h"
#include "examples/synthetic/TravelTimes.h"

#include <vector>

namespace xov::synthetic {

/// P, pP, PP, S, sS and SS of one earthquake.
class BodyWaves {
public:
  explicit BodyWaves(const Source& source);

  /// The earliest arrival; none where the phase does not exist.
  std::optional<Arrival> arrival(Phase phase, double distanceDeg) const;

  /// Adds the direct and reflected waves to spectra whose time 0 is `startS` after the origin time. They lose their
  /// short periods on the way with t* of a 700th of the time travelled by P and a 280th of that by S, and are delayed
  /// as causality demands: W. I. Futterman, Dispersive body waves, J. Geophys. Res. 67, 5279-5291 (1962).
  void addTo(GroundSpectrum& spectra, const Path& path, double startS) const;

  /// Adds the waves scattered after P and S to samples.
  void addCoda(GroundMotion& motion, const Path& path, const TimeWindow& window) const;

private:
  Source source_;
  std::vector<TravelTimes> times_; // by Phase
};

} // namespace xov::synthetic
