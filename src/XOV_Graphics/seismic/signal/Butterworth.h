#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/signal/BiquadCascade.h"

#include <cstdint>
#include <vector>

namespace xov {

/// Which frequencies a filter lets pass.
enum class FilterBand : std::uint8_t {
  LowPass,  ///< below highHz
  HighPass, ///< above lowHz
  BandPass, ///< from lowHz to highHz
  BandStop, ///< below lowHz and above highHz
};

inline constexpr int kMostFilterOrder = 20; ///< more poles lose their precision

/// A Butterworth filter, whose gain is 1/√2 at its corners and as flat as possible where it passes.
struct XOV_EXPORT ButterworthFilter {
  /// What passes.
  FilterBand band = FilterBand::LowPass;
  double lowHz = 0;  ///< the corner below; not of a low-pass
  double highHz = 0; ///< the corner above; not of a high-pass
  /// Poles at each corner, 1 to kMostFilterOrder: the gain falls by 6 dB an octave for each.
  int order = 4;

  /// What is below a corner passes.
  static ButterworthFilter lowPass(double cornerHz, int order = 4) {
    return {FilterBand::LowPass, 0, cornerHz, order};
  }
  /// What is above a corner passes.
  static ButterworthFilter highPass(double cornerHz, int order = 4) {
    return {FilterBand::HighPass, cornerHz, 0, order};
  }
  /// What is between two corners passes.
  static ButterworthFilter bandPass(double lowHz, double highHz, int order = 4) {
    return {FilterBand::BandPass, lowHz, highHz, order};
  }
  /// What is below the lower or above the upper corner passes.
  static ButterworthFilter bandStop(double lowHz, double highHz, int order = 4) {
    return {FilterBand::BandStop, lowHz, highHz, order};
  }
};

/// The filter's second-order sections for samples that many seconds apart, by the bilinear transform with its corners
/// where they were asked for. Each section alone has the gain 1 where the filter's is 1: at 0 Hz, the Nyquist
/// frequency or, of a band-pass, between its corners.
///
/// Refuses, in one line, an order out of range, corners that are not above 0 and below the Nyquist frequency, a lower
/// one that is not below the upper one, and such so low, beside the sampling rate, that double precision cannot hold
/// the filter (less than a millionth of it): such signals want to be decimated first.
XOV_EXPORT Result<std::vector<Biquad>> designButterworth(const ButterworthFilter& filter, double intervalSeconds);

} // namespace xov
