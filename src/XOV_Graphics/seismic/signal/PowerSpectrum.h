#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/signal/SpectrumWindow.h"

#include <cstddef>
#include <span>
#include <vector>

namespace xov {

/// A one-sided power spectral density in unit² / Hz over rising frequencies: its integral is the mean square of the
/// samples.
struct XOV_EXPORT PowerSpectrum {
  std::vector<double> hz;      ///< rising
  std::vector<double> density; ///< as many
  std::size_t segments = 0;    ///< that it is the mean of; 0 where no samples would do
};

// The spectra of samples Δt seconds apart. Samples that are not finite are gaps. A mean is taken away before; the
// density at 0 Hz is what the window makes of the rest. Nothing for fewer than two samples or an interval that is not
// above 0. They throw std::bad_alloc when memory does not allow it.

/// Of the longest stretch of finite samples as a whole: the finest frequencies, and the most scatter.
XOV_EXPORT PowerSpectrum periodogram(std::span<const float> samples, double intervalSeconds,
                                     WindowShape window = WindowShape::Hann);

/// How Welch's method divides samples.
struct XOV_EXPORT WelchSettings {
  std::size_t segment = 0; ///< samples; 0 for an eighth of them, or all where they are no more than 256
  double overlap = 0.5;    ///< of neighbouring segments, from 0 to 0.95
  WindowShape window = WindowShape::Hann; ///< of each segment
};

/// The mean of the spectra of overlapping segments without a gap (Welch, P. D. (1967), The use of fast Fourier
/// transform for the estimation of power spectra, IEEE Trans. Audio Electroacoust. 15, 70-73). A segment that is
/// longer than the longest stretch is as long as that.
XOV_EXPORT PowerSpectrum welch(std::span<const float> samples, double intervalSeconds,
                               const WelchSettings& settings = {});

/// Most and usual numbers of tapers.
inline constexpr int kMostTapers = 200;
inline constexpr int kUsualTapers = 7; ///< where none other is asked for

/// The mean of the spectra of the longest stretch under sine tapers, which are orthogonal to each other, with weights
/// that fall from the first as a parabola (Riedel, K. S. and A. Sidorenko (1995), Minimum bias multiple taper
/// spectral estimation, IEEE Trans. Signal Process. 43, 188-195). The number of tapers is taken to be in 1 ...
/// kMostTapers.
XOV_EXPORT PowerSpectrum multitaper(std::span<const float> samples, double intervalSeconds,
                                    int tapers = kUsualTapers);

/// The usual bandwidth of konnoOhmachi().
inline constexpr double kUsualBandwidth = 40;

/// A spectrum smoothed equally on a logarithmic frequency axis (Konno, K. and T. Ohmachi (1998), Ground-motion
/// characteristics estimated from spectral ratio between horizontal and vertical components of microtremor, Bull.
/// Seismol. Soc. Am. 88, 228-241): weights [sin(b log10(f/fc)) / (b log10(f/fc))]⁴ about each centre fc, up to their
/// third zero. Larger bandwidths b smooth less. The centres are the spectrum's own frequencies above 0 as long as
/// these are farther apart than 100 a decade, and so many a decade from there on.
XOV_EXPORT PowerSpectrum konnoOhmachi(const PowerSpectrum& spectrum, double bandwidth = kUsualBandwidth);

} // namespace xov
