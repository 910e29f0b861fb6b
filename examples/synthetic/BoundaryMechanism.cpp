#include "examples/synthetic/BoundaryMechanism.h"

#include <algorithm>
#include <cmath>

namespace xov::synthetic {

namespace {

constexpr double kInterfaceKm = 60;
constexpr double kPulledKm = 300;
constexpr double kTransformShareOfRidges = 0.35;
constexpr double kStrikeSlipShareOfMountains = 0.25;
constexpr double kSpreadDeg = 7;

FaultSlip usualSlip(Boundary boundary, double azimuthDeg, double depthKm, Random& random) {
  const FaultSlip dextral{azimuthDeg, 86, 180};
  const FaultSlip thrust{azimuthDeg, 38, 90};
  switch (boundary) {
  case Boundary::Trench:
    if (depthKm <= kInterfaceKm) return {azimuthDeg, 25, 90};
    // In a slab that dips at 45 degrees an axis of stress along its dip is that of a steep fault.
    return {azimuthDeg, 82, depthKm <= kPulledKm ? -90.0 : 90.0};
  case Boundary::Ridge:
    if (random.uniform() > kTransformShareOfRidges) return {azimuthDeg, 45, -90};
    return {azimuthDeg + 90, 86, random.uniform() > 0.5 ? 0.0 : 180.0};
  case Boundary::Transform:
    return dextral;
  case Boundary::Mountains:
    break;
  }
  return random.uniform() > kStrikeSlipShareOfMountains ? thrust : dextral;
}

} // namespace

FaultSlip faultSlipAt(Boundary boundary, double azimuthDeg, double depthKm, Random& random) {
  FaultSlip slip = usualSlip(boundary, azimuthDeg, depthKm, random);
  slip.strikeDeg += kSpreadDeg * random.normal();
  slip.strikeDeg -= 360 * std::floor(slip.strikeDeg / 360);
  slip.dipDeg = std::clamp(slip.dipDeg + kSpreadDeg / 2 * random.normal(), 5.0, 90.0);
  slip.rakeDeg = std::remainder(slip.rakeDeg + kSpreadDeg * random.normal(), 360.0);
  return slip;
}

} // namespace xov::synthetic
