#pragma once

#include "XOV_Graphics/seismic/arrivals/Arrivals.h"
#include "XOV_Graphics/seismic/arrivals/LegTable.h"

namespace xov {

/// Times of body waves from a source of one depth.
class PhaseTimes {
public:
  /// The source lies in the mantle or crust.
  PhaseTimes(const LegTables& tables, double depthKm);

  /// Appends every arrival of a phase at 0 to 180 degrees, in any order; of surface waves none.
  void append(std::vector<PhaseArrival>& arrivals, SeismicPhase phase, double distanceDeg) const;

private:
  struct Part;
  static const Part kParts[];

  /// What lies above the source, and the largest slownesses of rays that leave it upwards and downwards.
  struct SourceShells {
    std::vector<RayShell> above;
    double up = 0;
    double down = 0;
  };
  static SourceShells shellsAbove(const LegTable& table, double radiusKm);

  struct Ray {
    RayLeg leg;
    RaySum aboveP; // from the source to the surface
    RaySum aboveS;
  };
  struct SlownessRange {
    double smallest;
    double largest;
  };
  /// All of one wave.
  struct Wave {
    const LegTable* table;
    SourceShells source;
    std::size_t layer = 0; // that the source lies in
    std::vector<Ray> rays;
  };

  void trace(Wave& wave) const;
  const Wave& waveOf(BodyWave wave) const { return wave == BodyWave::P ? p_ : s_; }
  SlownessRange rangeOf(const Part& part) const;
  double slownessOfNearest(const Part& part, SlownessRange range) const;
  RaySum sumOf(const Part& part, const Ray& ray) const;
  PhaseArrival arrivalOf(const Part& part, double slowness, double seconds) const;
  void appendPart(std::vector<PhaseArrival>& arrivals, const Part& part, double angleRad) const;
  void appendDiffracted(std::vector<PhaseArrival>& arrivals, const Part& part, double angleRad) const;

  Wave p_;
  Wave s_;
};

} // namespace xov
