#pragma once

#include <complex>
#include <span>
#include <vector>

namespace xov {

/// The Fourier transform Σ x[k] exp(−2πi jk/n) of real samples, for j from 0 to n/2. n is the smallest even number of
/// small factors that holds all samples, zeros following them.
class RealSpectrum {
public:
  /// Throws std::bad_alloc when memory does not allow it.
  explicit RealSpectrum(std::span<const float> samples);

  /// n for that many samples.
  static std::size_t sizeFor(std::size_t samples);

  std::complex<double> at(std::size_t j) const { return values_[j]; }

private:
  std::vector<std::complex<float>> values_;
};

} // namespace xov
