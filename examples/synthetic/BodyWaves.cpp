#include "examples/synthetic/BodyWaves.h"

#include "examples/synthetic/Burst.h"

#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {

using Complex = std::complex<double>;

/// What arrives with a phase: the area under its displacement pulse as a multiple of that of P.
struct PhaseRow {
  Phase phase;
  BodyWave wave;
  double inPlane;    // P along the ray, S across it in the vertical plane
  double transverse; // SH
  double nearestDeg; // nearer, the phase is one with the direct wave
};

constexpr PhaseRow kPhases[] = {
    {Phase::P, BodyWave::P, 1.0, 0.0, 0},    {Phase::pP, BodyWave::P, -0.7, 0.0, 15},
    {Phase::PP, BodyWave::P, 0.5, 0.0, 25},  {Phase::S, BodyWave::S, 4.0, 5.0, 0},
    {Phase::sS, BodyWave::S, -2.0, 2.5, 15}, {Phase::SS, BodyWave::S, 2.0, 3.5, 25},
};

constexpr double kQualityP = 700.0;
constexpr double kQualityS = 280.0;
constexpr double kReferenceHz = 3.0; // waves of this frequency arrive at the time of the ray

// A magnitude 6.9 at 60 degrees moves the ground by some 10 µm for some 10 s. The moment grows with 1.5 and the area
// under the pulse with it; the decay is that of amplitudes of P in magnitude scales, about Δ^-1.3.
constexpr double kPulseAreaNmS = 1.1e5;
constexpr double kPulseMagnitude = 6.9;
constexpr double kPulseDistanceDeg = 60.0;
constexpr double kDecayExponent = -1.3;

double pulseArea(double magnitude, double distanceDeg) {
  return kPulseAreaNmS * std::pow(10.0, 1.5 * (magnitude - kPulseMagnitude)) *
         std::pow(distanceDeg / kPulseDistanceDeg, kDecayExponent);
}

double tStar(BodyWave wave, double travelTimeS) {
  return travelTimeS / (wave == BodyWave::P ? kQualityP : kQualityS);
}

/// Attenuation and the delay that comes with it.
Complex absorption(double frequencyHz, double tStarS) {
  return std::polar(std::exp(-std::numbers::pi * frequencyHz * tStarS),
                    -2.0 * frequencyHz * tStarS * std::log(kReferenceHz / frequencyHz));
}

/// A phase's share in each direction. S that swings in the vertical plane points up where P points away.
std::array<double, DirectionCount> directions(const PhaseRow& row, double slowness) {
  const double angle = incidenceAngle(row.wave, slowness);
  if (row.wave == BodyWave::P) return {row.inPlane * std::cos(angle), row.inPlane * std::sin(angle), row.transverse};
  return {-row.inPlane * std::sin(angle), row.inPlane * std::cos(angle), row.transverse};
}

void addPhase(GroundSpectrum& spectra, const Source& source, double distanceDeg, BodyWave wave, double travelTimeS,
              double startS, const std::array<double, DirectionCount>& shares) {
  const double area = pulseArea(source.magnitude(), distanceDeg);
  const double loss = tStar(wave, travelTimeS);
  const Spectrum& grid = spectra[Vertical];
  for (std::size_t i = 1; i < grid.frequencyCount() && grid.frequencyHz(i) < source.highestHz(); ++i) {
    const double f = grid.frequencyHz(i);
    const double omega = 2.0 * std::numbers::pi * f;
    const Complex velocity = Complex(0, omega) * area * source.momentRate(f) * absorption(f, loss) *
                             (grid.componentPerDensity() * std::polar(1.0, -omega * (travelTimeS - startS)));
    for (std::size_t direction = 0; direction < DirectionCount; ++direction)
      spectra[direction][i] += shares[direction] * velocity;
  }
}

struct CodaRow {
  Phase phase;
  double level; // of the velocity, as part of the pulse's area over the square of its duration
  std::array<double, DirectionCount> shares;
  double decayS;
  double travelTimeS; // at which the coda is centred at ...
  double centreHz;    // ... and at shorter times higher, with the inverse root
};

constexpr CodaRow kCodas[] = {
    {Phase::P, 2.2, {1.0, 0.6, 0.5}, 45, 600, 0.7},
    {Phase::S, 3.5, {0.6, 1.0, 1.0}, 80, 1100, 0.25},
};
constexpr double kCodaRiseS = 3.0;
constexpr double kCodaTailShare = 0.25;
constexpr double kCodaTailDecayS = 250.0;
constexpr double kCodaQ = 0.7;

} // namespace

BodyWaves::BodyWaves(const Source& source) : source_(source) {
  for (const PhaseRow& row : kPhases)
    times_.emplace_back(row.phase, source.depthKm());
}

std::optional<Arrival> BodyWaves::arrival(Phase phase, double distanceDeg) const {
  return times_[std::size_t(phase)].first(distanceDeg);
}

void BodyWaves::addTo(GroundSpectrum& spectra, const Path& path, double startS) const {
  for (const PhaseRow& row : kPhases) {
    const std::optional<Arrival> arrived = arrival(row.phase, path.distanceDeg);
    if (!arrived || path.distanceDeg < row.nearestDeg) continue;
    addPhase(spectra, source_, path.distanceDeg, row.wave, arrived->timeS, startS,
             directions(row, arrived->slownessSPerRad));
  }
}

void BodyWaves::addCoda(GroundMotion& motion, const Path& path, const TimeWindow& window) const {
  const double duration = source_.durationS();
  const double velocity = pulseArea(source_.magnitude(), path.distanceDeg) / (duration * duration);
  std::uint64_t seed = pathSeed(source_, path, RandomPart::BodyWaveCoda);
  for (const CodaRow& row : kCodas) {
    const std::optional<Arrival> arrived = arrival(row.phase, path.distanceDeg);
    if (!arrived) continue;
    for (std::size_t direction = 0; direction < DirectionCount; ++direction) {
      addBurst(motion[direction], window.rateHz,
               {.startS = arrived->timeS - window.startS,
                .level = row.level * row.shares[direction] * velocity,
                .riseS = kCodaRiseS,
                .decayS = row.decayS,
                .tailShare = kCodaTailShare,
                .tailDecayS = kCodaTailDecayS,
                .centreHz = row.centreHz * std::sqrt(row.travelTimeS / arrived->timeS),
                .q = kCodaQ,
                .seed = ++seed});
    }
  }
}

} // namespace xov::synthetic
