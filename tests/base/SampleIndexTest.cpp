#include "XOV_Graphics/base/SampleIndex.h"

#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

namespace xov {
namespace {

constexpr std::int64_t kBlock = SampleIndex::kBlock;
const float kNan = std::numeric_limits<float>::quiet_NaN();

// 0, 1, 2, …: block k has the extremes k · 256 and k · 256 + 255.
std::vector<float> ramp(std::size_t count) {
  std::vector<float> samples(count);
  std::iota(samples.begin(), samples.end(), 0.0F);
  return samples;
}

SampleIndex::Blocks allBlocks(const SampleIndex& index, const std::vector<float>& samples) {
  return index.blocksWithin(samples.data(), 0, std::int64_t(samples.size()));
}

// Every block that the index answers with has the extremes of its samples, and those that could be answered with are.
void expectRight(const SampleIndex& index, std::span<const float> samples, std::int64_t firstNumber) {
  const auto count = std::int64_t(samples.size());
  if (count == 0) return;
  const auto isGap = [](float sample) { return !std::isfinite(sample); };
  EXPECT_FALSE(index.holdsNoGap(samples.data(), 0, count) && std::ranges::any_of(samples, isGap));
  ASSERT_TRUE(index.covers(samples.data(), 0, count));
  const SampleIndex::Blocks blocks = index.blocksWithin(samples.data(), 0, count);
  const std::int64_t from = (firstNumber + kBlock - 1) / kBlock, to = (firstNumber + count) / kBlock;
  ASSERT_EQ(blocks.count, std::max<std::int64_t>(to - from, 0));
  EXPECT_EQ(blocks.begin, blocks.count > 0 ? from * kBlock - firstNumber : count);
  for (std::int64_t k = 0; k < blocks.count; ++k) {
    const auto block = samples.subspan(std::size_t(blocks.begin + k * kBlock), std::size_t(kBlock));
    const bool hasGap = std::ranges::any_of(block, isGap);
    if (hasGap) {
      EXPECT_TRUE(std::isnan(blocks.lowest[k])) << k;
      EXPECT_TRUE(std::isnan(blocks.highest[k])) << k;
    } else {
      EXPECT_EQ(blocks.lowest[k], *std::min_element(block.begin(), block.end())) << k;
      EXPECT_EQ(blocks.highest[k], *std::max_element(block.begin(), block.end())) << k;
    }
  }
}

TEST(SampleIndex, knowsThatSamplesInWholeBlocksHoldNoGap) {
  std::vector<float> samples = ramp(4 * 256 + 100);
  samples[300] = kNan; // in the second block
  const SampleIndex index(samples);
  const auto holdsNoGap = [&](std::int64_t first, std::int64_t last) {
    return index.holdsNoGap(samples.data(), first, last);
  };
  EXPECT_TRUE(holdsNoGap(0, 256));
  EXPECT_TRUE(holdsNoGap(10, 20));
  EXPECT_FALSE(holdsNoGap(10, 257)) << "the block of the last one holds a gap";
  EXPECT_FALSE(holdsNoGap(400, 800)) << "so does that of the first one";
  EXPECT_TRUE(holdsNoGap(512, 1024));
  EXPECT_TRUE(holdsNoGap(513, 1000));
  EXPECT_FALSE(holdsNoGap(513, 1025)) << "the last block is not whole";
  EXPECT_TRUE(holdsNoGap(300, 300)) << "no samples";
  EXPECT_EQ(index.extremesAround(samples.data(), 600), std::pair(512.0F, 767.0F));
  EXPECT_EQ(index.extremesAround(samples.data() + 512, 255), std::pair(512.0F, 767.0F));
  EXPECT_TRUE(std::isnan(index.extremesAround(samples.data(), 511).first)) << "with a gap";
  EXPECT_TRUE(std::isnan(index.extremesAround(samples.data(), 1024).second)) << "not whole";
}

TEST(SampleIndex, knowsNothingOfTheBlockThatSamplesWereDroppedFrom) {
  std::vector<float> samples = ramp(4 * 256);
  samples[10] = kNan;
  SampleIndex index(samples);
  const std::span<const float> rest = std::span(samples).subspan(300);
  index.dropped(rest, 300); // 212 samples of the second block are left
  EXPECT_FALSE(index.holdsNoGap(rest.data(), 211, 300));
  EXPECT_TRUE(index.holdsNoGap(rest.data(), 212, 300));
  EXPECT_TRUE(index.holdsNoGap(rest.data() + 200, 12, 500)) << "counted from another sample";
}

// Of samples in no whole block, too: a hundred, of which there is none, and those on either side of two.
TEST(SampleIndex, knowsThatNoSampleIsAGap) {
  std::vector<float> samples = ramp(100);
  SampleIndex index;
  const auto holdsNoGap = [&] { return index.holdsNoGap(samples.data(), 0, std::ssize(samples)); };
  index.build(samples, 200);
  EXPECT_TRUE(holdsNoGap());
  samples.resize(1000, 1);
  index.appended(samples, 900);
  EXPECT_TRUE(holdsNoGap());
  index.mapped([](float sample) { return sample - 0.5F; });
  EXPECT_TRUE(holdsNoGap());
  for (const std::size_t gap : {10U, 300U, 999U}) { // before, in and behind whole blocks
    std::vector<float> broken = samples;
    broken[gap] = kNan;
    index.build(broken, 200);
    EXPECT_FALSE(index.holdsNoGap(broken.data(), 0, 1000)) << gap;
    index.build(samples, 200);
    index.changed(broken, std::int64_t(gap), std::int64_t(gap) + 1);
    EXPECT_FALSE(index.holdsNoGap(broken.data(), 0, 1000)) << gap;
  }
  index.build(samples, 200);
  index.mapped([](float sample) { return sample * 2; });
  EXPECT_FALSE(holdsNoGap()) << "twice the largest number is none";
  index.adopt(samples, std::vector<float>(3, 0), std::vector<float>(3, 1));
  EXPECT_FALSE(holdsNoGap()) << "nothing was said of the last 232";
  EXPECT_TRUE(index.holdsNoGap(samples.data(), 0, 768));
  EXPECT_FALSE(index.isUnbroken());
  index.build(samples, 200);
  EXPECT_TRUE(index.isUnbroken());
}

TEST(SampleIndex, holdsTheExtremesOfEachWholeBlock) {
  const std::vector<float> samples = ramp(3 * 256 + 100);
  const SampleIndex index(samples);
  const SampleIndex::Blocks blocks = allBlocks(index, samples);
  ASSERT_EQ(blocks.count, 3);
  EXPECT_EQ(blocks.begin, 0);
  EXPECT_EQ(blocks.end(), 768);
  EXPECT_EQ(std::vector<float>(blocks.lowest, blocks.lowest + 3), (std::vector<float>{0, 256, 512}));
  EXPECT_EQ(std::vector<float>(blocks.highest, blocks.highest + 3), (std::vector<float>{255, 511, 767}));
}

// More blocks than one thread looks through.
TEST(SampleIndex, isTheSameWithAnyNumberOfThreads) {
  std::vector<float> samples = ramp(3'000'001);
  samples[1'500'000] = kNan;
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    SampleIndex index;
    index.build(std::span(samples).subspan(1), 1);
    const SampleIndex::Blocks blocks = index.blocksWithin(samples.data() + 1, 0, 3'000'000);
    ASSERT_EQ(blocks.count, 3'000'001 / kBlock - 1);
    for (std::int64_t k = 0; k < blocks.count; ++k) {
      const auto first = float((k + 1) * kBlock);
      if (k + 1 == 1'500'000 / kBlock)
        EXPECT_TRUE(std::isnan(blocks.lowest[k]));
      else
        ASSERT_TRUE(blocks.lowest[k] == first && blocks.highest[k] == first + float(kBlock - 1)) << k;
    }
  }
}

TEST(SampleIndex, answersWithBlocksThatLieWholeWithinAStretch) {
  const std::vector<float> samples = ramp(1024);
  const SampleIndex index(samples);
  const SampleIndex::Blocks blocks = index.blocksWithin(samples.data(), 1, 1023);
  EXPECT_EQ(blocks.begin, 256);
  EXPECT_EQ(blocks.count, 2);
  EXPECT_EQ(blocks.lowest[0], 256);
  EXPECT_EQ(index.blocksWithin(samples.data(), 300, 700).count, 0);
  EXPECT_EQ(index.blocksWithin(samples.data(), 300, 700).begin, 700) << "all of it lies before";
}

TEST(SampleIndex, countsAStretchFromWhereItBegins) {
  const std::vector<float> samples = ramp(1024);
  const SampleIndex index(samples);
  ASSERT_TRUE(index.covers(samples.data() + 100, 0, 900));
  const SampleIndex::Blocks blocks = index.blocksWithin(samples.data() + 100, 0, 900);
  EXPECT_EQ(blocks.begin, 156);
  EXPECT_EQ(blocks.lowest[0], 256);
  EXPECT_EQ(blocks.count, 2) << "up to sample 768 of 1000";
}

TEST(SampleIndex, marksABlockWithAGap) {
  for (const float gap : {kNan, std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity()}) {
    std::vector<float> samples = ramp(768);
    samples[511] = gap;
    const SampleIndex index(samples);
    const SampleIndex::Blocks blocks = allBlocks(index, samples);
    EXPECT_EQ(blocks.lowest[0], 0);
    EXPECT_TRUE(std::isnan(blocks.lowest[1]));
    EXPECT_TRUE(std::isnan(blocks.highest[1]));
    EXPECT_EQ(blocks.highest[2], 767);
  }
}

TEST(SampleIndex, coversOnlyTheSamplesThatItWasToldOf) {
  const std::vector<float> samples = ramp(512), others = ramp(512);
  const SampleIndex index(samples);
  EXPECT_TRUE(index.covers(samples.data(), 0, 512));
  EXPECT_TRUE(index.covers(samples.data() + 12, -12, 500));
  EXPECT_FALSE(index.covers(samples.data(), 0, 513));
  EXPECT_FALSE(index.covers(samples.data(), -1, 512));
  EXPECT_FALSE(index.covers(others.data(), 0, 512));
  EXPECT_FALSE(index.covers(nullptr, 0, 0));
  EXPECT_FALSE(SampleIndex().covers(samples.data(), 0, 1));
}

TEST(SampleIndex, forgetsWhenCleared) {
  const std::vector<float> samples = ramp(512);
  SampleIndex index(samples);
  index.clear();
  EXPECT_FALSE(index.covers(samples.data(), 0, 512));
}

TEST(SampleIndex, takesChangedSamples) {
  std::vector<float> samples = ramp(1024);
  SampleIndex index(samples);
  samples[300] = -5;
  samples[600] = 5000;
  index.changed(samples, 300, 601);
  expectRight(index, samples, 0);
  samples[300] = kNan;
  index.changed(samples, 300, 301);
  expectRight(index, samples, 0);
  samples[300] = 1;
  index.changed(samples, -10, 5000);
  expectRight(index, samples, 0);
}

TEST(SampleIndex, takesAsFewBlocksAsAppendedSamplesFill) {
  std::vector<float> samples;
  SampleIndex index;
  index.build(samples);
  for (const std::size_t count : {0U, 1U, 200U, 54U, 1U, 0U, 256U, 1000U, 5U}) {
    const std::vector<float> more = ramp(count);
    samples.insert(samples.end(), more.begin(), more.end());
    index.appended(samples, std::int64_t(count));
    expectRight(index, samples, 0);
  }
}

TEST(SampleIndex, dropsWholeBlocksAsSamplesLeave) {
  const std::vector<float> all = ramp(5000);
  std::span<const float> samples(all);
  SampleIndex index(samples);
  std::int64_t gone = 0;
  for (const std::int64_t count : {1, 255, 256, 300, 0, 1700, 2000}) {
    samples = samples.subspan(std::size_t(count));
    gone += count;
    index.dropped(samples, count);
    expectRight(index, samples, gone);
  }
}

TEST(SampleIndex, marksABlockThatAnIncreasingFunctionTakesBeyondNumbers) {
  std::vector<float> samples = ramp(512); // the second block up to 511
  SampleIndex index(samples);
  const auto large = [](float sample) { return sample < 300 ? sample : std::numeric_limits<float>::infinity(); };
  std::ranges::transform(samples, samples.begin(), large);
  index.mapped(large);
  expectRight(index, samples, 0);
}

TEST(SampleIndex, countsBlocksByTheNumberOfTheFirstSample) {
  const std::vector<float> samples = ramp(1000);
  SampleIndex index;
  for (const std::int64_t number : {0, 1, 255, 256, 300, 1'000'000'007}) {
    index.build(samples, number);
    expectRight(index, samples, number);
  }
}

TEST(SampleIndex, holdsThroughAnyOrderOfChanges) {
  std::mt19937 random(1);
  const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
  int turn = 0;
  const auto value = [&] { return turn >= 200 && upTo(300) == 0 ? kNan : float(upTo(2000) - 1000); };
  std::vector<float> samples;
  SampleIndex index;
  std::int64_t number = 77;
  index.build(samples, number);
  for (; turn < 400; ++turn) {
    const auto count = std::int64_t(samples.size());
    if (const int kind = upTo(4); kind == 0) {
      const int more = upTo(900);
      for (int i = 0; i < more; ++i)
        samples.push_back(value());
      index.appended(samples, more);
    } else if (kind == 1) {
      const std::int64_t less = std::min<std::int64_t>(upTo(800), count);
      samples.erase(samples.begin(), samples.begin() + less);
      number += less;
      index.dropped(samples, less);
    } else if (kind == 2) {
      const std::int64_t less = std::min<std::int64_t>(upTo(400), count);
      samples.resize(std::size_t(count - less));
      index.truncated(samples, less);
    } else if (kind == 3) {
      const auto lowered = [by = float(upTo(20))](float sample) { return 0.5F * (sample - by); };
      std::ranges::transform(samples, samples.begin(), lowered);
      index.mapped(lowered);
    } else if (count > 0) {
      const std::int64_t from = upTo(int(count) - 1), to = from + upTo(int(count - from));
      for (std::int64_t i = from; i < to; ++i)
        samples[std::size_t(i)] = value();
      index.changed(samples, from, to);
    }
    expectRight(index, samples, number);
    const bool isKnown = index.holdsNoGap(samples.data(), 0, std::ssize(samples));
    EXPECT_TRUE(isKnown || turn >= 200) << turn;
  }
}

} // namespace
} // namespace xov
