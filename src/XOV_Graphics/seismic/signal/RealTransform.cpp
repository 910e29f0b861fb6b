#include "XOV_Graphics/seismic/signal/RealTransform.h"

#include <algorithm>

namespace xov {

namespace {

using Complex = std::complex<double>;

Complex timesI(Complex value) { return {-value.imag(), value.real()}; }

} // namespace

RealTransform::RealTransform(std::size_t n)
    : half_(n / 2),
      roots_(n / 4 + 1),
      plan_(std::make_unique<ComplexPlan>(half_, TransformDirection::Forward)),
      pairs_(half_) {
  const UnitRoots roots(n);
  for (std::size_t k = 0; k < roots_.size(); ++k)
    roots_[k] = roots.at(k);
}

RealTransform::~RealTransform() = default;

// Two real samples make one complex number. The transforms E of the samples of even number and O of those of odd
// number follow from that of these, Z: E[k] + iO[k] = Z[k], and E[k] - iO[k] = conj(Z[n/2 - k]). With w = exp(-2πi
// k/n), X[k] = E[k] + w O[k], and X[n/2 - k] = conj(E[k] - w O[k]).
void RealTransform::run(std::span<const double> samples, std::span<Complex> result) {
  const std::size_t whole = std::min(samples.size() / 2, half_);
  for (std::size_t k = 0; k < whole; ++k)
    pairs_[k] = {samples[2 * k], samples[2 * k + 1]};
  std::fill(pairs_.begin() + std::ptrdiff_t(whole), pairs_.end(), Complex());
  if (whole < half_ && samples.size() % 2 == 1) pairs_[whole] = samples.back();
  plan_->run(pairs_, result.first(half_));
  const Complex first = result.front();
  result.front() = first.real() + first.imag();
  result[half_] = first.real() - first.imag();
  for (std::size_t k = 1; 2 * k <= half_; ++k) {
    const Complex here = result[k];
    const Complex mirrored = std::conj(result[half_ - k]);
    const Complex even = 0.5 * (here + mirrored);
    const Complex odd = timesI(-0.5 * (here - mirrored));
    const Complex turned = product(std::conj(roots_[k]), odd);
    result[k] = even + turned;
    result[half_ - k] = std::conj(even - turned);
  }
}

} // namespace xov
