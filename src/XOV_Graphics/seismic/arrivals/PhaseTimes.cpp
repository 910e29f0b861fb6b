#include "XOV_Graphics/seismic/arrivals/PhaseTimes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace xov {

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180;
// Rounding must not lose what arrives at the end of a branch, as straight below the source.
constexpr double kSameAngleRad = 1e-9;
// Near the ray that leaves the source horizontally, distance and time grow with the root of the distance from its
// slowness: more rays between it and the third next of the table, crowded together towards it.
constexpr int kRaysNearSource = 10;
constexpr std::ptrdiff_t kTableRaysNearSource = 3;

/// Where the rays of a part of a phase bottom.
enum class Bottom : std::uint8_t {
  Nowhere,          // they go up from the source
  Mantle,           // or the crust, between two layers
  Core,             // they are reflected there
  AlongCore,        // they run along its surface
  OuterCore,        //
  OuterCoreFlat,    // those with the larger slownesses of them, from the smallest distance on
  OuterCoreSteep,   // the others
  InnerCoreSurface, // they are reflected there
  InnerCore,
};

constexpr std::size_t kAnyLayer = 100;
constexpr std::size_t kUpperCrust = 0;
constexpr std::size_t kLowerCrust = 1;
constexpr std::size_t kFirstBelowMoho = 2;
constexpr std::size_t kLastAbove210Km = 3;

} // namespace

/// A family of rays of a phase: so many legs between the surface and the bottom, and the part above the source added
/// or left out.
struct PhaseTimes::Part {
  SeismicPhase phase;
  BodyWave wave;
  int legs;
  int aboveSource;
  Bottom bottom;
  std::size_t firstLayer = 0;
  std::size_t lastLayer = kAnyLayer;

  bool goesUp() const { return aboveSource > 0; }
};

namespace {

/// A point of a travel time curve; the slowness is the slope there.
struct CurvePoint {
  double angleRad;
  double seconds;
  double slowness;
};

bool lieAround(const CurvePoint& from, const CurvePoint& to, double angleRad) {
  const auto [near, far] = std::minmax(from.angleRad, to.angleRad);
  return near - kSameAngleRad <= angleRad && angleRad <= far + kSameAngleRad;
}

// On the cubic through both points with their slopes.
CurvePoint pointBetween(const CurvePoint& from, const CurvePoint& to, double angleRad) {
  const double width = to.angleRad - from.angleRad;
  if (std::abs(width) <= kSameAngleRad) return from;
  const double u = std::clamp((angleRad - from.angleRad) / width, 0.0, 1.0);
  const double rise = to.seconds - from.seconds;
  const double seconds =
      from.seconds + rise * u * u * (3 - 2 * u) + width * u * (1 - u) * (from.slowness * (1 - u) - to.slowness * u);
  const double slope =
      6 * u * (1 - u) * rise / width + from.slowness * (1 - u) * (1 - 3 * u) + to.slowness * u * (3 * u - 2);
  return {angleRad, seconds, std::clamp(slope, from.slowness, to.slowness)};
}

using enum SeismicPhase;
using enum Bottom;
constexpr BodyWave kP = BodyWave::P;
constexpr BodyWave kS = BodyWave::S;

} // namespace

const PhaseTimes::Part PhaseTimes::kParts[] = {
    {P, kP, 0, 1, Nowhere},
    {P, kP, 2, -1, Mantle},
    {Pg, kP, 0, 1, Nowhere, kUpperCrust, kUpperCrust},
    {Pg, kP, 2, -1, Mantle, kUpperCrust, kUpperCrust},
    {Pb, kP, 0, 1, Nowhere, kLowerCrust, kLowerCrust},
    {Pb, kP, 2, -1, Mantle, kLowerCrust, kLowerCrust},
    {Pn, kP, 0, 1, Nowhere, kFirstBelowMoho, kLastAbove210Km},
    {Pn, kP, 2, -1, Mantle, kFirstBelowMoho, kLastAbove210Km},
    {Pdiff, kP, 2, -1, AlongCore},
    {PcP, kP, 2, -1, Core},
    {PP, kP, 4, -1, Mantle},
    {pP, kP, 2, 1, Mantle},
    {sP, kP, 2, 1, Mantle},
    {PKP, kP, 2, -1, OuterCore},
    {PKP, kP, 2, -1, InnerCore},
    {PKPab, kP, 2, -1, OuterCoreFlat},
    {PKPbc, kP, 2, -1, OuterCoreSteep},
    {PKPdf, kP, 2, -1, InnerCore},
    {PKiKP, kP, 2, -1, InnerCoreSurface},
    {S, kS, 0, 1, Nowhere},
    {S, kS, 2, -1, Mantle},
    {Sg, kS, 0, 1, Nowhere, kUpperCrust, kUpperCrust},
    {Sg, kS, 2, -1, Mantle, kUpperCrust, kUpperCrust},
    {Sb, kS, 0, 1, Nowhere, kLowerCrust, kLowerCrust},
    {Sb, kS, 2, -1, Mantle, kLowerCrust, kLowerCrust},
    {Sn, kS, 0, 1, Nowhere, kFirstBelowMoho, kLastAbove210Km},
    {Sn, kS, 2, -1, Mantle, kFirstBelowMoho, kLastAbove210Km},
    {Sdiff, kS, 2, -1, AlongCore},
    {ScS, kS, 2, -1, Core},
    {SS, kS, 4, -1, Mantle},
    {sS, kS, 2, 1, Mantle},
    {SKS, kS, 2, -1, OuterCore},
};

