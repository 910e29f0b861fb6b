#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <span>

// The Earth model IASP91. Source: B. L. N. Kennett, E. R. Engdahl, Traveltimes for global earthquake location and
// phase identification, Geophys. J. Int. 105, 429-465 (1991).
namespace xov {

inline constexpr double kEarthRadiusKm = 6371.0;           ///< mean radius
inline constexpr double kKmPerDegree = 111.19492664455873; ///< kEarthRadiusKm times pi / 180

/// The two kinds of waves through the body of the Earth.
enum class BodyWave : std::uint8_t { P, S };

/// A layer without discontinuities. Velocities in km/s are polynomials of the radius over kEarthRadiusKm; the
/// coefficients are those of the constant, the linear, the quadratic and the cubic term.
struct EarthLayer {
  double bottomRadiusKm; ///< distance of its lower face from the centre
  double p[4];           ///< coefficients of P velocity; likewise those of S
  double s[4];           ///< all 0 in a fluid
};

/// From the surface to the core: the upper and the lower crust, which the Moho ends at a depth of 35 km, and the
/// mantle.
XOV_EXPORT std::span<const EarthLayer> mantleLayers();
/// The fluid core and the solid one within it.
XOV_EXPORT const EarthLayer& outerCore();
/// The solid core.
XOV_EXPORT const EarthLayer& innerCore();

/// Velocity in km/s by the polynomials of a layer, whatever its ends.
XOV_EXPORT double earthVelocity(const EarthLayer& layer, BodyWave wave, double radiusKm);

/// Velocity in km/s at a depth of 0 to 6371 km; at a discontinuity the value below it.
XOV_EXPORT double earthVelocity(BodyWave wave, double depthKm);

/// Angle between a ray and the vertical at the surface, in radians.
XOV_EXPORT double incidenceAngle(BodyWave wave, double slownessSPerRad);

} // namespace xov
