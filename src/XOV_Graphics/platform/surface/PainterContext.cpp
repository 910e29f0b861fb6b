#include "XOV_Graphics/platform/surface/PainterContext.h"

#include "XOV_Graphics/platform/pixels/CrispLines.h"
#include "XOV_Graphics/platform/pixels/ImageResampling.h"
#include "XOV_Graphics/platform/pixels/LineClip.h"
#include "XOV_Graphics/platform/surface/PaperTraces.h"
#include "XOV_Graphics/platform/surface/Typeface.h"
#include "XOV_Graphics/platform/symbol/SymbolCulling.h"
#include "XOV_Graphics/platform/symbol/SymbolRaster.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"

#include <QPainter>
#include <QPainterPathStroker>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace xov {

namespace {

// Symbols stand on a grid of this many points on paper: shorter files, and a twelfth of a dot at 600 dots an inch.
constexpr double kPaperStep = 0.01;
// How far beyond the clip lines are kept, so that ends and joins there do not show: in line widths, and in points.
constexpr double kMarginWidths = 6;
constexpr double kMarginPoints = 4;
// A dashed line of more pieces than this is drawn unbroken.
constexpr double kMaxDashes = 20000;
// Points of a trace that go to the general stroker at a time.
constexpr qsizetype kChunk = 2048;
// Coordinates beyond this many pixels would overflow the painter's fixed-point arithmetic.
constexpr double kPainterLimit = 16000;
constexpr int kOpaque = 255;

Qt::PenCapStyle qtCap(Path::Cap cap) {
  switch (cap) {
  case Path::Cap::Round:
    return Qt::RoundCap;
  case Path::Cap::Square:
    return Qt::SquareCap;
  case Path::Cap::Butt:
    break;
  }
  return Qt::FlatCap;
}

// The SVG mitre falls back to a bevel past its limit, as it does on paper; Qt's own leaves a spur.
Qt::PenJoinStyle qtJoin(Path::Join join) {
  switch (join) {
  case Path::Join::Round:
    return Qt::RoundJoin;
  case Path::Join::Bevel:
    return Qt::BevelJoin;
  case Path::Join::Miter:
    break;
  }
  return Qt::SvgMiterJoin;
}

// Qt counts dashes in line widths and wants as many dashes as gaps.
QList<qreal> dashesInWidths(const Path& path) {
  const std::size_t size = path.dashes().size();
  QList<qreal> pattern;
  for (std::size_t i = 0; i < (size % 2 == 0 ? size : 2 * size); ++i)
    pattern << path.dashes()[i % size] / path.lineWidth();
  return pattern;
}

// Dashes too many to be told apart are an unbroken line.
bool hasBoundedDashes(const Path& path, const QPainterPath& shape) {
  if (path.dashes().empty()) return false;
  const double period = std::accumulate(path.dashes().begin(), path.dashes().end(), 0.0);
  return shape.length() / period < kMaxDashes;
}

// The area of a dashed line. The painter's own pens count dashes in pixels where a line is thinner than one.
QPainterPath dashedArea(const Path& path, const QPainterPath& shape, double miterLimit) {
  QPainterPathStroker stroker;
  stroker.setWidth(path.lineWidth());
  stroker.setCapStyle(qtCap(path.lineCap()));
  stroker.setJoinStyle(qtJoin(path.lineJoin()));
  stroker.setMiterLimit(miterLimit);
  stroker.setDashPattern(dashesInWidths(path));
  stroker.setDashOffset(path.dashPhase() / path.lineWidth());
  return stroker.createStroke(shape);
}

QPen penFor(const Path& path, const QPainterPath& shape, const QColor& color) {
  QPen pen(color, path.lineWidth(), Qt::SolidLine, qtCap(path.lineCap()), qtJoin(path.lineJoin()));
  pen.setMiterLimit(path.miterLimit());
  if (hasBoundedDashes(path, shape)) {
    pen.setDashPattern(dashesInWidths(path));
    pen.setDashOffset(path.dashPhase() / path.lineWidth());
  }
  return pen;
}

QPen tracePen(const Path& path, const QColor& color) {
  return QPen(color, path.lineWidth(), Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

void fillPixels(const PixelTarget& target, QRgb color) {
  for (int row = 0; row < target.height; ++row)
    std::fill_n(reinterpret_cast<QRgb*>(target.bits + row * target.bytesPerLine), target.width, color);
}

bool withinPainterLimits(const QPainterPath& deviceShape) {
  const QRectF box = deviceShape.controlPointRect();
  return std::abs(box.left()) < kPainterLimit && std::abs(box.right()) < kPainterLimit &&
         std::abs(box.top()) < kPainterLimit && std::abs(box.bottom()) < kPainterLimit;
}

} // namespace

PainterContext::PainterContext(QPainter& painter, const QTransform& viewToDevice, const PixelTarget& target)
    : painter_(painter),
      viewToDevice_(viewToDevice),
      target_(target),
      isUncleared_(!onPaper()) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setRenderHint(QPainter::SmoothPixmapTransform, false);
  onTransform();
}

PainterContext::PainterContext(QPainter& painter, const QTransform& viewToDevice, PaperTraces* traces)
    : PainterContext(painter, viewToDevice, PixelTarget()) {
  paperTraces_ = traces;
  painter_.setRenderHint(QPainter::LosslessImageRendering);
}

PainterContext::~PainterContext() { clearOnce(); }

void PainterContext::clearOnce() {
  if (!isUncleared_) return;
  isUncleared_ = false;
  fillPixels(target_, 0);
}

/// True for a rectangle that every pixel lies inside of, drawn without a clip.
bool PainterContext::fillsAll(const QPainterPath& shape) const {
  constexpr int kCorners = 5; // the first one twice
  constexpr double kRounding = 1e-6;
  const QTransform matrix = toDevice();
  if (state().clipRect || matrix.type() > QTransform::TxScale) return false;
  if (shape.elementCount() != kCorners) return false;
  double area = 0; // as large as its box only for a rectangle
  for (int i = 0; i < kCorners; ++i) {
    const QPainterPath::Element a = shape.elementAt(i), b = shape.elementAt((i + 1) % kCorners);
    if (a.isCurveTo() || (i > 0 && a.isMoveTo())) return false;
    area += (a.x * b.y - b.x * a.y) / 2;
  }
  const QRectF box = shape.controlPointRect();
  const QRectF pixels = matrix.mapRect(box).adjusted(-kRounding, -kRounding, kRounding, kRounding);
  return std::abs(area) >= box.width() * box.height() * (1 - kRounding) &&
         pixels.contains(QRectF(0, 0, target_.width, target_.height));
}

void PainterContext::onSave() { painter_.save(); }

void PainterContext::onRestore() { painter_.restore(); }

void PainterContext::onTransform() { painter_.setTransform(toDevice()); }

void PainterContext::onClipRect(const QRectF& rect) { painter_.setClipRect(rect, Qt::IntersectClip); }

void PainterContext::onClipPath(const Path& path) { painter_.setClipPath(path.shape(), Qt::IntersectClip); }

// The part of the surface that drawing can change, in the coordinates of the drawing calls.
QRectF PainterContext::clippedRect() const {
  const QRectF device(0, 0, painter_.device()->width(), painter_.device()->height());
  QRectF rect = viewToDevice_.inverted().mapRect(device);
  if (state().clipRect) rect = rect.intersected(*state().clipRect);
  return state().transform.inverted().mapRect(rect);
}

// What can show of lines of that width, ends and joins included.
QRectF PainterContext::visibleRect(double lineWidth) const {
  const double margin = kMarginWidths * lineWidth + kMarginPoints;
  return clippedRect().adjusted(-margin, -margin, margin, margin);
}

void PainterContext::onStroke(const Path& path) {
  clearOnce();
  if (path.shape().elementCount() > 0) strokeShape(path);
  if (path.traces().empty()) return;
  if (onPaper()) {
    strokeTracesOnPaper(path);
  } else {
    strokeTracesOnPixels(path);
  }
}

void PainterContext::strokeShape(const Path& path) {
  const QColor& color = state().strokeColor;
  const QTransform matrix = toDevice();
  if (!onPaper() && path.dashes().empty() && path.lineCap() == Path::Cap::Butt && color.alpha() == 255) {
    const double deviceWidth = path.lineWidth() * std::sqrt(std::abs(matrix.determinant()));
    const QSize size(target_.width, target_.height);
    if (const auto lines = crispLines(matrix.map(path.shape()), deviceWidth, size)) {
      painter_.setTransform(QTransform());
      for (const QRect& line : *lines)
        painter_.fillRect(line, color);
      onTransform();
      return;
    }
  }
  QPainterPath shape = path.shape();
  if (onPaper()) {
    painter_.strokePath(shape, penFor(path, shape, color));
    return;
  }
  if (!withinPainterLimits(matrix.map(shape))) {
    const QRectF bounds = visibleRect(path.lineWidth());
    QPainterPath near;
    for (const QPolygonF& line : shape.toSubpathPolygons()) {
      for (const QPolygonF& piece : clipPolyline(line, bounds))
        near.addPolygon(piece);
    }
    shape = near;
  }
  // Qt's own stroker counts the mitre limit from the line's centre, paper from edge to edge.
  const double miterLimit = path.miterLimit() / 2;
  if (hasBoundedDashes(path, shape)) {
    painter_.fillPath(dashedArea(path, shape, miterLimit), color);
    return;
  }
  QPen pen(color, path.lineWidth(), Qt::SolidLine, qtCap(path.lineCap()), qtJoin(path.lineJoin()));
  pen.setMiterLimit(miterLimit);
  painter_.strokePath(shape, pen);
}

// Lets a rasteriser of our own change the pixels inside the clip; false when it says that it cannot.
bool PainterContext::drawUnderClip(const std::function<bool(const PixelTarget&, const QRect&)>& draw) {
  const QRect picture(0, 0, target_.width, target_.height);
  QRect clip = picture;
  if (state().clipRect) clip = viewToDevice_.mapRect(*state().clipRect).toRect().intersected(picture);
  if (clip.isEmpty()) return true;
  if (state().clipIsRect) return draw(target_, clip);
  // Under a clip of any other shape the ink goes onto a layer of its own, which the painter then clips.
  QImage layer(picture.size(), QImage::Format_ARGB32_Premultiplied);
  if (layer.isNull()) return true;
  layer.fill(Qt::transparent);
  if (!draw({layer.bits(), layer.bytesPerLine(), layer.width(), layer.height()}, clip)) return false;
  painter_.setTransform(QTransform());
  painter_.drawImage(0, 0, layer);
  onTransform();
  return true;
}

void PainterContext::strokeTracesOnPixels(const Path& path) {
  const bool stroked = drawUnderClip([&](const PixelTarget& pixels, const QRect& clip) {
    return strokeTraces(pixels, path.traces(), toDevice(), clip, path.lineWidth(), state().strokeColor);
  });
  if (!stroked) strokeTracesPointByPoint(path);
}

// The general stroker, for rotated and mirrored traces and times that do not grow; in chunks that share a segment, so
// that the line is joined where one ends.
void PainterContext::strokeTracesPointByPoint(const Path& path) {
  const QPen pen = tracePen(path, state().strokeColor);
  const QRectF bounds = visibleRect(path.lineWidth());
  for (const Trace& trace : path.traces()) {
    QPolygonF chunk;
    const auto flush = [&] {
      QPainterPath near;
      for (const QPolygonF& piece : clipPolyline(chunk, bounds))
        near.addPolygon(piece);
      if (!near.isEmpty()) painter_.strokePath(near, pen);
      chunk.clear();
    };
    trace.forEachPoint([&](QPointF point) {
      if (!std::isfinite(point.x()) || !std::isfinite(point.y())) return flush();
      chunk << point;
      if (chunk.size() < kChunk) return;
      const QPolygonF shared(chunk.last(2));
      flush();
      chunk = shared;
    });
    flush();
  }
}

void PainterContext::strokeTracesOnPaper(const Path& path) {
  if (clippedRect().isEmpty()) return;
  const QRectF visible = visibleRect(path.lineWidth());
  const QColor& color = state().strokeColor;
  if (paperTraces_ != nullptr && PaperTraces::canHold(visible, toDevice())) {
    const QPainterPath marker = paperTraces_->stroke(path.traces(), visible, toDevice(), path.lineWidth(), color);
    if (marker.isEmpty()) return;
    // The painter's opacity holds for strokes, too; a colour's own only for what it fills.
    painter_.setTransform(QTransform());
    painter_.setOpacity(color.alphaF());
    painter_.fillPath(marker, QColor(color.rgb()));
    painter_.setOpacity(1);
    return onTransform();
  }
  QPainterPath lines;
  for (const Trace& trace : path.traces()) {
    for (const QPolygonF& line : reduceTrace(trace, kPaperTraceColumn, visible, 0))
      lines.addPolygon(line);
  }
  if (!lines.isEmpty()) painter_.strokePath(lines, tracePen(path, color));
}

void PainterContext::onFill(const Path& path) {
  QPainterPath shape = path.shape();
  if (!path.traces().empty()) {
    const QRectF visible = visibleRect(0);
    for (const Trace& trace : path.traces()) {
      for (const QPolygonF& line : traceAreas(trace, kPaperTraceColumn, visible))
        shape.addPolygon(line);
    }
  }
  const QColor& color = state().fillColor;
  if (isUncleared_ && color.alpha() == kOpaque && fillsAll(shape)) {
    isUncleared_ = false;
    return fillPixels(target_, color.rgb());
  }
  clearOnce();
  shape.setFillRule(path.windingRule() == Path::Winding::NonZero ? Qt::WindingFill : Qt::OddEvenFill);
  painter_.fillPath(shape, color);
}

void PainterContext::onSymbols(const Symbols& symbols) {
  clearOnce();
  if (onPaper()) return drawSymbolsOnPaper(symbols);
  const bool drawn = drawUnderClip(
      [&](const PixelTarget& pixels, const QRect& clip) { return paintSymbols(pixels, symbols, toDevice(), clip); });
  if (!drawn) GraphicsContext::onSymbols(symbols);
}

// A symbol of the page, with the painter's pen and brush already its own. An opaque outline shares one path with its
// fill; a translucent one would let paper show through instead of the fill.
void PainterContext::drawSymbolOnPaper(const SymbolLook& look, const QPainterPath& circle) {
  if (look.strokes == 1 && look.stroke.alpha() == kOpaque) return painter_.drawPath(circle);
  if (look.fill.isValid()) painter_.fillPath(circle, painter_.brush());
  for (int stroke = 0; look.hasOutline() && stroke < look.strokes; ++stroke)
    painter_.strokePath(circle, painter_.pen());
}

// Many discs of one colour are one path of round dots, a tenth as long as a path each.
void PainterContext::drawSymbolsOnPaper(const Symbols& symbols) {
  const auto toPage = [](double coordinate) { return std::round(coordinate / kPaperStep) * kPaperStep; };
  const auto placeOf = [&](std::int64_t i) {
    const QPointF center = *symbols.center(i);
    return QPointF(toPage(center.x()), toPage(center.y()));
  };
  painter_.save();
  if (const QColor color = symbols.colorOfPlainDiscs(); color.isValid()) {
    painter_.setPen(QPen(color, 2 * symbols.outerRadius(), Qt::SolidLine, Qt::RoundCap));
    QPolygonF dots;
    for (const std::int64_t i : symbolsOnPaper(symbols, clippedRect()))
      dots.append(placeOf(i));
    painter_.drawPoints(dots);
    painter_.restore();
    return;
  }
  const SymbolLook* last = nullptr;
  for (const std::int64_t i : symbolsOnPaper(symbols, clippedRect())) {
    const SymbolLook& look = symbols.look(i);
    if (&look != std::exchange(last, &look)) {
      painter_.setPen(look.hasOutline() ? tracePen(look.circle({}), look.stroke) : QPen(Qt::NoPen));
      painter_.setBrush(look.fill.isValid() ? QBrush(look.fill) : QBrush(Qt::NoBrush));
    }
    QPainterPath circle;
    circle.addEllipse(placeOf(i), look.radius, look.radius);
    drawSymbolOnPaper(look, circle);
  }
  painter_.restore();
}

void PainterContext::onText(const QString& text, QPointF position, const TextAttributes& attributes) {
  clearOnce();
  const QStringList lines = text.split(QLatin1Char('\n'));
  double baseline = position.y() + double(lines.size() - 1) * attributes.lineHeight() + attributes.descent();
  for (const QString& line : lines) {
    drawLine(line, QPointF(position.x(), baseline), attributes);
    baseline -= attributes.lineHeight();
  }
}

// On paper text stays text; on pixels its outlines are filled, so that glyphs stand at exact positions at every
// scale.
void PainterContext::drawLine(const QString& line, QPointF baseline, const TextAttributes& attributes) {
  if (line.isEmpty()) return;
  const Typeface& face = Typeface::forFamily(attributes.family());
  const double scale = attributes.pointSize() / Typeface::kDesignSize;
  painter_.save();
  painter_.translate(baseline);
  painter_.scale(scale, -scale);
  if (onPaper()) {
    painter_.setPen(attributes.effectiveColor());
    painter_.setFont(face.font());
    painter_.drawText(QPointF(0, 0), line);
  } else {
    painter_.fillPath(face.outline(line), attributes.effectiveColor());
  }
  painter_.restore();
}

void PainterContext::onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction) {
  clearOnce();
  painter_.save();
  painter_.setOpacity(fraction);
  const QTransform matrix = toDevice();
  if (onPaper()) {
    const QImage page = imageForPaper(image, source, target.size());
    drawMirrored(page, target, page.rect());
  } else if (matrix.type() <= QTransform::TxScale && matrix.m11() > 0 && matrix.m22() < 0) {
    const ResampledImage shown =
        resampleImage(image, source, matrix.mapRect(target), QRect(0, 0, target_.width, target_.height));
    painter_.setTransform(QTransform());
    painter_.drawImage(shown.topLeft, shown.image);
  } else {
    drawMirrored(image, target, source);
  }
  painter_.restore();
}

// Images have y downwards: they are mirrored about the middle of their place.
void PainterContext::drawMirrored(const QImage& image, const QRectF& target, const QRectF& source) {
  painter_.translate(0, target.top() + target.bottom());
  painter_.scale(1, -1);
  painter_.drawImage(target, image, source);
}

} // namespace xov
