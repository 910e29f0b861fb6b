#include "XOV_Graphics/seismic/signal/NoiseModelCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov {
namespace {

// A + B log10(T) with the constants of the section that the period lies in.
TEST(NoiseModels, haveTheValuesOfTheirSections) {
  EXPECT_NEAR(*noiseModelDb(NoiseModel::Low, 0.1), -162.36 - 5.64, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::Low, 1), -166.40, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::Low, 10), -132.18 - 31.57, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::Low, 50), -187.5, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::Low, 100), -216.47 + 2 * 15.70, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::Low, 100000), -346.88 + 5 * 48.75, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::High, 0.1), -108.73 + 17.23, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::High, 1), -116.85, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::High, 10), -93.37 - 22.42, 1e-9);
  EXPECT_NEAR(*noiseModelDb(NoiseModel::High, 100), -151.52 + 2 * 10.01, 1e-9);
}

// The sections were fitted to one line each: a wrong constant makes a step. The steepest one falls by 163 dB a
// decade, 0.07 dB in a thousandth of one.
TEST(NoiseModels, goOnFromSectionToSection) {
  for (const NoiseModel model : {NoiseModel::Low, NoiseModel::High}) {
    double before = *noiseModelDb(model, kShortestNoisePeriod);
    for (double log10 = -0.9995; log10 < 5; log10 += 0.0005) {
      const double here = *noiseModelDb(model, std::pow(10.0, log10));
      EXPECT_NEAR(here, before, 0.12) << "at a period of " << std::pow(10.0, log10) << " s";
      before = here;
    }
  }
}

TEST(NoiseModels, lieAboveEachOther) {
  for (double log10 = -1; log10 <= 5; log10 += 0.01)
    EXPECT_LT(*noiseModelDb(NoiseModel::Low, std::pow(10.0, log10)),
              *noiseModelDb(NoiseModel::High, std::pow(10.0, log10)));
}

TEST(NoiseModels, knowNothingBeyondTheirPeriods) {
  for (const double period : {0.0, -1.0, 0.0999, 100001.0, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()})
    EXPECT_FALSE(noiseModelDb(NoiseModel::Low, period)) << period;
}

TEST(NoiseModels, areLinesBetweenFrequencies) {
  const NoiseModelCurve curve(NoiseModel::Low, 0.01, 1);
  ASSERT_EQ(curve.hz.size(), curve.decibels.size());
  EXPECT_NEAR(curve.hz.front(), 0.01, 1e-8);
  EXPECT_NEAR(curve.hz.back(), 1, 1e-6);
  EXPECT_NEAR(curve.decibels.front(), -185.07, 1e-2); // at 100 s
  EXPECT_NEAR(curve.decibels.back(), -166.40, 1e-2);
  EXPECT_EQ(NoiseModelCurve(NoiseModel::Low, 1, 0.01).hz, curve.hz);
  EXPECT_NEAR(NoiseModelCurve(NoiseModel::High, 1e-9, 1e9).hz.back(), 10, 1e-5);
  for (const double odd : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 1e300})
    EXPECT_TRUE(NoiseModelCurve(NoiseModel::Low, odd, odd).hz.empty()) << odd;
}

} // namespace
} // namespace xov
