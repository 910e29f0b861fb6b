#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QLineF>
#include <QRectF>
#include <QRegion>

#include <vector>

class QPainter;

namespace xov {

/// Marks that move over a view's window, in view points.
struct XOV_EXPORT ViewOverlay {
  std::vector<QLineF> lines; ///< such as those of a cross hair
  QRectF band;               ///< a rubber band; none where it has no size

  /// Whether there is nothing to draw.
  bool isEmpty() const { return lines.empty() && band.isNull(); }
  bool operator==(const ViewOverlay&) const = default;
};

/// The pixels that the marks touch in a widget of that size.
QRegion overlayRegion(const ViewOverlay& overlay, const QSize& size);

/// Paints the marks on a widget of that height.
void paintOverlay(QPainter& painter, const ViewOverlay& overlay, double height);

} // namespace xov
