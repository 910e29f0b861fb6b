#include "XOV_Graphics/base/BlockExtremes.h"

#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace xov {
namespace {

using xov::testing::forEachVectorWidth;

const float kNan = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();

// 7, 14, 21, … modulo 1009, less 500: no order that lanes might share, and no two equal within 1009 samples.
std::vector<float> scattered(std::size_t count) {
  std::vector<float> samples(count);
  for (std::size_t i = 0; i < count; ++i)
    samples[i] = float((i + 1) * 7 % 1009) - 500;
  return samples;
}

// Where blocks of 0, 1, 2, … samples begin, and where the last one ends.
std::vector<std::int32_t> growingCuts(int blocks) {
  std::vector<std::int32_t> cuts = {0};
  for (int k = 0; k < blocks; ++k)
    cuts.push_back(cuts.back() + k);
  return cuts;
}

TEST(BlockExtremes, areThoseOfASearchWhateverTheLengthOfABlock) {
  constexpr int kBlocks = 150; // of up to 149 samples: more than the widest vectors take at once
  const std::vector<std::int32_t> cuts = growingCuts(kBlocks);
  const std::vector<float> samples = scattered(std::size_t(cuts.back()));
  forEachVectorWidth([&] {
    std::vector<float> lowest(kBlocks), highest(kBlocks);
    ASSERT_TRUE(findBlockExtremes(samples.data(), cuts.data(), kBlocks, lowest.data(), highest.data()));
    EXPECT_GT(lowest[0], highest[0]); // an empty one
    for (std::size_t k = 1; k < kBlocks; ++k) {
      const auto [low, high] = std::minmax_element(samples.begin() + cuts[k], samples.begin() + cuts[k + 1]);
      EXPECT_EQ(lowest[k], *low) << k;
      EXPECT_EQ(highest[k], *high) << k;
    }
  });
}

TEST(BlockExtremes, areNoneWhereAnySampleIsNotFinite) {
  constexpr int kBlocks = 20;
  const std::vector<std::int32_t> cuts = growingCuts(kBlocks);
  std::vector<float> samples = scattered(std::size_t(cuts.back())), lowest(kBlocks), highest(kBlocks);
  forEachVectorWidth([&] {
    for (float& sample : samples) {
      for (const float odd : {kNan, kInfinity, -kInfinity}) {
        const float former = std::exchange(sample, odd);
        EXPECT_FALSE(findBlockExtremes(samples.data(), cuts.data(), kBlocks, lowest.data(), highest.data()))
            << &sample - samples.data();
        sample = former;
      }
    }
    EXPECT_TRUE(findBlockExtremes(samples.data(), cuts.data(), kBlocks, lowest.data(), highest.data()));
  });
}

TEST(BlockExtremes, gapsAndTheirEndsAreFoundFromAnyPlace) {
  // A gap of 500 samples, far enough from the first that it is looked for in long stretches.
  constexpr std::int64_t kGap = 20'000, kEnd = 20'500, kCount = 21'000;
  std::vector<float> samples = scattered(kCount);
  std::fill(samples.begin() + kGap, samples.begin() + kEnd, kNan);
  forEachVectorWidth([&] {
    for (const std::int64_t begin : {0, 1, 63, 64, 65, 19'999})
      EXPECT_EQ(findFinite(samples.data(), begin, kCount, false), kGap) << begin;
    EXPECT_EQ(findFinite(samples.data(), kGap, kCount, true), kEnd);
    EXPECT_EQ(findFinite(samples.data(), kEnd, kCount, false), kCount);
    EXPECT_EQ(findFinite(samples.data(), 0, kGap, false), kGap); // the end, not what lies behind it
  });
}

} // namespace
} // namespace xov
