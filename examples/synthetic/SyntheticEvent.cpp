#include "examples/synthetic/SyntheticEvent.h"

#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {
// 6553 s at 20 Hz: long enough for the slowest surface waves at 98 degrees.
constexpr std::size_t kTransformSize = std::size_t(1) << 17;
} // namespace

SyntheticEvent::SyntheticEvent(const Source& source) : source_(source), bodyWaves_(source), surfaceWaves_(source) {}

const Source& SyntheticEvent::source() const { return source_; }

std::optional<ArrivalTimes> SyntheticEvent::arrivals(double distanceDeg) const {
  const std::optional<Arrival> p = bodyWaves_.arrival(Phase::P, distanceDeg);
  const std::optional<Arrival> s = bodyWaves_.arrival(Phase::S, distanceDeg);
  if (!p || !s) return {};
  return ArrivalTimes{p->timeS, s->timeS, SurfaceWaves::arrivalS(SurfaceWave::Rayleigh, kOnsetPeriodS, distanceDeg),
                      SurfaceWaves::arrivalS(SurfaceWave::Love, kOnsetPeriodS, distanceDeg)};
}

GroundMotion SyntheticEvent::groundMotion(const Path& path, const TimeWindow& window) const {
  const Spectrum silence(kTransformSize, window.rateHz);
  GroundSpectrum spectra = {silence, silence, silence};
  bodyWaves_.addTo(spectra, path, window.startS);
  surfaceWaves_.addTo(spectra, path, window.startS);
  GroundMotion motion;
  for (std::size_t direction = 0; direction < DirectionCount; ++direction) {
    motion[direction] = spectra[direction].samples();
    motion[direction].resize(window.count);
  }
  bodyWaves_.addCoda(motion, path, window);
  surfaceWaves_.addCoda(motion, path, window);
  return motion;
}

void rotateHorizontals(std::vector<double>& first, std::vector<double>& second, double angleDeg) {
  const double cosine = std::cos(angleDeg * std::numbers::pi / 180.0);
  const double sine = std::sin(angleDeg * std::numbers::pi / 180.0);
  for (std::size_t i = 0; i < first.size(); ++i) {
    const double rotated = first[i] * cosine - second[i] * sine;
    second[i] = first[i] * sine + second[i] * cosine;
    first[i] = rotated;
  }
}

} // namespace xov::synthetic
