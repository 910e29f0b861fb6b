#include "XOV_Graphics/seismic/Extrema.h"

#include "XOV_Graphics/base/SampleIndex.h"

#include <gtest/gtest.h>

#include <limits>
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

TEST(Extrema, areThoseOfTheValuesWhereAnIndexIsOfOthers) {
  const std::vector<float> others(600, 9), values(600, 2);
  const xov::SampleIndex index(others);
  EXPECT_EQ(xov::finiteExtrema(values, &index).max, 2);
  EXPECT_EQ(xov::finiteExtrema(values, nullptr).max, 2);
}
