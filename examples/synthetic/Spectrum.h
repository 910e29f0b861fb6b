#pragma once

#include <complex>
#include <vector>

namespace xov::synthetic {

/// A signal by its components at the frequencies 0, step, 2·step, ... The signal repeats after 1/step seconds.
class Spectrum {
public:
  /// Silence. `size` is the number of samples that samples() returns, a power of two.
  Spectrum(std::size_t size, double rateHz);

  std::size_t size() const;
  double rateHz() const;
  /// Number of frequencies, from 0 to below half the sample rate.
  std::size_t frequencyCount() const;
  double frequencyHz(std::size_t index) const;

  /// Turns the Fourier transform of a pulse at a frequency, in units times seconds, into its component: twice the
  /// step in frequency.
  double componentPerDensity() const;

  /// The component c of a frequency f: Re(c·exp(2πi f t)) is its part of the signal at time t.
  std::complex<double>& operator[](std::size_t index);
  const std::complex<double>& operator[](std::size_t index) const;

  /// The signal, sample i at time i / rateHz, by a fast Fourier transform of radix two: J. W. Cooley, J. W. Tukey, An
  /// algorithm for the machine calculation of complex Fourier series, Math. Comp. 19, 297-301 (1965).
  std::vector<double> samples() const;

private:
  std::size_t size_;
  double rateHz_;
  std::vector<std::complex<double>> components_;
};

} // namespace xov::synthetic
