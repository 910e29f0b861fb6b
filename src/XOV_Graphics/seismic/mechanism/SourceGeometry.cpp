#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"

#include "XOV_Graphics/seismic/mechanism/SourceMatrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kDegreesPerRadian = 180 / std::numbers::pi;
constexpr double kFullCircleDeg = 360;

double radians(float degrees) { return double(degrees) / kDegreesPerRadian; }

// Clockwise from north, 0 to below 360.
double azimuthDeg(double east, double north) {
  const double degrees = std::atan2(east, north) * kDegreesPerRadian;
  const double turned = degrees < 0 ? degrees + kFullCircleDeg : degrees;
  return turned < kFullCircleDeg ? turned : 0; // what is hardly negative becomes 360
}

PrincipalAxis axisOf(const EigenPair& pair) {
  const auto& [east, north, up] = pair.vector;
  const double sense = up > 0 ? -1 : 1;
  PrincipalAxis axis;
  axis.momentNm = pair.value;
  axis.plungeDeg = std::asin(std::min(std::abs(up), 1.0)) * kDegreesPerRadian;
  axis.azimuthDeg = azimuthDeg(sense * east, sense * north);
  return axis;
}

// The plane with that normal, on which the hanging wall slips along `slip`; both of length 1, east, north and up. A
// normal that points down stands for the same slip with both turned around.
NodalPlane planeOf(Vector3 normal, Vector3 slip) {
  if (normal[2] < 0) {
    for (double& part : normal)
      part = -part;
    for (double& part : slip)
      part = -part;
  }
  const double dip = std::acos(std::min(normal[2], 1.0));
  // A horizontal plane has any strike.
  const bool isFlat = normal[0] == 0 && normal[1] == 0;
  const double strike = isFlat ? 0 : std::atan2(-normal[1], normal[0]);
  const double along = slip[1] * std::cos(strike) + slip[0] * std::sin(strike);
  const double upDip =
      std::cos(dip) * (slip[1] * std::sin(strike) - slip[0] * std::cos(strike)) + std::sin(dip) * slip[2];
  NodalPlane plane;
  plane.strikeDeg = float(azimuthDeg(std::sin(strike), std::cos(strike)));
  if (plane.strikeDeg >= float(kFullCircleDeg)) plane.strikeDeg = 0;
  plane.dipDeg = float(dip * kDegreesPerRadian);
  plane.rakeDeg = float(std::atan2(upDip, along) * kDegreesPerRadian);
  return plane;
}

bool isFinite(const MomentTensor& tensor) {
  // A sum would lose a pair of opposite infinities.
  return std::ranges::all_of(std::array{tensor.Mrr, tensor.Mtt, tensor.Mpp, tensor.Mrt, tensor.Mrp, tensor.Mtp},
                             [](double element) { return std::isfinite(element); });
}

bool isZero(const MomentTensor& tensor) {
  return tensor.Mrr == 0 && tensor.Mtt == 0 && tensor.Mpp == 0 && tensor.Mrt == 0 && tensor.Mrp == 0 &&
         tensor.Mtp == 0;
}

} // namespace

bool isDefined(const NodalPlane& plane) {
  return isDefined(double(plane.strikeDeg)) && isDefined(double(plane.dipDeg)) && isDefined(double(plane.rakeDeg));
}

