#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/arrivals/SeismicPhase.h"

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// A phase as it arrives at a station.
struct XOV_EXPORT PhaseArrival {
  SeismicPhase phase = SeismicPhase::P; ///< which one arrives
  double seconds = 0;                   ///< after the origin time
  double rayParameter = 0;              ///< derivative of the time with respect to distance, in s/degree
  double takeOffDeg = 0;   ///< angle of the ray at the source, from straight down (0) to straight up (180)
  double incidenceDeg = 0; ///< angle between ray and vertical at the station; 90 for surface waves
};

/// What to tell of a phase that arrives several times, since its ways through jumps of velocity cross each other.
enum class PhaseRepeats : std::uint8_t { FirstOnly, All };

inline constexpr double kFarthestArrivalDeg = 180; ///< distances of arrivals end at the antipode
inline constexpr double kDeepestSourceKm = 800;    ///< the deepest source that has arrivals, in kilometres
/// Sources may lie as high above sea level as mountains do; they count as such at the surface.
inline constexpr double kHighestSourceKm = 10;
/// Farther, nothing is seen of waves along the core.
inline constexpr double kFarthestDiffractionDeg = 150;

/// When phases of an earthquake arrive at an epicentral distance of 0 to 180 degrees from a source of a depth of -10
/// to 800 km, the earliest first. A phase that does not arrive there, as P in the shadow of the core and Pg of a
/// source below the crust, is left out; for any other distance or depth there are none.
///
/// Body waves go through IASP91 (EarthModel.h) along the shorter way around the Earth, surface waves with the largest
/// group velocity that it gives them (GroupVelocity.h) from a source of any depth. Nothing is corrected for the
/// ellipticity of the Earth, which makes up to some 2 s, nor for the height of the station.
///
/// Any thread. Tables for a source of that depth are kept for the next call.
XOV_EXPORT std::vector<PhaseArrival> arrivalsAt(double distanceDeg, double depthKm,
                                                std::span<const SeismicPhase> phases = allSeismicPhases(),
                                                PhaseRepeats repeats = PhaseRepeats::FirstOnly);

} // namespace xov
