#include "examples/synthetic/TravelTimes.h"

#include <gtest/gtest.h>

#include <numbers>

namespace xov::synthetic {
namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

// Times in IASP91 by the TauP Toolkit (H. P. Crotwell, T. J. Owens, J. Ritsema, Seism. Res. Lett. 70, 154-160
// (1999)), as printed in the manual and the tests of ObsPy (www.obspy.org).
TEST(TravelTimes, agreeWithPublishedOnes) {
  constexpr double kToleranceS = 0.05;
  struct {
    Phase phase;
    double depthKm, distanceDeg, timeS;
  } const published[] = {
      {Phase::P, 10, 35, 412.43},    {Phase::P, 100, 45, 485.210}, {Phase::P, 55, 67, 647.041},
      {Phase::pP, 55, 67, 662.233},  {Phase::PP, 55, 67, 794.992}, {Phase::S, 55, 67, 1176.948},
      {Phase::sS, 55, 67, 1203.129},
  };
  for (const auto& row : published) {
    const std::optional<Arrival> arrival = TravelTimes(row.phase, row.depthKm).first(row.distanceDeg);
    ASSERT_TRUE(arrival);
    EXPECT_NEAR(arrival->timeS, row.timeS, kToleranceS) << row.depthKm << " km, " << row.distanceDeg << " degrees";
  }
}

TEST(TravelTimes, slownessAgreesWithAPublishedOne) {
  const std::optional<Arrival> arrival = TravelTimes(Phase::P, 10).first(35);
  ASSERT_TRUE(arrival);
  EXPECT_NEAR(arrival->slownessSPerRad * kRadiansPerDegree, 8.613, 0.002);
}

TEST(TravelTimes, growWithDistanceAndSlownessIsTheirSlope) {
  constexpr double kStepDeg = 0.1;
  for (const Phase phase : {Phase::P, Phase::S, Phase::PP}) {
    const TravelTimes times(phase, 24);
    for (double distance = 30; distance < 95; distance += 5) {
      const std::optional<Arrival> near = times.first(distance - kStepDeg);
      const std::optional<Arrival> here = times.first(distance);
      const std::optional<Arrival> far = times.first(distance + kStepDeg);
      ASSERT_TRUE(near && here && far) << distance;
      const double slope = (far->timeS - near->timeS) / (2 * kStepDeg * kRadiansPerDegree);
      EXPECT_GT(slope, 0);
      EXPECT_NEAR(here->slownessSPerRad / slope, 1, 0.01) << distance;
    }
  }
}

TEST(TravelTimes, aDeeperSourceIsNearerToAFarStation) {
  double last = 1e9;
  for (const double depthKm : {0.0, 35.0, 100.0, 410.0, 700.0}) {
    const double time = TravelTimes(Phase::P, depthKm).first(60)->timeS;
    EXPECT_LT(time, last) << depthKm << " km";
    last = time;
  }
}

TEST(TravelTimes, theReflectionAboveASurfaceSourceIsTheDirectWave) {
  EXPECT_DOUBLE_EQ(TravelTimes(Phase::pP, 0).first(50)->timeS, TravelTimes(Phase::P, 0).first(50)->timeS);
}

TEST(TravelTimes, aSurfaceReflectionOfASurfaceSourceTakesTwiceTheTimeOfHalfTheWay) {
  EXPECT_NEAR(TravelTimes(Phase::SS, 0).first(80)->timeS, 2 * TravelTimes(Phase::S, 0).first(40)->timeS, 0.01);
}

TEST(TravelTimes, thereIsNoneInTheShadowOfTheCore) {
  EXPECT_TRUE(TravelTimes(Phase::P, 24).first(97));
  EXPECT_FALSE(TravelTimes(Phase::P, 24).first(105));
  EXPECT_FALSE(TravelTimes(Phase::S, 24).first(179));
}

} // namespace
} // namespace xov::synthetic
