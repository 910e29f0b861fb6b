#include "XOV_Graphics/seismic/prepare/Amplitudes.h"

#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

TEST(WithoutMeans, takesTheMeanOfAllPiecesOfAChannelAway) {
  // 0 ... 9 and 0 ... 4: 45 and 10 by 15 samples.
  const SeismogramArray centered = withoutMeans(
      {makeRecord(), makeRecord({.count = 5}), makeRecord({.component = "BHN", .count = 3})}, MeanOf::Channel);
  EXPECT_FLOAT_EQ(centered[0]->GetSacSeis()[0], -55.0F / 15);
  EXPECT_FLOAT_EQ(centered[1]->GetSacSeis()[4], 4 - 55.0F / 15);
  EXPECT_FLOAT_EQ(centered[2]->GetSacSeis()[0], -1);
}

TEST(WithoutMeans, takesEachRecordsOwnMeanAway) {
  // 0 ... 9 and 0 ... 4 have the means 4.5 and 2.
  const SeismogramArray centered = withoutMeans({makeRecord(), makeRecord({.count = 5})}, MeanOf::Record);
  EXPECT_EQ(centered[0]->smin(), -4.5F);
  EXPECT_EQ(centered[1]->smin(), -2);
  EXPECT_EQ(centered[1]->smax(), 2);
}

TEST(WithoutMeans, takesMeansOfFiniteSamplesOnly) {
  const auto record = makeRecord({.count = 3});
  record->samples()[1] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FLOAT_EQ(withoutMeans({record}, MeanOf::Record)[0]->GetSacSeis()[2], 1) << "the mean of 0 and 2 is 1";
}

TEST(LargestAmplitude, isThatOfAllRecordsAndNever0) {
  const auto low = makeRecord({.count = 3});
  low->samples()[1] = -25;
  low->ComputeExtrema();
  EXPECT_EQ(largestAmplitude({makeRecord(), low}), 25);
  EXPECT_EQ(largestAmplitude({makeRecord({.count = 1})}), 1) << "its only sample is 0";
  EXPECT_EQ(largestAmplitude({}), 1);
}

} // namespace
} // namespace xov
