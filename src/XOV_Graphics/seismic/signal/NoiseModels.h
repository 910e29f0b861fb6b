#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstdint>
#include <optional>

namespace xov {

/// The envelopes of the noise at quiet and at noisy stations.
enum class NoiseModel : std::uint8_t {
  Low,  ///< NLNM
  High, ///< NHNM
};

/// The shortest and the longest period that the models know, in seconds.
inline constexpr double kShortestNoisePeriod = 0.1;
inline constexpr double kLongestNoisePeriod = 100000; ///< the longest of them

/// The power spectral density of the acceleration of the ground at a period, in dB relative to 1 (m/s²)²/Hz: a line
/// over the logarithm of the period within each section of it. Nothing beyond the periods that the models know.
///
/// Source: Peterson, J. (1993), U.S. Geological Survey Open-File Report 93-322.
XOV_EXPORT std::optional<double> noiseModelDb(NoiseModel model, double periodSeconds);

} // namespace xov
