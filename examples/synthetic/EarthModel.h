#pragma once

#include <span>

// The Earth model IASP91 down to the core. Source: B. L. N. Kennett, E. R. Engdahl, Traveltimes for global earthquake
// location and phase identification, Geophys. J. Int. 105, 429-465 (1991).
namespace xov::synthetic {

inline constexpr double kEarthRadiusKm = 6371.0;
inline constexpr double kKmPerDegree = 111.19492664455873; ///< kEarthRadiusKm times pi / 180

enum class Wave { P, S };

/// A layer without discontinuities. Velocities in km/s are polynomials of the radius over kEarthRadiusKm; the
/// coefficients are those of the constant, the linear, the quadratic and the cubic term.
struct Layer {
  double bottomRadiusKm;
  double p[4];
  double s[4];
};

/// From the surface to the core.
std::span<const Layer> earthLayers();

double velocity(const Layer& layer, Wave wave, double radiusKm);

/// Velocity in km/s at a depth of 0 to 2889 km; at a discontinuity the value below it.
double velocity(Wave wave, double depthKm);

/// Angle between a ray and the vertical at the surface, in radians.
double incidenceAngle(Wave wave, double slownessSPerRad);

} // namespace xov::synthetic
