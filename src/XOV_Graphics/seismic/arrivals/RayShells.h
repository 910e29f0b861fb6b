#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/arrivals/EarthModel.h"

#include <span>
#include <vector>

namespace xov {

/// A thin shell of the Earth by its slownesses r/v at both faces, and the exponent of r/v as a power of r.
struct XOV_EXPORT RayShell {
  double topRadiusKm;    ///< from the centre
  double topSlowness;    ///< s/rad
  double bottomSlowness; ///< s/rad
  double exponent;       ///< of r, in the power that r/v follows
};

/// Cuts a piece of a layer into shells of equal thickness, `thickestKm` at most, and appends them from above to
/// below. The radii lie within the layer, `topKm` above `bottomKm`. The shell around the centre of the Earth is a
/// ball of one velocity.
XOV_EXPORT void appendRayShells(std::vector<RayShell>& shells, const EarthLayer& layer, BodyWave wave, double topKm,
                                double bottomKm, double thickestKm);

/// Angle at the centre of the Earth and time of a part of a ray.
struct XOV_EXPORT RaySum {
  double angleRad = 0; ///< at the centre of the Earth
  double timeS = 0;    ///< along the ray
};

/// One way of a ray through shells that lie below each other: to the radius where it turns, or to the bottom of them.
/// A ray that is too flat to enter a shell is turned back at its upper face. `slowness` is in s/rad.
///
/// With r/v a power of r, the integrals for angle and time of a ray have closed forms: K. E. Bullen, B. A. Bolt, An
/// Introduction to the Theory of Seismology, 4th ed. (1985), on the law of Mohorovicic.
XOV_EXPORT RaySum traceDown(std::span<const RayShell> shells, double slowness);

} // namespace xov
