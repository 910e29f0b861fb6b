#include "XOV_Graphics/seismic/array/StrongestWindow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov {
namespace {

constexpr double kInterval = 0.5;

// A thousand samples of ±1, of ±10 from `first` on for a hundred samples, about an offset.
std::vector<float> noisy(std::size_t first, float gain, float offset = 0) {
  std::vector<float> samples(1000);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const float size = i >= first && i < first + 100 ? 10 : 1;
    samples[i] = offset + gain * (i % 2 == 0 ? size : -size);
  }
  return samples;
}

ArrayTrace trace(const std::vector<float>& samples, double start) { return {"A", samples, start, {}}; }

TEST(StrongestWindow, liesOverTheLargestPower) {
  const std::vector<float> one = noisy(300, 1);
  const std::vector<float> two = noisy(300, 1, 5000);
  const auto found = strongestWindow(std::vector{trace(one, 0), trace(two, 0)}, kInterval, 100);
  ASSERT_TRUE(found) << qPrintable(found.error());
  ASSERT_TRUE(*found);
  EXPECT_EQ((*found)->fromSeconds, 150);
  EXPECT_EQ((*found)->toSeconds, 200);
  EXPECT_EQ((*found)->commonSeconds, 500);
}

TEST(StrongestWindow, countsFromTheBeginningOfTheTimeInCommon) {
  // The second trace begins 100 s later, so its sample 100 is sample 300 of the first.
  const std::vector<float> one = noisy(300, 1);
  const std::vector<float> two = noisy(100, 1);
  const auto found = strongestWindow(std::vector{trace(one, 0), trace(two, 100)}, kInterval, 100);
  ASSERT_TRUE(found && *found);
  EXPECT_EQ((*found)->fromSeconds, 50);
  EXPECT_EQ((*found)->commonSeconds, 400);
}

TEST(StrongestWindow, countsATraceAsMuchAsAnother) {
  // By the sum of squares the first, a thousand times as large, would decide against two that agree.
  const std::vector<float> loud = noisy(700, 1000);
  const std::vector<float> first = noisy(200, 1);
  const std::vector<float> second = noisy(200, 2);
  const auto found = strongestWindow(std::vector{trace(loud, 0), trace(first, 0), trace(second, 0)}, kInterval, 100);
  ASSERT_TRUE(found && *found);
  EXPECT_EQ((*found)->fromSeconds, 100);
}

TEST(StrongestWindow, isNoneOfTracesThatAreNoLonger) {
  const std::vector<float> samples = noisy(300, 1);
  const auto found = strongestWindow(std::vector{trace(samples, 0), trace(samples, 0)}, kInterval, 1000);
  ASSERT_TRUE(found);
  EXPECT_FALSE(*found);
}

TEST(StrongestWindow, passesOverWhatIsNoNumberAndRefusesTracesWithoutCommonTime) {
  std::vector<float> gaps = noisy(300, 1);
  for (std::size_t i = 0; i < 200; ++i)
    gaps[i] = std::numeric_limits<float>::quiet_NaN();
  const auto found = strongestWindow(std::vector{trace(gaps, 0), trace(gaps, 0)}, kInterval, 100);
  ASSERT_TRUE(found && *found);
  EXPECT_EQ((*found)->fromSeconds, 150);
  EXPECT_EQ(strongestWindow(std::vector{trace(gaps, 0), trace(gaps, 5000)}, kInterval, 100).error(),
            "the traces have no time in common");
}

} // namespace
} // namespace xov
