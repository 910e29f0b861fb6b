#include "XOV_Graphics/seismic/arrivals/RayShells.h"

#include <algorithm>
#include <cmath>

namespace xov {

void appendRayShells(std::vector<RayShell>& shells, const EarthLayer& layer, BodyWave wave, double topKm,
                     double bottomKm, double thickestKm) {
  const int count = std::max(1, int(std::ceil((topKm - bottomKm) / thickestKm)));
  for (int i = 0; i < count; ++i) {
    const double upper = topKm + (bottomKm - topKm) * i / count;
    const double lower = topKm + (bottomKm - topKm) * (i + 1) / count;
    const double topSlowness = upper / earthVelocity(layer, wave, upper);
    if (lower > 0) {
      const double bottomSlowness = lower / earthVelocity(layer, wave, lower);
      shells.push_back(
          {upper, topSlowness, bottomSlowness, std::log(topSlowness / bottomSlowness) / std::log(upper / lower)});
    } else {
      shells.push_back({upper, topSlowness, 0, 1});
    }
  }
}

RaySum traceDown(std::span<const RayShell> shells, double slowness) {
  RaySum sum;
  for (const RayShell& shell : shells) {
    // Beyond the critical angle a discontinuity turns the ray back.
    if (shell.topSlowness <= slowness) break;
    const bool turns = shell.bottomSlowness <= slowness;
    double angle = std::acos(slowness / shell.topSlowness);
    double time = std::sqrt((shell.topSlowness - slowness) * (shell.topSlowness + slowness));
    if (!turns) {
      angle -= std::acos(slowness / shell.bottomSlowness);
      time -= std::sqrt((shell.bottomSlowness - slowness) * (shell.bottomSlowness + slowness));
    }
    sum.angleRad += angle / shell.exponent;
    sum.timeS += time / shell.exponent;
    if (turns) break;
  }
  return sum;
}

} // namespace xov
