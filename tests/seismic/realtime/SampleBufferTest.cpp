#include "XOV_Graphics/seismic/realtime/SampleBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

using namespace xov;

namespace {

constexpr float kGap = -1; // stands for NaN, which equals nothing

std::vector<float> contents(const SampleBuffer& buffer) {
  std::vector<float> all(buffer.samples().begin(), buffer.samples().end());
  for (float& sample : all)
    if (std::isnan(sample)) sample = kGap;
  return all;
}

using Floats = std::vector<float>;

/// The index answers for all samples, with nothing but the extremes of each block: NaN where one has a gap.
void expectIndexOf(const SampleBuffer& buffer) {
  const std::span<const float> samples = buffer.samples();
  const auto count = std::int64_t(samples.size());
  ASSERT_TRUE(buffer.index().covers(samples.data(), 0, count));
  const SampleIndex::Blocks blocks = buffer.index().blocksWithin(samples.data(), 0, count);
  ASSERT_GE(blocks.count, count / SampleIndex::kBlock - 1) << "of blocks that the borders cut no more than two";
  for (std::int64_t k = 0; k < blocks.count; ++k) {
    const auto block =
        samples.subspan(std::size_t(blocks.begin + k * SampleIndex::kBlock), std::size_t(SampleIndex::kBlock));
    const bool hasGap = std::ranges::any_of(block, [](float sample) { return std::isnan(sample); });
    ASSERT_EQ(std::isnan(blocks.lowest[k]), hasGap) << k;
    if (hasGap) continue;
    ASSERT_EQ(blocks.lowest[k], *std::ranges::min_element(block)) << k;
    ASSERT_EQ(blocks.highest[k], *std::ranges::max_element(block)) << k;
  }
}

/// Samples at half seconds from 1000 s on.
SampleBuffer halfSeconds(std::int64_t capacity) { return SampleBuffer(0.5, capacity); }

} // namespace

TEST(SampleBuffer, startsEmpty) {
  const SampleBuffer buffer = halfSeconds(10);
  EXPECT_TRUE(buffer.samples().empty());
  EXPECT_EQ(buffer.startSeconds(), 0);
}

TEST(SampleBuffer, joinsWhatFollows) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2});
  buffer.append(1001, Floats{3, 4});
  EXPECT_EQ(contents(buffer), (Floats{1, 2, 3, 4}));
  EXPECT_EQ(buffer.startSeconds(), 1000);
}

TEST(SampleBuffer, fillsGapsWithNaN) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2});
  buffer.append(1002.5, Floats{6});
  EXPECT_EQ(contents(buffer), (Floats{1, 2, kGap, kGap, kGap, 6}));
}

TEST(SampleBuffer, putsLatePiecesWhereTheyBelong) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2});
  buffer.append(1002.5, Floats{6});
  buffer.append(1001.5, Floats{4, 5});
  EXPECT_EQ(contents(buffer), (Floats{1, 2, kGap, 4, 5, 6}));
  buffer.append(1001, Floats{3});
  EXPECT_EQ(contents(buffer), (Floats{1, 2, 3, 4, 5, 6}));
}

TEST(SampleBuffer, takesPiecesFromBeforeTheFirst) {
  SampleBuffer buffer = halfSeconds(5);
  buffer.append(1002, Floats{5, 6});
  buffer.append(1000.5, Floats{2});
  EXPECT_EQ(contents(buffer), (Floats{2, kGap, kGap, 5, 6}));
  EXPECT_EQ(buffer.startSeconds(), 1000.5);
  // Of these the last one still fits.
  buffer.append(998.5, Floats{-4, -3, -2, -1, 9});
  EXPECT_EQ(contents(buffer), (Floats{9, kGap, kGap, 5, 6}));
}

TEST(SampleBuffer, replacesOverlaps) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2, 3, 4});
  buffer.append(1001, Floats{30, 40, 50});
  EXPECT_EQ(contents(buffer), (Floats{1, 2, 30, 40, 50}));
  buffer.append(1000.5, Floats{20});
  EXPECT_EQ(contents(buffer), (Floats{1, 20, 30, 40, 50}));
}

TEST(SampleBuffer, keepsTheNewest) {
  SampleBuffer buffer = halfSeconds(3);
  buffer.append(1000, Floats{1, 2});
  buffer.append(1001, Floats{3, 4});
  EXPECT_EQ(contents(buffer), (Floats{2, 3, 4}));
  EXPECT_EQ(buffer.startSeconds(), 1000.5);
  buffer.append(1002, Floats{5, 6, 7, 8, 9});
  EXPECT_EQ(contents(buffer), (Floats{7, 8, 9}));
  EXPECT_EQ(buffer.startSeconds(), 1003);
  buffer.append(1000, Floats{1, 2});
  EXPECT_EQ(contents(buffer), (Floats{7, 8, 9})) << "too old";
}

TEST(SampleBuffer, keepsNothingAcrossAGapLongerThanItself) {
  SampleBuffer buffer = halfSeconds(4);
  buffer.append(1000, Floats{1, 2});
  buffer.append(5000, Floats{7});
  EXPECT_EQ(contents(buffer), (Floats{kGap, kGap, kGap, 7}));
  EXPECT_EQ(buffer.startSeconds(), 4998.5);
}

