#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <QColor>
#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace xov {

/// Where in its frame a legend stands.
enum class LegendPlace : std::uint8_t {
  Best,        ///< in the corner where it covers least of the data, the upper right one among equals
  TopRight,    ///< in that corner, whatever it covers
  TopLeft,     ///< likewise
  BottomRight, ///< likewise
  BottomLeft,  ///< likewise
};

/// What a colour stands for.
struct XOV_EXPORT LegendEntry {
  QString text; ///< one line
  QColor color; ///< of its line or symbol

  bool operator==(const LegendEntry&) const = default;
};

/// A legend ready to be drawn, in view points. A box without rows is not drawn.
struct LegendLayout {
  /// A line of the legend.
  struct Row {
    QString text;                ///< what is written
    QPointF place;               ///< the lower left corner of the text
    QLineF sample;               ///< a piece of the line that it stands for
    std::optional<QColor> color; ///< of the sample; none where a row tells of what is left out
  };
  QRectF box;            ///< its frame
  std::vector<Row> rows; ///< from above to below
};

/// How much of a box data cover, as a number that grows with it.
using CoveredPart = std::function<double(const QRectF& box)>;

/// One row an entry, from the top down, in a box 6 points from the frame's edges. Rows that the frame has no height
/// for are counted in a last one ("and 7 more"), texts that it has no width for are cut; without room for a row there
/// is no legend. `covered` is asked for LegendPlace::Best only.
///
///     +----------------+   6 at all sides
///     | ----- text     |   14 a row; 20 of the line and 6 to the text
///     +----------------+
LegendLayout layOutLegend(const QRectF& frame, std::span<const LegendEntry> entries, LegendPlace place,
                          const TextAttributes& font, const CoveredPart& covered);

/// Draws into the current context: a box that lets a little of what lies below shine through, lines of that width, at
/// least 1.5 points, and the texts.
void drawLegend(const LegendLayout& legend, const TextAttributes& font, double lineWidth);

} // namespace xov
