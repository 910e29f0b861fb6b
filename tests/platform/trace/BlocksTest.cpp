#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/platform/trace/BlockBorders.h"
#include "tests/support/TraceSignals.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;

namespace {

// Vectors count positions from their first one in single precision, which must keep a thousandth of a sample.
constexpr double kThousandth = 0.001;

struct Cuts {
  std::vector<std::int32_t> index;
  std::vector<float> fraction;
};

Cuts cut(double start, double step, int count, std::int32_t lowest, std::int32_t highest) {
  Cuts cuts{std::vector<std::int32_t>(std::size_t(count)), std::vector<float>(std::size_t(count))};
  cutEvenly(start, step, count, lowest, highest, cuts.index.data(), cuts.fraction.data());
  return cuts;
}

} // namespace

TEST(BlockBorders, cutAtThePlaceOfEveryBorderHoweverManySamplesLieBetween) {
  forEachVectorWidth([] {
    for (const double step : {0.01, 0.3, 1.0, 3.7, 511.3, 512.7, 600.1, 8191.9, 8192.3, 20'000.7, 1'000'000.3}) {
      constexpr int kCount = 200;
      const double start = 0.37;
      const Cuts cuts = cut(start, step, kCount, 1, std::int32_t(step * kCount) + 100);
      for (int k = 0; k < kCount; ++k) {
        const double position = start + k * step;
        const auto index = cuts.index[std::size_t(k)];
        EXPECT_GE(position, index - 1 - kThousandth) << step << ' ' << k;
        EXPECT_LE(position, index + kThousandth) << step << ' ' << k;
        EXPECT_NEAR(cuts.fraction[std::size_t(k)], position - (index - 1), kThousandth) << step << ' ' << k;
      }
    }
  });
}

TEST(BlockBorders, areHeldBetweenTwoSamples) {
  forEachVectorWidth([] {
    // Positions -5, -4.75, ... 34.75 between samples 3 and 20.
    const Cuts cuts = cut(-5, 0.25, 160, 3, 20);
    for (int k = 0; k < 160; ++k) {
      const double position = std::clamp(-5 + k * 0.25, 2.0, 20.0);
      const std::int32_t index = std::min(std::int32_t(position) + 1, 20);
      EXPECT_EQ(cuts.index[std::size_t(k)], index) << k;
      EXPECT_EQ(cuts.fraction[std::size_t(k)], float(position - (index - 1))) << k;
    }
  });
}

TEST(BlockExtremes, areThoseOfEverySampleInBlocksOfAnySize) {
  const std::vector<std::int32_t> sizes{1,  3,  4,  5, 7,    8,    9,    15,   16,     17, 31,
                                        63, 64, 65, 0, 1000, 4095, 4096, 4097, 20'011, 0,  2};
  std::vector<std::int32_t> cuts{0};
  for (const std::int32_t size : sizes)
    cuts.push_back(cuts.back() + size);
  const int blocks = int(sizes.size());
  const std::vector<float> samples = noise(std::size_t(cuts.back()), 5, 3);
  forEachVectorWidth([&] {
    std::vector<float> low(sizes.size()), high(sizes.size());
    std::vector<float> finiteLow(low.size()), finiteHigh(high.size());
    findFiniteBlockExtremes(samples.data(), cuts.data(), blocks, finiteLow.data(), finiteHigh.data());
    ASSERT_TRUE(findBlockExtremes(samples.data(), cuts.data(), blocks, low.data(), high.data()));
    ASSERT_EQ(finiteLow, low);
    ASSERT_EQ(finiteHigh, high);
    for (std::size_t k = 0; k < sizes.size(); ++k) {
      if (sizes[k] == 0) {
        EXPECT_GT(low[k], high[k]);
        continue;
      }
      const auto [lowest, highest] = std::minmax_element(samples.begin() + cuts[k], samples.begin() + cuts[k + 1]);
      EXPECT_EQ(low[k], *lowest) << sizes[k];
      EXPECT_EQ(high[k], *highest) << sizes[k];
    }
  });
}

TEST(BlockExtremes, noticeASingleSampleThatIsNotFiniteWhereverItStands) {
  const std::vector<std::int32_t> cuts{0, 7, 150, 5000, 9300};
  const std::vector<float> samples = noise(9300, 5, 4);
  forEachVectorWidth([&] {
    for (const float odd : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity()}) {
      for (const std::size_t place : {0U, 6U, 7U, 149U, 150U, 4095U, 4999U, 5000U, 9298U, 9299U}) {
        std::vector<float> broken = samples;
        broken[place] = odd;
        float low[4], high[4];
        EXPECT_FALSE(findBlockExtremes(broken.data(), cuts.data(), 4, low, high)) << place;
      }
    }
  });
}
