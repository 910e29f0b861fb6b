#include "XOV_Graphics/seismic/arrivals/GroupVelocity.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

TEST(GroupVelocity, liesOnTheTableAndOnStraightLinesBetweenItsRows) {
  EXPECT_DOUBLE_EQ(groupVelocity(SurfaceWave::Rayleigh, 20), 2.85);
  EXPECT_DOUBLE_EQ(groupVelocity(SurfaceWave::Love, 100), 4.23);
  EXPECT_DOUBLE_EQ(groupVelocity(SurfaceWave::Rayleigh, 55), (3.76 + 3.82) / 2);
}

TEST(GroupVelocity, keepsTheValueOfTheEndBeyondTheTable) {
  EXPECT_DOUBLE_EQ(groupVelocity(SurfaceWave::Rayleigh, 1), 3.02);
  EXPECT_DOUBLE_EQ(groupVelocity(SurfaceWave::Love, 1000), 4.35);
}

TEST(GroupVelocity, loveWavesAreFasterThanRayleighWaves) {
  for (double period = 8; period <= 250; period += 1)
    EXPECT_GT(groupVelocity(SurfaceWave::Love, period), groupVelocity(SurfaceWave::Rayleigh, period)) << period;
}

TEST(GroupVelocity, theWaveTrainBeginsWithTheFastestPeriod) {
  // The largest of each column of the table: Rayleigh waves of 80 s, Love waves of 250 s.
  EXPECT_DOUBLE_EQ(largestGroupVelocity(SurfaceWave::Rayleigh), groupVelocity(SurfaceWave::Rayleigh, 80));
  EXPECT_DOUBLE_EQ(largestGroupVelocity(SurfaceWave::Rayleigh), 3.86);
  EXPECT_DOUBLE_EQ(largestGroupVelocity(SurfaceWave::Love), 4.35);
}

} // namespace
} // namespace xov
