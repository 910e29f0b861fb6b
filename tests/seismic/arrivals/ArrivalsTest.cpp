#include "XOV_Graphics/seismic/arrivals/Arrivals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <thread>

namespace xov {
namespace {

using enum SeismicPhase;

std::optional<PhaseArrival> arrival(SeismicPhase phase, double distanceDeg, double depthKm) {
  const std::vector<PhaseArrival> found = arrivalsAt(distanceDeg, depthKm, std::array{phase});
  EXPECT_LE(found.size(), 1U);
  return found.empty() ? std::nullopt : std::optional(found.front());
}

std::size_t countAt(SeismicPhase phase, double distanceDeg, double depthKm) {
  return arrivalsAt(distanceDeg, depthKm, std::array{phase}, PhaseRepeats::All).size();
}

// An independent program's figures: the TauP method (R. Buland, C. H. Chapman, Bull. Seism. Soc. Am. 73, 1271-1302
// (1983)) with IASP91, as ObsPy 1.5.1 (www.obspy.org) computes it. Distances and angles in degrees.
TEST(Arrivals, agreeWithAnotherProgram) {
  constexpr double kToleranceS = 0.03;
  constexpr double kToleranceSPerDeg = 0.01;
  constexpr double kToleranceDeg = 0.15;
  struct {
    double depthKm;
    SeismicPhase phase;
    double distance, seconds, rayParameter, takeOff, incidence;
  } const rows[] = {
      {10, P, 5, 75.07, 13.743, 45.89, 45.79},        {10, P, 30, 368.73, 8.844, 27.52, 27.47},
      {33, P, 60, 603.23, 6.867, 23.80, 20.99},       {100, P, 90, 768.17, 4.638, 19.94, 14.00},
      {600, P, 2, 74.21, 4.024, 156.46, 12.12},       {10, S, 5, 133.92, 24.700, 48.38, 48.28},
      {10, S, 30, 667.64, 15.668, 28.31, 28.26},      {33, S, 60, 1094.13, 12.855, 25.84, 22.86},
      {600, S, 75, 1171.80, 10.747, 35.73, 18.95},    {0, Pb, 3, 54.29, 17.050, 62.79, 62.79},
      {0, PcP, 40, 581.29, 3.200, 9.61, 9.61},        {100, ScS, 40, 1041.04, 5.944, 14.12, 10.35},
      {33, PP, 100, 1066.81, 7.598, 26.52, 23.35},    {33, SS, 100, 1928.60, 13.957, 28.24, 24.94},
      {100, pP, 60, 620.59, 6.911, 149.46, 21.13},    {100, sP, 60, 631.91, 6.894, 163.56, 21.08},
      {100, sS, 60, 1124.15, 12.925, 147.96, 22.99},  {10, Pdiff, 120, 913.85, 4.439, 13.41, 13.39},
      {10, Sdiff, 110, 1602.86, 8.323, 14.59, 14.57}, {33, PKPdf, 130, 1145.88, 1.883, 6.35, 5.64},
      {33, PKPdf, 180, 1206.64, 0.000, 0.00, 0.00},   {33, PKPbc, 150, 1186.55, 2.565, 8.67, 7.69},
      {33, PKPab, 150, 1192.27, 4.132, 14.05, 12.45}, {33, PKPab, 170, 1278.96, 4.428, 15.08, 13.36},
      {33, PKiKP, 60, 1027.80, 1.238, 4.17, 3.70},    {33, SKS, 100, 1457.46, 4.918, 9.60, 8.55},
      {600, PKPdf, 160, 1130.64, 1.112, 6.34, 3.33},
  };
  for (const auto& row : rows) {
    const auto found = arrival(row.phase, row.distance, row.depthKm);
    const std::string name = phaseName(row.phase).toStdString() + " at " + std::to_string(row.distance);
    ASSERT_TRUE(found) << name;
    EXPECT_EQ(found->phase, row.phase);
    EXPECT_NEAR(found->seconds, row.seconds, kToleranceS) << name;
    EXPECT_NEAR(found->rayParameter, row.rayParameter, kToleranceSPerDeg) << name;
    EXPECT_NEAR(found->takeOffDeg, row.takeOff, kToleranceDeg) << name;
    EXPECT_NEAR(found->incidenceDeg, row.incidence, kToleranceDeg) << name;
  }
}

TEST(Arrivals, pgIsAStraightLineThroughTheUpperCrust) {
  // A chord of 2 degrees at 5.8 km/s: 2 · 6371 / 5.8 · sin 1°.
  EXPECT_NEAR(arrival(Pg, 2, 0)->seconds, 2 * 6371 / 5.8 * std::sin(std::numbers::pi / 180), 1e-3);
  // It grazes the lower crust, 6351 km from the centre, at 2 arccos(6351/6371) = 9.08 degrees.
  EXPECT_TRUE(arrival(Pg, 9.07, 0));
  EXPECT_FALSE(arrival(Pg, 9.10, 0));
  // Sg likewise at 3.36 km/s.
  EXPECT_NEAR(arrival(Sg, 2, 0)->seconds, 2 * 6371 / 3.36 * std::sin(std::numbers::pi / 180), 2e-3);
}

TEST(Arrivals, straightAboveTheSourceWavesComeUpVertically) {
  // 20 km at 5.8 and 4 km at 6.5 km/s.
  const auto p = arrival(P, 0, 24);
  ASSERT_TRUE(p);
  EXPECT_NEAR(p->seconds, 20 / 5.8 + 4 / 6.5, 1e-6);
  EXPECT_EQ(p->takeOffDeg, 180);
  EXPECT_EQ(p->incidenceDeg, 0);
  EXPECT_EQ(p->rayParameter, 0);
  EXPECT_NEAR(arrival(S, 0, 24)->seconds, 20 / 3.36 + 4 / 3.75, 1e-6);
  EXPECT_EQ(arrival(P, 0, 0)->seconds, 0);
}

TEST(Arrivals, surfaceWavesTravelWithTheirLargestGroupVelocity) {
  // Half the circumference, π · 6371 km, at 3.86 and 4.35 km/s.
  EXPECT_NEAR(arrival(LR, 180, 10)->seconds, std::numbers::pi * 6371 / 3.86, 1e-6);
  EXPECT_NEAR(arrival(LQ, 180, 10)->seconds, std::numbers::pi * 6371 / 4.35, 1e-6);
  EXPECT_EQ(arrival(LR, 30, 10)->incidenceDeg, 90);
  EXPECT_NEAR(arrival(LR, 30, 10)->rayParameter, 111.195 / 3.86, 1e-3);
}

TEST(Arrivals, inTheShadowOfTheCoreThereIsNoPButADiffractedWave) {
  EXPECT_TRUE(arrival(P, 98, 0));
  EXPECT_FALSE(arrival(Pdiff, 98, 0));
  for (const double distance : {99.0, 120.0, 140.0, 150.0}) {
    EXPECT_FALSE(arrival(P, distance, 0)) << distance;
    EXPECT_TRUE(arrival(Pdiff, distance, 0)) << distance;
    EXPECT_FALSE(arrival(S, distance + 5, 0)) << distance;
  }
  EXPECT_FALSE(arrival(Pdiff, 150.1, 0));
  // The one goes on where the other ends.
  double end = 98;
  while (arrival(P, end + 0.001, 0))
    end += 0.001;
  EXPECT_NEAR(arrival(Pdiff, end + 0.001, 0)->seconds, arrival(P, end, 0)->seconds, 0.02);
}

TEST(Arrivals, wavesThroughTheCoreBeginWhereRaysReach) {
  EXPECT_FALSE(arrival(PKPdf, 100, 33));
  EXPECT_TRUE(arrival(PKPdf, 120, 33));
  EXPECT_FALSE(arrival(PKPbc, 143, 33));
  EXPECT_TRUE(arrival(PKPbc, 147, 33));
  EXPECT_TRUE(arrival(PKPab, 147, 33));
  // PKP is the first of its branches: df before the caustic at 145 degrees, there those of the outer core.
  EXPECT_EQ(arrival(PKP, 130, 33)->seconds, arrival(PKPdf, 130, 33)->seconds);
  EXPECT_EQ(countAt(PKP, 130, 33), 1U);
  EXPECT_EQ(countAt(PKP, 150, 33), 3U);
}

TEST(Arrivals, belowTheCrustThereAreNoCrustalWaves) {
  for (const double depth : {35.0, 36.0, 300.0}) {
    for (const SeismicPhase phase : {Pg, Pb, Sg, Sb})
      EXPECT_FALSE(arrival(phase, 1, depth)) << phaseName(phase).toStdString() << ", " << depth;
  }
  EXPECT_FALSE(arrival(Pg, 1, 25));
  EXPECT_TRUE(arrival(Pb, 1, 25));
  EXPECT_TRUE(arrival(Pn, 1, 100));
  EXPECT_FALSE(arrival(Pn, 1, 300));
}

TEST(Arrivals, pnIsPWhereItComesFirstAndEndsBelow25Degrees) {
  EXPECT_EQ(arrival(Pn, 8, 10)->seconds, arrival(P, 8, 10)->seconds);
  EXPECT_GT(arrival(Pg, 4, 10)->seconds, arrival(Pn, 4, 10)->seconds);
  EXPECT_FALSE(arrival(Pn, 25, 10));
}

TEST(Arrivals, aSurfaceSourceHasNoDepthPhases) {
  for (const SeismicPhase phase : {pP, sP, sS})
    EXPECT_FALSE(arrival(phase, 50, 0)) << phaseName(phase).toStdString();
}

TEST(Arrivals, comeInTheOrderOfTheirTimesOnceAPhaseUnlessAllAreWanted) {
  const std::vector<PhaseArrival> first = arrivalsAt(20, 10);
  EXPECT_TRUE(std::ranges::is_sorted(first, {}, &PhaseArrival::seconds));
  EXPECT_EQ(std::ranges::count(first, P, &PhaseArrival::phase), 1);
  // At 20 degrees rays from above, between and below the discontinuities of 410 and 660 km cross, five branches.
  const std::vector<PhaseArrival> all = arrivalsAt(20, 10, std::array{P}, PhaseRepeats::All);
  EXPECT_GE(all.size(), 5U);
  EXPECT_TRUE(std::ranges::is_sorted(all, {}, &PhaseArrival::seconds));
  EXPECT_EQ(all.front().seconds, arrival(P, 20, 10)->seconds);
}

TEST(Arrivals, anAbsurdDistanceOrDepthHasNone) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double distance : {nan, infinity, -infinity, -0.001, 180.001, 1e300, -12345.0})
    EXPECT_TRUE(arrivalsAt(distance, 10).empty()) << distance;
  for (const double depth : {nan, infinity, -infinity, -10.001, 800.001, 6371.0, -12345.0})
    EXPECT_TRUE(arrivalsAt(50, depth).empty()) << depth;
  EXPECT_TRUE(arrivalsAt(50, 10, {}).empty());
}

