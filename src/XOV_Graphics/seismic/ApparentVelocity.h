#pragma once

#include "XOV_Graphics/base/Export.h"

#include <optional>

namespace xov {

/// How fast a wave moves away from its event along the surface, as arrivals at two distances show it. Negative for
/// one that arrives earlier at the larger distance.
struct XOV_EXPORT ApparentVelocity {
  double secondsPerDegree = 0; ///< slowness, on a sphere of 6371 km
  double secondsPerKm = 0;     ///< the same
  double kmPerSecond = 0;      ///< velocity; infinite for arrivals at one time
};

/// Of arrivals `seconds` later at a distance that is larger by `degrees`. None for equal distances and for numbers
/// that are not finite.
XOV_EXPORT std::optional<ApparentVelocity> apparentVelocityOf(double seconds, double degrees);

} // namespace xov
