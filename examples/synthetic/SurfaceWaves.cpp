#include "examples/synthetic/SurfaceWaves.h"

#include "examples/synthetic/Burst.h"
#include "examples/synthetic/Random.h"

#include <XOV_Graphics/seismic/arrivals/EarthModel.h>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {

using Complex = std::complex<double>;

constexpr double kQuality = 220.0;
// The motion of a mode at depth falls off about as exp(-2π·depth/wavelength), slower for the lower part of it.
constexpr double kDepthDecay = 0.5;
// The velocity of a layered Earth after a sudden slip grows about like this power of the frequency.
constexpr double kExcitationExponent = 1.5;
constexpr double kPhaseVelocityKmPerS = 3.8;
// Horizontal over vertical motion of Rayleigh waves; that of IASP91 lies between 0.6 and 0.9.
constexpr double kEllipticity = 0.7;
constexpr double kLoveOverRayleigh = 0.9;
// The highest and the lowest octave fade in and out, so that no frequency rings.
constexpr double kFullShortPeriodS = 14.0;
constexpr double kFullLongPeriodS = 120.0;

// Share of the Rayleigh waves that depends on direction, and what is left of Love waves between their lobes.
constexpr double kRayleighLobes = 0.3;
constexpr double kLoveFloor = 0.3;
constexpr double kNanometresPerMicrometre = 1000.0;
// Beside the straight way, waves come by detours around lateral contrasts, which make the train swell and fade.
constexpr int kDetourCount = 4;
constexpr double kDetourStrength = 0.4;
constexpr double kLongestDetour = 0.06; // of the distance
constexpr std::size_t kCoarsening = 16;

// Scattered surface waves follow those of this period, which are among the slowest.
constexpr double kCodaPeriodS = 16.0;
constexpr double kCodaLevel = 0.12;
constexpr double kCodaRiseS = 60.0;
constexpr double kCodaDecayS = 150.0;
constexpr double kCodaTailShare = 0.3;
constexpr double kCodaTailDecayS = 700.0;
constexpr double kCodaQ = 2.0;

double fade(double value, double zeroAt, double oneAt) {
  const double part = std::clamp((value - zeroAt) / (oneAt - zeroAt), 0.0, 1.0);
  return 0.5 * (1.0 - std::cos(std::numbers::pi * part));
}

/// Amplitude of one period, but for a factor common to all.
double excitation(const Source& source, SurfaceWave wave, double periodS, double distanceKm) {
  const double f = 1.0 / periodS;
  const double depthLoss = kDepthDecay * 2.0 * std::numbers::pi * source.depthKm() * f / kPhaseVelocityKmPerS;
  const double pathLoss = std::numbers::pi * f * distanceKm / (groupVelocity(wave, periodS) * kQuality);
  return std::pow(f, kExcitationExponent) * std::exp(-depthLoss - pathLoss) *
         fade(periodS, kShortestSurfacePeriodS, kFullShortPeriodS) *
         fade(f, 1.0 / kLongestSurfacePeriodS, 1.0 / kFullLongPeriodS);
}

double largest(const std::vector<double>& samples) {
  return std::abs(*std::max_element(samples.begin(), samples.end(),
                                    [](double a, double b) { return std::abs(a) < std::abs(b); }));
}

/// Waves that come by detours, relative to those that come straight.
class Detours {
public:
  explicit Detours(std::uint64_t seed) {
    Random random(seed);
    for (Detour& detour : detours_)
      detour = {kDetourStrength * (2.0 * random.uniform() - 1.0), kLongestDetour * random.uniform()};
  }

  /// The factor at an angular frequency for waves that take `delayS` on the straight way.
  Complex factor(double omega, double delayS) const {
    Complex sum = 1.0;
    for (const Detour& detour : detours_)
      sum += detour.strength * std::polar(1.0, -omega * delayS * detour.length);
    return sum;
  }

private:
  struct Detour {
    double strength, length;
  };
  std::array<Detour, kDetourCount> detours_{};
};

