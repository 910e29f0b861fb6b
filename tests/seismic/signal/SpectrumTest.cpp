#include "XOV_Graphics/seismic/signal/Spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace xov {
namespace {

using Complex = std::complex<double>;

std::vector<double> noise(std::size_t count) {
  std::mt19937 random(7);
  std::normal_distribution<double> value;
  std::vector<double> samples(count);
  for (double& sample : samples)
    sample = value(random);
  return samples;
}

Complex transformAt(std::span<const double> samples, std::size_t j, std::size_t size) {
  Complex sum;
  for (std::size_t k = 0; k < samples.size(); ++k)
    sum += samples[k] * std::polar(1.0, -2 * std::numbers::pi * double(j * k % size) / double(size));
  return sum;
}

TEST(Spectrum, isTheSumOverAllSamplesOfAnyNumber) {
  for (const std::size_t count : {1, 2, 3, 6, 10, 16, 31, 90, 101}) {
    const std::vector<double> samples = noise(count);
    const Spectrum spectrum(samples);
    ASSERT_GE(spectrum.size(), count);
    ASSERT_EQ(spectrum.values().size(), spectrum.size() / 2 + 1);
    for (std::size_t j = 0; j < spectrum.values().size(); ++j)
      EXPECT_NEAR(std::abs(spectrum.values()[j] - transformAt(samples, j, spectrum.size())), 0, 1e-12)
          << count << " samples, value " << j;
  }
}

// Of a hundred thousand samples not all values can be summed up in a moment.
TEST(Spectrum, isTheSumOverManySamplesToo) {
  for (const std::size_t count : {90000U, 65536U}) {
    const std::vector<double> samples = noise(count);
    const Spectrum spectrum(samples);
    ASSERT_EQ(spectrum.size(), count) << "of small factors";
    for (const std::size_t j : {std::size_t(1), std::size_t(12345), spectrum.size() / 2 - 1})
      EXPECT_NEAR(std::abs(spectrum.values()[j] - transformAt(samples, j, spectrum.size())), 0, 1e-8)
          << count << " samples, value " << j;
    const std::vector<double> back = spectrum.samples();
    for (std::size_t k = 0; k < count; ++k)
      ASSERT_NEAR(back[k], samples[k], 1e-12) << count << " samples, sample " << k;
  }
}

TEST(Spectrum, goesBackToTheSamplesAndTheZerosBehindThem) {
  for (const std::size_t count : {1, 2, 3, 6, 10, 16, 31, 90, 1001}) {
    const std::vector<double> samples = noise(count);
    const std::vector<double> back = Spectrum(samples, count + 20).samples();
    ASSERT_GE(back.size(), count + 20);
    for (std::size_t k = 0; k < back.size(); ++k)
      EXPECT_NEAR(back[k], k < count ? samples[k] : 0, 1e-13) << count << " samples, sample " << k;
  }
}

TEST(Spectrum, isAsLongAsTheNextEvenNumberOfTwosThreesAndFives) {
  EXPECT_EQ(Spectrum::sizeFor(0), 2U);
  EXPECT_EQ(Spectrum::sizeFor(1), 2U);
  EXPECT_EQ(Spectrum::sizeFor(7), 8U);
  EXPECT_EQ(Spectrum::sizeFor(13), 16U);   // 7 is no factor, so not 14
  EXPECT_EQ(Spectrum::sizeFor(301), 320U); // 2 · 160; 151 to 159 have larger factors
  EXPECT_EQ(Spectrum::sizeFor(60), 60U);
}

TEST(Spectrum, knowsTheFrequencyOfEachValue) {
  const Spectrum spectrum(std::vector<double>(100));
  EXPECT_DOUBLE_EQ(spectrum.frequencyHz(0, 0.01), 0);
  EXPECT_DOUBLE_EQ(spectrum.frequencyHz(1, 0.01), 1);
  EXPECT_DOUBLE_EQ(spectrum.frequencyHz(50, 0.01), 50);
}

TEST(Spectrum, leavesOutWhatNoRealSamplesHave) {
  Spectrum spectrum(std::vector<double>{1, 2, 3, 4});
  const std::vector<double> before = spectrum.samples();
  spectrum.values().front() += Complex(0, 5);
  spectrum.values().back() += Complex(0, 5);
  EXPECT_EQ(spectrum.samples(), before);
}

} // namespace
} // namespace xov
