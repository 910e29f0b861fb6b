#include "examples/synthetic/Spectrum.h"

#include <algorithm>
#include <numbers>

namespace xov::synthetic {

namespace {

using Complex = std::complex<double>;

void reverseBits(std::vector<Complex>& values) {
  const std::size_t n = values.size();
  for (std::size_t i = 1, j = 0; i < n; ++i) {
    std::size_t bit = n / 2;
    for (; (j & bit) != 0; bit /= 2)
      j ^= bit;
    j ^= bit;
    if (i < j) std::swap(values[i], values[j]);
  }
}

// Written out, because operator* of std::complex checks every product for infinities.
Complex product(const Complex& a, const Complex& b) {
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// Replaces c[k] by the sum of c[j]·exp(2πi jk/n).
void transform(std::vector<Complex>& values) {
  const std::size_t n = values.size();
  std::vector<Complex> roots(n / 2);
  for (std::size_t i = 0; i < roots.size(); ++i)
    roots[i] = std::polar(1.0, 2.0 * std::numbers::pi * double(i) / double(n));
  reverseBits(values);
  for (std::size_t half = 1; half < n; half *= 2) {
    const std::size_t stride = n / (2 * half);
    for (std::size_t start = 0; start < n; start += 2 * half) {
      for (std::size_t k = 0; k < half; ++k) {
        const Complex odd = product(values[start + half + k], roots[k * stride]);
        values[start + half + k] = values[start + k] - odd;
        values[start + k] += odd;
      }
    }
  }
}

} // namespace

Spectrum::Spectrum(std::size_t size, double rateHz) : size_(size), rateHz_(rateHz), components_(size / 2) {}

std::size_t Spectrum::size() const { return size_; }

double Spectrum::rateHz() const { return rateHz_; }

std::size_t Spectrum::frequencyCount() const { return components_.size(); }

double Spectrum::frequencyHz(std::size_t index) const { return double(index) * rateHz_ / double(size_); }

double Spectrum::componentPerDensity() const { return 2.0 * rateHz_ / double(size_); }

Complex& Spectrum::operator[](std::size_t index) { return components_[index]; }

const Complex& Spectrum::operator[](std::size_t index) const { return components_[index]; }

std::vector<double> Spectrum::samples() const {
  std::vector<Complex> values(size_);
  std::copy(components_.begin(), components_.end(), values.begin());
  transform(values);
  std::vector<double> result(size_);
  std::transform(values.begin(), values.end(), result.begin(), [](const Complex& value) { return value.real(); });
  return result;
}

} // namespace xov::synthetic
