#include "examples/synthetic/Source.h"

#include "examples/synthetic/Random.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {

constexpr int kPatchCount = 24;
// Widths as parts of the duration: narrow patches make the onset sharp and fill the short periods.
constexpr double kNarrowestPatch = 0.012;
constexpr double kWidestPatch = 0.11;
// A Gaussian's spectrum is below 1e-5 of its peak beyond this many standard deviations.
constexpr double kSilentSpread = 5.0;
// A patch is centred so late that next to nothing of it precedes the origin time.
constexpr double kWidthsBeforeCentre = 3.0;

} // namespace

Source::Source(double magnitude, double depthKm, double strikeDeg, std::uint64_t seed)
    : magnitude_(magnitude),
      depthKm_(depthKm),
      strikeDeg_(strikeDeg),
      seed_(seed) {
  Random random(seed);
  double sum = 0;
  for (int i = 0; i < kPatchCount; ++i) {
    const double part = double(i) / (kPatchCount - 1);
    const double width = durationS() * (kNarrowestPatch + (kWidestPatch - kNarrowestPatch) * part);
    const double earliest = kWidthsBeforeCentre * width;
    const double latest = std::max(earliest, durationS() - width);
    // The narrowest patch breaks first; the moment of a patch of constant stress drop grows with its width cubed, on
    // a crowded fault somewhat less.
    const double time = i == 0 ? earliest : earliest + (latest - earliest) * random.uniform();
    const double share = width * width * (0.5 + random.uniform());
    patches_.push_back({share, time, width});
    sum += share;
  }
  for (Patch& patch : patches_)
    patch.share /= sum;
}

double Source::magnitude() const { return magnitude_; }

double Source::depthKm() const { return depthKm_; }

double Source::strikeDeg() const { return strikeDeg_; }

std::uint64_t Source::seed() const { return seed_; }

double Source::durationS() const { return 2.0 * 1.05e-8 * std::cbrt(std::pow(10.0, 1.5 * magnitude_ + 16.1)); }

double Source::highestHz() const { return kSilentSpread / (2.0 * std::numbers::pi * kNarrowestPatch * durationS()); }

std::complex<double> Source::momentRate(double frequencyHz) const {
  const double omega = 2.0 * std::numbers::pi * frequencyHz;
  std::complex<double> sum = 0;
  for (const Patch& patch : patches_) {
    const double spread = omega * patch.widthS;
    sum += std::polar(patch.share * std::exp(-0.5 * spread * spread), -omega * patch.timeS);
  }
  return sum;
}

} // namespace xov::synthetic
