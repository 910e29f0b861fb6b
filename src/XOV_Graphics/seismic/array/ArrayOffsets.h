#pragma once

#include "XOV_Graphics/base/Export.h"

#include <span>
#include <vector>

namespace xov {

/// Where a station stands, in degrees, north and east positive.
struct StationPlace {
  double latitudeDeg = 0;  ///< -90 to 90
  double longitudeDeg = 0; ///< -360 to 360
};

/// Where a station stands seen from the middle of its array.
struct StationOffset {
  double eastKm = 0;  ///< east positive
  double northKm = 0; ///< north positive
};

/// The offsets of stations from the mean of their places, in the plane that touches the WGS 84 ellipsoid there. One
/// degree north is as long as the radius of curvature in the meridian makes it, one degree east follows the radius in
/// the prime vertical: J. P. Snyder, Map Projections: A Working Manual, USGS Professional Paper 1395 (1987),
/// equations (4-18) and (4-20). Good to a part in a thousand for arrays of some hundred kilometres away from the
/// poles.
XOV_EXPORT std::vector<StationOffset> stationOffsets(std::span<const StationPlace> places);

} // namespace xov
