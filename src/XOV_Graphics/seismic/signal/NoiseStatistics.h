#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/signal/Spectrogram.h"

#include <cstddef>
#include <span>
#include <vector>

namespace xov {

/// How the noise of a recording is gathered.
struct XOV_EXPORT NoiseStatisticsSettings {
  double segmentSeconds = 3600; ///< each has a spectrum of its own
  double overlap = 0.5;         ///< of neighbouring segments, from 0 to 0.95
};

/// How often the noise of a recording has which power, by period.
///
/// Source: McNamara, D. E. and R. P. Buland (2004), Ambient noise levels in the continental United States, Bull.
/// Seismol. Soc. Am. 94, 1517-1527. A segment's spectrum is the mean of 13 or more pieces of a power of two of
/// samples, no longer than a quarter of it, that overlap by three quarters, without trend and with cosine tapers over
/// a tenth at either end. Its powers are then averaged over full octaves in steps of an eighth of an octave.
struct XOV_EXPORT NoiseStatistics {
  std::vector<double> periods; ///< the middle of each octave in seconds, rising by 2^(1/8)
  std::size_t segments = 0;    ///< how many segments there were
  /// Segment after segment, the density at each period in dB relative to 1 unit²/Hz.
  std::vector<float> decibels;

  /// The value below which a share from 0 to 1 of the segments lies, by period; nothing without segments.
  std::vector<double> percentile(double share) const;
  /// The share of segments by period and by steps of `stepDb` from `lowestDb` on: row after row from the highest
  /// step, as pictures are. What lies beyond is not counted. Empty without segments, and for rows that are not 1 ...
  /// 8192.
  std::vector<float> shares(double lowestDb, double stepDb, int rows) const;
};

/// Of pieces of one sample interval in time order. Segments begin every segmentSeconds · (1 − overlap) from the first
/// sample on; those with a gap are left out, and so are pieces with another interval than the first. Empty where a
/// segment would have less than 64 samples. Throws std::bad_alloc when memory does not allow it.
XOV_EXPORT NoiseStatistics noiseStatistics(std::span<const SpectrogramPiece> pieces,
                                           const NoiseStatisticsSettings& settings = {});

} // namespace xov
