#include "apps/xov/inputs/Means.h"

#include "tests/apps/TestRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov::cli {
namespace {

TEST(WithoutMeans, takesTheMeanOfAllPiecesOfAChannelAway) {
  // 0 ... 9 and 0 ... 4: 45 and 10 by 15 samples.
  const SeismogramArray centered =
      withoutMeans({makeRecord(), makeRecord({.count = 5}), makeRecord({.component = "BHN", .count = 3})});
  EXPECT_FLOAT_EQ(centered[0]->GetSacSeis()[0], -55.0F / 15);
  EXPECT_FLOAT_EQ(centered[1]->GetSacSeis()[4], 4 - 55.0F / 15);
  EXPECT_FLOAT_EQ(centered[2]->GetSacSeis()[0], -1);
}

TEST(WithoutMeans, takesMeansOfFiniteSamplesOnly) {
  const auto record = makeRecord({.count = 3});
  record->samples()[1] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FLOAT_EQ(withoutMeans({record})[0]->GetSacSeis()[2], 1) << "the mean of 0 and 2 is 1";
}

} // namespace
} // namespace xov::cli
