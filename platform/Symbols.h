#pragma once

#include "platform/Export.h"
#include "platform/Path.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

#include <cstdint>
#include <optional>

namespace xov {

/// Equal circles at the points of a data set, described instead of spelled out: one description costs the same for
/// ten symbols and for ten million.
///
/// Symbol i, first <= i < last, is centred at
///     ((x[i] - xOrigin) · xScale + xOffset, (y[i] - yOrigin) · yScale + yOffset)
/// in view points, the differences in single precision and the rest in double. Each is filled, then its outline is
/// stroked, before the next one is drawn: later symbols lie over earlier ones. A symbol whose centre is not finite is
/// left out.
///
/// The values are borrowed: they must stay alive and unchanged until the symbols have been drawn.
struct XOV_EXPORT Symbols {
  const float* x = nullptr;
  const float* y = nullptr;
  std::int64_t first = 0;
  std::int64_t last = 0; ///< one past the last symbol; last <= first draws nothing

  float xOrigin = 0;
  double xScale = 1;
  double xOffset = 0;
  float yOrigin = 0;
  double yScale = 1;
  double yOffset = 0;

  double radius = 1;    ///< from the centre to the middle of the outline, view points
  double lineWidth = 1; ///< of the outline, view points; 0 draws none
  QColor fill;          ///< an invalid colour draws no fill
  QColor stroke;        ///< an invalid colour draws no outline

  /// Whether there is nothing to draw: no values, or a radius that is not positive and finite.
  bool isEmpty() const;
  std::int64_t size() const { return isEmpty() ? 0 : last - first; }
  bool hasOutline() const { return stroke.isValid() && lineWidth > 0; }
  /// From the centre to the outer edge of the ink.
  double outerRadius() const { return radius + (hasOutline() ? lineWidth / 2 : 0); }
  /// Whether a symbol leaves nothing to be seen of what lies wholly under it.
  bool coversWhatIsUnder() const;
  /// The colour of the symbols when each is an opaque disc of one colour, so that their order does not matter: such
  /// are symbols whose outline meets itself in the middle. An invalid colour otherwise.
  QColor colorOfPlainDiscs() const;

  /// The centre of symbol i; nothing where it is not finite.
  std::optional<QPointF> center(std::int64_t i) const;
  /// The circle about a centre, with the line width of the outline; it starts at the centre, with a move.
  Path circle(QPointF center) const;
};

} // namespace xov
