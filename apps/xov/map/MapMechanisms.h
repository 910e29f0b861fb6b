#pragma once

#include "apps/xov/map/MapRegion.h"
#include "apps/xov/options/Options.h"

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/views/map/geoMapView.h>
#include <optional>
#include <string>

namespace xov::cli {

/// The focal mechanisms of a map's earthquakes as beach balls, with the options for them: --mechanisms,
/// --mechanism-size, --mechanism-color and --mechanisms-in-place.
class MapMechanisms {
public:
  /// `events` is the option that names the earthquakes.
  void addOptions(const Options& options, Option events);

  bool areWanted() const { return wanted_; }

  /// Gives the view a beach ball for each event that has a place and tells how it radiates, the largest first, in the
  /// colour that the view's table has for its depth, unless the user wants another. The events that are left.
  HypocentreArray take(const HypocentreArray& events, geoMapView& view, const MapRegion& region, bool redFirst) const;

  /// The radius of a beach ball of that magnitude in points: as large as two circles that stand for it, from 4 points
  /// on, unless the user wants one size.
  double radius(float magnitude) const;

  /// Whether all balls have one size.
  bool hasOneSize() const { return diameter_.has_value(); }

private:
  bool wanted_ = false;
  bool inPlace_ = false;
  std::optional<double> diameter_;
  std::string color_; // empty or "depth" for that of the depth
};

} // namespace xov::cli
