#pragma once

#include "XOV_Graphics/seismic/signal/RealTransform.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// The power spectral density of one segment after the other.
///
/// One-sided, in unit² / Hz: a sum over all frequencies, times the distance between them, is the mean square of the
/// samples. P[j] = 2 Δt |X[j]|² / Σ w², not doubled at 0 Hz and at the Nyquist frequency.
class SegmentPower {
public:
  /// For segments of as many samples as the window has factors, Δt seconds apart; zeros follow them up to
  /// Spectrum::sizeFor(). Throws std::bad_alloc when memory does not allow it.
  SegmentPower(std::vector<double> window, double intervalSeconds);

  std::size_t samples() const { return window_.size(); }
  /// How many densities there are: from 0 Hz to the Nyquist frequency.
  std::size_t bins() const { return spectrum_.size(); }
  /// The distance of two of them.
  double stepHz() const { return stepHz_; }

  /// Adds the densities of a segment, its mean taken away, to `sums`; `segment` and `sums` are as long as samples()
  /// and bins() say, and all samples are finite.
  void add(std::span<const float> segment, std::span<double> sums) { add(segment, Trend::Mean, sums); }

  /// What is taken away of a segment before.
  enum class Trend : std::uint8_t { Mean, Line };
  void add(std::span<const float> segment, Trend trend, std::span<double> sums);

private:
  void taperWithoutLine(std::span<const float> segment, double mean);

  std::vector<double> window_;
  double stepHz_;
  double factor_;
  RealTransform transform_;
  std::vector<double> tapered_;
  std::vector<std::complex<double>> spectrum_;
};

/// Tells of segments of samples whether all of them are finite, in one pass over the samples: the segments' begins
/// must not fall.
class FiniteSegments {
public:
  explicit FiniteSegments(std::span<const float> samples) : samples_(samples) {}

  /// Whether samples `begin` to `begin + count` lie within the samples and are all finite.
  bool isFinite(std::size_t begin, std::size_t count);

private:
  std::span<const float> samples_;
  std::size_t seen_ = 0;  ///< all samples before are known
  std::size_t clean_ = 0; ///< one past the last of these that is not finite
};

} // namespace xov
