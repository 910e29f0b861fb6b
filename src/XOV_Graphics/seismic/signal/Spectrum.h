#pragma once

#include <complex>
#include <span>
#include <vector>

namespace xov {

/// The Fourier transform X[j] = Σ x[k] exp(−2πi jk/n) of real samples in double precision, for j from 0 to n/2, and
/// the way back. n is even and has small factors only; zeros follow the samples up to it.
class Spectrum {
public:
  /// Of these samples, followed by zeros up to sizeFor(the larger of their number and `atLeast`). Throws
  /// std::bad_alloc when memory does not allow it.
  explicit Spectrum(std::span<const double> samples, std::size_t atLeast = 0);

  /// The smallest n of 2, 3 and 5 that holds that many samples.
  static std::size_t sizeFor(std::size_t samples);

  /// n.
  std::size_t size() const { return 2 * (values_.size() - 1); }
  /// X[0] to X[n/2], which may be changed in place. The first and the last are real numbers.
  std::span<std::complex<double>> values() { return values_; }
  std::span<const std::complex<double>> values() const { return values_; }
  /// The frequency of X[j] in Hz, for samples that many seconds apart.
  double frequencyHz(std::size_t j, double intervalSeconds) const {
    return double(j) / (double(size()) * intervalSeconds);
  }

  /// The n real samples of which this is the transform: those given where nothing was changed. An imaginary part of
  /// the first and last value does not count.
  std::vector<double> samples() const;

private:
  std::vector<std::complex<double>> values_;
};

} // namespace xov
