#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Path.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

#include <cstdint>
#include <optional>

namespace xov {

/// How a symbol looks: a circle that is filled and then outlined.
struct XOV_EXPORT SymbolLook {
  double radius = 1;    ///< from the centre to the middle of the outline, view points
  double lineWidth = 1; ///< of the outline, view points; 0 draws none
  QColor fill;          ///< an invalid colour draws no fill
  QColor stroke;        ///< an invalid colour draws no outline
  int strokes = 1;      ///< how often the outline is stroked: translucent lines darken each time

  /// Whether it has a size above 0, and finite.
  bool hasSize() const;
  /// Whether an outline is drawn.
  bool hasOutline() const { return stroke.isValid() && lineWidth > 0 && strokes > 0; }
  /// From the centre to the outer edge of the ink.
  double outerRadius() const { return radius + (hasOutline() ? lineWidth / 2 : 0); }
  /// How far from the centre a symbol leaves nothing to be seen of what lies under it.
  double coveringRadius() const;
  /// Whether it leaves nothing to be seen of what lies wholly under it.
  bool coversWhatIsUnder() const { return coveringRadius() == outerRadius(); }
  /// The circle about a centre, with the line width of the outline; it starts at the centre, with a move.
  Path circle(QPointF center) const;
};

/// Circles at the points of a data set, described instead of spelled out: one description costs the same for ten
/// symbols and for ten million. All look alike, as the description itself says, unless `looks` gives each its own.
///
/// Symbol i, first <= i < last, is centred at
///     ((x[i] - xOrigin) · xScale + xOffset, (y[i] - yOrigin) · yScale + yOffset)
/// in view points, the differences in single precision and the rest in double. Each is filled, then its outline is
/// stroked, before the next one is drawn: later symbols lie over earlier ones. A symbol whose centre is not finite,
/// or whose radius is not positive and finite, is left out.
///
/// The values and looks are borrowed: they must stay alive and unchanged until the symbols have been drawn.
struct XOV_EXPORT Symbols : SymbolLook {
  /// Values along x, borrowed.
  const float* x = nullptr;
  /// Values along y, as many.
  const float* y = nullptr;
  const SymbolLook* looks = nullptr; ///< looks[i] is that of symbol i
  std::int64_t first = 0;            ///< the first symbol
  std::int64_t last = 0;             ///< one past the last symbol; last <= first draws nothing

  float xOrigin = 0;  ///< value of x that lies at xOffset
  double xScale = 1;  ///< view points for each unit of x
  double xOffset = 0; ///< view points
  float yOrigin = 0;  ///< value of y that lies at yOffset
  double yScale = 1;  ///< view points for each unit of y
  double yOffset = 0; ///< view points

  /// Whether there is nothing to draw: no values, or one look for all that has no size.
  bool isEmpty() const;
  /// How many symbols there are to draw.
  std::int64_t size() const { return isEmpty() ? 0 : last - first; }
  /// The colour of the symbols when all are opaque discs of that one colour, so that their order does not matter:
  /// such are symbols whose outline meets itself in the middle. An invalid colour otherwise.
  QColor colorOfPlainDiscs() const;

  /// That of one symbol.
  const SymbolLook& look(std::int64_t i) const { return looks != nullptr ? looks[i] : *this; }
  /// The centre of symbol i; nothing where the symbol is left out.
  std::optional<QPointF> center(std::int64_t i) const;
};

} // namespace xov
