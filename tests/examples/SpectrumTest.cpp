#include "examples/synthetic/Spectrum.h"

#include "examples/synthetic/Random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov::synthetic {
namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

TEST(Spectrum, aRealComponentIsACosineThatStartsAtItsPeak) {
  Spectrum spectrum(8, 4.0);
  EXPECT_DOUBLE_EQ(spectrum.frequencyHz(1), 0.5);
  spectrum[1] = 3.0;
  const std::vector<double> samples = spectrum.samples();
  ASSERT_EQ(samples.size(), 8U);
  const double diagonal = 3.0 * std::sqrt(0.5);
  const double expected[] = {3, diagonal, 0, -diagonal, -3, -diagonal, 0, diagonal};
  for (std::size_t i = 0; i < 8; ++i)
    EXPECT_NEAR(samples[i], expected[i], 1e-12) << i;
}

TEST(Spectrum, manyComponentsAddUp) {
  constexpr std::size_t kSize = 64;
  Spectrum spectrum(kSize, 20.0);
  Random random(1);
  for (std::size_t i = 0; i < spectrum.frequencyCount(); ++i)
    spectrum[i] = {random.normal(), random.normal()};
  const std::vector<double> samples = spectrum.samples();
  for (std::size_t k = 0; k < kSize; ++k) {
    double sum = 0;
    for (std::size_t i = 0; i < spectrum.frequencyCount(); ++i) {
      const double angle = kTwoPi * double(i * k) / double(kSize);
      sum += spectrum[i].real() * std::cos(angle) - spectrum[i].imag() * std::sin(angle);
    }
    EXPECT_NEAR(samples[k], sum, 1e-10) << k;
  }
}

TEST(Spectrum, theTransformOfAPulseGivesThePulseBack) {
  // A Gaussian exp(-t²/2) around 12.8 s has the transform sqrt(2π)·exp(-ω²/2 - iω·12.8).
  Spectrum spectrum(512, 20.0);
  for (std::size_t i = 1; i < spectrum.frequencyCount(); ++i) {
    const double omega = kTwoPi * spectrum.frequencyHz(i);
    spectrum[i] = spectrum.componentPerDensity() *
                  std::polar(std::sqrt(kTwoPi) * std::exp(-0.5 * omega * omega), -omega * 12.8);
  }
  spectrum[0] = 0.5 * spectrum.componentPerDensity() * std::sqrt(kTwoPi);
  const std::vector<double> samples = spectrum.samples();
  EXPECT_NEAR(samples[256], 1.0, 1e-9);            // 12.8 s · 20 Hz
  EXPECT_NEAR(samples[276], std::exp(-0.5), 1e-9); // one second later
  EXPECT_NEAR(samples[216], std::exp(-2.0), 1e-9); // two seconds earlier
}

} // namespace
} // namespace xov::synthetic
