#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/FocalMechanism.h"

#include <array>
#include <optional>

namespace xov {

/// One of the principal axes of a moment tensor, as the end of it that points downwards.
struct XOV_EXPORT PrincipalAxis {
  double momentNm = 0;   ///< the tensor's value along it, N m
  double azimuthDeg = 0; ///< clockwise from north, 0 to below 360
  double plungeDeg = 0;  ///< below the horizontal, 0 to 90
};

/// Tension, null and pressure axis: those of the largest, the middle and the smallest value.
struct XOV_EXPORT PrincipalAxes {
  PrincipalAxis t; ///< of the largest value
  PrincipalAxis n; ///< of the middle value
  PrincipalAxis p; ///< of the smallest value
};

/// How a moment tensor is made up, in shares of 1 that add up to it without their signs (V. Vavryčuk, Journal of
/// Seismology 19 (2015), 231-252, equations 6 to 10).
struct XOV_EXPORT SourceShares {
  double isotropic = 0;    ///< positive for an explosion
  double doubleCouple = 0; ///< never negative
  double clvd = 0;         ///< compensated linear vector dipole; positive where tension prevails
};

/// Whether all three angles of a plane are known and finite.
XOV_EXPORT bool isDefined(const NodalPlane& plane);

/// The moment tensor of slip on a plane (K. Aki and P. G. Richards, Quantitative Seismology (2002), box 4.4). Zero
/// for a plane that is not defined.
XOV_EXPORT MomentTensor momentTensorOf(const NodalPlane& plane, double momentNm = 1);

/// The two planes of the best double couple of a tensor, the steeper one last; strikes from 0 to below 360, rakes
/// from -180 to 180. Planes that are not defined for a tensor whose three principal values are equal, or that is not
/// finite.
XOV_EXPORT std::array<NodalPlane, 2> nodalPlanesOf(const MomentTensor& tensor);

/// The other plane on which slip would radiate the same waves.
XOV_EXPORT NodalPlane auxiliaryPlaneOf(const NodalPlane& plane);

/// The axes of a tensor; zeros for one that is not finite.
XOV_EXPORT PrincipalAxes principalAxesOf(const MomentTensor& tensor);

/// The shares of a tensor; zeros for one that is zero or not finite.
XOV_EXPORT SourceShares sourceSharesOf(const MomentTensor& tensor);

/// M0, the root of half the sum of the squares of all nine elements, in N m (P. G. Silver and T. H. Jordan,
/// Geophys. J. R. astr. Soc. 70 (1982), 755-787).
XOV_EXPORT double scalarMomentOf(const MomentTensor& tensor);

/// What is known of how a source radiates: its tensor, else that of its first plane, else of its second one; none
/// where nothing of it is known, finite and other than zero.
XOV_EXPORT std::optional<MomentTensor> radiatingTensorOf(const FocalMechanism& mechanism);

} // namespace xov
