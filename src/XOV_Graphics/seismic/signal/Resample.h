#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/signal/BiquadCascade.h"

#include <cstddef>
#include <span>
#include <vector>

namespace xov {

/// The largest step: what is longer wants to be taken in two.
inline constexpr std::size_t kMostDecimation = 10000;

/// Where samples are wanted, as indices of those that there are: `first` + j · `step` for j from 0 to `count` − 1.
struct XOV_EXPORT SamplePlaces {
  double first = 0;      ///< where the first one is
  double step = 1;       ///< above 0, kMostDecimation at most
  std::size_t count = 0; ///< how many
};

/// The band-limited signal through the values, at other places: the sum of sines over their arguments under a Kaiser
/// window of 32 zero crossings on either side.
///
/// At a place of a given value (to a ten-millionth of an interval) it is that value, as long as `step` is at most 1.
/// Frequencies above the Nyquist frequency of `step` are taken away: by 80 dB from there on, while those below 0.84
/// times it stay as they are to a thousandth; closer than that to it, and with a step of at most 1 to the Nyquist
/// frequency of the values, they fade. A level stays exactly.
///
/// Each finite stretch is taken by itself and goes on at both ends turned by 180° about its first or last value.
/// Places outside of the stretches are NaN, and so are all where the step is out of range. Steps of up to 512
/// different places between two values take weights that are computed once; of others, they are looked up to 1e-7.
XOV_EXPORT std::vector<double> resample(std::span<const double> values, const SamplePlaces& places);

/// Every `factor`-th value, from the first one on, without what would be taken for lower frequencies: resample() with
/// zero phase; causally, behind a Butterworth low-pass of order 16 at 0.75 of the new Nyquist frequency, which is 40
/// dB down at that and starts at rest. Factors below 1 count as 1.
XOV_EXPORT std::vector<double> decimate(std::span<const double> values, std::size_t factor, FilterPhase phase);

} // namespace xov
