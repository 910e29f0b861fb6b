#include "XOV_Graphics/seismic/signal/Spectrum.h"

#include "XOV_Graphics/seismic/signal/ComplexTransform.h"
#include "XOV_Graphics/seismic/signal/RealTransform.h"

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

Spectrum::Spectrum(std::span<const double> samples, std::size_t atLeast) {
  RealTransform transform(sizeFor(std::max(samples.size(), atLeast)));
  values_.resize(transform.size() / 2 + 1);
  transform.run(samples, values_);
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
