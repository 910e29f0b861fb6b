#include "XOV_Graphics/seismic/arrivals/Arrivals.h"

#include "XOV_Graphics/seismic/arrivals/GroupVelocity.h"
#include "XOV_Graphics/seismic/arrivals/PhaseTimes.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>

namespace xov {

namespace {

// Arrivals of neighbouring rays at the ray between them are one.
constexpr double kSameSeconds = 1e-6;
constexpr double kHorizontalDeg = 90;

/// The times of the depth that was asked for last: records of one earthquake come one after the other.
std::shared_ptr<const PhaseTimes> timesOfDepth(double depthKm) {
  static std::mutex mutex;
  static double lastDepthKm = 0;
  static std::shared_ptr<const PhaseTimes> last;
  {
    const std::lock_guard lock(mutex);
    if (last && lastDepthKm == depthKm) return last;
  }
  const auto times = std::make_shared<const PhaseTimes>(earthLegTables(), depthKm);
  const std::lock_guard lock(mutex);
  lastDepthKm = depthKm;
  last = times;
  return times;
}

PhaseArrival surfaceArrival(SeismicPhase phase, double distanceDeg) {
  const SurfaceWave wave = phase == SeismicPhase::LQ ? SurfaceWave::Love : SurfaceWave::Rayleigh;
  const double secondsPerDegree = kKmPerDegree / largestGroupVelocity(wave);
  return {phase, distanceDeg * secondsPerDegree, secondsPerDegree, kHorizontalDeg, kHorizontalDeg};
}

bool isEarlier(const PhaseArrival& left, const PhaseArrival& right) { return left.seconds < right.seconds; }

void appendPhase(std::vector<PhaseArrival>& arrivals, const PhaseTimes& times, SeismicPhase phase, double distanceDeg,
                 PhaseRepeats repeats) {
  if (phase == SeismicPhase::LQ || phase == SeismicPhase::LR) {
    arrivals.push_back(surfaceArrival(phase, distanceDeg));
    return;
  }
  std::vector<PhaseArrival> all;
  times.append(all, phase, distanceDeg);
  std::ranges::sort(all, isEarlier);
  // Not of std::ranges: clang 14 does not compile the libstdc++ of GCC 12 there.
  const auto isSame = [](const PhaseArrival& left, const PhaseArrival& right) {
    return right.seconds - left.seconds < kSameSeconds;
  };
  all.erase(std::unique(all.begin(), all.end(), isSame), all.end());
  if (repeats == PhaseRepeats::FirstOnly && all.size() > 1) all.resize(1);
  arrivals.insert(arrivals.end(), all.begin(), all.end());
}

} // namespace

std::vector<PhaseArrival> arrivalsAt(double distanceDeg, double depthKm, std::span<const SeismicPhase> phases,
                                     PhaseRepeats repeats) {
  const bool isDistance = distanceDeg >= 0 && distanceDeg <= kFarthestArrivalDeg;
  if (!isDistance || !(depthKm >= -kHighestSourceKm && depthKm <= kDeepestSourceKm)) return {};
  std::vector<PhaseArrival> arrivals;
  const auto times = timesOfDepth(std::max(depthKm, 0.0));
  for (const SeismicPhase phase : phases)
    appendPhase(arrivals, *times, phase, distanceDeg, repeats);
  std::ranges::stable_sort(arrivals, isEarlier);
  return arrivals;
}

} // namespace xov
