#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace xov;

namespace {

// How far two directions of a circle of 360 degrees are apart.
double turn(double a, double b) { return std::abs(std::remainder(a - b, 360.0)); }

void expectPlane(const NodalPlane& plane, double strike, double dip, double rake, double tolerance) {
  EXPECT_LE(turn(double(plane.strikeDeg), strike), tolerance) << plane.strikeDeg << " for " << strike;
  EXPECT_NEAR(double(plane.dipDeg), dip, tolerance);
  EXPECT_LE(turn(double(plane.rakeDeg), rake), tolerance) << plane.rakeDeg << " for " << rake;
}

void expectTensor(const MomentTensor& found, const MomentTensor& expected, double tolerance) {
  EXPECT_NEAR(found.Mrr, expected.Mrr, tolerance);
  EXPECT_NEAR(found.Mtt, expected.Mtt, tolerance);
  EXPECT_NEAR(found.Mpp, expected.Mpp, tolerance);
  EXPECT_NEAR(found.Mrt, expected.Mrt, tolerance);
  EXPECT_NEAR(found.Mrp, expected.Mrp, tolerance);
  EXPECT_NEAR(found.Mtp, expected.Mtp, tolerance);
}

// The 2011 Tohoku earthquake of the Global CMT project, in 10^22 N m.
constexpr MomentTensor kTohoku{1.730, -0.281, -1.450, 2.120, 4.550, -0.657};

} // namespace

// On a vertical plane that strikes north the western block moves south: the couple of north and east, with t south.
TEST(MomentTensorOfAPlane, isThatOfLeftLateralSlip) {
  expectTensor(momentTensorOf({0, 90, 0}), {0, 0, 0, 0, 0, -1}, 1e-15);
}

// The block east of a plane that dips 45 degrees to the east comes up: vertical extension, pressure from east and
// west.
TEST(MomentTensorOfAPlane, isThatOfAThrust) {
  expectTensor(momentTensorOf({0, 45, 90}, 3), {3, 0, -3, 0, 0, 0}, 1e-14);
}

// Over a horizontal plane the upper block moves north, along the strike: up (r) and north (minus t).
TEST(MomentTensorOfAPlane, isThatOfSlipOnAHorizontalPlane) {
  expectTensor(momentTensorOf({0, 0, 0}), {0, 0, 0, -1, 0, 0}, 1e-15);
}

TEST(MomentTensorOfAPlane, hasTheMomentAndNoVolume) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> strike(0, 360);
  std::uniform_real_distribution<float> dip(0, 90);
  for (int i = 0; i < 100; ++i) {
    const MomentTensor tensor = momentTensorOf({strike(random), dip(random), strike(random) - 180}, 7);
    EXPECT_NEAR(tensor.Mrr + tensor.Mtt + tensor.Mpp, 0, 1e-13);
    EXPECT_NEAR(scalarMomentOf(tensor), 7, 1e-13);
    const SourceShares shares = sourceSharesOf(tensor);
    EXPECT_NEAR(shares.doubleCouple, 1, 1e-12);
  }
}

TEST(NodalPlanes, ofATensorHoldThePlaneThatItCameFrom) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> strike(0, 360);
  std::uniform_real_distribution<float> dip(1, 89);
  for (int i = 0; i < 200; ++i) {
    const NodalPlane plane{strike(random), dip(random), strike(random) - 180};
    const auto planes = nodalPlanesOf(momentTensorOf(plane, 4e18));
    EXPECT_LE(planes[0].dipDeg, planes[1].dipDeg);
    const bool isFirst = turn(double(planes[0].strikeDeg), double(plane.strikeDeg)) +
                             std::abs(double(planes[0].dipDeg - plane.dipDeg)) <
                         turn(double(planes[1].strikeDeg), double(plane.strikeDeg)) +
                             std::abs(double(planes[1].dipDeg - plane.dipDeg));
    expectPlane(planes[isFirst ? 0 : 1], double(plane.strikeDeg), double(plane.dipDeg), double(plane.rakeDeg), 0.02);
    const NodalPlane other = auxiliaryPlaneOf(plane);
    expectPlane(planes[isFirst ? 1 : 0], double(other.strikeDeg), double(other.dipDeg), double(other.rakeDeg), 0.02);
  }
}

// The planes that the project gives beside the tensor.
TEST(NodalPlanes, ofTohokuAreThoseOfTheCatalogue) {
  EXPECT_NEAR(scalarMomentOf(kTohoku), 5.31, 0.005);
  const auto planes = nodalPlanesOf(kTohoku);
  expectPlane(planes[0], 203, 10, 88, 1);
  expectPlane(planes[1], 25, 80, 90, 1);
}

TEST(NodalPlanes, ofAnExplosionAreUnknown) {
  const auto planes = nodalPlanesOf({1, 1, 1, 0, 0, 0});
  EXPECT_FALSE(isDefined(planes[0]));
  EXPECT_FALSE(isDefined(planes[1]));
  EXPECT_FALSE(isDefined(nodalPlanesOf({std::nan(""), 0, 0, 0, 0, 0})[0]));
}

