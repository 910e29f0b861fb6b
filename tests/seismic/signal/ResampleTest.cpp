#include "XOV_Graphics/seismic/signal/Resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {
namespace {

using Values = std::vector<double>;

double wave(double place, double cycles) { return std::sin(2 * std::numbers::pi * cycles * place + 0.3); }

Values waves(std::size_t count, double cycles) {
  Values values;
  for (std::size_t i = 0; i < count; ++i)
    values.push_back(wave(double(i), cycles));
  return values;
}

/// The largest difference to the wave, away from the ends by as much as the window reaches.
double worst(const Values& taken, const SamplePlaces& places, double cycles, double length) {
  const double reach = 33 * std::max(places.step, 1.0);
  double worst = 0;
  int seen = 0;
  for (std::size_t j = 0; j < taken.size(); ++j) {
    const double place = places.first + double(j) * places.step;
    if (place < reach || place > length - reach) continue;
    ++seen;
    worst = std::max(worst, std::abs(taken[j] - wave(place, cycles)));
  }
  EXPECT_GT(seen, 10);
  return worst;
}

TEST(Resample, keepsTheValuesWhereTheyAre) {
  const Values values = waves(200, 0.37);
  EXPECT_EQ(resample(values, {0, 1, 200}), values);
  for (const std::size_t parts : {2U, 3U, 5U, 10U}) {
    const Values finer = resample(values, {0, 1 / double(parts), 199 * parts + 1});
    for (std::size_t i = 0; i < values.size(); ++i)
      ASSERT_EQ(finer[i * parts], values[i]) << i << " of 1/" << parts;
  }
  EXPECT_EQ(resample(values, {30, 1, 10}), Values(values.begin() + 30, values.begin() + 40));
}

TEST(Resample, followsASignalWithinItsBand) {
  const Values values = waves(400, 0.3);
  for (const SamplePlaces& places : {SamplePlaces{0, 0.2, 1996},
                                     {0.37, 1, 399},
                                     {0.1, std::sqrt(0.5), 560},
                                     {0, 1.25, 320},
                                     {0.5, std::sqrt(1.1), 380}})
    EXPECT_LT(worst(resample(values, places), places, 0.3, 399), 2e-4) << "step " << places.step;
}

TEST(Resample, doesNotDrift) {
  // 1/3 is not exact, and 3e6 steps of it would add up to 1e-10 · 3e6 of a wave.
  const Values values = waves(30000, 0.1);
  const SamplePlaces places{0, 1.0 / 3, 89998};
  EXPECT_LT(worst(resample(values, places), places, 0.1, 29999), 1e-4);
  const Values finer = resample(values, places);
  EXPECT_EQ(finer[3 * 29999], values[29999]);
}

TEST(Resample, takesAwayWhatIsAboveTheNewNyquistFrequency) {
  // Steps of 4: 0.125 cycles a sample.
  const SamplePlaces places{0, 4, 250};
  EXPECT_LT(worst(resample(waves(1000, 0.84 * 0.125), places), places, 0.84 * 0.125, 999), 1e-3) << "passes";
  for (const double cycles : {0.125, 0.15, 0.2, 0.3, 0.45}) {
    const Values left = resample(waves(1000, cycles), places);
    EXPECT_LT(std::abs(*std::max_element(left.begin() + 33, left.end() - 33)), 2e-4) << cycles;
  }
}

TEST(Resample, keepsALevelUpToTheEnds) {
  for (const double step : {0.3, 1 / std::sqrt(7), 1.0, 5.0, 7.7}) {
    for (const double value : resample(Values(50, 123), {0, step, std::size_t(49 / step)}))
      ASSERT_NEAR(value, 123, 1e-11) << step;
  }
  EXPECT_EQ(resample(Values{5}, {0, 1, 1}), Values{5});
}

TEST(Resample, leavesGapsOut) {
  Values values = waves(100, 0.1);
  const Values before(values.begin(), values.begin() + 40);
  const Values behind(values.begin() + 43, values.end());
  for (const std::size_t i : {40U, 41U, 42U})
    values[i] = std::nan("");
  const Values taken = resample(values, {0, 0.5, 210});
  const Values first = resample(before, {0, 0.5, 79});
  const Values second = resample(behind, {0, 0.5, 113});
  EXPECT_EQ(Values(taken.begin(), taken.begin() + 79), first);
  for (std::size_t j = 79; j < 86; ++j)
    EXPECT_TRUE(std::isnan(taken[j])) << j;
  EXPECT_EQ(Values(taken.begin() + 86, taken.begin() + 199), second);
  EXPECT_TRUE(std::isnan(taken[199])) << "behind the end";
}

TEST(Resample, givesNothingForPlacesThatAreNone) {
  for (const double step : {0.0, -1.0, 10001.0, HUGE_VAL, std::nan("")})
    EXPECT_TRUE(std::isnan(resample(Values(10, 1), {0, step, 2})[1]));
  EXPECT_TRUE(std::isnan(resample(Values(10, 1), {1e300, 1, 1})[0]));
  EXPECT_TRUE(std::isnan(resample({}, {0, 1, 1})[0]));
}

TEST(Decimate, takesEachNthValueOfASlowWave) {
  for (const std::size_t factor : {1U, 2U, 5U, 10U}) {
    const SamplePlaces places{0, double(factor), (1999 + factor) / factor};
    const Values taken = decimate(waves(2000, 0.03), factor, FilterPhase::Zero);
    ASSERT_EQ(taken.size(), (1999 + factor) / factor);
    EXPECT_LT(worst(taken, places, 0.03, 1999), 2e-4) << factor;
  }
}

TEST(Decimate, hasNothingBeforeItsCauseWhenItIsCausal) {
  Values pulse(1000);
  pulse[500] = 1;
  const Values causal = decimate(pulse, 5, FilterPhase::Causal);
  const Values zeroPhase = decimate(pulse, 5, FilterPhase::Zero);
  for (std::size_t j = 0; j < 100; ++j)
    ASSERT_EQ(causal[j], 0) << j;
  EXPECT_NE(zeroPhase[99], 0);
  EXPECT_EQ(std::ranges::max_element(zeroPhase) - zeroPhase.begin(), 100);
  EXPECT_GT(std::ranges::max_element(causal) - causal.begin(), 100);
}

TEST(Decimate, dampsWhatWouldBeFoldedAlsoWhenItIsCausal) {
  // 0.15 cycles a sample would come out as 0.05 of 0.1, at the factor 5.
  const Values left = decimate(waves(3000, 0.15), 5, FilterPhase::Causal);
  EXPECT_LT(std::abs(*std::max_element(left.begin() + 300, left.end())), 1e-4);
}

} // namespace
} // namespace xov
