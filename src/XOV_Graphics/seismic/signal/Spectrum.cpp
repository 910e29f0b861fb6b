#include "XOV_Graphics/seismic/signal/Spectrum.h"

#include <algorithm>
#include <kissfft.hh>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;

bool hasSmallFactors(std::size_t number) {
  for (const std::size_t factor : {2, 3, 5})
    while (number % factor == 0)
      number /= factor;
  return number == 1;
}

} // namespace

std::size_t Spectrum::sizeFor(std::size_t samples) {
  std::size_t half = std::max<std::size_t>(1, samples / 2 + samples % 2);
  while (!hasSmallFactors(half))
    ++half;
  return 2 * half;
}

Spectrum::Spectrum(std::span<const double> samples, std::size_t atLeast) {
  const std::size_t size = sizeFor(std::max(samples.size(), atLeast));
  std::vector<double> padded(size);
  std::ranges::copy(samples, padded.begin());
  values_.resize(size / 2 + 1);
  // Two real samples make one complex number; the values at 0 and n/2 come in one as well.
  kissfft<double>(size / 2, false).transform_real(padded.data(), values_.data());
  values_.back() = values_.front().imag();
  values_.front() = values_.front().real();
}

std::vector<double> Spectrum::samples() const {
  // The transforms E of the samples of even number and O of those of odd number are halves of this one, since
  // X[k] = E[k] + w O[k] and conj(X[n/2 - k]) = E[k] - w O[k] with w = exp(-2πi k/n); E + iO goes back in one step.
  const std::size_t half = size() / 2;
  std::vector<Complex> both(half);
  for (std::size_t k = 0; k < half; ++k) {
    const Complex here = k == 0 ? Complex(values_[k].real()) : values_[k];
    const Complex mirrored = k == 0 ? Complex(values_[half].real()) : std::conj(values_[half - k]);
    const Complex turned = std::polar(1.0, std::numbers::pi * double(k) / double(half)) * (here - mirrored);
    both[k] = here + mirrored + Complex(-turned.imag(), turned.real());
  }
  std::vector<double> samples(size());
  kissfft<double>(half, true).transform(both.data(), reinterpret_cast<Complex*>(samples.data()));
  const double scale = 1 / double(size());
  for (double& sample : samples)
    sample *= scale;
  return samples;
}

} // namespace xov
