#include "examples/synthetic/TravelTimes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {

constexpr double kShellKm = 5.0; // within a shell the velocity is a power of the radius
constexpr int kSlownessCount = 4000;

/// A thin shell by its slownesses r/v at both faces and the exponent of r/v as a power of r.
struct Shell {
  double topRadiusKm;
  double topSlowness;
  double bottomSlowness;
  double exponent;
};

void appendShells(std::vector<Shell>& shells, const Layer& layer, Wave wave, double top, double bottom) {
  const int count = std::max(1, int(std::ceil((top - bottom) / kShellKm)));
  for (int i = 0; i < count; ++i) {
    const double upper = top + (bottom - top) * i / count;
    const double lower = top + (bottom - top) * (i + 1) / count;
    const double topSlowness = upper / velocity(layer, wave, upper);
    const double bottomSlowness = lower / velocity(layer, wave, lower);
    shells.push_back(
        {upper, topSlowness, bottomSlowness, std::log(topSlowness / bottomSlowness) / std::log(upper / lower)});
  }
}

/// The mantle and crust as thin shells from the surface downwards, one boundary of which lies at `sourceRadiusKm`.
std::vector<Shell> shellsAround(Wave wave, double sourceRadiusKm) {
  std::vector<Shell> shells;
  double top = kEarthRadiusKm;
  for (const Layer& layer : earthLayers()) {
    const double split = std::clamp(sourceRadiusKm, layer.bottomRadiusKm, top);
    if (split < top) appendShells(shells, layer, wave, top, split);
    if (layer.bottomRadiusKm < split) appendShells(shells, layer, wave, split, layer.bottomRadiusKm);
    top = layer.bottomRadiusKm;
  }
  return shells;
}

/// Angle and time of one leg, from the surface to the turning point, and of its part above the source.
struct Leg {
  double angle = 0, time = 0;
  double angleAboveSource = 0, timeAboveSource = 0;
};

/// With r/v a power of r, the integrals for angle and time of a ray have closed forms: K. E. Bullen, B. A. Bolt, An
/// Introduction to the Theory of Seismology, 4th ed. (1985), on the law of Mohorovicic.
Leg traceLeg(const std::vector<Shell>& shells, double slowness, double sourceRadiusKm) {
  Leg leg;
  for (const Shell& shell : shells) {
    // Beyond the critical angle a discontinuity turns the ray back.
    if (shell.topSlowness <= slowness) break;
    const bool turns = shell.bottomSlowness <= slowness;
    double angle = std::acos(slowness / shell.topSlowness);
    double time = std::sqrt((shell.topSlowness - slowness) * (shell.topSlowness + slowness));
    if (!turns) {
      angle -= std::acos(slowness / shell.bottomSlowness);
      time -= std::sqrt((shell.bottomSlowness - slowness) * (shell.bottomSlowness + slowness));
    }
    leg.angle += angle / shell.exponent;
    leg.time += time / shell.exponent;
    if (shell.topRadiusKm > sourceRadiusKm) {
      leg.angleAboveSource += angle / shell.exponent;
      leg.timeAboveSource += time / shell.exponent;
    }
    if (turns) break;
  }
  return leg;
}

/// How a phase is put together of legs from the surface to the turning point.
struct PhaseRow {
  Phase phase;
  Wave wave;
  int legs;
  int aboveSource; // parts above the source to add, or to leave out where negative
};

constexpr PhaseRow kPhases[] = {
    {Phase::P, Wave::P, 2, -1}, {Phase::pP, Wave::P, 2, 1}, {Phase::PP, Wave::P, 4, -1},
    {Phase::S, Wave::S, 2, -1}, {Phase::sS, Wave::S, 2, 1}, {Phase::SS, Wave::S, 4, -1},
};

} // namespace

TravelTimes::TravelTimes(Phase phase, double sourceDepthKm) {
  const PhaseRow row = kPhases[std::size_t(phase)];
  const double sourceRadiusKm = kEarthRadiusKm - sourceDepthKm;
  const std::vector<Shell> shells = shellsAround(row.wave, sourceRadiusKm);
  const double lowest = shells.back().bottomSlowness;
  const double highest = sourceRadiusKm / velocity(row.wave, sourceDepthKm);
  rays_.reserve(kSlownessCount);
  for (int i = 0; i < kSlownessCount; ++i) {
    const double slowness = lowest + (highest - lowest) * i / (kSlownessCount - 1);
    const Leg leg = traceLeg(shells, slowness, sourceRadiusKm);
    rays_.push_back({slowness, row.legs * leg.angle + row.aboveSource * leg.angleAboveSource,
                     row.legs * leg.time + row.aboveSource * leg.timeAboveSource});
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
