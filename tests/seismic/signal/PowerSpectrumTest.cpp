#include "XOV_Graphics/seismic/signal/PowerSpectrum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <random>

namespace xov {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

std::vector<float> noise(std::size_t count, float deviation) {
  std::mt19937 random(11);
  std::normal_distribution<float> value(0, deviation);
  std::vector<float> samples(count);
  for (float& sample : samples)
    sample = value(random);
  return samples;
}

std::vector<float> sine(std::size_t count, double amplitude, double hz, double interval) {
  std::vector<float> samples(count);
  for (std::size_t k = 0; k < count; ++k)
    samples[k] = float(amplitude * std::sin(2 * std::numbers::pi * hz * double(k) * interval));
  return samples;
}

double integralOf(const PowerSpectrum& spectrum) {
  return std::accumulate(spectrum.density.begin(), spectrum.density.end(), 0.0) * spectrum.hz.at(1);
}

double meanSquare(const std::vector<float>& samples) {
  double mean = 0;
  for (const float sample : samples)
    mean += double(sample) / double(samples.size());
  double sum = 0;
  for (const float sample : samples)
    sum += (double(sample) - mean) * (double(sample) - mean);
  return sum / double(samples.size());
}

double meanDensity(const PowerSpectrum& spectrum, double fromHz, double toHz) {
  double sum = 0;
  int count = 0;
  for (std::size_t j = 0; j < spectrum.hz.size(); ++j) {
    if (spectrum.hz[j] < fromHz || spectrum.hz[j] > toHz) continue;
    sum += spectrum.density[j];
    ++count;
  }
  return sum / count;
}

// A number of samples that is transformed as it is, an odd one, and one that gets zeros behind.
TEST(PowerSpectrum, integratesToTheMeanSquare) {
  for (const std::size_t count : {100U, 45U, 77U, 2U, 1009U}) {
    const std::vector<float> samples = noise(count, 3);
    const PowerSpectrum spectrum = periodogram(samples, 0.02, WindowShape::Rectangular);
    EXPECT_NEAR(integralOf(spectrum), meanSquare(samples), 1e-9 * meanSquare(samples)) << count;
    EXPECT_NEAR(spectrum.hz.back(), 25, 1e-9) << "up to the Nyquist frequency";
  }
}

// Ten periods of amplitude 3 in one second: the mean square, 3² / 2, lies in the one density at 10 Hz, 1 Hz wide.
TEST(PowerSpectrum, aSineIsOnePeak) {
  const PowerSpectrum spectrum = periodogram(sine(100, 3, 10, 0.01), 0.01, WindowShape::Rectangular);
  ASSERT_EQ(spectrum.hz.size(), 51u);
  EXPECT_EQ(spectrum.hz[10], 10);
  for (std::size_t j = 0; j < spectrum.density.size(); ++j)
    EXPECT_NEAR(spectrum.density[j], j == 10 ? 4.5 : 0, 1e-6) << j; // samples are single precision
}

// The Hann window's transform has the heights ½ and twice ¼, its squares sum up to 3/8: of 4.5, 2/3 lie in the middle
// and 1/6 beside it.
TEST(PowerSpectrum, aWindowSpreadsAPeakAndKeepsItsPower) {
  const PowerSpectrum spectrum = periodogram(sine(100, 3, 10, 0.01), 0.01, WindowShape::Hann);
  EXPECT_NEAR(spectrum.density[9], 0.75, 1e-6);
  EXPECT_NEAR(spectrum.density[10], 3, 1e-6);
  EXPECT_NEAR(spectrum.density[11], 0.75, 1e-6);
  EXPECT_NEAR(spectrum.density[13], 0, 1e-9);
}

// Twice the Nyquist interval times the variance: 2 · 0.01 · 5² = 0.5. Some 390 segments, half of them independent, of
// 200 frequencies scatter by a thousandth.
TEST(PowerSpectrum, ofWhiteNoiseIsFlatAtTwiceItsVarianceTimesTheInterval) {
  const std::vector<float> samples = noise(100000, 5);
  for (const WindowShape shape : {WindowShape::Rectangular, WindowShape::Hann, WindowShape::Hamming,
                                  WindowShape::Blackman, WindowShape::CosineTaper}) {
    const PowerSpectrum spectrum = welch(samples, 0.01, {.segment = 512, .overlap = 0.5, .window = shape});
    EXPECT_EQ(spectrum.segments, 389u); // (100000 - 512) / 256 = 388.6
    EXPECT_NEAR(meanDensity(spectrum, 2, 20), 0.5, 0.01);
    EXPECT_NEAR(meanDensity(spectrum, 30, 48), 0.5, 0.01);
  }
  EXPECT_NEAR(meanDensity(multitaper(std::span(samples).first(20000), 0.01), 1, 49), 0.5, 0.02);
}

TEST(PowerSpectrum, windowsHaveTheirValues) {
  const std::vector<double> hann = windowOf(WindowShape::Hann, 4);
  const double expected[] = {0, 0.5, 1, 0.5};
  for (std::size_t k = 0; k < 4; ++k)
    EXPECT_NEAR(hann[k], expected[k], 1e-15);
  EXPECT_NEAR(windowOf(WindowShape::Hamming, 4)[0], 0.08, 1e-15);
  EXPECT_NEAR(windowOf(WindowShape::Blackman, 4)[1], 0.34, 1e-15); // 0.42 - 0.08
  EXPECT_EQ(windowOf(WindowShape::Rectangular, 3), (std::vector<double>{1, 1, 1}));
  const std::vector<double> taper = windowOf(WindowShape::CosineTaper, 101); // over 10 intervals at either end
  EXPECT_EQ(taper[0], 0);
  EXPECT_NEAR(taper[5], 0.5, 1e-15);
  EXPECT_EQ(taper[10], 1);
  EXPECT_EQ(taper[50], 1);
}

TEST(PowerSpectrum, segmentsWithAGapAreLeftOut) {
  std::vector<float> samples = noise(1000, 1);
  const PowerSpectrum whole = welch(samples, 1, {.segment = 100, .overlap = 0});
  EXPECT_EQ(whole.segments, 10u);
  samples[450] = kNan;
  const PowerSpectrum gappy = welch(samples, 1, {.segment = 100, .overlap = 0});
  EXPECT_EQ(gappy.segments, 9u);
  EXPECT_TRUE(std::ranges::all_of(gappy.density, [](double value) { return std::isfinite(value); }));
}

TEST(PowerSpectrum, segmentsAreNoLongerThanTheLongestStretch) {
  std::vector<float> samples = noise(100, 1);
  samples[35] = kNan; // 64 remain behind it, which no hop of 32 from the first sample on meets
  const PowerSpectrum spectrum = welch(samples, 1, {.segment = 90});
  EXPECT_EQ(spectrum.segments, 1u);
  EXPECT_EQ(spectrum.hz.size(), 33u); // 64 / 2 + 1
}

TEST(PowerSpectrum, aPeriodogramIsThatOfTheLongestStretch) {
  std::vector<float> samples = noise(150, 1);
  samples[49] = kNan;
  const PowerSpectrum expected = periodogram(std::span(samples).subspan(50), 1);
  EXPECT_EQ(periodogram(samples, 1).density, expected.density);
  EXPECT_EQ(expected.hz.size(), 51u);
}

// Seven tapers on 1000 samples spread a line over 8 / (2 · 1001) cycles a sample to either side.
TEST(PowerSpectrum, tapersKeepAPeakWithinTheirBand) {
  const PowerSpectrum spectrum = multitaper(sine(1000, 2, 100, 0.001), 0.001, 7);
  EXPECT_EQ(spectrum.segments, 7u);
  const double inside = meanDensity(spectrum, 96, 104) * 9; // 1 Hz each
  EXPECT_NEAR(inside, 2, 0.04);
  EXPECT_LT(meanDensity(spectrum, 120, 400), 1e-4 * meanDensity(spectrum, 96, 104));
}

// b log10(f/fc) is π/2 there, the weight (2/π)⁴ = 0.16424: (5 + 0.16424 · 3) / 1.16424.
TEST(PowerSpectrum, neighboursCountByTheirLogarithmicDistance) {
  const double half = std::pow(10.0, std::numbers::pi / 80);
  PowerSpectrum spectrum{.hz = {0, 1, half}, .density = {100, 5, 3}, .segments = 1};
  const PowerSpectrum smooth = konnoOhmachi(spectrum, 40);
  ASSERT_EQ(smooth.hz, (std::vector<double>{1, half}));
  EXPECT_NEAR(smooth.density[0], 4.71786, 1e-4);
  EXPECT_NEAR(smooth.density[1], (3 + 0.16424 * 5) / 1.16424, 1e-4);
  spectrum.hz[2] = half * half; // the first zero
  EXPECT_NEAR(konnoOhmachi(spectrum, 40).density[0], 5, 1e-9);
}

TEST(PowerSpectrum, smoothingKeepsAConstantAndThinsManyFrequencies) {
  PowerSpectrum spectrum;
  for (int j = 0; j <= 100000; ++j) {
    spectrum.hz.push_back(j * 0.001);
    spectrum.density.push_back(7);
  }
  const PowerSpectrum smooth = konnoOhmachi(spectrum);
  // The 43rd frequency and the 44th are a hundredth of a decade apart, 2.33 %; log10(100 / 0.044) = 3.36 decades
  // follow.
  EXPECT_NEAR(double(smooth.hz.size()), 43 + 336, 3);
  EXPECT_EQ(smooth.hz.front(), spectrum.hz[1]);
  EXPECT_EQ(smooth.hz[20], spectrum.hz[21]);
  EXPECT_EQ(smooth.hz.back(), spectrum.hz.back());
  for (std::size_t i = 44; i < smooth.hz.size(); ++i)
    EXPECT_LT(smooth.hz[i] / smooth.hz[i - 1], 1.0234);
  for (const double density : smooth.density)
    EXPECT_NEAR(density, 7, 1e-9);
}

TEST(PowerSpectrum, ofWhatCannotBeTransformedIsEmpty) {
  const std::vector<float> nothing{kNan, kNan, 1, kNan};
  const std::vector<float> samples = noise(10, 1);
  for (const PowerSpectrum& spectrum :
       {periodogram({}, 1), periodogram(nothing, 1), welch(nothing, 1), multitaper(nothing, 1),
        periodogram(samples, 0), welch(samples, -1), multitaper(samples, double(kNan)), konnoOhmachi({}),
        konnoOhmachi({{0, 1}, {2, 2}}, 0)})
    EXPECT_TRUE(spectrum.density.empty());
  EXPECT_EQ(welch(samples, 1, {.segment = 4, .overlap = double(kNan)}).segments, 2u);
  EXPECT_FALSE(multitaper(samples, 1, -3).density.empty());
}

} // namespace
} // namespace xov
