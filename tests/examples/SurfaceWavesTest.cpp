#include "examples/synthetic/SurfaceWaves.h"

#include "XOV_Graphics/seismic/arrivals/EarthModel.h"
#include "tests/examples/Measures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace xov::synthetic {
namespace {

constexpr double kRateHz = 20.0;
constexpr std::size_t kSize = std::size_t(1) << 17;
constexpr double kDistanceDeg = 80.0;

const Source& source() {
  static const Source kSource(6.9, 24, 0, 1);
  return kSource;
}

const GroundMotion& waves() {
  static const GroundMotion kWaves = [] {
    GroundSpectrum spectra = {Spectrum(kSize, kRateHz), Spectrum(kSize, kRateHz), Spectrum(kSize, kRateHz)};
    SurfaceWaves(source()).addTo(spectra, {kDistanceDeg, 60}, 0);
    return GroundMotion{spectra[Vertical].samples(), spectra[Radial].samples(), spectra[Transverse].samples()};
  }();
  return kWaves;
}

std::span<const double> around(Direction direction, double timeS, double halfWidthS) {
  return std::span(waves()[direction])
      .subspan(std::size_t((timeS - halfWidthS) * kRateHz), std::size_t(2 * halfWidthS * kRateHz));
}

TEST(SurfaceWaves, longPeriodsComeFirst) {
  // 80° are 8896 km: 60 s at 3.82 km/s arrive after 2329 s, 30 s at 3.32 km/s after 2680 s, 20 s at 2.85 km/s after
  // 3121 s. A packet also holds its neighbours' periods, and detours delay some of them by up to 6 %.
  struct {
    double arrivalS, periodS;
  } const packets[] = {{2329, 60}, {2680, 30}, {3121, 20}};
  const double train = strength(around(Vertical, 2725, 500));
  for (const auto& packet : packets) {
    const std::span<const double> samples = around(Vertical, packet.arrivalS, 100);
    EXPECT_NEAR(meanPeriod(samples) / kRateHz, packet.periodS, 0.25 * packet.periodS);
    EXPECT_GT(strength(samples), 0.3 * train) << packet.periodS << " s";
  }
}

TEST(SurfaceWaves, nothingTravelsFasterThanTheFastestGroup) {
  const double fastest = kDistanceDeg * kKmPerDegree / 3.86;
  const double train = strength(around(Vertical, fastest + 400, 300));
  EXPECT_LT(strength(around(Vertical, fastest - 500, 250)), 0.01 * train);
}

TEST(SurfaceWaves, loveWavesComeBeforeRayleighWaves) {
  // 100 s travel at 4.23 km/s as Love waves and at 3.85 km/s as Rayleigh waves.
  const double love = kDistanceDeg * kKmPerDegree / 4.23;
  EXPECT_GT(strength(around(Transverse, love, 60)), 5 * strength(around(Radial, love, 60)));
}

TEST(SurfaceWaves, rayleighWavesAreRetrogradeEllipses) {
  // When the ground moves up through the middle of its ellipse it moves away from the source: with Z = cos φ and
  // R = -0.7 sin φ, the mean of R·dZ/dt is positive.
  const std::vector<double>& up = waves()[Vertical];
  const std::vector<double>& away = waves()[Radial];
  double turning = 0, inPhase = 0;
  for (std::size_t i = 1; i + 1 < up.size(); ++i) {
    turning += away[i] * (up[i + 1] - up[i - 1]);
    inPhase += away[i] * up[i];
  }
  EXPECT_GT(turning, 0);
  const double product = strength<double>(away) * strength<double>(up) * double(up.size());
  EXPECT_LT(std::abs(inPhase), 0.05 * product);
  EXPECT_NEAR(strength<double>(away) / strength<double>(up), 0.7, 0.01);
}

TEST(SurfaceWaves, theLargestVelocityFollowsFromTheMagnitude) {
  // Δ = 100°, M 6.9: log A/T = 6.9 - 3.3 - 1.66·2 = 0.28, 1.905 µm/s; times 2π, 11972 nm/s.
  EXPECT_NEAR(surfaceWaveVelocity(6.9, 100), 11972, 5);
  // Azimuth 60° off a strike of 0°: 1 - 0.3·cos 120° = 1.15.
  const std::vector<double>& up = waves()[Vertical];
  const double peak = std::max(*std::max_element(up.begin(), up.end()), -*std::min_element(up.begin(), up.end()));
  EXPECT_NEAR(peak / surfaceWaveVelocity(6.9, kDistanceDeg), 1.15, 0.02);
}

TEST(Source, theMomentRateHasUnitAreaAndStartsAfterTheOriginTime) {
  EXPECT_NEAR(std::abs(source().momentRate(0)), 1, 1e-12);
  // M 6.9: log M = 26.45 in dyn·cm, 2·1.05e-8·10^8.8167 = 13.77 s.
  EXPECT_NEAR(source().durationS(), 13.77, 0.01);
  Spectrum spectrum(4096, kRateHz);
  for (std::size_t i = 1; i < spectrum.frequencyCount(); ++i)
    spectrum[i] = spectrum.componentPerDensity() * source().momentRate(spectrum.frequencyHz(i));
  spectrum[0] = 0.5 * spectrum.componentPerDensity();
  const std::vector<double> rate = spectrum.samples();
  const double peak = *std::max_element(rate.begin(), rate.end());
  EXPECT_GT(*std::min_element(rate.begin(), rate.end()), -0.01 * peak); // slip does not run backwards
  EXPECT_LT(std::abs(rate[0]), 0.01 * peak);
  EXPECT_LT(std::abs(rate[std::size_t(20 * kRateHz)]), 0.01 * peak);
}

} // namespace
} // namespace xov::synthetic
