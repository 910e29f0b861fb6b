#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace xov {

/// How the averages of STA/LTA forget.
enum class StaLtaKind : std::uint8_t {
  Classic,   ///< means over the last values, all of the same weight
  Recursive, ///< each value takes the place of 1/count of the average: older ones fade away
};

/// The ratio of the short-term to the long-term average of the squared values, as onsets raise it: over the last
/// `shortCount` and `longCount` values (1 at least), the present one included. Each finite stretch begins anew;
/// before it has `longCount` values, and where the long-term average is 0, the ratio is 0.
///
/// Withers, M., et al. (1998), A comparison of select trigger algorithms for automated global seismic phase and event
/// detection, Bull. Seism. Soc. Am. 88, 95-106.
XOV_EXPORT void applyStaLta(std::span<double> values, std::size_t shortCount, std::size_t longCount,
                            StaLtaKind kind = StaLtaKind::Classic);

} // namespace xov