PhaseTimes::SourceShells PhaseTimes::shellsAbove(const LegTable& table, double radiusKm) {
  SourceShells source;
  const std::vector<RayShell>& shells = table.shells();
  for (std::size_t i = 0; i < shells.size(); ++i) {
    const RayShell& shell = shells[i];
    if (shell.topRadiusKm <= radiusKm) {
      source.down = shell.topSlowness;
      return source;
    }
    source.above.push_back(shell);
    if (i + 1 == shells.size() || shells[i + 1].topRadiusKm < radiusKm) {
      source.down = shell.topSlowness * std::pow(radiusKm / shell.topRadiusKm, shell.exponent);
      source.up = source.down;
      source.above.back().bottomSlowness = source.down;
      return source;
    }
    source.up = shell.bottomSlowness;
  }
  return source;
}

PhaseTimes::PhaseTimes(const LegTables& tables, double depthKm) {
  const double radiusKm = kEarthRadiusKm - depthKm;
  p_ = {&tables.p, shellsAbove(tables.p, radiusKm), 0, {}};
  s_ = {&tables.s, shellsAbove(tables.s, radiusKm), 0, {}};
  for (Wave* wave : {&p_, &s_}) {
    const auto& layers = wave->table->layers();
    while (wave->layer + 1 < layers.size() && radiusKm <= layers[wave->layer + 1].topRadiusKm)
      ++wave->layer;
    trace(*wave);
  }
}

void PhaseTimes::trace(Wave& wave) const {
  const auto withAbove = [this](const RayLeg& leg) {
    return Ray{leg, traceDown(p_.source.above, leg.slowness), traceDown(s_.source.above, leg.slowness)};
  };
  const std::vector<RayLeg>& legs = wave.table->legs();
  for (const RayLeg& leg : legs)
    wave.rays.push_back(withAbove(leg));
  for (const double slowness : {wave.source.down, p_.source.up, s_.source.up}) {
    const auto next = std::ranges::lower_bound(legs, slowness, {}, &RayLeg::slowness);
    if (next == legs.end() || next->slowness == slowness || next == legs.begin()) continue;
    const double from = std::prev(next, std::min(kTableRaysNearSource, next - legs.begin()))->slowness;
    for (int i = 0; i < kRaysNearSource; ++i) {
      const double part = double(i) / kRaysNearSource;
      wave.rays.push_back(withAbove(wave.table->trace(slowness - (slowness - from) * part * part)));
    }
  }
  std::ranges::sort(wave.rays, {}, [](const Ray& ray) { return ray.leg.slowness; });
}

PhaseTimes::SlownessRange PhaseTimes::rangeOf(const Part& part) const {
  const Wave& wave = waveOf(part.wave);
  const LegTable& table = *wave.table;
  const double leaves = part.goesUp() ? waveOf(waveAtSource(part.phase)).source.up : wave.source.down;
  const std::size_t last = std::min(part.lastLayer, table.layers().size() - 1);
  const double intoCore = std::min(table.mantleBottom(), table.outerCoreTop());
  constexpr SlownessRange kNone{0, -1};
  switch (part.bottom) {
  case Nowhere:
    return part.firstLayer <= wave.layer && wave.layer <= last ? SlownessRange{0, leaves} : kNone;
  case Mantle:
    return {table.layers()[last].bottom, std::min(table.layers()[part.firstLayer].top, leaves)};
  case Core:
    return {0, table.mantleBottom()};
  case AlongCore:
    return {table.mantleBottom(), table.mantleBottom()};
  case OuterCore:
    return {table.outerCoreBottom(), intoCore};
  case OuterCoreFlat: {
    const SlownessRange all{table.outerCoreBottom(), intoCore};
    return {slownessOfNearest(part, all), all.largest};
  }
  case OuterCoreSteep: {
    const SlownessRange all{table.outerCoreBottom(), intoCore};
    return {all.smallest, slownessOfNearest(part, all)};
  }
  case InnerCoreSurface:
    return {0, table.outerCoreBottom()};
  case InnerCore:
    return {0, table.innerCoreTop()};
  }
  return kNone;
}

