#pragma once

#include "examples/synthetic/Random.h"

#include <cstdint>

namespace xov::synthetic {

/// What a belt of earthquakes is.
enum class Boundary : std::uint8_t { Trench, Ridge, Transform, Mountains };

/// How a fault lies and slips, in the convention of Aki and Richards.
struct FaultSlip {
  double strikeDeg = 0; ///< 0 to 360, the dip to its right
  double dipDeg = 0;    ///< 5 to 90
  double rakeDeg = 0;   ///< -180 to 180
};

/// A likely fault at a boundary that runs to `azimuthDeg`; at a trench the slab dips to the right of that.
///
/// Trenches have gentle thrusts down to 60 km, below them slabs that are pulled along their dip down to 300 km and
/// pushed farther down; ridges have normal faults, and transform faults across them; transform boundaries slip to the
/// right; mountain belts have thrusts and some strike-slip faults. All vary about that.
FaultSlip faultSlipAt(Boundary boundary, double azimuthDeg, double depthKm, Random& random);

} // namespace xov::synthetic
