#pragma once

#include <XOV_Graphics/views/base/PlotGeometry.h>
#include <array>
#include <optional>
#include <string>

namespace xov::cli {

/// Longitudes on the command line may be given in other turns, up to this many degrees east or west.
inline constexpr double kLargestLongitude = 720;

/// The part of the globe that a map shows, in degrees: its meridians lie in -180 … 360, as those of the map pictures
/// do, and it is at most the whole globe wide.
class MapRegion {
public:
  /// The whole globe from Greenwich on.
  MapRegion() = default;
  explicit MapRegion(const PlotLimits& limits) : limits_(limits) {}

  /// The region from `edges` west, east, south, north. An eastern edge that is not above the western one is one turn
  /// further on: 170 -170 crosses the date line. None, with what was expected in `problem`, for edges that make no
  /// region.
  static std::optional<MapRegion> fromEdges(const std::array<double, 4>& edges, std::string& problem);

  const PlotLimits& limits() const { return limits_; }
  /// Whether all of it lies within these limits.
  bool liesWithin(const PlotLimits& outer) const;
  /// Width by height of one degree square at its middle latitude, times its degrees.
  double widthOverHeight() const;

  /// The longitude to give a map view so that a symbol shows in the turn nearest to the middle of the region,
  /// whatever turns of its own the view makes.
  float symbolLongitude(float lon) const;
  /// The same for a point of a line.
  float lineLongitude(float lon) const;

private:
  float nearestTurn(float lon) const;

  PlotLimits limits_ = {0, 360, -90, 90};
};

} // namespace xov::cli
