#include "examples/synthetic/XyTables.h"

#include "examples/synthetic/EventSection.h"

namespace xov::synthetic {

namespace {

constexpr double kFirstDistanceDeg = 2.0;
constexpr double kLastDistanceDeg = 98.0;
constexpr double kDistanceStepDeg = 0.5;
// Even steps in the logarithm of the period.
constexpr double kPeriodFactor = 1.04;

QByteArray line(double x, double y, int yDecimals) {
  return QByteArray::number(x, 'f', 2) + ' ' + QByteArray::number(y, 'f', yDecimals) + '\n';
}

} // namespace

QByteArray travelTimeTable() {
  const double depthKm = sectionEvent().source().depthKm();
  const TravelTimes times(Phase::P, depthKm);
  QByteArray text = "# distance (degrees), travel time of P (s) in IASP91, source depth " +
                    QByteArray::number(depthKm, 'f', 0) + " km\n";
  for (double distance = kFirstDistanceDeg; distance <= kLastDistanceDeg; distance += kDistanceStepDeg)
    if (const std::optional<Arrival> arrival = times.first(distance)) text += line(distance, arrival->timeS, 2);
  return text;
}

QByteArray groupVelocityTable() {
  QByteArray text = "# period (s), group velocity of fundamental-mode Rayleigh waves (km/s)\n";
  for (double period = kShortestSurfacePeriodS; period <= kLongestSurfacePeriodS; period *= kPeriodFactor)
    text += line(period, groupVelocity(SurfaceWave::Rayleigh, period), 3);
  return text;
}

} // namespace xov::synthetic
