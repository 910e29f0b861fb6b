#include "XOV_Graphics/seismic/arrivals/EarthModel.h"

#include <gtest/gtest.h>

#include <numbers>

namespace xov {
namespace {

// Velocities that Kennett & Engdahl (1991) print beside the polynomials.
TEST(EarthModel, hasThePublishedVelocitiesAtItsDiscontinuities) {
  constexpr double kRounding = 0.0011;
  struct {
    double depthKm, p, s;
  } const below[] = {{0, 5.80, 3.36},    {20, 6.50, 3.75},  {35, 8.04, 4.47},  {120, 8.05, 4.50},
                     {210, 8.30, 4.522}, {410, 9.36, 5.07}, {660, 10.79, 5.95}};
  for (const auto& row : below) {
    EXPECT_NEAR(earthVelocity(BodyWave::P, row.depthKm), row.p, kRounding) << row.depthKm << " km";
    EXPECT_NEAR(earthVelocity(BodyWave::S, row.depthKm), row.s, kRounding) << row.depthKm << " km";
  }
  EXPECT_NEAR(earthVelocity(BodyWave::P, 409.999), 9.03, kRounding);
  EXPECT_NEAR(earthVelocity(BodyWave::P, 659.999), 10.20, kRounding);
}

TEST(EarthModel, isContinuousBetweenTheLayersOfTheLowerMantle) {
  // The coefficients have five decimals; a wrong digit would open a gap of more than this.
  constexpr double kGap = 0.001;
  for (const double depthKm : {760.0, 2740.0}) {
    EXPECT_NEAR(earthVelocity(BodyWave::P, depthKm - 1e-6), earthVelocity(BodyWave::P, depthKm + 1e-6), kGap)
        << depthKm << " km";
    EXPECT_NEAR(earthVelocity(BodyWave::S, depthKm - 1e-6), earthVelocity(BodyWave::S, depthKm + 1e-6), kGap)
        << depthKm << " km";
  }
}

// The same paper: 8.0088 km/s below the boundary of the core, 10.2578 and 11.0914 (S: 3.4385) km/s at the inner core.
TEST(EarthModel, hasThePublishedVelocitiesOfTheCore) {
  constexpr double kRounding = 0.0001;
  EXPECT_NEAR(earthVelocity(BodyWave::P, 2889), 8.0088, kRounding);
  EXPECT_NEAR(earthVelocity(BodyWave::P, 5153.899), 10.2578, kRounding);
  EXPECT_NEAR(earthVelocity(BodyWave::P, 5153.901), 11.0914, kRounding);
  EXPECT_NEAR(earthVelocity(BodyWave::S, 5153.901), 3.4385, kRounding);
  EXPECT_EQ(earthVelocity(BodyWave::S, 4000), 0);
  EXPECT_DOUBLE_EQ(earthVelocity(BodyWave::P, 6371), 11.24094);
}

TEST(EarthModel, aVerticalRayHasNoIncidenceAngleAndAGrazingOneIsHorizontal) {
  EXPECT_DOUBLE_EQ(incidenceAngle(BodyWave::P, 0), 0);
  EXPECT_NEAR(incidenceAngle(BodyWave::P, 6371.0 / 5.80), std::numbers::pi / 2, 1e-6);
  EXPECT_NEAR(incidenceAngle(BodyWave::S, 0.5 * 6371.0 / 3.36), std::numbers::pi / 6, 1e-9); // sin 30° = 1/2
}

} // namespace
} // namespace xov
