#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>

namespace xov {

/// The two kinds of waves along the surface.
enum class SurfaceWave : std::uint8_t { Rayleigh, Love };

inline constexpr double kShortestSurfacePeriodS = 8.0;  ///< where the tables begin
inline constexpr double kLongestSurfacePeriodS = 250.0; ///< where the tables end

/// Group velocity in km/s of the fundamental mode at a period of 8 to 250 s; beyond, the value at that end.
///
/// The modes are those of IASP91 (see EarthModel.h) with densities of 2.72 and 2.92 g/cm³ in the crust and 3.34
/// to 4.6 in the mantle, its layers flattened after S. Biswas, L. Knopoff, Bull. Seism. Soc. Am. 60, 1123-1137
/// (1970), cut into finite elements after J. Lysmer, Bull. Seism. Soc. Am. 60, 89-104 (1970), and rounded to 0.01
/// km/s.
XOV_EXPORT double groupVelocity(SurfaceWave wave, double periodS);

/// The largest group velocity of these periods in km/s, with which the wave train begins.
XOV_EXPORT double largestGroupVelocity(SurfaceWave wave);

} // namespace xov
