#pragma once

#include "XOV_Graphics/platform/surface/SurfaceContext.h"

class QPainter;

namespace xov {

/// Keeps a painter's state for its own lifetime, also where what is drawn throws.
class PainterState {
public:
  explicit PainterState(QPainter& painter);
  ~PainterState();
  PainterState(const PainterState&) = delete;
  PainterState& operator=(const PainterState&) = delete;

private:
  QPainter& painter_;
};

/// What the contexts over a QPainter have in common: its state, transform and clip.
class PainterContext : public SurfaceContext {
protected:
  /// `viewToDevice` becomes the whole of the painter's transform.
  PainterContext(QPainter& painter, const QTransform& viewToDevice, const QRectF& surface);

  QPainter& painter() { return painter_; }
  /// Draws an image, whose y runs downwards, upright; leaves the painter's transform changed.
  void drawUpright(const QImage& image, const QRectF& target, const QRectF& source);

  void onSave() override;
  void onRestore() override;
  void onTransform() override;
  void onClipRect(const QRectF& rect) override;
  void onClipPath(const Path& path) override;
  void drawTextLine(const QString& line, QPointF baseline, const TextAttributes& attributes) override;
  /// Draws a line of text at Typeface::kDesignSize from the painter's origin on, y downwards.
  virtual void drawLineAtDesignSize(const QString& line, const TextAttributes& attributes) = 0;

private:
  QPainter& painter_;
};

} // namespace xov
