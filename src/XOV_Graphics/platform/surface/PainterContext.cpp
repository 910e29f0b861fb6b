#include "XOV_Graphics/platform/surface/PainterContext.h"

#include "XOV_Graphics/platform/surface/Typeface.h"

#include <QPainter>

namespace xov {

PainterState::PainterState(QPainter& painter) : painter_(painter) { painter_.save(); }

PainterState::~PainterState() { painter_.restore(); }

PainterContext::PainterContext(QPainter& painter, const QTransform& viewToDevice, const QRectF& surface)
    : SurfaceContext(viewToDevice, surface),
      painter_(painter) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setRenderHint(QPainter::SmoothPixmapTransform, false);
  painter_.setTransform(viewToDevice);
}

void PainterContext::onSave() { painter_.save(); }

void PainterContext::onRestore() { painter_.restore(); }

void PainterContext::onTransform() { painter_.setTransform(toDevice()); }

void PainterContext::onClipRect(const QRectF& rect) { painter_.setClipRect(rect, Qt::IntersectClip); }

void PainterContext::onClipPath(const Path& path) { painter_.setClipPath(path.shape(), Qt::IntersectClip); }

void PainterContext::drawTextLine(const QString& line, QPointF baseline, const TextAttributes& attributes) {
  const double scale = attributes.pointSize() / Typeface::kDesignSize;
  const PainterState before(painter_);
  painter_.translate(baseline);
  painter_.scale(scale, -scale);
  drawLineAtDesignSize(line, attributes);
}

// Mirrored about the middle of its place.
void PainterContext::drawUpright(const QImage& image, const QRectF& target, const QRectF& source) {
  painter_.translate(0, target.top() + target.bottom());
  painter_.scale(1, -1);
  painter_.drawImage(target, image, source);
}

} // namespace xov
