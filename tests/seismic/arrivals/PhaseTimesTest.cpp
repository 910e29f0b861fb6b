#include "XOV_Graphics/seismic/arrivals/PhaseTimes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {
namespace {

constexpr double kR = kEarthRadiusKm;
constexpr double kRadiansPerDegree = std::numbers::pi / 180;

LegTables tablesOf(std::span<const EarthLayer> layers) {
  const BallModel ball{layers, nullptr, nullptr};
  return {LegTable(ball, BodyWave::P), LegTable(ball, BodyWave::S)};
}

PhaseArrival first(const PhaseTimes& times, SeismicPhase phase, double distanceDeg) {
  std::vector<PhaseArrival> all;
  times.append(all, phase, distanceDeg);
  EXPECT_FALSE(all.empty()) << phaseName(phase).toStdString() << " at " << distanceDeg;
  return all.empty() ? PhaseArrival() : *std::ranges::min_element(all, {}, &PhaseArrival::seconds);
}

// A ball of one velocity, in which rays are straight.
constexpr EarthLayer kUniform[] = {{0, {10, 0, 0, 0}, {5, 0, 0, 0}}};

TEST(PhaseTimes, raysThroughAUniformBallAreChords) {
  const LegTables tables = tablesOf(kUniform);
  const PhaseTimes times(tables, 0);
  for (const double distance : {0.5, 10.0, 60.0, 120.0, 179.0}) {
    const double half = distance / 2 * kRadiansPerDegree;
    const PhaseArrival p = first(times, SeismicPhase::P, distance);
    EXPECT_NEAR(p.seconds, 2 * kR / 10 * std::sin(half), 1e-3) << distance;
    EXPECT_NEAR(p.rayParameter, kR / 10 * std::cos(half) * kRadiansPerDegree, 1e-3) << distance;
    EXPECT_NEAR(p.takeOffDeg, 90 - distance / 2, 0.05) << distance;
    EXPECT_NEAR(p.incidenceDeg, 90 - distance / 2, 0.05) << distance;
    EXPECT_NEAR(first(times, SeismicPhase::S, distance).seconds, 2 * kR / 5 * std::sin(half), 2e-3) << distance;
  }
  // Twice the chord over half of the way.
  EXPECT_NEAR(first(times, SeismicPhase::PP, 120).seconds, 2 * (2 * kR / 10 * std::sin(30 * kRadiansPerDegree)),
              1e-3);
}

TEST(PhaseTimes, raysFromADeepSourceInAUniformBallAreStraight) {
  const double depth = 700;
  const LegTables tables = tablesOf(kUniform);
  const PhaseTimes times(tables, depth);
  const double r = kR - depth;
  for (const double distance : {0.0, 1.0, 20.0, 27.1, 60.0, 180.0}) {
    // The law of cosines in the triangle of centre, source and station.
    const double way = std::sqrt(r * r + kR * kR - 2 * r * kR * std::cos(distance * kRadiansPerDegree));
    EXPECT_NEAR(first(times, SeismicPhase::P, distance).seconds, way / 10, 1e-3) << distance;
  }
  // A ray leaves horizontally for where cos Δ = r/R: 27.10 degrees.
  const double horizontal = std::acos(r / kR) / kRadiansPerDegree;
  EXPECT_NEAR(first(times, SeismicPhase::P, horizontal).takeOffDeg, 90, 0.1);
  EXPECT_GT(first(times, SeismicPhase::P, horizontal - 5).takeOffDeg, 91);
  EXPECT_LT(first(times, SeismicPhase::P, horizontal + 5).takeOffDeg, 89);
}

// With a velocity of b (c² - r²), rays are circles, and times are distances of hyperbolic geometry in a ball of the
// radius c: T = arcosh(1 + 2 c² d² / ((c² - r²) (c² - R²))) / (2 b c), d being the straight way between both ends.
// Here b c² = 12 km/s and b = 6 km/s over R², so that c² = 2 R².
constexpr EarthLayer kCurved[] = {{0, {12, 0, -6, 0}, {6, 0, -3, 0}}};

double curvedSeconds(double distanceDeg, double depthKm) {
  const double r = (kR - depthKm) / kR; // lengths in units of R
  const double straight = r * r + 1 - 2 * r * std::cos(distanceDeg * kRadiansPerDegree);
  const double bc = 6 * std::sqrt(2.0) / kR;
  return std::acosh(1 + 2 * 2 * straight / ((2 - r * r) * (2 - 1))) / (2 * bc);
}

TEST(PhaseTimes, raysThroughAVelocityThatFallsWithTheSquareOfTheRadiusTakeTheTimeOfTheClosedForm) {
  const LegTables tables = tablesOf(kCurved);
  for (const double depth : {0.0, 3.0, 100.0, 650.0}) {
    const PhaseTimes times(tables, depth);
    for (const double distance : {1.0, 7.0, 35.0, 90.0, 150.0}) {
      EXPECT_NEAR(first(times, SeismicPhase::P, distance).seconds, curvedSeconds(distance, depth), 0.005)
          << depth << " km, " << distance;
      EXPECT_NEAR(first(times, SeismicPhase::S, distance).seconds, 2 * curvedSeconds(distance, depth), 0.01)
          << depth << " km, " << distance;
    }
  }
}

TEST(PhaseTimes, theSlownessIsTheSlopeOfTheTime) {
  const PhaseTimes times(earthLegTables(), 33);
  constexpr double kStepDeg = 0.05;
  for (const SeismicPhase phase : {SeismicPhase::P, SeismicPhase::S, SeismicPhase::pP, SeismicPhase::PcP}) {
    for (double distance = 35; distance < 90; distance += 5) {
      const double rise =
          first(times, phase, distance + kStepDeg).seconds - first(times, phase, distance - kStepDeg).seconds;
      EXPECT_NEAR(first(times, phase, distance).rayParameter, rise / (2 * kStepDeg), 0.005)
          << phaseName(phase).toStdString() << " at " << distance;
    }
  }
}

TEST(PhaseTimes, aSourceOnADiscontinuityHasTheTimesOfThoseBesideIt) {
  constexpr double kMetre = 0.001;
  for (const double depth : {20.0, 35.0, 410.0, 660.0}) {
    const PhaseTimes above(earthLegTables(), depth - kMetre);
    const PhaseTimes on(earthLegTables(), depth);
    const PhaseTimes below(earthLegTables(), depth + kMetre);
    for (const double distance : {0.1, 3.0, 50.0}) {
      const double seconds = first(on, SeismicPhase::P, distance).seconds;
      EXPECT_NEAR(first(above, SeismicPhase::P, distance).seconds, seconds, 0.002) << depth << ", " << distance;
      EXPECT_NEAR(first(below, SeismicPhase::P, distance).seconds, seconds, 0.002) << depth << ", " << distance;
    }
  }
}

} // namespace
} // namespace xov
