#include "examples/synthetic/EarthModel.h"

#include <gtest/gtest.h>

#include <numbers>

namespace xov::synthetic {
namespace {

// Velocities that Kennett & Engdahl (1991) print beside the polynomials.
TEST(EarthModel, hasThePublishedVelocitiesAtItsDiscontinuities) {
  constexpr double kRounding = 0.0011;
  struct {
    double depthKm, p, s;
  } const below[] = {{0, 5.80, 3.36},    {20, 6.50, 3.75},  {35, 8.04, 4.47},  {120, 8.05, 4.50},
                     {210, 8.30, 4.522}, {410, 9.36, 5.07}, {660, 10.79, 5.95}};
  for (const auto& row : below) {
    EXPECT_NEAR(velocity(Wave::P, row.depthKm), row.p, kRounding) << row.depthKm << " km";
    EXPECT_NEAR(velocity(Wave::S, row.depthKm), row.s, kRounding) << row.depthKm << " km";
  }
  EXPECT_NEAR(velocity(Wave::P, 409.999), 9.03, kRounding);
  EXPECT_NEAR(velocity(Wave::P, 659.999), 10.20, kRounding);
}

TEST(EarthModel, isContinuousBetweenTheLayersOfTheLowerMantle) {
  // The coefficients have five decimals; a wrong digit would open a gap of more than this.
  constexpr double kGap = 0.001;
  for (const double depthKm : {760.0, 2740.0}) {
    EXPECT_NEAR(velocity(Wave::P, depthKm - 1e-6), velocity(Wave::P, depthKm + 1e-6), kGap) << depthKm << " km";
    EXPECT_NEAR(velocity(Wave::S, depthKm - 1e-6), velocity(Wave::S, depthKm + 1e-6), kGap) << depthKm << " km";
  }
}

TEST(EarthModel, aVerticalRayHasNoIncidenceAngleAndAGrazingOneIsHorizontal) {
  EXPECT_DOUBLE_EQ(incidenceAngle(Wave::P, 0), 0);
  EXPECT_NEAR(incidenceAngle(Wave::P, 6371.0 / 5.80), std::numbers::pi / 2, 1e-6);
  EXPECT_NEAR(incidenceAngle(Wave::S, 0.5 * 6371.0 / 3.36), std::numbers::pi / 6, 1e-9); // sin 30° = 1/2
}

} // namespace
} // namespace xov::synthetic
