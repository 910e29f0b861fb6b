#pragma once

#include <complex>
#include <cstdint>
#include <vector>

namespace xov::synthetic {

/// An earthquake whose slip comes in several smooth patches, one after the other.
class Source {
public:
  /// `magnitude` is moment and surface-wave magnitude at once. Equal seeds give equal ruptures.
  Source(double magnitude, double depthKm, double strikeDeg, std::uint64_t seed);

  double magnitude() const;
  double depthKm() const;
  double strikeDeg() const;
  std::uint64_t seed() const;
  /// Length of the rupture in seconds: twice the half duration 1.05e-8·M^(1/3) of a moment M in dyn·cm, as in the
  /// Global CMT catalogue (G. Ekström, M. Nettles, A. M. Dziewonski, Phys. Earth Planet. Inter. 200-201, 1-9 (2012)),
  /// M from H. Kanamori, J. Geophys. Res. 82, 2981-2987 (1977): log M = 1.5·magnitude + 16.1.
  double durationS() const;

  /// Above this frequency the rupture is silent.
  double highestHz() const;

  /// The moment rate at a frequency, as component of a Spectrum whose time 0 is the origin time; 1 at frequency 0.
  std::complex<double> momentRate(double frequencyHz) const;

private:
  struct Patch {
    double share;  // of the moment
    double timeS;  // of its centre
    double widthS; // standard deviation of its Gaussian
  };
  double magnitude_, depthKm_, strikeDeg_;
  std::uint64_t seed_;
  std::vector<Patch> patches_;
};

} // namespace xov::synthetic
