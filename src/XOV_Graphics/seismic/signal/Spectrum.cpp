#include "XOV_Graphics/seismic/signal/Spectrum.h"

#include "XOV_Graphics/seismic/signal/ComplexTransform.h"

#include <algorithm>

namespace xov {

namespace {

using Complex = std::complex<double>;

bool hasSmallFactors(std::size_t number) {
  for (const std::size_t factor : {2, 3, 5})
    while (number % factor == 0)
      number /= factor;
  return number == 1;
}

Complex timesI(Complex value) { return {-value.imag(), value.real()}; }

} // namespace

std::size_t Spectrum::sizeFor(std::size_t samples) {
  std::size_t half = std::max<std::size_t>(1, samples / 2 + samples % 2);
  while (!hasSmallFactors(half))
    ++half;
  return 2 * half;
}

// Two real samples make one complex number. The transforms E of the samples of even number and O of those of odd
// number follow from that of these, Z: E[k] + iO[k] = Z[k], and E[k] - iO[k] = conj(Z[n/2 - k]). With w = exp(-2πi
// k/n), X[k] = E[k] + w O[k], and X[n/2 - k] = conj(E[k] - w O[k]).
Spectrum::Spectrum(std::span<const double> samples, std::size_t atLeast) {
  const std::size_t half = sizeFor(std::max(samples.size(), atLeast)) / 2;
  std::vector<Complex> pairs(half);
  for (std::size_t k = 0; k < samples.size() / 2; ++k)
    pairs[k] = {samples[2 * k], samples[2 * k + 1]};
  if (samples.size() % 2 == 1) pairs[samples.size() / 2] = samples.back();
  values_.resize(half + 1);
  complexTransform(pairs, std::span(values_).first(half), TransformDirection::Forward);
  const Complex first = values_.front();
  values_.front() = first.real() + first.imag();
  values_.back() = first.real() - first.imag();
  const UnitRoots roots(2 * half);
  for (std::size_t k = 1; 2 * k <= half; ++k) {
    const Complex here = values_[k];
    const Complex mirrored = std::conj(values_[half - k]);
    const Complex even = 0.5 * (here + mirrored);
    const Complex odd = timesI(-0.5 * (here - mirrored));
    const Complex turned = product(std::conj(roots.at(k)), odd);
    values_[k] = even + turned;
    values_[half - k] = std::conj(even - turned);
  }
}

std::vector<double> Spectrum::samples() const {
  const std::size_t half = size() / 2;
  std::vector<Complex> pairs(half);
  const UnitRoots roots(2 * half);
  const double first = values_.front().real();
  const double last = values_.back().real();
  pairs.front() = {first + last, first - last};
  for (std::size_t k = 1; k < half; ++k) {
    const Complex here = values_[k];
    const Complex mirrored = std::conj(values_[half - k]);
    pairs[k] = here + mirrored + timesI(product(roots.at(k), here - mirrored));
  }
  std::vector<double> samples(size());
  complexTransform(pairs, {reinterpret_cast<Complex*>(samples.data()), half}, TransformDirection::Backward);
  const double scale = 1 / double(size());
  for (double& sample : samples)
    sample *= scale;
  return samples;
}

} // namespace xov
