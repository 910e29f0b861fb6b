#include "XOV_Graphics/platform/surface/SurfaceContext.h"

#include "XOV_Graphics/platform/trace/TraceReduction.h"

namespace xov {

namespace {

// How far beyond the clip lines are kept, so that ends and joins there do not show: in line widths, and in points.
constexpr double kMarginWidths = 6;
constexpr double kMarginPoints = 4;

} // namespace

QRectF SurfaceContext::clippedRect() const {
  const QRectF rect = state().clipRect ? surface_.intersected(*state().clipRect) : surface_;
  return state().transform.inverted().mapRect(rect);
}

QRectF SurfaceContext::visibleRect(double lineWidth) const {
  const double margin = kMarginWidths * lineWidth + kMarginPoints;
  return clippedRect().adjusted(-margin, -margin, margin, margin);
}

QPainterPath SurfaceContext::filledShape(const Path& path) const {
  QPainterPath shape = path.shape();
  if (!path.traces().empty()) {
    const QRectF visible = visibleRect(0);
    for (const Trace& trace : path.traces()) {
      for (const QPolygonF& line : traceAreas(trace, kPaperTraceColumn, visible))
        shape.addPolygon(line);
    }
  }
  shape.setFillRule(path.windingRule() == Path::Winding::NonZero ? Qt::WindingFill : Qt::OddEvenFill);
  return shape;
}

void SurfaceContext::onText(const QString& text, QPointF position, const TextAttributes& attributes) {
  const QStringList lines = text.split(QLatin1Char('\n'));
  double baseline = position.y() + double(lines.size() - 1) * attributes.lineHeight() + attributes.descent();
  for (const QString& line : lines) {
    if (!line.isEmpty()) drawTextLine(line, QPointF(position.x(), baseline), attributes);
    baseline -= attributes.lineHeight();
  }
}

} // namespace xov
