#pragma once

#include "XOV_Graphics/grid/GridCell.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QRectF>
#include <QSize>

#include <cstdint>
#include <optional>

namespace xov {

/// The piece of the world that a picture shows, and the size of one of its cells there. A cell size that is not
/// positive does not tell where a cell is.
struct ImageExtent {
  float xmin = 0;
  float xmax = 0;
  float ymin = 0;
  float ymax = 0;
  float dx = 0;
  float dy = 0;
};

/// The cells of a picture of `nc` × `nr` cells that limits select, counted from the picture's lower left corner.
/// Whole cells, cut off towards zero in single precision; the rectangle may reach beyond the picture. A direction
/// whose cell size is not positive is selected whole.
QRectF selectedCells(const PlotLimits& limits, const ImageExtent& image, std::int32_t nr, std::int32_t nc);

/// The same to the fraction of a cell, so that the limits lie where they are on the frame: what cells that are cut in
/// two show ends at the frame's edge. Reckoned in double precision from the extent alone. Empty where the limits or
/// the extent span nothing.
QRectF exactCells(const PlotLimits& limits, const ImageExtent& image, std::int32_t nr, std::int32_t nc);

/// The cell that is drawn at a point of the frame which the selected cells are spread over, of a picture of `nr` rows
/// that has the `held` cells; none where the picture has no cell.
std::optional<GridCell> cellAt(QPointF point, const QRectF& selected, const QRectF& held, std::int32_t nr,
                               const QRectF& frame);

/// Which pixels of a picture go where.
struct ImagePlacement {
  QRectF source; ///< pixels, y downwards from the upper left corner
  QRectF target; ///< view points
};

/// Spreads the selected cells over a frame. `held` are the cells that the picture has, `pixels` is the size it has
/// them in. What is selected beyond them stays empty: the target is cut in the same proportion. None when nothing is
/// left.
std::optional<ImagePlacement> placeImage(const QRectF& selected, const QRectF& held, const QSize& pixels,
                                         const QRectF& frame);

} // namespace xov
