#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QColor>
#include <QString>

#include <vector>

namespace xov {

/// What a legend says of one kind of symbol or line.
struct XOV_EXPORT MapLegendItem {
  /// What the symbol or line stands for.
  QString text;
  QColor color;         ///< of the symbol's fill or of the line; an invalid one leaves a symbol empty
  double radius = 0;    ///< of a symbol, view points; 0 for a line
  double lineWidth = 1; ///< of a line, view points
};

/// A text below a bar of colours.
struct XOV_EXPORT MapLegendMark {
  double share = 0; ///< of the bar's length, from its left end
  QString text;     ///< such as a depth
};

/// A part of a legend: a title, and items or a bar of colours.
struct XOV_EXPORT MapLegendSection {
  QString title;                    ///< empty for none
  std::vector<MapLegendItem> items; ///< from above to below; none with a bar
  std::vector<QColor> colors;       ///< of the bar, from the left; empty for none
  std::vector<MapLegendMark> marks; ///< below it
};

/// What stands below a map and tells what its symbols, colours and lines mean; empty for none.
using MapLegend = std::vector<MapLegendSection>;

} // namespace xov
