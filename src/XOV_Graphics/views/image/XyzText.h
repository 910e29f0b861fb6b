#pragma once

#include "XOV_Graphics/views/image/GridGeometry.h"

class QIODevice;

namespace xov {

/// Writes a grid as text: three lines that start with # and give the limits with the spacing and the value range,
/// then a line "x y value" for every cell, row after row from the top. Numbers have six decimals and a point, in
/// every locale, as "%f" prints them; a cell whose value is not in the grid reads nan. False when the device does not
/// take it.
bool writeXyzText(QIODevice& device, const PlotLimits& limits, const GridRange& range, const GridNodes& nodes,
                  const GridValues& grid);

} // namespace xov
