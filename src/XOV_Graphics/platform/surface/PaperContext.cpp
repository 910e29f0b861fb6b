#include "XOV_Graphics/platform/surface/PaperContext.h"

#include "XOV_Graphics/platform/pixels/ImageResampling.h"
#include "XOV_Graphics/platform/surface/PaperTraces.h"
#include "XOV_Graphics/platform/surface/Pens.h"
#include "XOV_Graphics/platform/surface/Typeface.h"
#include "XOV_Graphics/platform/symbol/SymbolCulling.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"

#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <new>
#include <span>
#include <utility>

namespace xov {

namespace {

constexpr int kOpaque = 255;
// Symbols stand on a grid of this many points: shorter files, and a twelfth of a dot at 600 dots an inch.
constexpr double kStep = 0.01;
constexpr double kPointsPerInch = 72;

// The place of a symbol on the grid.
QPointF placeOf(const Symbols& symbols, std::int64_t i) {
  const QPointF center = *symbols.center(i);
  return {std::round(center.x() / kStep) * kStep, std::round(center.y() / kStep) * kStep};
}

} // namespace

PaperContext::PaperContext(QPainter& painter, const QTransform& viewToDevice, const QRectF& surface,
                           PaperTraces* traces)
    : PainterContext(painter, viewToDevice, surface),
      traces_(traces) {
  painter.setRenderHint(QPainter::LosslessImageRendering);
}

void PaperContext::onStroke(const Path& path) {
  const QPainterPath& shape = path.shape();
  if (shape.elementCount() > 0) painter().strokePath(shape, penFor(path, shape, state().strokeColor));
  if (path.traces().empty() || clippedRect().isEmpty()) return;
  const QRectF visible = visibleRect(path.lineWidth());
  if (traces_ == nullptr || !PaperTraces::canHold(visible, toDevice())) return strokeTraces(path, visible);
  const QColor& color = state().strokeColor;
  fillMarker(traces_->stroke(path.traces(), visible, toDevice(), path.lineWidth(), color), color);
}

void PaperContext::fillMarker(const QPainterPath& marker, const QColor& color) {
  if (marker.isEmpty()) return;
  // The painter's opacity holds for strokes, too; a colour's own only for what it fills.
  painter().setTransform(QTransform());
  painter().setOpacity(color.alphaF());
  painter().fillPath(marker, QColor(color.rgb()));
  painter().setOpacity(1);
  onTransform();
}

// Translucent ink must not double where lines overlap, so it stays one path.
void PaperContext::strokeTraces(const Path& path, const QRectF& visible) {
  const QColor& color = state().strokeColor;
  const bool isOpaque = color.alpha() == kOpaque && painter().opacity() >= 1;
  QPainterPath onePath;
  const PainterState before(painter());
  painter().setPen(tracePen(path.lineWidth(), color));
  for (const Trace& trace : path.traces()) {
    for (const QPolygonF& line : reduceTrace(trace, kPaperTraceColumn, visible, 0)) {
      if (!isOpaque) {
        onePath.addPolygon(line);
        continue;
      }
      forEachStroke(line, [this](std::span<const QPointF> stroke) {
        painter().drawPolyline(stroke.data(), int(stroke.size()));
      });
    }
  }
  if (!onePath.isEmpty()) painter().strokePath(onePath, painter().pen());
}

void PaperContext::onFill(const Path& path) {
  const QColor& color = state().fillColor;
  const QRectF visible = visibleRect(0);
  const bool tracesAlone = !path.traces().empty() && path.shape().elementCount() == 0;
  if (!tracesAlone || traces_ == nullptr || !PaperTraces::canHold(visible, toDevice()))
    return painter().fillPath(filledShape(path), color);
  if (clippedRect().isEmpty()) return;
  const bool evenOdd = path.windingRule() == Path::Winding::EvenOdd;
  fillMarker(traces_->fill(path.traces(), visible, toDevice(), evenOdd, color), color);
}

void PaperContext::onSymbols(const Symbols& symbols) {
  const PainterState before(painter());
  if (const QColor color = symbols.colorOfPlainDiscs(); color.isValid()) {
    drawDots(symbols, color);
  } else {
    drawCircles(symbols);
  }
}

// Many discs of one colour are one path of round dots, a tenth as long as a path each.
void PaperContext::drawDots(const Symbols& symbols, const QColor& color) {
  painter().setPen(QPen(color, 2 * symbols.outerRadius(), Qt::SolidLine, Qt::RoundCap));
  QPolygonF dots;
  for (const std::int64_t i : symbolsOnPaper(symbols, clippedRect()))
    dots.append(placeOf(symbols, i));
  painter().drawPoints(dots);
}

void PaperContext::drawCircles(const Symbols& symbols) {
  const SymbolLook* last = nullptr;
  for (const std::int64_t i : symbolsOnPaper(symbols, clippedRect())) {
    const SymbolLook& look = symbols.look(i);
    if (&look != std::exchange(last, &look)) {
      painter().setPen(look.hasOutline() ? tracePen(look.lineWidth, look.stroke) : QPen(Qt::NoPen));
      painter().setBrush(look.fill.isValid() ? QBrush(look.fill) : QBrush(Qt::NoBrush));
    }
    QPainterPath circle;
    circle.addEllipse(placeOf(symbols, i), look.radius, look.radius);
    drawCircle(look, circle);
  }
}

// With the painter's pen and brush already its own. An opaque outline shares one path with its fill; a translucent
// one would let paper show through instead of the fill.
void PaperContext::drawCircle(const SymbolLook& look, const QPainterPath& circle) {
  if (look.strokes == 1 && look.stroke.alpha() == kOpaque) return painter().drawPath(circle);
  if (look.fill.isValid()) painter().fillPath(circle, painter().brush());
  for (int stroke = 0; look.hasOutline() && stroke < look.strokes; ++stroke)
    painter().strokePath(circle, painter().pen());
}

void PaperContext::drawLineAtDesignSize(const QString& line, const TextAttributes& attributes) {
  painter().setPen(attributes.effectiveColor());
  painter().setFont(Typeface::forFamily(attributes.family()).font());
  painter().drawText(QPointF(0, 0), line);
}

// In points of the page, which a host's painter may have made smaller or larger than those of the view.
QSizeF PaperContext::sizeOnPage(const QRectF& rect) {
  const QPaintDevice* const device = painter().device();
  const QSizeF pixels = painter().combinedTransform().mapRect(rect).size();
  return {pixels.width() * kPointsPerInch / std::max(1, device->logicalDpiX()),
          pixels.height() * kPointsPerInch / std::max(1, device->logicalDpiY())};
}

void PaperContext::onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
                           ImageKind kind) {
  const PainterState before(painter());
  painter().setOpacity(painter().opacity() * fraction);
  QImage page = imageForPaper(image, source, kind == ImageKind::Cells ? target.size() : sizeOnPage(target), kind);
  if (isJpegOnPaper(page, !image.hasAlphaChannel(), kind)) {
    page.convertTo(QImage::Format_RGB32);
    if (page.isNull()) throw std::bad_alloc();
    painter().setRenderHint(QPainter::LosslessImageRendering, false);
  }
  drawUpright(page, target, page.rect());
}

} // namespace xov
