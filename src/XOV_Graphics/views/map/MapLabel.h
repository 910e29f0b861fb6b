#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

#include <vector>

namespace xov {

/// A name at a place of a map, such as the code of a station.
struct XOV_EXPORT MapLabel {
  float latitudeDeg = 0;  ///< north is positive
  float longitudeDeg = 0; ///< east is positive, as for the points of the map
  /// One line.
  QString text;
  double clearance =
      4; ///< of the text from the place, view points: the radius of the symbol there, and a little more
};

/// In the order in which they get room: where two would cover each other, the first one stays.
using MapLabelArray = std::vector<MapLabel>;

} // namespace xov