TEST(Arrivals, theDeepestAndTheHighestSourceHaveTimes) {
  EXPECT_TRUE(arrival(P, 50, 800));
  EXPECT_EQ(arrival(P, 50, -10)->seconds, arrival(P, 50, 0)->seconds);
}

TEST(Arrivals, existWithFiniteNumbersAtEveryDistanceAndDepth) {
  for (const double depth : {0.0, 1e-9, 19.999, 20.0, 35.0, 120.0, 660.0, 760.0, 800.0}) {
    for (const double distance : {0.0, 1e-9, 0.7, 13.0, 98.3, 142.0, 179.999999, 180.0}) {
      const std::vector<PhaseArrival> all = arrivalsAt(distance, depth, allSeismicPhases(), PhaseRepeats::All);
      EXPECT_GE(all.size(), 3U) << distance << ", " << depth;
      for (const PhaseArrival& one : all) {
        EXPECT_TRUE(std::isfinite(one.seconds) && one.seconds >= 0) << distance << ", " << depth;
        EXPECT_TRUE(one.rayParameter >= 0 && one.takeOffDeg >= 0 && one.takeOffDeg <= 180 && one.incidenceDeg >= 0 &&
                    one.incidenceDeg <= 90)
            << phaseName(one.phase).toStdString() << ", " << distance << ", " << depth;
      }
    }
  }
}

TEST(Arrivals, severalThreadsGetTheSame) {
  const std::vector<double> depths = {10, 33, 100, 600};
  std::vector<double> expected;
  for (const double depth : depths)
    expected.push_back(arrival(P, 40, depth)->seconds);
  std::vector<double> found(depths.size());
  {
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < depths.size(); ++i)
      threads.emplace_back([&, i] { found[i] = arrivalsAt(40, depths[i], std::array{P}).front().seconds; });
  }
  EXPECT_EQ(found, expected);
}

} // namespace
} // namespace xov
