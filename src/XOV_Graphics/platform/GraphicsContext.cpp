#include "XOV_Graphics/platform/GraphicsContext.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Stands in outside a drawing pass.
class NullContext final : public GraphicsContext {
public:
  NullContext() = default;
};

GraphicsContext*& currentContext() {
  static thread_local GraphicsContext* context = nullptr;
  return context;
}

bool isFinite(const QRectF& rect) {
  return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) &&
         std::isfinite(rect.height());
}

bool isFinite(const QTransform& t) {
  return std::isfinite(t.m11()) && std::isfinite(t.m12()) && std::isfinite(t.m21()) && std::isfinite(t.m22()) &&
         std::isfinite(t.dx()) && std::isfinite(t.dy()) && t.isAffine();
}

bool keepsRectangles(const QTransform& t) { return t.type() <= QTransform::TxScale; }

QRectF withoutNegativeSize(const QRectF& rect) {
  return {rect.x(), rect.y(), std::max(0.0, rect.width()), std::max(0.0, rect.height())};
}

} // namespace

GraphicsContext::GraphicsContext() : states_(1) {}

GraphicsContext::~GraphicsContext() = default;

GraphicsContext& GraphicsContext::current() {
  if (currentContext() != nullptr) return *currentContext();
  // A fresh context each time would lose nothing; one that is kept must not gather saved states.
  static thread_local NullContext none;
  none.states_.assign(1, {});
  return none;
}

GraphicsContext::Pass::Pass(GraphicsContext& context)
    : context_(context),
      previous_(currentContext()),
      depth_(context.stateDepth()) {
  currentContext() = &context;
  context_.saveState();
}

GraphicsContext::Pass::~Pass() {
  while (context_.stateDepth() > depth_)
    context_.restoreState();
  currentContext() = previous_;
}

void GraphicsContext::saveState() {
  states_.push_back(states_.back());
  onSave();
}

void GraphicsContext::restoreState() {
  if (states_.size() <= 1) return;
  states_.pop_back();
  onRestore();
}

void GraphicsContext::concat(const QTransform& transform) {
  if (!isFinite(transform)) return;
  states_.back().transform = transform * states_.back().transform;
  onTransform();
}

// Keeps the clip in view points, as a rectangle for as long as it is one.
void GraphicsContext::narrowClip(const QPainterPath& path, bool isRect) {
  GraphicsState& s = states_.back();
  const QPainterPath mapped = s.transform.map(path);
  const QRectF box = mapped.boundingRect();
  isRect = isRect && keepsRectangles(s.transform);
  if (!s.clipRect) {
    s.clipRect = box;
    s.clipIsRect = isRect;
    s.clipPath = mapped;
    return;
  }
  s.clipPath = s.clipPath.intersected(mapped);
  s.clipIsRect = s.clipIsRect && isRect;
  s.clipRect = s.clipRect->intersected(box);
}

void GraphicsContext::clipToRect(const QRectF& rect) {
  if (!isFinite(rect)) return;
  // Qt's paths take no coordinates from 1e128 on.
  constexpr double kFarthest = 1e100;
  QRectF box = withoutNegativeSize(rect);
  if (std::max({-box.left(), -box.top(), box.right(), box.bottom()}) > kFarthest)
    box = box.intersected({-kFarthest, -kFarthest, 2 * kFarthest, 2 * kFarthest});
  QPainterPath path;
  path.addRect(box);
  narrowClip(path, true);
  onClipRect(box);
}

void GraphicsContext::clipToPath(const Path& path) {
  narrowClip(path.shape(), false);
  onClipPath(path);
}

void GraphicsContext::setColor(const QColor& color) {
  setFillColor(color);
  setStrokeColor(color);
}

void GraphicsContext::setFillColor(const QColor& color) {
  if (color.isValid()) states_.back().fillColor = color;
}

void GraphicsContext::setStrokeColor(const QColor& color) {
  if (color.isValid()) states_.back().strokeColor = color;
}

void GraphicsContext::strokePath(const Path& path) {
  if (!path.isEmpty() && path.lineWidth() > 0) onStroke(path);
}

void GraphicsContext::fillPath(const Path& path) {
  if (!path.isEmpty()) onFill(path);
}

void GraphicsContext::strokeRect(const QRectF& rect) { strokePath(Path::rect(rect)); }

void GraphicsContext::fillRect(const QRectF& rect) { fillPath(Path::rect(rect)); }

void GraphicsContext::fillPatches(const Patches& patches) {
  if (!patches.isEmpty()) onPatches(patches);
}

void GraphicsContext::onPatches(const Patches& patches) {
  const SavedState saved(*this);
  for (std::size_t i = 0; i < patches.count(); ++i) {
    if (!patches.color(i).isValid()) continue;
    setFillColor(patches.color(i));
    fillPath(patches.path(i));
  }
}

void GraphicsContext::strokeTraces(const TraceStrokes& strokes) {
  if (!strokes.isEmpty()) onTraceStrokes(strokes);
}

void GraphicsContext::onTraceStrokes(const TraceStrokes& strokes) {
  const QColor before = state().strokeColor;
  for (std::size_t i = 0; i < strokes.count(); ++i) {
    setStrokeColor(strokes.color(i));
    strokePath(strokes.path(i));
  }
  setStrokeColor(before);
}

void GraphicsContext::drawSymbols(const Symbols& symbols) {
  if (!symbols.isEmpty()) onSymbols(symbols);
}

void GraphicsContext::onSymbols(const Symbols& symbols) {
  const SavedState saved(*this);
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (!center) continue;
    const SymbolLook& look = symbols.look(i);
    const Path circle = look.circle(*center);
    setFillColor(look.fill);
    if (look.fill.isValid()) fillPath(circle);
    setStrokeColor(look.stroke);
    for (int stroke = 0; look.hasOutline() && stroke < look.strokes; ++stroke)
      strokePath(circle);
  }
}

void GraphicsContext::drawText(const QString& text, QPointF position, const TextAttributes& attributes) {
  if (text.isEmpty() || attributes.pointSize() <= 0) return;
  if (!std::isfinite(position.x()) || !std::isfinite(position.y())) return;
  onText(text, position, attributes);
}

void GraphicsContext::drawImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
                                ImageKind kind) {
  if (image.isNull() || !isFinite(target) || !isFinite(source)) return;
  if (target.isEmpty() || source.isEmpty() || !(fraction > 0)) return;
  onImage(image, target, source, std::min(fraction, 1.0), kind);
}

} // namespace xov
