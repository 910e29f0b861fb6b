#include "XOV_Graphics/platform/surface/PixelContext.h"

#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/platform/pixels/CrispLines.h"
#include "XOV_Graphics/platform/pixels/KeptPixels.h"
#include "XOV_Graphics/platform/pixels/LineClip.h"
#include "XOV_Graphics/platform/pixels/PatchFill.h"
#include "XOV_Graphics/platform/pixels/StripFill.h"
#include "XOV_Graphics/platform/surface/Pens.h"
#include "XOV_Graphics/platform/surface/Typeface.h"
#include "XOV_Graphics/platform/symbol/SymbolRaster.h"
#include "XOV_Graphics/platform/trace/TangledTraces.h"
#include "XOV_Graphics/platform/trace/TraceStretches.h"

#include <QPainter>
#include <QPainterPathStroker>

#include <algorithm>
#include <cmath>
#include <new>

namespace xov {

namespace {

// Points of a trace that go to the general stroker at a time.
constexpr qsizetype kChunk = 2048;
// Coordinates beyond this many pixels would overflow the painter's fixed-point arithmetic.
constexpr double kPainterLimit = 16000;
constexpr int kOpaque = 255;

// The area of a dashed line. The painter's own pens count dashes in pixels where a line is thinner than one.
QPainterPath dashedArea(const QPen& pen, const QPainterPath& shape) {
  QPainterPathStroker stroker(pen);
  return stroker.createStroke(shape);
}

void fillPixels(const PixelTarget& target, QRgb color) {
  constexpr int kBandRows = 64;
  runTasks((target.height + kBandRows - 1) / kBandRows, TaskStart::FirstAlone, [&](int band) {
    const int end = std::min((band + 1) * kBandRows, target.height);
    for (int row = band * kBandRows; row < end; ++row)
      std::fill_n(reinterpret_cast<QRgb*>(target.bits + row * target.bytesPerLine), target.width, color);
  });
}

/// A rectangle of pixels, or what of it lies about the picture where it reaches farther than whole numbers do. One
/// that is not finite clips nothing, as in clipToRect().
QRectF withinReach(const QRectF& rect, const QRect& picture) {
  constexpr double kFarthest = 1e8;
  const double reach =
      std::abs(rect.left()) + std::abs(rect.right()) + std::abs(rect.top()) + std::abs(rect.bottom());
  if (reach < kFarthest) return rect;
  const QRectF about = picture.adjusted(-1, -1, 1, 1);
  return std::isfinite(reach) ? rect.intersected(about) : about;
}

bool withinPainterLimits(const QPainterPath& deviceShape) {
  const QRectF box = deviceShape.controlPointRect();
  return std::abs(box.left()) < kPainterLimit && std::abs(box.right()) < kPainterLimit &&
         std::abs(box.top()) < kPainterLimit && std::abs(box.bottom()) < kPainterLimit;
}

} // namespace

PixelContext::PixelContext(QPainter& painter, const QTransform& viewToDevice, const PixelTarget& target,
                           KeptPixels* kept)
    : PainterContext(painter, viewToDevice,
                     viewToDevice.inverted().mapRect(QRectF(0, 0, target.width, target.height))),
      target_(target),
      kept_(kept) {}

PixelContext::~PixelContext() {
  clearOnce();
  if (kept_ != nullptr) kept_->texts.endPicture();
}

void PixelContext::clearOnce() {
  if (!isUncleared_) return;
  isUncleared_ = false;
  fillPixels(target_, 0);
}

/// True for a rectangle that every pixel lies inside of, drawn without a clip.
bool PixelContext::fillsAll(const QPainterPath& shape) const {
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

// Qt's own clips are whole numbers of pixels, too.
void PixelContext::onClipRect(const QRectF& rect) {
  const QTransform matrix = toDevice();
  const QRectF pixels = matrix.mapRect(rect);
  const QRectF near = withinReach(pixels, {0, 0, target_.width, target_.height});
  if (near == pixels || matrix.type() > QTransform::TxScale) return PainterContext::onClipRect(rect);
  painter().setTransform(QTransform());
  painter().setClipRect(near, Qt::IntersectClip);
  onTransform();
}

void PixelContext::onStroke(const Path& path) {
  clearOnce();
  if (path.shape().elementCount() > 0 && !strokeCrisp(path)) strokeShape(path);
  if (path.traces().empty()) return;
  using Rasteriser =
      bool(const PixelTarget&, std::span<const Trace>, const QTransform&, const QRect&, double, const QColor&);
  const auto stroke = [&](std::span<const Trace> traces, Rasteriser* rasteriser) {
    return drawUnderClip([&](const PixelTarget& pixels, const QRect& clip) {
      return rasteriser(pixels, traces, toDevice(), clip, path.lineWidth(), state().strokeColor);
    });
  };
  if (stroke(path.traces(), xov::strokeTraces)) return;
  const auto stretches = TraceStretches::of(path.traces());
  if (stretches && stroke(stretches->traces(), xov::strokeTraces)) return;
  if (!stroke(path.traces(), strokeTangledTraces)) strokeTracesPointByPoint(path);
}

bool PixelContext::strokeCrisp(const Path& path) {
  const QColor& color = state().strokeColor;
  if (!path.dashes().empty() || path.lineCap() != Path::Cap::Butt || color.alpha() != kOpaque) return false;
  const QTransform matrix = toDevice();
  const double deviceWidth = path.lineWidth() * std::sqrt(std::abs(matrix.determinant()));
  const auto lines = crispLines(matrix.map(path.shape()), deviceWidth, QSize(target_.width, target_.height));
  if (!lines) return false;
  painter().setTransform(QTransform());
  for (const QRect& line : *lines)
    painter().fillRect(line, color);
  onTransform();
  return true;
}

void PixelContext::strokeShape(const Path& path) {
  QPainterPath shape = path.shape();
  if (!withinPainterLimits(toDevice().map(shape))) {
    const QRectF bounds = visibleRect(path.lineWidth());
    QPainterPath near;
    for (const QPolygonF& line : shape.toSubpathPolygons()) {
      for (const QPolygonF& piece : clipPolyline(line, bounds))
        near.addPolygon(piece);
    }
    shape = near;
  }
  QPen pen = penFor(path, shape, state().strokeColor);
  // Qt's own stroker counts the mitre limit from the line's centre, paper from edge to edge.
  pen.setMiterLimit(path.miterLimit() / 2);
  if (pen.style() == Qt::SolidLine) return painter().strokePath(shape, pen);
  painter().fillPath(dashedArea(pen, shape), state().strokeColor);
}

// The pixels inside the clip, or inside the box around one that is no rectangle.
QRect PixelContext::clippedPixels() const {
  const QRect picture(0, 0, target_.width, target_.height);
  if (!state().clipRect) return picture;
  const QRectF pixels = viewToDevice().mapRect(*state().clipRect);
  return withinReach(pixels, picture).toRect().intersected(picture);
}

// Lets a rasteriser of our own change the pixels inside the clip; false when it says that it cannot.
bool PixelContext::drawUnderClip(const std::function<bool(const PixelTarget&, const QRect&)>& draw) {
  const QRect clip = clippedPixels();
  if (clip.isEmpty()) return true;
  if (state().clipIsRect) return draw(target_, clip);
  // Under a clip of any other shape the ink goes onto a layer of its own, which the painter then clips.
  QImage layer(target_.width, target_.height, QImage::Format_ARGB32_Premultiplied);
  if (layer.isNull()) throw std::bad_alloc();
  layer.fill(Qt::transparent);
  if (!draw({layer.bits(), layer.bytesPerLine(), layer.width(), layer.height()}, clip)) return false;
  painter().setTransform(QTransform());
  painter().drawImage(0, 0, layer);
  onTransform();
  return true;
}

// The general stroker, for pictures that are sheared or stretched; in chunks that share a segment, so that the line
// is joined where one ends.
void PixelContext::strokeTracesPointByPoint(const Path& path) {
  const QPen pen = tracePen(path.lineWidth(), state().strokeColor);
  const QRectF bounds = visibleRect(path.lineWidth());
  for (const Trace& trace : path.traces()) {
    QPolygonF chunk;
    const auto flush = [&] {
      QPainterPath near;
      for (const QPolygonF& piece : clipPolyline(chunk, bounds))
        near.addPolygon(piece);
      if (!near.isEmpty()) painter().strokePath(near, pen);
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

void PixelContext::onFill(const Path& path) {
  if (fillTracesAlone(path)) return;
  const QPainterPath shape = filledShape(path);
  const QColor& color = state().fillColor;
  if (isUncleared_ && color.alpha() == kOpaque && fillsAll(shape)) {
    isUncleared_ = false;
    return fillPixels(target_, color.rgb());
  }
  clearOnce();
  if (!fillInStrips(painter(), shape, color)) painter().fillPath(shape, color);
}

// Lines and curves of the same path would wind together with its traces.
bool PixelContext::fillTracesAlone(const Path& path) {
  if (path.traces().empty() || path.shape().elementCount() > 0) return false;
  clearOnce();
  const InsideRule rule = path.windingRule() == Path::Winding::NonZero ? InsideRule::NonZero : InsideRule::Odd;
  return drawUnderClip([&](const PixelTarget& pixels, const QRect& clip) {
    return fillTraces(pixels, path.traces(), toDevice(), clip, rule, state().fillColor);
  });
}

void PixelContext::onPatches(const Patches& patches) {
  clearOnce();
  drawUnderClip([&](const PixelTarget& pixels, const QRect& clip) {
    xov::fillPatches(pixels, patches, toDevice(), clip);
    return true;
  });
}

// Under a clip that is no rectangle each stroke goes onto a layer of its own.
void PixelContext::onTraceStrokes(const TraceStrokes& strokes) {
  if (!state().clipIsRect || !strokes.color(0).isValid()) return GraphicsContext::onTraceStrokes(strokes);
  clearOnce();
  const QColor before = state().strokeColor;
  drawUnderClip([&](const PixelTarget& pixels, const QRect& clip) {
    xov::strokeTraces(pixels, strokes, toDevice(), clip, [&](std::size_t stroke) {
      setStrokeColor(strokes.color(stroke));
      onStroke(strokes.path(stroke));
    });
    return true;
  });
  setStrokeColor(before);
}

void PixelContext::onSymbols(const Symbols& symbols) {
  clearOnce();
  const bool drawn = drawUnderClip(
      [&](const PixelTarget& pixels, const QRect& clip) { return paintSymbols(pixels, symbols, toDevice(), clip); });
  if (!drawn) GraphicsContext::onSymbols(symbols);
}

void PixelContext::onText(const QString& text, QPointF position, const TextAttributes& attributes) {
  clearOnce();
  PainterContext::onText(text, position, attributes);
}

// The outlines are filled, so that glyphs stand at exact positions at every scale.
void PixelContext::drawLineAtDesignSize(const QString& line, const TextAttributes& attributes) {
  if (!layOnKept(line, attributes))
    painter().fillPath(Typeface::forFamily(attributes.family()).outline(line), attributes.effectiveColor());
}

// A clip that cuts a line, or is no rectangle, cuts its outlines.
bool PixelContext::layOnKept(const QString& line, const TextAttributes& attributes) {
  if (kept_ == nullptr || !state().clipIsRect) return false;
  const KeptTexts::Ink* const ink = kept_->texts.inkOf(
      {line, attributes.family(), painter().transform(), attributes.effectiveColor().rgba64()},
      {target_.width, target_.height}, [&] { return Typeface::forFamily(attributes.family()).outline(line); });
  if (ink == nullptr || !clippedPixels().contains(QRect(ink->topLeft, ink->image.size()))) return false;
  painter().setTransform(QTransform()); // whoever draws a line puts it back
  painter().drawImage(ink->topLeft, ink->image);
  return true;
}

void PixelContext::onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
                           ImageKind kind) {
  clearOnce();
  const PainterState before(painter());
  painter().setOpacity(fraction);
  const QTransform matrix = toDevice();
  if (matrix.type() <= QTransform::TxScale && matrix.m11() > 0 && matrix.m22() < 0) {
    const CellEdges edges = kind == ImageKind::ExactPicture ? CellEdges::Shared : CellEdges::Sharp;
    const QRectF device = matrix.mapRect(target);
    const QRect visible(0, 0, target_.width, target_.height);
    const ResampledImage shown = kept_ != nullptr ? kept_->images.scaled(image, source, device, visible, edges)
                                                  : resampleImage(image, source, device, visible, edges);
    painter().setTransform(QTransform());
    painter().drawImage(shown.topLeft, shown.image);
  } else {
    drawUpright(image, target, source);
  }
}

} // namespace xov
