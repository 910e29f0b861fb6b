#include "XOV_Graphics/seismic/Extrema.h"

#include <gtest/gtest.h>

#include <limits>
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