// The slowness at the smallest distance.
double PhaseTimes::slownessOfNearest(const Part& part, SlownessRange range) const {
  double slowness = range.smallest;
  double nearest = HUGE_VAL;
  for (const Ray& ray : waveOf(part.wave).rays) {
    if (ray.leg.slowness < range.smallest || ray.leg.slowness > range.largest) continue;
    if (const double angle = sumOf(part, ray).angleRad; angle < nearest) {
      nearest = angle;
      slowness = ray.leg.slowness;
    }
  }
  return slowness;
}

RaySum PhaseTimes::sumOf(const Part& part, const Ray& ray) const {
  const RaySum& above = waveAtSource(part.phase) == BodyWave::P ? ray.aboveP : ray.aboveS;
  RaySum sum{part.legs * ray.leg.mantle.angleRad + part.aboveSource * above.angleRad,
             part.legs * ray.leg.mantle.timeS + part.aboveSource * above.timeS};
  if (part.bottom >= OuterCore) {
    sum.angleRad += part.legs * ray.leg.outerCore.angleRad;
    sum.timeS += part.legs * ray.leg.outerCore.timeS;
  }
  if (part.bottom == InnerCore) {
    sum.angleRad += part.legs * ray.leg.innerCore.angleRad;
    sum.timeS += part.legs * ray.leg.innerCore.timeS;
  }
  return sum;
}

PhaseArrival PhaseTimes::arrivalOf(const Part& part, double slowness, double seconds) const {
  const SourceShells& source = waveOf(waveAtSource(part.phase)).source;
  const double takeOff = std::asin(std::min(1.0, slowness / (part.goesUp() ? source.up : source.down)));
  const double atSurface = waveOf(waveAtSurface(part.phase)).table->layers().front().top;
  return {part.phase, seconds, slowness * kRadiansPerDegree,
          (part.goesUp() ? std::numbers::pi - takeOff : takeOff) / kRadiansPerDegree,
          std::asin(std::min(1.0, slowness / atSurface)) / kRadiansPerDegree};
}

void PhaseTimes::appendPart(std::vector<PhaseArrival>& arrivals, const Part& part, double angleRad) const {
  const SlownessRange range = rangeOf(part);
  std::optional<CurvePoint> from;
  for (const Ray& ray : waveOf(part.wave).rays) {
    if (ray.leg.slowness < range.smallest) continue;
    if (ray.leg.slowness > range.largest) break;
    const RaySum sum = sumOf(part, ray);
    const CurvePoint to{sum.angleRad, sum.timeS, ray.leg.slowness};
    if (from && lieAround(*from, to, angleRad)) {
      const CurvePoint between = pointBetween(*from, to, angleRad);
      arrivals.push_back(arrivalOf(part, between.slowness, between.seconds));
    }
    from = to;
  }
}

void PhaseTimes::appendDiffracted(std::vector<PhaseArrival>& arrivals, const Part& part, double angleRad) const {
  const double slowness = rangeOf(part).smallest;
  const std::vector<Ray>& rays = waveOf(part.wave).rays;
  const auto grazing = std::ranges::find(rays, slowness, [](const Ray& ray) { return ray.leg.slowness; });
  if (grazing == rays.end()) return;
  const RaySum sum = sumOf(part, *grazing);
  if (angleRad < sum.angleRad || angleRad > kFarthestDiffractionDeg * kRadiansPerDegree) return;
  arrivals.push_back(arrivalOf(part, slowness, sum.timeS + slowness * (angleRad - sum.angleRad)));
}

void PhaseTimes::append(std::vector<PhaseArrival>& arrivals, SeismicPhase phase, double distanceDeg) const {
  const double angle = distanceDeg * kRadiansPerDegree;
  for (const Part& part : kParts) {
    if (part.phase != phase) continue;
    if (part.bottom == AlongCore)
      appendDiffracted(arrivals, part, angle);
    else
      appendPart(arrivals, part, angle);
  }
}

} // namespace xov
