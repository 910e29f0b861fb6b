#pragma once

#include "apps/xov/map/MapMechanisms.h"
#include "apps/xov/map/MapRegion.h"
#include "apps/xov/options/Options.h"

#include <XOV_Graphics/views/map/geoMapView.h>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// What lies on a map: plate boundaries, lines, events, stations and vectors.
class MapFeatures {
public:
  void addOptions(const Options& options);

  /// Puts everything that can be read into the view, and what its symbols mean into the legend. False, with a message
  /// for each, when a file could not be.
  bool show(geoMapView& view, const MapRegion& region, MapLegend& legend) const;

  /// Whether there is something for a legend to explain.
  bool needLegend() const;

  /// A title: the name of the file of events without its extension; empty without one.
  QString title() const;

private:
  bool addPlates(geoMapView& view, const MapRegion& region, MapLegend& legend) const;
  void addPlateTypes(geoMapView& view, const XOVPolygonArray& boundaries, const MapRegion& region,
                     MapLegend& legend) const;
  bool addPolygons(geoMapView& view, const MapRegion& region) const;
  bool addEvents(geoMapView& view, const MapRegion& region, MapLegend& legend) const;
  bool addStations(geoMapView& view, const MapRegion& region) const;
  bool addVectors(geoMapView& view, const MapRegion& region) const;

  std::string plates_;
  std::vector<std::string> polygons_;
  std::string events_;
  std::string colors_ = "seis";
  MapMechanisms mechanisms_;
  std::string stations_;
  bool stationNames_ = false;
  std::vector<std::string> stationColumns_; // none where the file says it itself
  std::string vectors_;
  std::vector<std::string> vectorColumns_ = {"1", "2", "3", "4"};
  std::optional<double> vectorScale_;
};

/// The points a unit at which the longest of the vectors that are finite is 50 points long; 1 when none has a length.
double fittingVectorScale(const std::vector<float>& east, const std::vector<float>& north);

} // namespace xov::cli
