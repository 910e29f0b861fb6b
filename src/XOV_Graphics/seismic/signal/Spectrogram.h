#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/SampleSource.h"
#include "XOV_Graphics/seismic/signal/SpectrumWindow.h"

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// A piece of a recording without a gap; samples that are not finite are gaps within it.
struct XOV_EXPORT SpectrogramPiece {
  /// Borrowed.
  std::span<const float> samples;
  double startSeconds = 0;        ///< of the first sample, on the axis that all pieces share
  double intervalSeconds = 0;     ///< between two samples
  SampleSource* source = nullptr; ///< that must hold those samples that are read; null where all are in memory

  /// Some samples, in memory while what is given back lives.
  HeldSamples held(std::size_t begin, std::size_t count) const {
    return {source, samples.data() + begin, samples.data() + begin + count};
  }
  /// Whether there are samples, a number of seconds (up to 1e15) apart and from 0.
  bool isUsable() const;
};

/// More rows or columns than this no picture needs.
inline constexpr int kMostSpectrogramCells = 8192;

/// How a spectrogram is cut out of a recording.
struct XOV_EXPORT SpectrogramSettings {
  double windowSeconds = 0;               ///< of the segments that are transformed; 0 for usualWindowSeconds()
  double overlap = 0.5;                   ///< least overlap of neighbouring segments, from 0 to 0.95
  WindowShape window = WindowShape::Hann; ///< of each segment
  int columns = 800;                      ///< 1 ... kMostSpectrogramCells
  int rows = 400;                         ///< likewise
  double lowestHz = 0;                    ///< of the rows; 0 on a logarithmic axis is one period a window
  double highestHz = 0;                   ///< 0 for the Nyquist frequency of the first piece
  bool logFrequency = false;              ///< whether rows are equally high on a logarithmic frequency axis

  bool operator==(const SpectrogramSettings&) const = default;
};

/// The power spectral density of a recording over time and frequency.
struct XOV_EXPORT Spectrogram {
  int rows = 0;    ///< of frequencies
  int columns = 0; ///< of times
  /// Row after row from the highest frequency, in dB relative to 1 unit²/Hz; NaN where there are no samples, and
  /// kNoPowerDb where these are all alike.
  std::vector<float> decibels;
  double startSeconds = 0;   ///< where the first column begins
  double endSeconds = 0;     ///< where the last one ends
  double lowestHz = 0;       ///< where the last row ends
  double highestHz = 0;      ///< where the first row begins
  double windowSeconds = 0;  ///< of a segment
  bool logFrequency = false; ///< whether rows are evenly spaced in the logarithm of frequency

  /// Whether it has no cell.
  bool isEmpty() const { return decibels.empty(); }
};

inline constexpr float kNoPowerDb = -3000; ///< the value of cells whose samples are all alike

/// A window that shows a recording of so many seconds well: a power of two of samples, 64 to 16384, next to a
/// sixtieth of the recording.
XOV_EXPORT double usualWindowSeconds(double durationSeconds, double intervalSeconds);

/// The spectrogram of pieces in time order: short-time Fourier transforms of segments that overlap. Columns divide
/// the time from the first sample to the last. Each is the mean of the segments whose middle lies in it, at least
/// one: the overlap grows where the columns are closer than the segments. So memory follows the picture, not the
/// recording. Rows are the mean of the frequencies in them, or are read between the two beside them.
///
/// A column without a segment is empty: within half a window of a gap, of the beginning and of the end. Of a piece
/// shorter than a window nothing is seen, but where that holds for all of them the window is as long as the longest.
/// Empty for no samples, intervals that are not above 0, and frequencies that are in no order. Throws std::bad_alloc
/// when memory does not allow it.
XOV_EXPORT Spectrogram spectrogram(std::span<const SpectrogramPiece> pieces,
                                   const SpectrogramSettings& settings = {});

/// The values that colours should span: from the 5th to the 99.5th percentile of the cells that have one, moved
/// outwards to multiples of 5 dB, and never less than 20 dB apart.
struct XOV_EXPORT DecibelRange {
  double lowest = 0;  ///< in dB
  double highest = 0; ///< in dB

  bool operator==(const DecibelRange&) const = default;
};
/// The range of these cells; those of kNoPowerDb do not count.
XOV_EXPORT DecibelRange robustRange(std::span<const float> decibels);

} // namespace xov
