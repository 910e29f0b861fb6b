#pragma once

#include "XOV_Graphics/base/Export.h"

#include <complex>
#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// A section of second order of a recursive filter:
///
///     y[n] = b0 x[n] + b1 x[n−1] + b2 x[n−2] − a1 y[n−1] − a2 y[n−2].
struct XOV_EXPORT Biquad {
  double b0 = 1; ///< of x[n]
  double b1 = 0; ///< of x[n−1]
  double b2 = 0; ///< of x[n−2]
  double a1 = 0; ///< of y[n−1]
  double a2 = 0; ///< of y[n−2]
};

/// The response of sections, one behind the other, at a frequency in radians a sample (2π times that in Hz, times the
/// sample interval).
XOV_EXPORT std::complex<double> responseOf(std::span<const Biquad> sections, double radians);

/// Sections one behind the other, and what they remember of the samples that came by: a filter for a signal that
/// arrives piece by piece. It begins at rest.
class XOV_EXPORT BiquadCascade {
public:
  /// Sections in the order in which the samples go through them.
  explicit BiquadCascade(std::vector<Biquad> sections);

  /// As they were given.
  const std::vector<Biquad>& sections() const { return sections_; }

  /// Filters the next samples, in place. They should be finite: what is not stays in the memory of the filter.
  void filter(std::span<double> samples);
  /// The same with the last sample as the first one to come by.
  void filterBackwards(std::span<double> samples);

  /// Forgets what came by.
  void reset() { steadyAt(0); }
  /// Remembers samples of that value since ever.
  void steadyAt(double value);

private:
  struct Memory {
    double first = 0;
    double second = 0;
  };

  template <int direction>
  void run(double* first, std::size_t count);
  template <int direction>
  void runBlock(double* first, std::size_t count);

  std::vector<Biquad> sections_;
  std::vector<Memory> memories_;
};

/// Whether a filter delays what it lets pass.
enum class FilterPhase : std::uint8_t {
  Causal, ///< once, forward: nothing comes before its cause, and everything later, each frequency by its own delay
  Zero,   ///< forward and backward: onsets and peaks stay at their times, and the gain counts twice (half at corners)
};

/// Filters each finite stretch of values by itself.
///
/// Causally, the filter is at rest before each stretch, as if zeros came before it: take the mean away first.
///
/// With zero phase, each stretch goes on at both ends, for some samples, turned by 180° about its first or last
/// value, and the filter begins in the state that this continuation's first value would have brought about in the
/// long run, so that a level makes no transient and a slope little of one.
XOV_EXPORT void applyFilter(std::span<double> values, std::vector<Biquad> sections, FilterPhase phase);

} // namespace xov
