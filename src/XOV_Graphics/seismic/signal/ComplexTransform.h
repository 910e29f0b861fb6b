#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace xov {

/// The product of finite numbers; the operator looks for infinities, too.
inline std::complex<double> product(std::complex<double> a, std::complex<double> b) {
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// The n-th roots of 1, exp(2πi m/n), from two short tables instead of one of all.
class UnitRoots {
public:
  explicit UnitRoots(std::size_t n);

  /// For m below n.
  std::complex<double> at(std::size_t m) const {
    return product(coarse_[m >> shift_], fine_[m & (fine_.size() - 1)]);
  }

private:
  unsigned shift_;
  std::vector<std::complex<double>> coarse_;
  std::vector<std::complex<double>> fine_;
};

/// The sign of the exponent.
enum class TransformDirection : std::uint8_t { Forward, Backward };

/// The Fourier transform Σ x[k] exp(∓2πi jk/n), without a factor, of n values, n having small factors only: made
/// ready once for as many transforms as are wanted.
class ComplexPlan {
public:
  ComplexPlan(std::size_t n, TransformDirection direction);
  ~ComplexPlan();
  ComplexPlan(const ComplexPlan&) = delete;
  ComplexPlan& operator=(const ComplexPlan&) = delete;

  /// Of n values into `result`, which is as long; the values are lost.
  void run(std::span<std::complex<double>> values, std::span<std::complex<double>> result) const;

private:
  struct InOneGo;
  TransformDirection direction_;
  std::unique_ptr<InOneGo> inOneGo_; ///< none for those that are taken apart
};

/// The same for one transform.
void complexTransform(std::span<std::complex<double>> values, std::span<std::complex<double>> result,
                      TransformDirection direction);

} // namespace xov
