#include "XOV_Graphics/seismic/signal/Butterworth.h"

#include "XOV_Graphics/base/Numbers.h"

#include <cmath>
#include <complex>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;
using std::numbers::pi;

constexpr double kLowestCorner = 1e-6; // of the sampling rate

bool hasLowCorner(FilterBand band) { return band != FilterBand::LowPass; }
bool hasHighCorner(FilterBand band) { return band != FilterBand::HighPass; }

Status checkCorner(double cornerHz, double intervalSeconds) {
  const double nyquistHz = 0.5 / intervalSeconds;
  if (!(cornerHz > 0) || !(cornerHz < nyquistHz))
    return Error{
        QStringLiteral("found a corner of %1 Hz, expected one above 0 and below %2 Hz, half the sampling rate")
            .arg(numberText(cornerHz), numberText(nyquistHz))};
  if (cornerHz * intervalSeconds < kLowestCorner)
    return Error{QStringLiteral("found a corner of %1 Hz, expected %2 Hz or more at this sampling rate")
                     .arg(numberText(cornerHz), numberText(kLowestCorner / intervalSeconds))};
  return {};
}

Status check(const ButterworthFilter& filter, double intervalSeconds) {
  if (!(intervalSeconds > 0) || !std::isfinite(intervalSeconds))
    return Error{
        QStringLiteral("found a sample interval of %1 s, expected more than 0").arg(numberText(intervalSeconds))};
  if (filter.order < 1 || filter.order > kMostFilterOrder)
    return Error{
        QStringLiteral("found a filter of order %1, expected 1 to %2").arg(filter.order).arg(kMostFilterOrder)};
  if (hasLowCorner(filter.band)) {
    if (Status status = checkCorner(filter.lowHz, intervalSeconds); !status) return status;
  }
  if (hasHighCorner(filter.band)) {
    if (Status status = checkCorner(filter.highHz, intervalSeconds); !status) return status;
  }
  if (hasLowCorner(filter.band) && hasHighCorner(filter.band) && !(filter.lowHz < filter.highHz))
    return Error{QStringLiteral("found corners of %1 and %2 Hz, expected the lower one first")
                     .arg(numberText(filter.lowHz), numberText(filter.highHz))};
  return {};
}

/// A root of s² - 2 half s + product = 0 and the other one, without loss where they are far apart.
struct Roots {
  Complex one;
  Complex other;
};
Roots rootsOf(Complex half, double product) {
  const Complex distance = std::sqrt(half * half - product);
  const Complex one = std::norm(half + distance) >= std::norm(half - distance) ? half + distance : half - distance;
  return {one, product / one};
}

/// Where the numerator of a section is zero, as coefficients of 1, z⁻¹ and z⁻².
struct Zeros {
  double b0;
  double b1;
  double b2;
};

class Design {
public:
  Design(const ButterworthFilter& filter, double intervalSeconds)
      : filter_(filter),
        low_(std::tan(pi * filter.lowHz * intervalSeconds)),
        high_(std::tan(pi * filter.highHz * intervalSeconds)) {}

  std::vector<Biquad> sections() {
    // The poles of the prototype with the corner 1 lie on the left half of the unit circle, mirrored at the real
    // axis.
    for (int k = 0; k < filter_.order / 2; ++k)
      addPole(std::polar(1.0, pi * (2.0 * k + filter_.order + 1) / (2.0 * filter_.order)));
    if (filter_.order % 2 == 1) addRealPole();
    return std::move(sections_);
  }

private:
  bool isBand() const { return hasLowCorner(filter_.band) && hasHighCorner(filter_.band); }

  /// The two poles that a prototype's pole becomes in a band.
  Roots inBand(Complex pole) const {
    const double width = high_ - low_;
    const Complex half = filter_.band == FilterBand::BandPass ? pole * (width / 2) : width / 2 / pole;
    return rootsOf(half, low_ * high_);
  }

  /// A pole above the real axis, with the one that mirrors it.
  void addPole(Complex pole) {
    if (isBand()) {
      const Roots roots = inBand(pole);
      addSection(roots.one, std::conj(roots.one));
      addSection(roots.other, std::conj(roots.other));
    } else {
      const Complex moved = filter_.band == FilterBand::LowPass ? high_ * pole : low_ / pole;
      addSection(moved, std::conj(moved));
    }
  }

  void addRealPole() {
    if (isBand()) {
      const Roots roots = inBand(-1);
      addSection(roots.one, roots.other);
      return;
    }
    const double moved = filter_.band == FilterBand::LowPass ? -high_ : -low_;
    const double pole = (1 + moved) / (1 - moved);
    const double sign = filter_.band == FilterBand::LowPass ? 1 : -1;
    append({1, sign, 0, -pole, 0});
  }

  /// Two poles in the plane of s, of which sum and product are real. The bilinear transform z = (1 + s)/(1 - s) takes
  /// the tangents of half the digital frequencies as the analogue ones.
  void addSection(Complex one, Complex other) {
    const Complex z = (1.0 + one) / (1.0 - one);
    const Complex w = (1.0 + other) / (1.0 - other);
    const Zeros zeros = zerosOf();
    append({zeros.b0, zeros.b1, zeros.b2, -(z + w).real(), (z * w).real()});
  }

  Zeros zerosOf() const {
    switch (filter_.band) {
    case FilterBand::LowPass:
      return {1, 2, 1};
    case FilterBand::HighPass:
      return {1, -2, 1};
    case FilterBand::BandPass:
      return {1, 0, -1};
    case FilterBand::BandStop:
      break;
    }
    return {1, -2 * std::cos(centre()), 1};
  }

  /// The digital frequency in the middle of the band, in radians a sample.
  double centre() const { return 2 * std::atan(std::sqrt(low_ * high_)); }

  double frequencyOfGain1() const {
    switch (filter_.band) {
    case FilterBand::HighPass:
      return pi;
    case FilterBand::BandPass:
      return centre();
    case FilterBand::LowPass:
    case FilterBand::BandStop:
      break;
    }
    return 0;
  }

  void append(Biquad section) {
    const double gain = std::abs(responseOf({&section, 1}, frequencyOfGain1()));
    section.b0 /= gain;
    section.b1 /= gain;
    section.b2 /= gain;
    sections_.push_back(section);
  }

  ButterworthFilter filter_;
  double low_; // the corners, as analogue frequencies
  double high_;
  std::vector<Biquad> sections_;
};

} // namespace

// Parks, T. W., and C. S. Burrus (1987), Digital Filter Design, Wiley, chapter 7: the poles of the prototype, the
// transformations to other bands and the bilinear transform.
Result<std::vector<Biquad>> designButterworth(const ButterworthFilter& filter, double intervalSeconds) {
  if (const Status status = check(filter, intervalSeconds); !status) return Error{status.error()};
  return Design(filter, intervalSeconds).sections();
}

} // namespace xov
