#include "examples/synthetic/XyTables.h"

#include "examples/synthetic/EventSection.h"
#include "examples/synthetic/Random.h"
#include "examples/synthetic/Source.h"

#include <cmath>

namespace xov::synthetic {

namespace {

constexpr double kFirstDistanceDeg = 2.0;
constexpr double kLastDistanceDeg = 98.0;
constexpr double kDistanceStepDeg = 0.5;
// Even steps in the logarithm of the period.
constexpr double kPeriodFactor = 1.04;

constexpr int kEarthquakes = 400;
constexpr std::uint64_t kEarthquakeSeed = 1944;
constexpr double kSmallestMagnitude = 5.5;
constexpr double kLargestMagnitude = 8.5;
constexpr double kBValue = 1.0;
constexpr double kDurationSpread = 0.1; // of the decimal logarithm

// The magnitude that a share `rank` of all earthquakes stays below.
double magnitudeAt(double rank) {
  const double cutOff = std::pow(10.0, -kBValue * (kLargestMagnitude - kSmallestMagnitude));
  return kSmallestMagnitude - std::log10(1.0 - rank * (1.0 - cutOff)) / kBValue;
}

QByteArray line(double x, double y, int yDecimals) {
  return QByteArray::number(x, 'f', 2) + ' ' + QByteArray::number(y, 'f', yDecimals) + '\n';
}

} // namespace

QByteArray travelTimeTable() {
  const double depthKm = sectionEvent().source().depthKm();
  const TravelTimes times(Phase::P, depthKm);
  QByteArray text = "# distance (degrees), travel time of P (s) in IASP91, source depth " +
                    QByteArray::number(depthKm, 'f', 0) + " km\n";
  double distance = kFirstDistanceDeg;
  while (distance <= kLastDistanceDeg) {
    if (const std::optional<Arrival> arrival = times.first(distance)) text += line(distance, arrival->timeS, 2);
    distance += kDistanceStepDeg;
  }
  return text;
}

QByteArray groupVelocityTable() {
  QByteArray text = "# period (s), group velocity of fundamental-mode Rayleigh waves (km/s)\n";
  double period = kShortestSurfacePeriodS;
  while (period <= kLongestSurfacePeriodS) {
    text += line(period, groupVelocity(SurfaceWave::Rayleigh, period), 3);
    period *= kPeriodFactor;
  }
  return text;
}

QByteArray sourceDurationTable() {
  Random random(kEarthquakeSeed);
  QByteArray text = "# made-up earthquakes: magnitudes with a b value of 1, durations from moments with a spread\n"
                    "Magnitude,Logarithm of duration (s)\n";
  for (int i = 0; i < kEarthquakes; ++i) {
    const double magnitude = magnitudeAt(random.uniform());
    const Source source(magnitude, 0, 0, kEarthquakeSeed);
    const double logDuration = std::log10(source.durationS()) + kDurationSpread * random.normal();
    text += QByteArray::number(magnitude, 'f', 2) + ',' + QByteArray::number(logDuration, 'f', 3) + '\n';
  }
  return text;
}

} // namespace xov::synthetic
