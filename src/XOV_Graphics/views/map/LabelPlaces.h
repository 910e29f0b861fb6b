#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <span>
#include <vector>

namespace xov {

/// A place that is to be labelled, in view points.
struct LabelledPlace {
  QPointF at;
  QSizeF size;          ///< of the text
  double clearance = 0; ///< of the text from the place
};

/// Where each text stands: to the right of its place, or to its left, above or below it, or at a corner, so that it
/// covers neither an earlier text, nor the symbol of another place, nor one of the obstacles, and lies inside of
/// `map`. None where that cannot be.
std::vector<std::optional<QRectF>> placeLabels(std::span<const LabelledPlace> places,
                                               std::span<const QRectF> obstacles, const QRectF& map);

} // namespace xov
