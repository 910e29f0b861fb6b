#include "XOV_Graphics/seismic/mechanism/BeachBall.h"

#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace xov;

namespace {

constexpr int kRadius = 24; // pixels of the slow picture

// Straight from the definition, in up, south and east: the ray through a point of Lambert's azimuthal equal-area
// projection of the lower half sphere, where the distance from the middle is √2 sin(i / 2) for a ray i away from
// straight down.
double radiation(const MomentTensor& m, double x, double y) {
  const double fromBelow = 2 * std::asin(std::min(std::hypot(x, y), 1.0) / std::sqrt(2.0));
  const double azimuth = std::atan2(x, y);
  const double r = -std::cos(fromBelow);
  const double t = -std::sin(fromBelow) * std::cos(azimuth);
  const double p = std::sin(fromBelow) * std::sin(azimuth);
  return m.Mrr * r * r + m.Mtt * t * t + m.Mpp * p * p + 2 * (m.Mrt * r * t + m.Mrp * r * p + m.Mtp * t * p);
}

bool isInside(const BeachBallLine& polygon, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
    const QPointF a = polygon[i];
    const QPointF b = polygon[j];
    if ((a.y() > y) != (b.y() > y) && x < (b.x() - a.x()) * (y - a.y()) / (b.y() - a.y()) + a.x()) inside = !inside;
  }
  return inside;
}

bool isCompressional(const BeachBall& ball, double x, double y) {
  const bool inPatch =
      std::ranges::any_of(ball.patches, [&](const BeachBallLine& patch) { return isInside(patch, x, y); });
  return inPatch != ball.groundIsCompressional;
}

// How many pixels of the ball differ from the slow picture, but for those whose ray hardly radiates: a curve of
// chords that are off by a fiftieth of a pixel, 1/1200 of the radius, moves amplitudes by at most 1/300 of the
// largest one.
int differingPixels(const MomentTensor& tensor) {
  const BeachBall ball = beachBallOf(tensor, beachBallPoints(kRadius));
  const PrincipalAxes axes = principalAxesOf(tensor);
  const double largest = std::max(std::abs(axes.t.momentNm), std::abs(axes.p.momentNm));
  int differing = 0;
  for (int row = -kRadius; row <= kRadius; ++row) {
    for (int column = -kRadius; column <= kRadius; ++column) {
      const double x = (column + 0.123) / kRadius;
      const double y = (row + 0.077) / kRadius;
      if (std::hypot(x, y) > 0.998) continue; // the chords of the rim
      const double amplitude = radiation(tensor, x, y);
      if (std::abs(amplitude) <= largest / 300) continue;
      differing += isCompressional(ball, x, y) != (amplitude > 0) ? 1 : 0;
    }
  }
  EXPECT_LE(ball.patches.size(), 2U);
  for (const BeachBallLine& patch : ball.patches) {
    for (const QPointF point : patch)
      EXPECT_LE(std::hypot(point.x(), point.y()), 1 + 1e-6);
  }
  return differing;
}

void expectSlowPicture(const MomentTensor& m) {
  EXPECT_EQ(differingPixels(m), 0) << m.Mrr << ' ' << m.Mtt << ' ' << m.Mpp << ' ' << m.Mrt << ' ' << m.Mrp << ' '
                                   << m.Mtp;
}

MomentTensor diagonal(double rr, double tt, double pp) { return {rr, tt, pp, 0, 0, 0}; }

} // namespace

TEST(BeachBall, ofAPlaneIsThatOfTheSlowDrawing) {
  for (const float dip : {0.0F, 1e-6F, 30.0F, 45.0F, 60.0F, 89.99F, 90.0F}) {
    for (const float rake : {-180.0F, -90.0F, -37.0F, 0.0F, 45.0F, 90.0F, 135.0F, 180.0F})
      expectSlowPicture(momentTensorOf({rake * 0.7F + dip, dip, rake}));
  }
  for (const float strike : {0.0F, 45.0F, 90.0F, 180.0F, 270.0F})
    expectSlowPicture(momentTensorOf({strike, 45, 90}));
}

TEST(BeachBall, ofAnyTensorIsThatOfTheSlowDrawing) {
  std::mt19937 random(17);
  std::normal_distribution<double> number;
  for (int i = 0; i < 60; ++i) {
    MomentTensor m{number(random), number(random), number(random), number(random), number(random), number(random)};
    if (i % 4 == 1) m.Mpp = -m.Mrr - m.Mtt;
    if (i % 4 == 2) m.Mrt = m.Mrp = 0;
    if (i % 10 == 3) m = {m.Mrr * 1e22, m.Mtt * 1e22, m.Mpp * 1e22, m.Mrt * 1e22, m.Mrp * 1e22, m.Mtp * 1e22};
    expectSlowPicture(m);
  }
}

// A couple with a little of a dipole has corners that are hardly round.
TEST(BeachBall, ofNearlyACoupleIsThatOfTheSlowDrawing) {
  for (const double dipole : {1e-12, 1e-6, 1e-3, 0.05, -1e-12, -1e-6, -1e-3, -0.05}) {
    MomentTensor m = momentTensorOf({77, 33, 120});
    m.Mrr += dipole;
    expectSlowPicture(m);
    expectSlowPicture(diagonal(1, dipole, -1));
    expectSlowPicture(diagonal(dipole, 1, -1));
  }
}

