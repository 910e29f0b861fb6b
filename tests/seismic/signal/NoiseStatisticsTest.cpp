#include "XOV_Graphics/seismic/signal/NoiseStatistics.h"

#include "tests/support/GuardedSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace xov {
namespace {

constexpr double kInterval = 0.05; // 20 Hz, so that ten minutes are 12000 samples

std::vector<float> noise(std::size_t count, float deviation) {
  std::mt19937 random(3);
  std::normal_distribution<float> value(0, deviation);
  std::vector<float> samples(count);
  for (float& sample : samples)
    sample = value(random);
  return samples;
}

NoiseStatistics ofMinutes(std::span<const float> samples, double minutes) {
  const SpectrogramPiece piece{samples, 0, kInterval};
  return noiseStatistics({&piece, 1}, {.segmentSeconds = 60 * minutes});
}

// 2 · 0.05 s · 2² = 0.4, or -3.98 dB. Averages over octaves of short periods scatter least.
TEST(NoiseStatistics, ofWhiteNoiseAreFlat) {
  const NoiseStatistics statistics = ofMinutes(noise(36000, 2), 10);
  EXPECT_EQ(statistics.segments, 5u); // from 0, 5, 10, 15 and 20 of 30 minutes on
  const std::vector<double> median = statistics.percentile(0.5);
  ASSERT_EQ(median.size(), statistics.periods.size());
  for (std::size_t i = 0; statistics.periods[i] < 1; ++i)
    EXPECT_NEAR(median[i], 10 * std::log10(0.4), 0.3) << statistics.periods[i] << " s";
}

TEST(NoiseStatistics, holdOneSegmentOfSamplesAtATime) {
  const std::vector<float> samples = noise(36000, 2);
  testing::GuardedSamples guarded(samples);
  const SpectrogramPiece piece{{guarded.data(), samples.size()}, 0, kInterval, &guarded};
  EXPECT_EQ(noiseStatistics({&piece, 1}, {.segmentSeconds = 600}).decibels, ofMinutes(samples, 10).decibels);
  EXPECT_TRUE(guarded.isEverythingLetGo());
  EXPECT_LE(guarded.mostHeld(), 12000u + 2 * 64) << "a segment, in whole pages of 64";
}

// From the octave that begins at twice the interval, in eighths of octaves. A quarter of 12000 samples holds 2048,
// or 102.4 s: the last octave has three densities, from 17 to 34 s.
TEST(NoiseStatistics, periodsRiseByEighthsOfOctaves) {
  const NoiseStatistics statistics = ofMinutes(noise(12000, 1), 10);
  ASSERT_GT(statistics.periods.size(), 2u);
  EXPECT_NEAR(statistics.periods[0], 0.1 * std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(statistics.periods[8], 0.2 * std::sqrt(2.0), 1e-12);
  EXPECT_LE(statistics.periods.back() * std::sqrt(2.0), 102.4 / 3);
  EXPECT_GT(statistics.periods.back() * std::sqrt(2.0) * std::exp2(1.0 / 8), 102.4 / 3);
}

TEST(NoiseStatistics, segmentsWithAGapAreLeftOut) {
  std::vector<float> samples = noise(36000, 1);
  samples[18000] = std::numeric_limits<float>::quiet_NaN(); // at 15 minutes: in those from 10 and 15 on, not from 5
  EXPECT_EQ(ofMinutes(samples, 10).segments, 3u);
}

TEST(NoiseStatistics, laterPiecesKeepTheStepsOfTheFirst) {
  const std::vector<float> samples = noise(16000, 1); // 800 s
  const SpectrogramPiece pieces[] = {{samples, 1000, kInterval}, {samples, 2050, kInterval}};
  // Steps of 300 s from 1000 s on: that at 1000 s, and of the second piece 2200 s, which it covers up to 2850 s.
  EXPECT_EQ(noiseStatistics(pieces, {.segmentSeconds = 600}).segments, 2u);
}

TEST(NoiseStatistics, sharesOfAllSegmentsAreCountedByPeriod) {
  NoiseStatistics statistics;
  statistics.periods = {1, 2};
  statistics.segments = 4;
  statistics.decibels = {-100, -50, -100.5F, -51, -99, -52, -200, -53};
  // Steps of 1 dB from -102 on: rows from the top begin at -99, -100, -101 and -102.
  const std::vector<float> shares = statistics.shares(-102, 1, 4);
  EXPECT_EQ(shares, (std::vector<float>{0.25F, 0, 0.25F, 0, 0.25F, 0, 0, 0}));
  EXPECT_EQ(statistics.percentile(0), (std::vector<double>{-200, -53}));
  EXPECT_EQ(statistics.percentile(1), (std::vector<double>{-99, -50}));
  EXPECT_TRUE(statistics.shares(-102, 0, 4).empty());
  EXPECT_TRUE(statistics.shares(-102, 1, -1).empty());
}

TEST(NoiseStatistics, ofShortOrAbsurdRecordingsAreEmpty) {
  const std::vector<float> samples = noise(1000, 1);
  EXPECT_EQ(ofMinutes(samples, 10).segments, 0u);
  EXPECT_EQ(ofMinutes({}, 10).segments, 0u);
  EXPECT_EQ(ofMinutes(samples, 0).segments, 0u);
  EXPECT_EQ(ofMinutes(samples, 1e300).segments, 0u);
  EXPECT_EQ(ofMinutes(samples, double(std::nanf(""))).segments, 0u);
  EXPECT_TRUE(NoiseStatistics().percentile(0.5).empty());
  const SpectrogramPiece far{samples, 1e300, kInterval};
  EXPECT_EQ(noiseStatistics({&far, 1}, {.segmentSeconds = 10}).segments, 0u);
}

TEST(NoiseStatistics, aTrendCountsForNothing) {
  std::vector<float> samples = noise(12000, 1);
  const std::vector<double> level = ofMinutes(samples, 10).percentile(0.5);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] += float(i);
  const std::vector<double> tilted = ofMinutes(samples, 10).percentile(0.5);
  for (std::size_t i = 0; i < level.size(); ++i)
    EXPECT_NEAR(tilted[i], level[i], 0.05);
}

} // namespace
} // namespace xov
