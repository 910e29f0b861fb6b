#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <span>

namespace xov {

/// How a taper rises from 0 to 1 over its length.
enum class TaperShape : std::uint8_t {
  Hann,   ///< ½ (1 − cos πx), level at both ends: the flanks of a cosine taper (Tukey window)
  Cosine, ///< sin ½πx, a quarter of a wave: steep at first, level where it meets the signal
};

/// Lets each finite stretch of values rise from 0 at its first one and fall to 0 at its last one: over `length`
/// intervals on either side, which need not be a whole number, or over half of the stretch where that is shorter.
/// Values farther from the ends stay as they are. A length that is not above 0 changes nothing.
XOV_EXPORT void applyTaper(std::span<double> values, double length, TaperShape shape = TaperShape::Hann);

/// The same with a length of that share, 0 to 0.5, of each stretch.
XOV_EXPORT void applyTaperShare(std::span<double> values, double share, TaperShape shape = TaperShape::Hann);

} // namespace xov