TEST(SampleBuffer, laysPiecesOnTheNearestPlace) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2});
  buffer.append(1002.7, Floats{6}); // 5.4 intervals on
  buffer.append(1001.3, Floats{4}); // 2.6
  EXPECT_EQ(contents(buffer), (Floats{1, 2, kGap, 4, kGap, 6}));
}

TEST(SampleBuffer, followsAClockThatRunsSlow) {
  // Each piece comes a tenth of a sample later than the one before it ended.
  SampleBuffer buffer(0.01, 100000);
  const Floats second(100, 1);
  double start = 1.3e9;
  for (int i = 0; i < 500; ++i) {
    buffer.append(start, second);
    start += 1.001;
  }
  EXPECT_EQ(buffer.samples().size(), 50000U) << "no gap has opened";
  EXPECT_EQ(std::count_if(buffer.samples().begin(), buffer.samples().end(), [](float s) { return std::isnan(s); }),
            0);
  // The newest piece is where its time says: it began 1.001 s before `start`.
  EXPECT_NEAR(buffer.startSeconds() + 49900 * 0.01, start - 1.001, 1e-5);
}

TEST(SampleBuffer, isNotMovedByLatePieces) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2, 3});
  buffer.append(1000.7, Floats{9});
  EXPECT_EQ(buffer.startSeconds(), 1000);
  EXPECT_EQ(contents(buffer), (Floats{1, 9, 3}));
}

TEST(SampleBuffer, survivesAnyTimeAndInterval) {
  for (const double time : {-1e300, 1e300, -1e18, 1e18, std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    SampleBuffer buffer = halfSeconds(4);
    buffer.append(1000, Floats{1, 2});
    buffer.append(time, Floats{3});
    buffer.append(1001, Floats{4});
    EXPECT_LE(buffer.samples().size(), 4U);
    EXPECT_GE(buffer.samples().size(), 1U);
  }
  EXPECT_EQ(SampleBuffer(0, 0).deltaSeconds(), 1);
  EXPECT_EQ(SampleBuffer(-1, -5).capacity(), 1);
}

TEST(SampleBuffer, makesNoRoomForAPieceThatIsTooOld) {
  SampleBuffer buffer = halfSeconds(10);
  buffer.append(1000, Floats{1, 2});
  buffer.append(990, Floats{3, 4}); // twenty places before, of which ten are kept
  EXPECT_EQ(contents(buffer), (Floats{1, 2}));
  EXPECT_EQ(buffer.startSeconds(), 1000);
}

// Against a table from place to value, which forgets what is older than the newest places.
TEST(SampleBuffer, agreesWithATableOverRandomPieces) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    const std::int64_t capacity = 1 + random() % 40;
    SampleBuffer buffer(0.25, capacity);
    std::map<std::int64_t, float> table;
    std::int64_t newest = 0;
    std::int64_t now = 4000;
    for (int step = 0; step < 1000; ++step) {
      now += random() % 4;
      const std::int64_t place = now - std::int64_t(random() % 60);
      Floats piece(1 + random() % 12);
      for (std::size_t i = 0; i < piece.size(); ++i) {
        piece[i] = float(random() % 1000);
        table[place + std::int64_t(i)] = piece[i];
      }
      buffer.append(double(place) * 0.25, piece);
      newest = table.rbegin()->first;
      table.erase(table.begin(), table.lower_bound(newest - capacity + 1));

      Floats expected;
      for (std::int64_t p = table.begin()->first; p <= newest; ++p)
        expected.push_back(table.count(p) > 0 ? table[p] : kGap);
      const Floats found = contents(buffer);
      // The buffer may still have places without samples before the oldest one.
      ASSERT_GE(found.size(), expected.size()) << "seed " << seed << " step " << step;
      ASSERT_LE(std::int64_t(found.size()), capacity);
      const auto extra = std::ptrdiff_t(found.size() - expected.size());
      ASSERT_TRUE(std::all_of(found.begin(), found.begin() + extra, [](float s) { return s == kGap; }));
      ASSERT_EQ(Floats(found.begin() + extra, found.end()), expected) << "seed " << seed << " step " << step;
      ASSERT_EQ(buffer.startSeconds(), double(newest + 1 - std::int64_t(found.size())) * 0.25);
    }
  }
}

TEST(SampleBuffer, indexesWhatItHoldsHoweverPiecesCome) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    std::mt19937 random(seed);
    SampleBuffer buffer(0.01, 300 + std::int64_t(random() % 4000));
    std::int64_t now = 100000;
    for (int step = 0; step < 150; ++step) {
      // On time, late, after a gap, from before the oldest, and now and then after a pause longer than the buffer.
      const std::uint32_t kind = random() % 20;
      if (kind == 19) now += 10000;
      if (kind > 16) now += random() % 700;
      const std::int64_t late = kind < 5 ? random() % 5000 : 0;
      Floats piece(1 + random() % 900);
      for (float& sample : piece)
        sample = float(random() % 1000);
      buffer.append(double(now - late) * 0.01, piece);
      if (late == 0) now += std::ssize(piece);
      ASSERT_NO_FATAL_FAILURE(expectIndexOf(buffer)) << "seed " << seed << " step " << step;
    }
  }
}
