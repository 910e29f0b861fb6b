#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/FocalMechanism.h"

#include <QColor>

#include <vector>

namespace xov {

/// A focal mechanism on a map, which shows it as a beach ball: the lower half of the focal sphere, compressional
/// first motions in colour, dilatational ones white.
struct XOV_EXPORT MapMechanism {
  float latitudeDeg = 0;  ///< north is positive
  float longitudeDeg = 0; ///< east is positive, as for the points of the map
  MomentTensor tensor;    ///< of any size; one that is zero or not finite gives a white ball
  double radius = 10;     ///< view points; one that is not positive and finite is left out
  /// Of the compressional parts.
  QColor color = Qt::black;
};

/// In drawing order: later ones lie over earlier ones.
using MapMechanismArray = std::vector<MapMechanism>;

} // namespace xov
