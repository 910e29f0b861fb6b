#pragma once

#include <XOV_Graphics/seismic/arrivals/EarthModel.h>
#include <optional>
#include <vector>

namespace xov::synthetic {

/// Body waves that touch neither core. PP and SS are reflected once at the surface half-way, pP and sS above the
/// source.
enum class Phase { P, pP, PP, S, sS, SS };

/// A wave at a place.
struct Arrival {
  double timeS = 0;           ///< after the origin time
  double slownessSPerRad = 0; ///< derivative of the time with respect to distance
};

/// Travel times of a phase through IASP91 from a source of one depth, by tracing rays of closely spaced slownesses
/// through thin shells. Published times are met within 0.05 s.
class TravelTimes {
public:
  /// `sourceDepthKm` from 0 to 700.
  TravelTimes(Phase phase, double sourceDepthKm);

  /// The earliest arrival at an epicentral distance in degrees; none in the shadow of the core, nor so near that no
  /// ray leaves the source downwards.
  std::optional<Arrival> first(double distanceDeg) const;

private:
  struct Ray {
    double slowness; // s/rad
    double distance; // rad
    double time;     // s
  };
  std::vector<Ray> rays_;
};

} // namespace xov::synthetic
