#include "XOV_Graphics/seismic/arrivals/LegTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

// Within a shell r/v is a power of r. Shells of half the thickness change no time by more than 0.003 s.
constexpr double kThickestShellKm = 12.5;

// Between slownesses at which the ray meets another layer, distance and time have square roots at both ends: there
// the slownesses crowd together, as the angles of a half circle do. Four times as many change no time by more than
// 0.001 s.
constexpr double kRaysOfAll = 200;
constexpr int kFewestRays = 8;

bool reaches(const RayLeg& leg, std::span<const RayShell> shells) {
  return !shells.empty() && leg.slowness <= shells.back().bottomSlowness;
}

} // namespace

LegTable::LegTable(const BallModel& model, BodyWave wave) {
  double top = kEarthRadiusKm;
  for (const EarthLayer& layer : model.mantle) {
    const std::size_t first = shells_.size();
    appendRayShells(shells_, layer, wave, top, layer.bottomRadiusKm, kThickestShellKm);
    layers_.push_back({top, shells_[first].topSlowness, shells_.back().bottomSlowness});
    top = layer.bottomRadiusKm;
  }
  if (model.outerCore != nullptr)
    appendRayShells(outer_, *model.outerCore, BodyWave::P, top, model.outerCore->bottomRadiusKm, kThickestShellKm);
  if (model.innerCore != nullptr)
    appendRayShells(inner_, *model.innerCore, BodyWave::P, model.outerCore->bottomRadiusKm,
                    model.innerCore->bottomRadiusKm, kThickestShellKm);
  const std::vector<double> sorted = slownesses();
  legs_.reserve(sorted.size());
  for (const double slowness : sorted)
    legs_.push_back(trace(slowness));
}

std::vector<double> LegTable::slownesses() const {
  std::vector<double> ends = {0, outerCoreTop(), outerCoreBottom(), innerCoreTop()};
  for (const LayerEnds& layer : layers_)
    ends.insert(ends.end(), {layer.top, layer.bottom});
  const double largest = layers_.front().top;
  std::erase_if(ends, [largest](double end) { return end > largest; });
  std::ranges::sort(ends);
  std::vector<double> all = {ends.front()};
  for (std::size_t i = 1; i < ends.size(); ++i) {
    const double width = ends[i] - ends[i - 1];
    if (!(width > 0)) continue;
    const int count = kFewestRays + int(std::ceil(kRaysOfAll * width / largest));
    for (int k = 1; k < count; ++k)
      all.push_back(ends[i - 1] + width * (1 - std::cos(std::numbers::pi * k / count)) / 2);
    all.push_back(ends[i]);
  }
  return all;
}

RayLeg LegTable::trace(double slowness) const {
  RayLeg leg{slowness, traceDown(shells_, slowness), {}, {}};
  if (reaches(leg, shells_)) leg.outerCore = traceDown(outer_, slowness);
  if (reaches(leg, shells_) && reaches(leg, outer_)) leg.innerCore = traceDown(inner_, slowness);
  return leg;
}

const LegTables& earthLegTables() {
  static const LegTables tables = [] {
    const BallModel earth{mantleLayers(), &outerCore(), &innerCore()};
    return LegTables{LegTable(earth, BodyWave::P), LegTable(earth, BodyWave::S)};
  }();
  return tables;
}

} // namespace xov
