#pragma once

#include "XOV_Graphics/views/map/geoMapView.h"
#include "tests/views/all/RandomHost.h"

namespace xov::testing {

/// Points, vectors and lines, absurd ones among them.
void addFeatures(RandomHost& host, geoMapView& view);
/// Beach balls, names, a legend, and what else stands around a map.
void addMargins(RandomHost& host, geoMapView& view);

} // namespace xov::testing
