#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/prepare/Components.h"

#include <QStringList>

#include <array>
#include <memory>
#include <vector>

namespace xov {

/// How the ground moved at a station, sample by sample.
struct XOV_EXPORT ParticleMotion {
  /// Vertical component, a horizontal one, and the one 90 degrees clockwise from it: as many samples of each, all at
  /// the same times. Never null.
  std::array<std::shared_ptr<const std::vector<float>>, 3> samples;
  std::array<QString, 3> names; ///< the component codes
  double firstAzimuthDeg = 0;   ///< of the first horizontal component, clockwise from north
};

/// The samples that three components have in common, without their means. A second horizontal component that lies 90
/// degrees anticlockwise from the first comes first.
///
/// Refuses, in one line: a component that is missing, unknown azimuths, horizontal components that are not at right
/// angles to a degree, and what has no common samples.
XOV_EXPORT Result<ParticleMotion> particleMotionOf(const ThreeComponents& components) noexcept;

} // namespace xov
