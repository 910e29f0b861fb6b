#pragma once

#include "XOV_Graphics/views/map/MapLegend.h"

#include <QPointF>
#include <QRectF>

#include <functional>

namespace xov {

/// The width of a text in view points.
using TextWidth = std::function<double(const QString&)>;

struct LegendText {
  QString text;
  QPointF at;              ///< the left end of its middle line
  bool isCentered = false; ///< about `at` instead
};

struct LegendSymbol {
  QPointF center;
  double radius = 0;
  QColor fill;
};

struct LegendLine {
  QPointF from;
  QPointF to;
  QColor color;
  double width = 1;
};

struct LegendCell {
  QRectF rect;
  QColor color;
};

/// A legend ready to be drawn, y upwards.
struct LaidOutLegend {
  double height = 0; ///< 0 without sections
  std::vector<LegendText> texts;
  std::vector<LegendSymbol> symbols;
  std::vector<LegendLine> lines;
  std::vector<LegendCell> cells;
  std::vector<QRectF> bars; ///< around the cells of a bar
};

/// Lays out the sections beside each other in rows of at most `width` points, each row centred about `middle`, the
/// lowest one on `bottom`. A section that is wider has a row of its own.
LaidOutLegend layoutLegend(const MapLegend& legend, double width, double middle, double bottom,
                           const TextWidth& textWidth);

} // namespace xov
