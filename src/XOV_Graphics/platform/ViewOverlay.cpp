#include "XOV_Graphics/platform/ViewOverlay.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kLineReach = 2; // pixels that a line takes on either side
const QColor kOverlayLine(0, 90, 200, 190);
const QColor kBandFill(0, 90, 200, 28);

QPointF onWidget(QPointF point, double height) { return {point.x(), height - point.y()}; }

QRectF onWidget(const QRectF& rect, double height) {
  return {rect.x(), height - rect.y() - rect.height(), rect.width(), rect.height()};
}

// Whole pixels around a rectangle, as far as they lie on the widget; none for what is not finite.
QRect around(const QRectF& rect, const QSize& size) {
  const QRectF widget(QPointF(0, 0), QSizeF(size));
  const bool isFinite = std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) &&
                        std::isfinite(rect.height());
  if (!isFinite) return {};
  const QRectF grown = rect.adjusted(-kLineReach, -kLineReach, kLineReach, kLineReach);
  return grown.intersected(widget).toAlignedRect();
}

bool isFiniteLine(const QLineF& line) {
  return std::isfinite(line.x1()) && std::isfinite(line.y1()) && std::isfinite(line.x2()) && std::isfinite(line.y2());
}

} // namespace

QRegion overlayRegion(const ViewOverlay& overlay, const QSize& size) {
  QRegion region;
  for (const QLineF& line : overlay.lines) {
    const QPointF from = onWidget(line.p1(), size.height());
    const QPointF to = onWidget(line.p2(), size.height());
    region += around(QRectF(from, to).normalized(), size);
  }
  if (!overlay.band.isNull()) region += around(onWidget(overlay.band.normalized(), size.height()), size);
  return region;
}

void paintOverlay(QPainter& painter, const ViewOverlay& overlay, double height) {
  if (overlay.isEmpty()) return;
  painter.save();
  painter.setPen(QPen(kOverlayLine, 0));
  for (const QLineF& line : overlay.lines)
    if (isFiniteLine(line)) painter.drawLine(QLineF(onWidget(line.p1(), height), onWidget(line.p2(), height)));
  if (!overlay.band.isNull()) {
    painter.setBrush(kBandFill);
    painter.drawRect(onWidget(overlay.band.normalized(), height));
  }
  painter.restore();
}

} // namespace xov