TEST(BeachBall, ofDipolesAndCracksIsThatOfTheSlowDrawing) {
  for (const double sign : {1.0, -1.0}) {
    expectSlowPicture(diagonal(2 * sign, -sign, -sign));
    expectSlowPicture(diagonal(-sign, 2 * sign, -sign));
    expectSlowPicture(diagonal(-sign, -sign, 2 * sign));
    expectSlowPicture(diagonal(3 * sign, sign, sign));
    expectSlowPicture(diagonal(0, 0, sign));
    expectSlowPicture(diagonal(sign, 0, 0));
    expectSlowPicture(diagonal(sign, sign, 0));
    expectSlowPicture(diagonal(0, sign, sign));
    expectSlowPicture(diagonal(0.2 * sign, sign, -0.3 * sign));
  }
}

TEST(BeachBall, ofAnExplosionIsAllCompressionalAndOfACollapseAllDilatational) {
  const BeachBall explosion = beachBallOf(diagonal(1, 1, 1));
  EXPECT_TRUE(explosion.groundIsCompressional);
  EXPECT_TRUE(explosion.patches.empty());
  const BeachBall collapse = beachBallOf(diagonal(-1, -2, -3));
  EXPECT_FALSE(collapse.groundIsCompressional);
  EXPECT_TRUE(collapse.patches.empty());
}

// Thrusts have a compressional eye between dilatational sides, normal faults the other way around.
TEST(BeachBall, ofAThrustIsCompressionalInTheMiddleAndOfANormalFaultAtTheSides) {
  const BeachBall thrust = beachBallOf(momentTensorOf({0, 45, 90}));
  EXPECT_TRUE(isCompressional(thrust, 0, 0));
  EXPECT_FALSE(isCompressional(thrust, 0.9, 0));
  const BeachBall normal = beachBallOf(momentTensorOf({0, 45, -90}));
  EXPECT_FALSE(isCompressional(normal, 0, 0));
  EXPECT_TRUE(isCompressional(normal, -0.9, 0));
}

// Left-lateral slip on a plane that strikes north pushes to the north-east and the south-west.
TEST(BeachBall, ofStrikeSlipHasQuadrants) {
  const BeachBall ball = beachBallOf(momentTensorOf({0, 90, 0}));
  EXPECT_TRUE(isCompressional(ball, 0.5, 0.5));
  EXPECT_TRUE(isCompressional(ball, -0.5, -0.5));
  EXPECT_FALSE(isCompressional(ball, 0.5, -0.5));
  EXPECT_FALSE(isCompressional(ball, -0.5, 0.5));
}

TEST(BeachBall, ofWhatIsNoTensorIsEmpty) {
  for (const double odd : {0.0, std::nan(""), HUGE_VAL}) {
    const BeachBall ball = beachBallOf({odd, 0, 0, 0, 0, 0});
    EXPECT_FALSE(ball.groundIsCompressional);
    EXPECT_TRUE(ball.patches.empty());
  }
  expectSlowPicture(diagonal(1e300, -1e300, 1e299));
  EXPECT_FALSE(beachBallOf(momentTensorOf({0, 90, 0}), -7).patches.empty());
}

// A ray that is 45 degrees below the horizontal is 45 from straight down: √2 sin 22.5° = 0.5412 from the middle.
TEST(OnBeachBall, isEqualArea) {
  EXPECT_NEAR(onBeachBall(90, 45).x(), 0.541196, 1e-6);
  EXPECT_NEAR(onBeachBall(90, 45).y(), 0, 1e-12);
  EXPECT_NEAR(onBeachBall(0, 0).y(), 1, 1e-12);
  EXPECT_NEAR(onBeachBall(180, 90).y(), 0, 1e-12);
}

TEST(BeachBall, aPlaceOnTheBallGivesItsDirectionBack) {
  for (const double azimuth : {0.0, 45.0, 135.0, 225.0, 359.0}) {
    for (const double plunge : {0.5, 30.0, 60.0, 89.0}) {
      const auto direction = directionOnBeachBall(onBeachBall(azimuth, plunge));
      ASSERT_TRUE(direction);
      EXPECT_NEAR(direction->azimuthDeg, azimuth, 1e-9);
      EXPECT_NEAR(direction->plungeDeg, plunge, 1e-9);
    }
  }
  EXPECT_EQ(directionOnBeachBall({0, 0})->plungeDeg, 90);
  // 0.541196 is where a plunge of 45 degrees lies.
  EXPECT_NEAR(directionOnBeachBall({0, -0.541196})->plungeDeg, 45, 1e-4);
  EXPECT_EQ(directionOnBeachBall({0, -0.541196})->azimuthDeg, 180);
  EXPECT_FALSE(directionOnBeachBall({0.8, 0.8}));
  EXPECT_FALSE(directionOnBeachBall({std::nan(""), 0}));
}

// A plane that strikes north and dips 60 degrees to the east: its deepest ray points east, 60 degrees down, √2 sin
// 15° = 0.3660 from the middle.
TEST(BeachBallPlane, dipsToTheRightOfItsStrike) {
  const BeachBallLine line = beachBallPlane(0, 60, 91);
  EXPECT_NEAR(line.front().y(), 1, 1e-12);
  EXPECT_NEAR(line.back().y(), -1, 1e-12);
  EXPECT_NEAR(line[45].x(), 0.366025, 1e-6);
  EXPECT_NEAR(line[45].y(), 0, 1e-12);
}

// A chord of the angle 2π/n is off by (2π/n)² r / 8: 720 points by 1/50 at a radius of 2101, 112 at 51.
TEST(BeachBallPoints, growWithTheRootOfTheRadius) {
  EXPECT_EQ(beachBallPoints(50), 112);
  EXPECT_EQ(beachBallPoints(1), 36);
  EXPECT_EQ(beachBallPoints(1e9), 720);
  EXPECT_EQ(beachBallPoints(std::nan("")), 36);
}
