#pragma once

#include "XOV_Graphics/seismic/arrivals/RayShells.h"

#include <vector>

namespace xov {

/// A layered ball whose slowness r/v falls with depth in the mantle, and in each part of the core.
struct BallModel {
  std::span<const EarthLayer> mantle;
  const EarthLayer* outerCore =
      nullptr; ///< none where the mantle reaches the centre or rays into a core do not count
  const EarthLayer* innerCore = nullptr;
};

/// A ray of one slowness on its one way down from the surface, cut where it leaves a part of the Earth.
struct RayLeg {
  double slowness = 0; ///< s/rad
  RaySum mantle;
  RaySum outerCore; ///< 0 where the ray stays in the mantle
  RaySum innerCore; ///< 0 where the ray stays above it
};

/// Rays of one wave through a ball from the surface down, by slownesses so close that times between them follow from
/// those and from their slopes. In the core they are P waves.
class LegTable {
public:
  LegTable(const BallModel& model, BodyWave wave);

  /// By slowness, the steepest ray first, up to the one that leaves the surface horizontally.
  const std::vector<RayLeg>& legs() const { return legs_; }

  /// The ray of any slowness.
  RayLeg trace(double slowness) const;

  /// Of the mantle, from the surface down.
  const std::vector<RayShell>& shells() const { return shells_; }

  /// Slownesses at both ends of the mantle's layers.
  struct LayerEnds {
    double topRadiusKm;
    double top;
    double bottom;
  };
  const std::vector<LayerEnds>& layers() const { return layers_; }

  /// The smallest slowness of rays that bottom above the core, in the outer core, and in the inner core; 0 where
  /// there is no core. The largest slowness in the outer core is that of its surface or of the mantle's bottom, and
  /// in the inner core that of its surface.
  double mantleBottom() const { return layers_.back().bottom; }
  double outerCoreTop() const { return outer_.empty() ? 0 : outer_.front().topSlowness; }
  double outerCoreBottom() const { return outer_.empty() ? 0 : outer_.back().bottomSlowness; }
  double innerCoreTop() const { return inner_.empty() ? 0 : inner_.front().topSlowness; }

private:
  std::vector<double> slownesses() const;

  std::vector<RayShell> shells_;
  std::vector<RayShell> outer_;
  std::vector<RayShell> inner_;
  std::vector<LayerEnds> layers_;
  std::vector<RayLeg> legs_;
};

/// The tables of a model for P and S.
struct LegTables {
  LegTable p;
  LegTable s;
};

/// Those of IASP91, computed when they are first asked for. Any thread.
const LegTables& earthLegTables();

} // namespace xov