// A right-lateral fault that strikes north and its left-lateral companion, which strikes east.
TEST(AuxiliaryPlane, ofAVerticalStrikeSlipFaultIsVertical) {
  const NodalPlane plane = auxiliaryPlaneOf({0, 90, 180});
  EXPECT_NEAR(double(plane.dipDeg), 90, 1e-4);
  EXPECT_NEAR(std::remainder(double(plane.strikeDeg) - 90, 180.0), 0, 1e-4);
  expectTensor(momentTensorOf(plane), momentTensorOf({0, 90, 180}), 1e-6);
}

// A vertical plane that slips upright goes with a horizontal one.
TEST(AuxiliaryPlane, ofADipSlipFaultThatIsVerticalIsHorizontal) {
  const NodalPlane plane = auxiliaryPlaneOf({30, 90, 90});
  EXPECT_NEAR(double(plane.dipDeg), 0, 1e-4);
  expectTensor(momentTensorOf(plane), momentTensorOf({30, 90, 90}), 1e-6);
}

TEST(PrincipalAxes, ofStrikeSlipLieBetweenThePlanes) {
  const PrincipalAxes axes = principalAxesOf(momentTensorOf({0, 90, 0}, 2));
  EXPECT_NEAR(axes.t.momentNm, 2, 1e-14);
  EXPECT_NEAR(axes.n.momentNm, 0, 1e-14);
  EXPECT_NEAR(axes.p.momentNm, -2, 1e-14);
  EXPECT_NEAR(axes.t.plungeDeg, 0, 1e-6);
  EXPECT_NEAR(axes.n.plungeDeg, 90, 1e-6);
  EXPECT_NEAR(std::remainder(axes.t.azimuthDeg - 45, 180.0), 0, 1e-6);
  EXPECT_NEAR(std::remainder(axes.p.azimuthDeg - 135, 180.0), 0, 1e-6);
}

// Both planes of a thrust dip 45 degrees and strike north: the T axis is upright, P points east and west.
TEST(PrincipalAxes, ofAThrustHaveTensionUpright) {
  const PrincipalAxes axes = principalAxesOf(momentTensorOf({0, 45, 90}));
  EXPECT_NEAR(axes.t.plungeDeg, 90, 1e-6);
  EXPECT_NEAR(axes.p.plungeDeg, 0, 1e-6);
  EXPECT_NEAR(std::remainder(axes.p.azimuthDeg - 90, 180.0), 0, 1e-6);
  EXPECT_NEAR(std::remainder(axes.n.azimuthDeg, 180.0), 0, 1e-6);
}

// Values 2, -1, -1 have no volume and no couple; 3, 3, 3 nothing but volume; 3, 0, 0 are 1 of volume and
// 2/3 (3 + 0 - 0) = 2 of dipole.
TEST(SourceShares, tellVolumeCoupleAndDipoleApart) {
  const SourceShares dipole = sourceSharesOf({2, -1, -1, 0, 0, 0});
  EXPECT_NEAR(dipole.isotropic, 0, 1e-15);
  EXPECT_NEAR(dipole.doubleCouple, 0, 1e-15);
  EXPECT_NEAR(dipole.clvd, 1, 1e-15);
  EXPECT_NEAR(sourceSharesOf({-3, -3, -3, 0, 0, 0}).isotropic, -1, 1e-15);
  const SourceShares crack = sourceSharesOf({3, 0, 0, 0, 0, 0});
  EXPECT_NEAR(crack.isotropic, 1.0 / 3, 1e-15);
  EXPECT_NEAR(crack.clvd, 2.0 / 3, 1e-15);
  EXPECT_NEAR(crack.doubleCouple, 0, 1e-15);
  EXPECT_EQ(sourceSharesOf({}).doubleCouple, 0);
}

TEST(RadiatingTensor, isTheTensorElseThatOfAPlane) {
  FocalMechanism mechanism;
  EXPECT_FALSE(radiatingTensorOf(mechanism));
  mechanism.planes[1] = {0, 90, 0};
  ASSERT_TRUE(radiatingTensorOf(mechanism));
  EXPECT_NEAR(radiatingTensorOf(mechanism)->Mtp, -1, 1e-15);
  mechanism.planes[0] = {0, 45, 90};
  EXPECT_NEAR(radiatingTensorOf(mechanism)->Mrr, 1, 1e-15);
  mechanism.tensor = MomentTensor{};
  EXPECT_NEAR(radiatingTensorOf(mechanism)->Mrr, 1, 1e-15) << "a tensor of zeros tells nothing";
  mechanism.tensor = kTohoku;
  EXPECT_EQ(radiatingTensorOf(mechanism)->Mrp, kTohoku.Mrp);
}
