#pragma once

#include "XOV_Graphics/base/Export.h"

#include <array>
#include <optional>
#include <span>

namespace xov {

/// How the ground moved: the ellipsoid of the covariances of three components (A. Jurkevics, Polarization analysis of
/// three-component array data, Bull. Seism. Soc. Am. 78 (1988), 1725-1743).
struct XOV_EXPORT Polarization {
  /// The direction of the largest motion, of length 1: vertical, first and second horizontal component. Of its two
  /// senses the one that goes up, as P does that comes from below and pushes away from its source.
  std::array<double, 3> direction = {};
  double azimuthDeg =
      0; ///< of that direction, from the first horizontal component towards the second, 0 to below 360
  double incidenceDeg = 0;              ///< of that direction, from the vertical, 0 to 90
  double rectilinearity = 0;            ///< 1 − (λ2 + λ3) / 2 λ1: 1 on a line, 0 where all directions are alike
  double planarity = 0;                 ///< 1 − 2 λ3 / (λ1 + λ2): 1 in a plane
  std::array<double, 3> variances = {}; ///< λ1 to λ3, along the axes of the ellipsoid, the largest one first
};

/// The polarisation of the samples, as many as each component has, of which those that are not finite in one
/// component count in none. Means are taken away. None for fewer than two samples, and for ground that did not move.
XOV_EXPORT std::optional<Polarization> polarizationOf(std::span<const float> vertical, std::span<const float> first,
                                                      std::span<const float> second);

} // namespace xov
