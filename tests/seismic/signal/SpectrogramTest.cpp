#include "XOV_Graphics/seismic/signal/Spectrogram.h"

#include "tests/support/GuardedSamples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace xov {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Of amplitude 3, so many Hz, sampled at 100 Hz.
std::vector<float> sine(std::size_t count, double hz) {
  std::vector<float> samples(count);
  for (std::size_t k = 0; k < count; ++k)
    samples[k] = float(3 * std::sin(2 * std::numbers::pi * hz * double(k) / 100));
  return samples;
}

SpectrogramPiece pieceOf(const std::vector<float>& samples, double start = 0) { return {samples, start, 0.01}; }

float cell(const Spectrogram& picture, int row, int column) {
  return picture.decibels.at(std::size_t(row) * std::size_t(picture.columns) + std::size_t(column));
}

bool isEmptyColumn(const Spectrogram& picture, int column) {
  for (int row = 0; row < picture.rows; ++row)
    if (!std::isnan(cell(picture, row, column))) return false;
  return true;
}

int loudestRow(const Spectrogram& picture, int column) {
  int loudest = 0;
  for (int row = 1; row < picture.rows; ++row)
    if (cell(picture, row, column) > cell(picture, loudest, column)) loudest = row;
  return loudest;
}

// A window of 1 s resolves 1 Hz. Rows are 1 Hz high with a density at the lower edge of each: 10 Hz is that of the
// row from 10 to 11 Hz, the 40th from the top. Its density under a Hann window is 3² · 1 s / 3.
TEST(Spectrogram, aSineIsALineAtItsFrequency) {
  const std::vector<float> samples = sine(1000, 10);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram({&piece, 1}, {.windowSeconds = 1, .columns = 20, .rows = 50});
  EXPECT_EQ(picture.highestHz, 50);
  EXPECT_EQ(picture.lowestHz, 0);
  EXPECT_EQ(picture.endSeconds, 10);
  for (int column = 1; column < 19; ++column) {
    EXPECT_EQ(loudestRow(picture, column), 39) << column;
    EXPECT_NEAR(cell(picture, 39, column), 10 * std::log10(3.0), 1e-3) << column;
    EXPECT_NEAR(cell(picture, 38, column), 10 * std::log10(0.75), 1e-3) << column; // a quarter beside it
  }
}

TEST(Spectrogram, holdsOneWindowOfSamplesAtATime) {
  const std::vector<float> samples = sine(20000, 10);
  testing::GuardedSamples guarded(samples);
  const SpectrogramPiece inMemory = pieceOf(samples);
  const SpectrogramPiece piece{{guarded.data(), samples.size()}, 0, 0.01, &guarded};
  const SpectrogramSettings settings{.windowSeconds = 10, .columns = 20, .rows = 50};
  const std::vector<float> expected = spectrogram({&inMemory, 1}, settings).decibels;
  EXPECT_TRUE(std::ranges::equal(spectrogram({&piece, 1}, settings).decibels, expected,
                                 [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }));
  EXPECT_TRUE(guarded.isEverythingLetGo());
  EXPECT_LE(guarded.mostHeld(), 1000u + 2 * 64) << "a window, in whole pages of 64";
}

// Half a window of 1 s is one column of 0.5 s.
TEST(Spectrogram, columnsThatNoSegmentHasItsMiddleInAreEmpty) {
  const std::vector<float> samples = sine(1000, 10);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram({&piece, 1}, {.windowSeconds = 1, .columns = 20, .rows = 50});
  EXPECT_TRUE(isEmptyColumn(picture, 0));
  EXPECT_FALSE(isEmptyColumn(picture, 1));
  EXPECT_FALSE(isEmptyColumn(picture, 18));
  EXPECT_TRUE(isEmptyColumn(picture, 19));
}

TEST(Spectrogram, aGapBetweenPiecesIsEmpty) {
  const std::vector<float> samples = sine(1000, 10);
  const SpectrogramPiece pieces[] = {pieceOf(samples, 100), pieceOf(samples, 120)};
  const Spectrogram picture = spectrogram(pieces, {.windowSeconds = 1, .columns = 60, .rows = 50});
  EXPECT_EQ(picture.startSeconds, 100);
  EXPECT_EQ(picture.endSeconds, 130);
  for (int column = 0; column < 60; ++column) {
    const bool inFirst = column >= 1 && column <= 18;
    const bool inSecond = column >= 41 && column <= 58;
    EXPECT_EQ(isEmptyColumn(picture, column), !inFirst && !inSecond) << column;
  }
}

TEST(Spectrogram, aSampleThatIsNoNumberIsAGap) {
  std::vector<float> samples = sine(1000, 10);
  samples[500] = kNan;
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram({&piece, 1}, {.windowSeconds = 1, .columns = 20, .rows = 50});
  EXPECT_TRUE(isEmptyColumn(picture, 9));
  EXPECT_TRUE(isEmptyColumn(picture, 10));
  EXPECT_FALSE(isEmptyColumn(picture, 8));
  EXPECT_FALSE(isEmptyColumn(picture, 11));
}

