#pragma once

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/views/map/MapLegend.h>
#include <functional>
#include <span>

namespace xov::cli {

/// What the legend of a map says of the sizes of earthquakes: one circle for each whole magnitude from the one
/// next to that of the smallest to the one next to that of the largest, at most 7, as large as `radius` says. Without
/// items where no magnitude is known.
MapLegendSection magnitudeKey(const HypocentreArray& events, const std::function<double(float magnitude)>& radius);

/// ... of the colours of depths, from the surface to 700 km.
MapLegendSection depthKey(std::span<const QColor> colors, bool redFirst);

/// A line for each type of plate boundaries.
MapLegendSection lineKey(const std::vector<std::pair<QString, QColor>>& lines);

} // namespace xov::cli