/// A mode at a distance, its largest velocity 1. The phase is the integral of the group delay over frequency: the
/// envelope of each period arrives when it should, the wave under it is true but for a constant.
Spectrum modeAt(const Source& source, SurfaceWave wave, const Path& path, double startS, const Spectrum& grid) {
  // Surface waves are slow: a coarse grid with the same steps in frequency holds them and is transformed in no time.
  Spectrum mode(grid.size() / kCoarsening, grid.rateHz() / kCoarsening);
  const Detours detours(pathSeed(source, path, RandomPart::Detours) + std::uint64_t(wave));
  const double distanceKm = path.distanceDeg * kKmPerDegree;
  const double step = 2.0 * std::numbers::pi * mode.frequencyHz(1);
  double phase = 0;
  double lastDelay = SurfaceWaves::arrivalS(wave, kLongestSurfacePeriodS, path.distanceDeg) - startS;
  const auto first = std::size_t(std::ceil(1.0 / (kLongestSurfacePeriodS * mode.frequencyHz(1))));
  for (std::size_t i = first; i < mode.frequencyCount(); ++i) {
    const double f = mode.frequencyHz(i);
    if (f > 1.0 / kShortestSurfacePeriodS) break;
    const double delay = SurfaceWaves::arrivalS(wave, 1.0 / f, path.distanceDeg) - startS;
    phase -= 0.5 * step * (delay + lastDelay);
    lastDelay = delay;
    mode[i] = source.momentRate(f) * detours.factor(2.0 * std::numbers::pi * f, delay + startS) *
              (excitation(source, wave, 1.0 / f, distanceKm) * std::polar(1.0, phase));
  }
  const double peak = largest(mode.samples());
  for (std::size_t i = first; i < mode.frequencyCount(); ++i)
    mode[i] /= peak;
  return mode;
}

/// How strongly a thrust of this strike sends waves in a direction: most of the Rayleigh waves go across the fault,
/// Love waves have four lobes. Scattering fills the gaps between lobes.
double radiation(SurfaceWave wave, const Source& source, double azimuthDeg) {
  const double twice = 2.0 * (azimuthDeg - source.strikeDeg()) * std::numbers::pi / 180.0;
  if (wave == SurfaceWave::Rayleigh) return 1.0 - kRayleighLobes * std::cos(twice);
  return kLoveOverRayleigh *
         std::copysign(kLoveFloor + (1.0 - kLoveFloor) * std::abs(std::sin(twice)), std::sin(twice));
}

} // namespace

double surfaceWaveVelocity(double magnitude, double distanceDeg) {
  const double micrometresPerSecond = std::pow(10.0, magnitude - 3.3 - 1.66 * std::log10(distanceDeg));
  return 2.0 * std::numbers::pi * kNanometresPerMicrometre * micrometresPerSecond;
}

SurfaceWaves::SurfaceWaves(const Source& source) : source_(source) {}

double SurfaceWaves::arrivalS(SurfaceWave wave, double periodS, double distanceDeg) {
  return distanceDeg * kKmPerDegree / groupVelocity(wave, periodS);
}

void SurfaceWaves::addTo(GroundSpectrum& spectra, const Path& path, double startS) const {
  const double velocity = surfaceWaveVelocity(source_.magnitude(), path.distanceDeg);
  const double up = velocity * radiation(SurfaceWave::Rayleigh, source_, path.azimuthDeg);
  const double across = velocity * radiation(SurfaceWave::Love, source_, path.azimuthDeg);
  const Spectrum rayleigh = modeAt(source_, SurfaceWave::Rayleigh, path, startS, spectra[Vertical]);
  const Spectrum love = modeAt(source_, SurfaceWave::Love, path, startS, spectra[Vertical]);
  for (std::size_t i = 0; i < rayleigh.frequencyCount(); ++i) {
    spectra[Vertical][i] += up * rayleigh[i];
    // A quarter of a period ahead of the vertical: at the top of its ellipse the ground moves back to the source.
    spectra[Radial][i] += Complex(0, kEllipticity) * up * rayleigh[i];
    spectra[Transverse][i] += across * love[i];
  }
}

void SurfaceWaves::addCoda(GroundMotion& motion, const Path& path, const TimeWindow& window) const {
  const double velocity = surfaceWaveVelocity(source_.magnitude(), path.distanceDeg);
  std::uint64_t seed = pathSeed(source_, path, RandomPart::SurfaceWaveCoda);
  for (std::size_t direction = 0; direction < DirectionCount; ++direction) {
    const SurfaceWave wave = direction == Transverse ? SurfaceWave::Love : SurfaceWave::Rayleigh;
    addBurst(motion[direction], window.rateHz,
             {.startS = arrivalS(wave, kCodaPeriodS, path.distanceDeg) - window.startS,
              .level = kCodaLevel * velocity,
              .riseS = kCodaRiseS,
              .decayS = kCodaDecayS,
              .tailShare = kCodaTailShare,
              .tailDecayS = kCodaTailDecayS,
              .centreHz = 1.0 / kCodaPeriodS,
              .q = kCodaQ,
              .seed = ++seed});
  }
}

} // namespace xov::synthetic
