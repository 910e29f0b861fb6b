#pragma once

#include "XOV_Graphics/base/Export.h"

namespace xov {

/// A place on the globe, in degrees, north and east positive.
struct XOV_EXPORT MapPlace {
  double longitudeDeg = 0; ///< east positive
  double latitudeDeg = 0;  ///< north positive

  bool operator==(const MapPlace&) const = default;
};

/// A piece of the globe between two meridians and two parallels. West to east it may cross the date line: from 170 to
/// 190, or -190 to -170.
struct XOV_EXPORT MapBox {
  double westDeg = 0;  ///< the western meridian
  double eastDeg = 0;  ///< not less than westDeg
  double southDeg = 0; ///< the southern parallel
  double northDeg = 0; ///< not less than southDeg

  /// Whether a place lies in it, its edges included; longitudes a whole turn apart are the same.
  bool contains(const MapPlace& place) const;
};

} // namespace xov
