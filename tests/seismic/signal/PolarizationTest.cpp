#include "XOV_Graphics/seismic/signal/Polarization.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

using namespace xov;

namespace {

constexpr double kRadians = std::numbers::pi / 180;

struct Motion {
  std::vector<float> vertical;
  std::vector<float> north;
  std::vector<float> east;
  void add(double z, double n, double e) {
    vertical.push_back(float(z));
    north.push_back(float(n));
    east.push_back(float(e));
  }
  std::optional<Polarization> polarization() const { return polarizationOf(vertical, north, east); }
};

} // namespace

// P with an incidence of 30 degrees that goes to the azimuth of 250: pushes go up, pulls go down and back.
TEST(Polarization, ofAPWaveIsItsRay) {
  Motion motion;
  for (int i = 0; i < 200; ++i) {
    const double push = std::sin(0.3 * i) * std::exp(-0.01 * i);
    motion.add(push * std::cos(30 * kRadians) + 7, push * std::sin(30 * kRadians) * std::cos(250 * kRadians),
               push * std::sin(30 * kRadians) * std::sin(250 * kRadians) - 3);
  }
  const auto found = motion.polarization();
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->azimuthDeg, 250, 1e-3);
  EXPECT_NEAR(found->incidenceDeg, 30, 1e-3);
  EXPECT_NEAR(found->rectilinearity, 1, 1e-6);
  EXPECT_GT(found->direction[0], 0) << "the sense that goes up";
}

// A Rayleigh wave's ellipse, 3 up and 2 along: variances of 9/2 and 4/2, and 0 across. 1 - 2 / (2 · 4.5) = 7/9.
TEST(Polarization, ofAnEllipseIsAPlane) {
  Motion motion;
  constexpr int kCount = 360;
  for (int i = 0; i < kCount; ++i)
    motion.add(3 * std::cos(i * kRadians), 0, 2 * std::sin(i * kRadians));
  const auto found = motion.polarization();
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->variances[0], 4.5, 1e-5);
  EXPECT_NEAR(found->variances[1], 2, 1e-5);
  EXPECT_NEAR(found->variances[2], 0, 1e-9);
  EXPECT_NEAR(found->rectilinearity, 7.0 / 9, 1e-6);
  EXPECT_NEAR(found->planarity, 1, 1e-6);
  EXPECT_NEAR(found->incidenceDeg, 0, 1e-3);
}

// Samples on the corners of a cube have no direction of their own.
TEST(Polarization, ofACubeIsNeitherALineNorAPlane) {
  Motion motion;
  for (int corner = 0; corner < 8; ++corner)
    motion.add(corner % 2 * 2 - 1, corner / 2 % 2 * 2 - 1, corner / 4 * 2 - 1);
  const auto found = motion.polarization();
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->rectilinearity, 0, 1e-12);
  EXPECT_NEAR(found->planarity, 0, 1e-12);
}

TEST(Polarization, ofAHorizontalWaveHasAnIncidenceOf90) {
  Motion motion;
  for (int i = 0; i < 50; ++i)
    motion.add(0, std::sin(i), std::sin(i));
  const auto found = motion.polarization();
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->incidenceDeg, 90, 1e-6);
  EXPECT_NEAR(std::fmod(found->azimuthDeg, 180), 45, 1e-4);
}

TEST(Polarization, leavesOutSamplesThatAreMissingInOneComponent) {
  Motion motion;
  for (int i = 0; i < 50; ++i)
    motion.add(std::sin(i), std::sin(i), 0);
  Motion holed = motion;
  holed.vertical[10] = std::nanf("");
  holed.north[10] = 1e6F;
  holed.east[20] = HUGE_VALF;
  EXPECT_NEAR(holed.polarization()->incidenceDeg, motion.polarization()->incidenceDeg, 1e-6);
  EXPECT_NEAR(holed.polarization()->rectilinearity, 1, 1e-9);
}

TEST(Polarization, isNoneOfGroundThatDidNotMove) {
  Motion still;
  EXPECT_FALSE(still.polarization());
  still.add(5, 5, 5);
  EXPECT_FALSE(still.polarization());
  still.add(5, 5, 5);
  EXPECT_FALSE(still.polarization());
}