MomentTensor momentTensorOf(const NodalPlane& plane, double momentNm) {
  if (!isDefined(plane)) return {};
  const double strike = radians(plane.strikeDeg);
  const double dip = radians(plane.dipDeg);
  const double rake = radians(plane.rakeDeg);
  const double sinStrike = std::sin(strike);
  const double cosStrike = std::cos(strike);
  const double sinTwoStrike = std::sin(2 * strike);
  // The slip along the strike and down the dip, each with what the plane's dip makes of it.
  const double along = std::sin(dip) * std::cos(rake);
  const double alongBelow = std::cos(dip) * std::cos(rake);
  const double up = std::sin(2 * dip) * std::sin(rake);
  const double upBelow = std::cos(2 * dip) * std::sin(rake);
  MomentTensor tensor;
  tensor.Mrr = momentNm * up;
  tensor.Mtt = -momentNm * (along * sinTwoStrike + up * sinStrike * sinStrike);
  tensor.Mpp = momentNm * (along * sinTwoStrike - up * cosStrike * cosStrike);
  tensor.Mrt = -momentNm * (alongBelow * cosStrike + upBelow * sinStrike);
  tensor.Mrp = momentNm * (alongBelow * sinStrike - upBelow * cosStrike);
  tensor.Mtp = -momentNm * (along * std::cos(2 * strike) + up * sinTwoStrike / 2);
  return tensor;
}

std::array<NodalPlane, 2> nodalPlanesOf(const MomentTensor& tensor) {
  if (!isFinite(tensor)) return {};
  const auto [t, n, p] = eigenPairs(sourceMatrix(tensor));
  if (!(t.value > p.value)) return {};
  Vector3 sum;
  Vector3 difference;
  for (std::size_t i = 0; i < 3; ++i) {
    sum[i] = (t.vector[i] + p.vector[i]) / std::numbers::sqrt2;
    difference[i] = (t.vector[i] - p.vector[i]) / std::numbers::sqrt2;
  }
  std::array planes{planeOf(sum, difference), planeOf(difference, sum)};
  if (planes[1].dipDeg < planes[0].dipDeg) std::swap(planes[0], planes[1]);
  return planes;
}

NodalPlane auxiliaryPlaneOf(const NodalPlane& plane) {
  if (!isDefined(plane)) return {};
  const double strike = radians(plane.strikeDeg);
  const double dip = radians(plane.dipDeg);
  const double rake = radians(plane.rakeDeg);
  const Vector3 normal = {std::sin(dip) * std::cos(strike), -std::sin(dip) * std::sin(strike), std::cos(dip)};
  const double along = std::cos(rake);
  const double up = std::sin(rake);
  const Vector3 slip = {along * std::sin(strike) - up * std::cos(dip) * std::cos(strike),
                        along * std::cos(strike) + up * std::cos(dip) * std::sin(strike), up * std::sin(dip)};
  return planeOf(slip, normal); // NOLINT(readability-suspicious-call-argument): the auxiliary plane has them swapped
}

PrincipalAxes principalAxesOf(const MomentTensor& tensor) {
  if (!isFinite(tensor)) return {};
  const auto [t, n, p] = eigenPairs(sourceMatrix(tensor));
  return {axisOf(t), axisOf(n), axisOf(p)};
}

SourceShares sourceSharesOf(const MomentTensor& tensor) {
  if (!isFinite(tensor) || isZero(tensor)) return {};
  const auto [t, n, p] = eigenPairs(sourceMatrix(tensor));
  const double isotropic = (t.value + n.value + p.value) / 3;
  const double clvd = 2.0 / 3 * (t.value + p.value - 2 * n.value);
  const double doubleCouple = (t.value - p.value - std::abs(t.value + p.value - 2 * n.value)) / 2;
  const double whole = std::abs(isotropic) + std::abs(clvd) + doubleCouple;
  return {isotropic / whole, doubleCouple / whole, clvd / whole};
}

double scalarMomentOf(const MomentTensor& tensor) {
  const double diagonal = std::hypot(tensor.Mrr, tensor.Mtt, tensor.Mpp) / std::numbers::sqrt2;
  return std::hypot(diagonal, std::hypot(tensor.Mrt, tensor.Mrp, tensor.Mtp));
}

std::optional<MomentTensor> radiatingTensorOf(const FocalMechanism& mechanism) {
  if (mechanism.tensor && isFinite(*mechanism.tensor) && !isZero(*mechanism.tensor)) return mechanism.tensor;
  for (const NodalPlane& plane : mechanism.planes) {
    if (isDefined(plane)) return momentTensorOf(plane);
  }
  return {};
}

} // namespace xov
