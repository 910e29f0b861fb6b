#pragma once

#include "examples/synthetic/GroundMotion.h"

#include <XOV_Graphics/seismic/arrivals/GroupVelocity.h>

namespace xov::synthetic {

/// Rayleigh and Love waves of one earthquake: the fundamental modes, dispersed along the way.
class SurfaceWaves {
public:
  explicit SurfaceWaves(const Source& source);

  /// Adds Rayleigh waves (vertical and radial, retrograde) and Love waves (transverse) to spectra whose time 0 is
  /// `startS` after the origin time. The largest vertical velocity is that of the magnitude's definition; what
  /// periods it is made of follows from the rupture's length and depth and from attenuation on the way.
  void addTo(GroundSpectrum& spectra, const Path& path, double startS) const;

  /// Adds the waves scattered after the slowest ones to samples.
  void addCoda(GroundMotion& motion, const Path& path, const TimeWindow& window) const;

  /// When waves of a period arrive, in seconds after the origin time.
  static double arrivalS(SurfaceWave wave, double periodS, double distanceDeg);

private:
  Source source_;
};

/// The largest ground velocity in nm/s of surface waves: 2π A/T, where magnitude = log(A/T) + 1.66 log Δ + 3.3 with A
/// in µm, T in s and Δ in degrees. Source: J. Vaněk et al., Standardization of magnitude scales, Izv. Acad. Sci.
/// USSR, Geophys. Ser. 2, 108-111 (1962).
double surfaceWaveVelocity(double magnitude, double distanceDeg);

} // namespace xov::synthetic
