#include "examples/synthetic/BandNoise.h"
#include "examples/synthetic/Burst.h"
#include "examples/synthetic/Random.h"
#include "examples/synthetic/SiteNoise.h"
#include "tests/examples/Measures.h"

#include <gtest/gtest.h>

#include <complex>
#include <numbers>
#include <vector>

namespace xov::synthetic {
namespace {

constexpr double kRateHz = 20.0;

/// Mean power around one frequency, by the sums of Fourier over stretches of 100 s.
double powerAt(double frequencyHz, const std::vector<double>& samples) {
  constexpr std::size_t kStretch = 2000;
  double power = 0;
  for (std::size_t start = 0; start + kStretch <= samples.size(); start += kStretch) {
    std::complex<double> sum = 0;
    for (std::size_t i = 0; i < kStretch; ++i) {
      // A cosine bell keeps strong frequencies from leaking into weak ones.
      const double bell = 1.0 - std::cos(2.0 * std::numbers::pi * double(i) / double(kStretch));
      sum += bell * samples[start + i] * std::polar(1.0, 2.0 * std::numbers::pi * frequencyHz * double(i) / kRateHz);
    }
    power += std::norm(sum);
  }
  return power;
}

TEST(Random, uniformNumbersLieAboveZeroAndUpToOne) {
  Random random(3);
  double sum = 0;
  for (int i = 0; i < 100000; ++i) {
    const double value = random.uniform();
    ASSERT_GT(value, 0);
    ASSERT_LE(value, 1);
    sum += value;
  }
  EXPECT_NEAR(sum / 100000, 0.5, 5 * std::sqrt(1.0 / 12 / 100000)); // five standard errors
}

TEST(Random, normalNumbersHaveTheMomentsOfAGaussian) {
  constexpr int kCount = 200000;
  Random random(4);
  double sum = 0, squares = 0, fourths = 0;
  for (int i = 0; i < kCount; ++i) {
    const double value = random.normal();
    sum += value;
    squares += value * value;
    fourths += value * value * value * value;
  }
  // Five standard errors; the moments of order 2, 4 and 8 of a Gaussian are 1, 3 and 105.
  EXPECT_NEAR(sum / kCount, 0, 5 * std::sqrt(1.0 / kCount));
  EXPECT_NEAR(squares / kCount, 1, 5 * std::sqrt((3.0 - 1.0) / kCount));
  EXPECT_NEAR(fourths / kCount, 3, 5 * std::sqrt((105.0 - 9.0) / kCount));
}

TEST(Random, equalSeedsGiveEqualNumbersAndOthersOthers) {
  Random first(5), second(5), third(6);
  EXPECT_EQ(first.normal(), second.normal());
  EXPECT_NE(first.normal(), third.normal());
}

TEST(BandNoise, hasUnitStrengthWhateverTheBand) {
  for (const double centreHz : {0.1, 1.0, 5.0}) {
    BandNoise noise(centreHz, 1.0, kRateHz, 7);
    std::vector<double> samples(400000);
    for (double& sample : samples)
      sample = noise.next();
    EXPECT_NEAR(strength<double>(samples), 1, 0.03) << centreHz << " Hz";
  }
}

TEST(BandNoise, fallsOffAwayFromItsCentreAsAResonatorDoes) {
  constexpr double kCentreHz = 0.5;
  constexpr double kQ = 2.0;
  BandNoise noise(kCentreHz, kQ, kRateHz, 8);
  std::vector<double> samples(800000);
  for (double& sample : samples)
    sample = noise.next();
  // The power of a resonator is 1 / (1 + q²(f/f0 - f0/f)²): a tenth an octave off, half at q(f/f0 - f0/f) = 1. With
  // 400 stretches the error of a power is a twentieth.
  const double peak = powerAt(kCentreHz, samples);
  EXPECT_NEAR(powerAt(0.5 * kCentreHz, samples) / peak, 0.1, 0.03);
  EXPECT_NEAR(powerAt(2.0 * kCentreHz, samples) / peak, 0.1, 0.03);
  EXPECT_NEAR(powerAt(1.2808 * kCentreHz, samples) / peak, 0.5, 0.1);
}

TEST(SiteNoise, peaksBetweenATenthAndThreeTenthsOfAHertz) {
  SiteNoise noise(Sensor::Vertical, 400, kRateHz, 9);
  std::vector<double> samples(400000);
  for (double& sample : samples)
    sample = noise.next();
  const double peak = powerAt(0.17, samples);
  EXPECT_GT(peak, 4 * powerAt(0.05, samples));
  EXPECT_GT(peak, 4 * powerAt(0.4, samples));
  EXPECT_GT(peak, 100 * powerAt(2.0, samples));
  EXPECT_NEAR(strength<double>(samples), 400, 20);
}

TEST(SiteNoise, activityRaisesWhatIsAboveOneHertzAlone) {
  SiteNoise calm(Sensor::Vertical, 1, kRateHz, 10), busy(Sensor::Vertical, 1, kRateHz, 10);
  std::vector<double> night(100000), day(100000);
  for (double& sample : night)
    sample = calm.next(1);
  for (double& sample : day)
    sample = busy.next(4);
  // At most the square of 4; the upper end of the microseisms remains.
  const double raised = powerAt(4.0, day) / powerAt(4.0, night);
  EXPECT_GT(raised, 4);
  EXPECT_LT(raised, 16);
  EXPECT_NEAR(powerAt(0.17, day) / powerAt(0.17, night), 1, 0.1);
}

TEST(Burst, isSilentBeforeItsStartAndFallsOffAfterwards) {
  const Burst burst{.startS = 10, .level = 5, .riseS = 0.5, .decayS = 4, .centreHz = 3, .seed = 11};
  EXPECT_EQ(envelope(burst, -0.001), 0);
  EXPECT_NEAR(envelope(burst, 8), std::exp(-2.0), 1e-6); // two decay times; the rise is long over
  std::vector<double> samples(1200);
  addBurst(samples, kRateHz, burst);
  const std::span<const double> all(samples);
  EXPECT_EQ(strength(all.first(200)), 0);
  EXPECT_GT(strength(all.subspan(220, 40)), 2 * strength(all.subspan(400, 100)));
}

TEST(Burst, partsOutsideTheSamplesAreLeftOut) {
  std::vector<double> samples(100);
  addBurst(samples, kRateHz, {.startS = 5.1, .level = 1});
  EXPECT_EQ(strength<double>(samples), 0);
  addBurst(samples, kRateHz, {.startS = -3, .level = 1});
  EXPECT_GT(strength<double>(samples), 0);
}

} // namespace
} // namespace xov::synthetic
