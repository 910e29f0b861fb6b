#include "examples/synthetic/TravelTimes.h"

#include <XOV_Graphics/seismic/arrivals/RayShells.h>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace xov::synthetic {

namespace {

constexpr double kShellKm = 5.0;
constexpr int kSlownessCount = 4000;

/// The mantle and crust as thin shells from the surface downwards, one boundary of which lies at `sourceRadiusKm`.
std::vector<RayShell> shellsAround(BodyWave wave, double sourceRadiusKm) {
  std::vector<RayShell> shells;
  double top = kEarthRadiusKm;
  for (const EarthLayer& layer : mantleLayers()) {
    const double split = std::clamp(sourceRadiusKm, layer.bottomRadiusKm, top);
    if (split < top) appendRayShells(shells, layer, wave, top, split, kShellKm);
    if (layer.bottomRadiusKm < split) appendRayShells(shells, layer, wave, split, layer.bottomRadiusKm, kShellKm);
    top = layer.bottomRadiusKm;
  }
  return shells;
}

/// How a phase is put together of legs from the surface to the turning point.
struct PhaseRow {
  Phase phase;
  BodyWave wave;
  int legs;
  int aboveSource; // parts above the source to add, or to leave out where negative
};

constexpr PhaseRow kPhases[] = {
    {Phase::P, BodyWave::P, 2, -1}, {Phase::pP, BodyWave::P, 2, 1}, {Phase::PP, BodyWave::P, 4, -1},
    {Phase::S, BodyWave::S, 2, -1}, {Phase::sS, BodyWave::S, 2, 1}, {Phase::SS, BodyWave::S, 4, -1},
};

} // namespace

TravelTimes::TravelTimes(Phase phase, double sourceDepthKm) {
  const PhaseRow row = kPhases[std::size_t(phase)];
  const double sourceRadiusKm = kEarthRadiusKm - sourceDepthKm;
  const std::vector<RayShell> shells = shellsAround(row.wave, sourceRadiusKm);
  const auto below = std::ranges::find_if(
      shells, [sourceRadiusKm](const RayShell& shell) { return shell.topRadiusKm <= sourceRadiusKm; });
  const std::span<const RayShell> aboveSource(shells.begin(), below);
  const double lowest = shells.back().bottomSlowness;
  const double highest = sourceRadiusKm / earthVelocity(row.wave, sourceDepthKm);
  rays_.reserve(kSlownessCount);
  for (int i = 0; i < kSlownessCount; ++i) {
    const double slowness = lowest + (highest - lowest) * i / (kSlownessCount - 1);
    const RaySum leg = traceDown(shells, slowness);
    const RaySum above = traceDown(aboveSource, slowness);
    rays_.push_back({slowness, row.legs * leg.angleRad + row.aboveSource * above.angleRad,
                     row.legs * leg.timeS + row.aboveSource * above.timeS});
  }
}

std::optional<Arrival> TravelTimes::first(double distanceDeg) const {
  const double distance = distanceDeg * std::numbers::pi / 180.0;
  std::optional<Arrival> earliest;
  for (std::size_t i = 1; i < rays_.size(); ++i) {
    const Ray& from = rays_[i - 1];
    const Ray& to = rays_[i];
    if ((distance - from.distance) * (distance - to.distance) > 0 || from.distance == to.distance) continue;
    const double part = (distance - from.distance) / (to.distance - from.distance);
    const double time = from.time + part * (to.time - from.time);
    if (!earliest || time < earliest->timeS)
      earliest = Arrival{time, from.slowness + part * (to.slowness - from.slowness)};
  }
  return earliest;
}

} // namespace xov::synthetic
