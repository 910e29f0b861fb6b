#include "examples/synthetic/LocalEvent.h"

#include "examples/synthetic/Burst.h"

#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {

constexpr double kPKmPerS = 6.0;
constexpr double kSKmPerS = 3.5;
constexpr double kPHz = 5.5;
constexpr double kSHz = 4.0;
constexpr double kWoodAndersonMagnification = 2080.0;
constexpr double kNanometresPerMillimetre = 1e6;

constexpr double kPShare = 0.35;     // of the velocity of S
constexpr double kPeakOverRms = 3.0; // of noise under a short envelope
constexpr double kRiseS = 0.15;
constexpr double kQ = 0.8;
// Wave trains grow longer with distance and with magnitude.
constexpr double kDecayS = 1.5;
constexpr double kDecayPerKm = 0.03;
constexpr double kTailShare = 0.12;
constexpr double kTailDecayS = 12.0;
constexpr double kTailGrowth = 0.25; // decades per unit of magnitude above 2

} // namespace

double localPTimeS(double distanceKm) { return distanceKm / kPKmPerS; }

double localSTimeS(double distanceKm) { return distanceKm / kSKmPerS; }

double localVelocity(double localMagnitude, double distanceKm) {
  const double decay = 1.110 * std::log10(distanceKm / 100.0) + 0.00189 * (distanceKm - 100.0) + 3.0;
  const double recordedMm = std::pow(10.0, localMagnitude - decay);
  return 2.0 * std::numbers::pi * kSHz * recordedMm / kWoodAndersonMagnification * kNanometresPerMillimetre;
}

void addLocalEvent(std::span<double> samples, double rateHz, const LocalEvent& event) {
  Burst burst;
  burst.riseS = kRiseS;
  burst.decayS = kDecayS + kDecayPerKm * event.distanceKm;
  burst.tailShare = kTailShare;
  burst.tailDecayS = kTailDecayS * std::pow(10.0, kTailGrowth * (event.localMagnitude - 2.0));
  burst.q = kQ;

  const double sLevel = localVelocity(event.localMagnitude, event.distanceKm) / kPeakOverRms;
  burst.startS = event.originS + localPTimeS(event.distanceKm);
  burst.level = kPShare * sLevel;
  burst.centreHz = kPHz;
  burst.seed = event.seed;
  addBurst(samples, rateHz, burst);

  burst.startS = event.originS + localSTimeS(event.distanceKm);
  burst.level = sLevel;
  burst.centreHz = kSHz;
  burst.seed = event.seed + 1;
  addBurst(samples, rateHz, burst);
}

} // namespace xov::synthetic
