#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/map/MapBackground.h"
#include "apps/xov/map/MapFeatures.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"

#include <array>
#include <optional>
#include <string>

namespace xov::cli {

/// `xov map`: a map over a topography or a picture, with what the user wants on it.
class MapCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void findRegion();
  bool hasLegend() const { return !noLegend_ && features_.needLegend(); }
  void showMargins(geoMapView& view, MapLegend legend) const;

  MapBackground background_;
  MapFeatures features_;
  std::optional<std::array<double, 4>> edges_;
  MapRegion region_;
  std::string align_ = "centre";
  bool noDegreeSigns_ = false;
  bool noScaleBar_ = false;
  bool noLegend_ = false;
  std::optional<std::string> colorBar_; // its title
  Output output_{"map", {900, 482}};
};

/// The size of a map view of that width over height, with room for axes and a title: 900 points wide, or less for a
/// map that would be higher than 700; and wider or higher by what stands beside and below the map.
QSizeF mapViewSize(double widthOverHeight, const QSizeF& margins = {});

} // namespace xov::cli
