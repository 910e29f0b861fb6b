#include "XOV_Graphics/views/image/ImagePlacement.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Cells from the lower or left edge on.
struct CellRange {
  int first = 0;
  int count = 0;
};

// Both axes follow the same rule, except that at equal upper limits X counts cells and Y takes the whole picture.
CellRange cellsAlong(float min, float max, float imageMin, bool endsInside, float cell, std::int32_t count) {
  if (!(cell > 0)) return {0, count};
  CellRange range{0, count};
  if (min > imageMin) range.first = towardZero((min - imageMin) / cell);
  if (endsInside) range.count = towardZero((max - min) / cell);
  return range;
}

} // namespace

QRectF selectedCells(const PlotLimits& limits, const ImageExtent& image, std::int32_t nr, std::int32_t nc) {
  const CellRange x = cellsAlong(limits.xmin, limits.xmax, image.xmin, image.xmax >= limits.xmax, image.dx, nc);
  const CellRange y = cellsAlong(limits.ymin, limits.ymax, image.ymin, image.ymax > limits.ymax, image.dy, nr);
  return QRectF(x.first, y.first, x.count, y.count);
}

QRectF exactCells(const PlotLimits& limits, const ImageExtent& image, std::int32_t nr, std::int32_t nc) {
  const double xPerCell = (double(image.xmax) - double(image.xmin)) / nc;
  const double yPerCell = (double(image.ymax) - double(image.ymin)) / nr;
  const double width = double(limits.xmax) - double(limits.xmin);
  const double height = double(limits.ymax) - double(limits.ymin);
  if (!(xPerCell > 0 && yPerCell > 0 && width > 0 && height > 0)) return {};
  const QRectF cells((double(limits.xmin) - double(image.xmin)) / xPerCell,
                     (double(limits.ymin) - double(image.ymin)) / yPerCell, width / xPerCell, height / yPerCell);
  const bool isFinite = std::isfinite(cells.x()) && std::isfinite(cells.y()) && std::isfinite(cells.right()) &&
                        std::isfinite(cells.bottom());
  return isFinite ? cells : QRectF();
}

std::optional<GridCell> cellAt(QPointF point, const QRectF& selected, const QRectF& held, std::int32_t nr,
                               const QRectF& frame) {
  if (selected.isEmpty() || held.isEmpty() || frame.isEmpty() || !containsPoint(frame, point)) return {};
  const double x = selected.x() + (point.x() - frame.x()) * (selected.width() / frame.width());
  const double y = selected.y() + (point.y() - frame.y()) * (selected.height() / frame.height());
  if (!containsPoint(held, {x, y})) return {};
  // The upper and the right edge belong to the cells below and left of them.
  const double column = std::min(std::floor(x), held.x() + held.width() - 1);
  const double fromBottom = std::min(std::floor(y), held.y() + held.height() - 1);
  return GridCell{nr - 1 - std::int32_t(fromBottom), std::int32_t(column)};
}

std::optional<ImagePlacement> placeImage(const QRectF& selected, const QRectF& held, const QSize& pixels,
                                         const QRectF& frame) {
  if (selected.isEmpty() || held.isEmpty() || pixels.isEmpty() || frame.isEmpty()) return {};
  const QRectF shown = selected.intersected(held);
  if (shown.isEmpty()) return {};
  const double xScale = frame.width() / selected.width();
  const double yScale = frame.height() / selected.height();
  const QRectF target(frame.x() + (shown.x() - selected.x()) * xScale,
                      frame.y() + (shown.y() - selected.y()) * yScale, shown.width() * xScale,
                      shown.height() * yScale);
  const double xPixels = pixels.width() / held.width();
  const double yPixels = pixels.height() / held.height();
  const double fromTop = held.y() + held.height() - (shown.y() + shown.height());
  const QRectF source((shown.x() - held.x()) * xPixels, fromTop * yPixels, shown.width() * xPixels,
                      shown.height() * yPixels);
  return ImagePlacement{source, target};
}

} // namespace xov
