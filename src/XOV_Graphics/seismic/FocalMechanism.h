#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <QDateTime>

#include <array>
#include <optional>

namespace xov {

/// One of the two planes that a fault may have slipped on, by the conventions of K. Aki and P. G. Richards,
/// Quantitative Seismology (2002), section 4.2: the plane dips to the right of its strike.
struct XOV_EXPORT NodalPlane {
  float strikeDeg = kUndefinedValue; ///< clockwise from north
  float dipDeg = kUndefinedValue;    ///< from the horizontal, 0 to 90
  float rakeDeg = kUndefinedValue;   ///< of the hanging wall's slip, from the strike
};

/// A seismic moment tensor in N m: r is up, t south, p east, as the Global CMT project has it.
struct XOV_EXPORT MomentTensor {
  double Mrr = 0; ///< upwards
  double Mtt = 0; ///< towards south
  double Mpp = 0; ///< towards east
  double Mrt = 0; ///< up and south
  double Mrp = 0; ///< up and east
  double Mtp = 0; ///< south and east
};

/// How the source of an event moved. Whatever is left out is unknown.
struct XOV_EXPORT FocalMechanism {
  QDateTime centroidTime;                       ///< in UTC; the origin time is when the rupture began
  float centroidLatitudeDeg = kUndefinedValue;  ///< north is positive
  float centroidLongitudeDeg = kUndefinedValue; ///< east is positive
  float centroidDepthKm = kUndefinedValue;      ///< below sea level
  float halfDurationS = kUndefinedValue;        ///< half of the time that the moment is released in, in seconds
  /// In N m.
  double scalarMomentNm = double(kUndefinedValue);
  std::optional<MomentTensor> tensor; ///< none where only planes are known
  std::array<NodalPlane, 2> planes;   ///< of the best double couple; the second is unset where only one is given
};

} // namespace xov
