#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xov {

/// What the samples of a segment are multiplied by before they are transformed.
enum class WindowShape : std::uint8_t {
  Rectangular, ///< 1: the sharpest peaks, and the most leakage
  Hann,        ///< ½ − ½ cos 2πx
  Hamming,     ///< 0.54 − 0.46 cos 2πx
  Blackman,    ///< 0.42 − ½ cos 2πx + 0.08 cos 4πx: the least leakage
  CosineTaper, ///< 1 with a tenth of the segment at either end rising and falling as half a cosine
};

/// The n factors of a window, x being k/n: as if the next segment followed (DFT-even).
XOV_EXPORT std::vector<double> windowOf(WindowShape shape, std::size_t n);

} // namespace xov
