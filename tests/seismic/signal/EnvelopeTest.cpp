#include "XOV_Graphics/seismic/signal/Envelope.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace xov {
namespace {

using Values = std::vector<double>;

double turns(double count) { return std::cos(2 * std::numbers::pi * count); }

TEST(ApplyEnvelope, isTheAmplitudeOfAModulatedWave) {
  // Ten waves under 2 + cos over 60 samples.
  Values values;
  for (int i = 0; i < 60; ++i)
    values.push_back((2 + turns(i / 60.0)) * turns(i / 6.0));
  applyEnvelope(values);
  for (int i = 0; i < 60; ++i)
    EXPECT_NEAR(values[std::size_t(i)], 2 + turns(i / 60.0), 1e-13) << i;
}

TEST(ApplyEnvelope, putsZerosBehindALengthWithLargePrimeFactors) {
  Values prime;
  for (int i = 0; i < 61; ++i)
    prime.push_back(turns(i / 9.7) * std::exp(-std::pow((i - 20) / 9.0, 2)));
  Values padded = prime;
  padded.resize(64);
  applyEnvelope(prime);
  applyEnvelope(padded);
  for (std::size_t i = 0; i < prime.size(); ++i)
    EXPECT_NEAR(prime[i], padded[i], 1e-14) << i;
}

TEST(ApplyEnvelope, treatsStretchesByThemselves) {
  Values part;
  for (int i = 0; i < 30; ++i)
    part.push_back(turns(i / 10.0));
  Values both{std::nan("")};
  both.insert(both.end(), part.begin(), part.end());
  both.push_back(HUGE_VAL);
  both.insert(both.end(), {-7});
  applyEnvelope(both);
  EXPECT_TRUE(std::isnan(both[0]));
  for (std::size_t i = 1; i <= 30; ++i)
    EXPECT_NEAR(both[i], 1, 1e-13) << i;
  EXPECT_EQ(both[31], HUGE_VAL);
  EXPECT_EQ(both[32], 7);
}

} // namespace
} // namespace xov
