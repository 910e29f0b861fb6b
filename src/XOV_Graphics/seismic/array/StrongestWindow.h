#pragma once

#include "XOV_Graphics/seismic/array/BeamPower.h"

#include <optional>

namespace xov {

/// A piece of the time that all traces of an array have, in seconds from its beginning.
struct XOV_EXPORT ArrayWindow {
  double fromSeconds = 0;   ///< where it begins
  double toSeconds = 0;     ///< where it ends
  double commonSeconds = 0; ///< all of that time
};

/// The piece of `samples` samples in which the traces have the most power, each trace counting the same whatever its
/// gain is: where to look for a wave in recordings that are mostly noise. Nothing when the traces have no more than
/// that in common. Samples that are no numbers count as their mean. Refuses what beamPower() refuses of traces.
XOV_EXPORT Result<std::optional<ArrayWindow>> strongestWindow(std::span<const ArrayTrace> traces,
                                                              double intervalSeconds, std::size_t samples) noexcept;

} // namespace xov
