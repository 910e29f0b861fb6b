#pragma once

#include "apps/xov/map/MapRegion.h"
#include "apps/xov/options/Options.h"

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/grid/Grid.h>
#include <XOV_Graphics/views/map/geoMapView.h>
#include <array>
#include <optional>
#include <string>

namespace xov::cli {

/// What a map lies on: a topography, a picture, or paper.
class MapBackground {
public:
  void addOptions(const Options& options);

  /// The region that the background covers; the globe from Greenwich on, where it is all of the globe.
  MapRegion region() const;
  /// What the background can show; a usage error names it where a region reaches beyond.
  void checkRegion(const MapRegion& region) const;

  /// Loads the background into the view, whose limits become those of the region. False, with a message, when what
  /// the user named cannot be shown.
  bool show(geoMapView& view, const MapRegion& region) const;

private:
  static constexpr int kNoPicture = 0;
  bool hasTopo() const;
  PlotLimits extent() const;
  bool loadPicture(geoMapView& view) const;
  Result<Grid> readTopo() const;
  Result<Grid> readTopoFile() const;
  void showGrid(geoMapView& view, const Grid& grid, const PlotLimits& limits) const;

  Option topoOption_;
  std::string topo_;
  std::array<int, 2> topoSize_ = {0, 0}; // not given
  std::optional<std::array<double, 4>> topoExtent_;
  std::optional<int> image_;
};

} // namespace xov::cli
