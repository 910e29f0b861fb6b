#include "XOV_Graphics/seismic/Extrema.h"

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/base/SampleSource.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

void expectExtrema(const std::vector<float>& values, float min, float max) {
  const xov::Extrema extrema = xov::finiteExtrema(values);
  EXPECT_EQ(extrema.min, min);
  EXPECT_EQ(extrema.max, max);
}

/// Counts the samples that are asked for.
struct CountingSource : xov::SampleSource {
  void hold(const float* begin, const float* end) override { held += end - begin; }
  void letGo(const float*, const float*) noexcept override {}

  std::ptrdiff_t held = 0;
};

} // namespace

TEST(Extrema, ofNothingAreZero) { expectExtrema({}, 0, 0); }

TEST(Extrema, ofOneValueAreThatValue) { expectExtrema({-7}, -7, -7); }

TEST(Extrema, ofPositiveValuesDoNotReachDownToZero) { expectExtrema({3, 2, 9}, 2, 9); }

TEST(Extrema, areFoundAtEveryPlaceOfALongSeries) {
  // Longer than two vector blocks and not a multiple of one: the extremes visit each lane and the remainder.
  constexpr std::size_t kCount = 37;
  for (std::size_t low = 0; low < kCount; ++low) {
    std::vector<float> values(kCount, 0.5F);
    values[low] = -4;
    values[kCount - 1 - low] = low == kCount - 1 - low ? -4.0F : 6.0F;
    expectExtrema(values, -4, low == kCount - 1 - low ? 0.5F : 6.0F);
  }
}

TEST(Extrema, leaveOutWhatIsNotFinite) {
  for (const float odd : {kNaN, kInfinity, -kInfinity}) {
    for (std::size_t place = 0; place < 20; ++place) {
      std::vector<float> values(20, 1.0F);
      values[(place + 7) % 20] = -2;
      values[place] = odd;
      expectExtrema(values, -2, 1);
    }
  }
}

TEST(Extrema, areZeroWhenNothingIsFinite) {
  expectExtrema({kNaN}, 0, 0);
  expectExtrema({kNaN, kInfinity, -kInfinity}, 0, 0);
  expectExtrema({kInfinity}, 0, 0);
}

TEST(Extrema, areTheSameFromAnIndex) {
  std::vector<float> values(3000);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = float((i * 7919) % 1009) - 500;
  const auto expectSame = [&] {
    const xov::SampleIndex index(values);
    const xov::Extrema plain = xov::finiteExtrema(values), indexed = xov::finiteExtrema(values, &index);
    EXPECT_EQ(indexed.min, plain.min);
    EXPECT_EQ(indexed.max, plain.max);
  };
  expectSame();
  for (const std::size_t at : {0U, 255U, 256U, 1500U, 2815U, 2816U, 2999U}) { // 2816 = 11 blocks
    for (const float value : {5000.0F, -5000.0F, kNaN, kInfinity, -kInfinity}) {
      const float before = std::exchange(values[at], value);
      expectSame();
      values[at] = before;
    }
  }
  values.assign(3000, kNaN);
  expectSame();
}

TEST(Extrema, ofManyBlocksAreTheSameFromAnIndexWhereverAGapLies) {
  // 2,500 blocks and a rest; blocks of the index are looked at by the thousand and 24.
  std::vector<float> values(2500 * 256 + 11);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = float((i * 7919) % 100003) - 50001;
  for (const std::size_t block : {0U, 1023U, 1024U, 2499U}) {
    std::vector<float> changed = values;
    changed[block * 256 + 5] = kNaN;
    changed[block * 256 + 6] = -70000; // in the block of the gap
    changed[(2499 - block) * 256 + 7] = 80000;
    const xov::SampleIndex index(changed);
    const xov::Extrema extrema = xov::finiteExtrema(changed, &index);
    EXPECT_EQ(extrema.min, -70000) << block;
    EXPECT_EQ(extrema.max, 80000) << block;
  }
}

TEST(Extrema, ofPartsAreTheSameFromAnIndexOfAll) {
  std::vector<float> values(1500);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = float((i * 7919) % 1009) - 500;
  values[300] = 5000;  // in the second block
  values[700] = -5000; // in the third one
  values[1100] = kNaN; // in the fifth one
  const xov::SampleIndex index(values);
  for (std::size_t first = 0; first < values.size(); first += 37) {
    for (std::size_t count = 1; first + count <= values.size(); count += 61) {
      const auto part = std::span<const float>(values).subspan(first, count);
      const xov::Extrema plain = xov::finiteExtrema(part), indexed = xov::finiteExtrema(part, &index);
      ASSERT_EQ(indexed.min, plain.min) << first << ' ' << count;
      ASSERT_EQ(indexed.max, plain.max) << first << ' ' << count;
    }
  }
}

TEST(Extrema, areNotSoughtInSamplesThatCannotBeExtremes) {
  // Ten blocks within -1 to 1 but for the third one.
  std::vector<float> values(2560);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = i % 2 == 0 ? -1.0F : 1.0F;
  values[600] = -9;
  values[601] = 9;
  const xov::SampleIndex index(values);
  CountingSource source;
  const auto extremaOf = [&](std::size_t first, std::size_t last) {
    source.held = 0;
    return xov::finiteExtrema(std::span<const float>(values).subspan(first, last - first), &index, &source);
  };
  EXPECT_EQ(extremaOf(100, 2500).max, 9);
  EXPECT_EQ(source.held, 0);
  EXPECT_EQ(extremaOf(602, 2560).max, 1) << "of what is left of a block, not of all of it";
  EXPECT_EQ(source.held, 768 - 602);
  EXPECT_EQ(extremaOf(800, 2500).min, -1);
  EXPECT_EQ(source.held, 1024 - 800 + 2500 - 2304) << "as far as the rest goes";
}

TEST(Extrema, areThoseOfTheValuesWhereAnIndexIsOfOthers) {
  const std::vector<float> others(600, 9), values(600, 2);
  const xov::SampleIndex index(others);
  EXPECT_EQ(xov::finiteExtrema(values, &index).max, 2);
  EXPECT_EQ(xov::finiteExtrema(values, nullptr).max, 2);
}