// 10 Hz, then 40 Hz with a tenth of the power for a tenth of the time, in two columns: all of the segments count.
TEST(Spectrogram, aColumnIsTheMeanOfItsSegments) {
  std::vector<float> samples = sine(20000, 10);
  std::fill(samples.begin() + 10000, samples.end(), 0.0F);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram({&piece, 1}, {.windowSeconds = 1, .overlap = 0, .columns = 1, .rows = 50});
  // 200 segments, all but the one at the middle of which the sine ends whole: half have the density 3.
  EXPECT_NEAR(cell(picture, 39, 0), 10 * std::log10(1.5), 1e-2);
}

TEST(Spectrogram, logarithmicRowsReachFromOnePeriodAWindowToNyquist) {
  const std::vector<float> samples = sine(1000, 10);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram(
      {&piece, 1}, {.windowSeconds = 1, .columns = 20, .rows = 100, .lowestHz = 0.5, .logFrequency = true});
  EXPECT_EQ(picture.lowestHz, 0.5);
  EXPECT_EQ(picture.highestHz, 50);
  // Two decades in a hundred rows: 10 Hz lies log10(5) / 2 of them from the top, at 34.9.
  EXPECT_NEAR(loudestRow(picture, 10), 34.9, 1);
  EXPECT_FALSE(std::isnan(cell(picture, 99, 10)));
  const Spectrogram usual = spectrogram({&piece, 1}, {.windowSeconds = 2, .logFrequency = true});
  EXPECT_EQ(usual.lowestHz, 0.5);
}

TEST(Spectrogram, rowsBeyondNyquistAreSilent) {
  const std::vector<float> samples = sine(1000, 10);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture =
      spectrogram({&piece, 1}, {.windowSeconds = 1, .columns = 4, .rows = 10, .highestHz = 100});
  EXPECT_EQ(cell(picture, 0, 2), kNoPowerDb);
  EXPECT_GT(cell(picture, 8, 2), -20);
}

TEST(Spectrogram, samplesAllAlikeHaveNoPower) {
  const std::vector<float> samples(1000, 5.0F);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram({&piece, 1}, {.windowSeconds = 1, .columns = 4, .rows = 10});
  EXPECT_EQ(cell(picture, 5, 1), kNoPowerDb);
}

TEST(Spectrogram, aWindowLongerThanTheRecordingIsAsLong) {
  const std::vector<float> samples = sine(100, 10);
  const SpectrogramPiece piece = pieceOf(samples);
  const Spectrogram picture = spectrogram({&piece, 1}, {.windowSeconds = 60, .columns = 3, .rows = 50});
  EXPECT_EQ(picture.windowSeconds, 1);
  EXPECT_FALSE(isEmptyColumn(picture, 1));
}

// A day at 100 Hz: 8640000 samples / 60 = 144000, above the longest. A minute: 100, next to 128 by its logarithm.
TEST(Spectrogram, usualWindowsArePowersOfTwo) {
  EXPECT_NEAR(usualWindowSeconds(86400, 0.01), 163.84, 1e-9);
  EXPECT_NEAR(usualWindowSeconds(60, 0.01), 1.28, 1e-9);
  EXPECT_NEAR(usualWindowSeconds(1, 0.01), 0.64, 1e-9);
  EXPECT_EQ(usualWindowSeconds(0, 0.01), 0);
}

TEST(Spectrogram, ofWhatHasNoSpectrumIsEmpty) {
  const std::vector<float> samples = sine(1000, 10);
  EXPECT_TRUE(spectrogram({}).isEmpty());
  for (const SpectrogramPiece& piece : {SpectrogramPiece{{}, 0, 0.01},
                                        {samples, 0, 0},
                                        {samples, 0, -1},
                                        {samples, 0, double(kNan)},
                                        {samples, double(kNan), 0.01},
                                        {samples, 1e300, 0.01},
                                        {samples, 0, 1e300}})
    EXPECT_TRUE(spectrogram({&piece, 1}).isEmpty());
  const SpectrogramPiece piece = pieceOf(samples);
  EXPECT_TRUE(spectrogram({&piece, 1}, {.lowestHz = 60}).isEmpty()) << "above the Nyquist frequency";
  const Spectrogram absurd = spectrogram(
      {&piece, 1},
      {.windowSeconds = 1e300, .overlap = 1e300, .columns = -5, .rows = -5, .lowestHz = -1e300, .highestHz = 1e200});
  EXPECT_EQ(absurd.decibels.size(), 1u);
}

// 1000 values from 0.1 to 100: the 5th percentile is 50 and the 99.5th 994 of the tenths.
TEST(Spectrogram, colorsSpanAllButTheExtremes) {
  std::vector<float> values{kNan, kNoPowerDb};
  for (int i = 1; i <= 1000; ++i)
    values.push_back(float(i) / 10);
  const DecibelRange range = robustRange(values);
  EXPECT_EQ(range.lowest, 5);
  EXPECT_EQ(range.highest, 100);
  const std::vector<float> one{-33};
  EXPECT_EQ(robustRange(one).lowest, -50); // 20 below -30
  EXPECT_EQ(robustRange(one).highest, -30);
  EXPECT_EQ(robustRange({}).highest, 0);
}

} // namespace
} // namespace xov
