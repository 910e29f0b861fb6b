#pragma once

#include "XOV_Graphics/seismic/signal/ComplexTransform.h"

#include <complex>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace xov {

/// The Fourier transform X[j] = Σ x[k] exp(−2πi jk/n) of real samples, for j from 0 to n/2, made ready once for many
/// segments of n samples.
class RealTransform {
public:
  /// n must be even and have small factors only: Spectrum::sizeFor(). Throws std::bad_alloc when memory does not
  /// allow it.
  explicit RealTransform(std::size_t n);
  ~RealTransform();
  RealTransform(const RealTransform&) = delete;
  RealTransform& operator=(const RealTransform&) = delete;

  std::size_t size() const { return 2 * half_; }
  /// Of `samples`, at most n of them with zeros behind; `result` has room for n/2 + 1 values.
  void run(std::span<const double> samples, std::span<std::complex<double>> result);

private:
  std::size_t half_;
  std::vector<std::complex<double>> roots_; ///< exp(2πi k/n) for k up to n/4
  std::unique_ptr<ComplexPlan> plan_;
  std::vector<std::complex<double>> pairs_;
};

} // namespace xov
