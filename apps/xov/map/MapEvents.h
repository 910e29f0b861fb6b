#pragma once

#include "apps/xov/map/MapRegion.h"

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/views/map/geoMapView.h>
#include <string>
#include <vector>

namespace xov::cli {

/// A table of colours for depths, as the command line knows it.
struct DepthColors {
  const char* name;
  void (*build)(geoMapView& view);
  bool redFirst; ///< which end of the table is red, the colour of shallow events
};

/// The table of that name; the first one for a name that is none.
const DepthColors& depthColorsNamed(const std::string& name);
std::vector<std::string> depthColorNames();

/// The index of a depth in a table of that many colours: the red end at the surface and above, the other end from 700
/// km on, the square root of the depth between, so that shallow depths are told apart, too. -1, no colour, for a
/// depth that is not known.
int depthColorIndex(float depthKm, std::size_t colors, bool redFirst);

/// The symbol size of a magnitude: a radius of 2 points at magnitude 4 that grows by half with each unit, from 1 to
/// 20 points; that of magnitude 4 where it is not known.
float magnitudeSymbolSize(float magnitude);

/// Whether latitude and longitude of an event are known.
bool hasPlace(const Hypocentre& event);

/// The events that have a place, the largest ones first, so that small ones lie over them.
GeoMapPointArray eventPoints(const HypocentreArray& events, const MapRegion& region, std::size_t colors,
                             bool redFirst);

} // namespace xov::cli
