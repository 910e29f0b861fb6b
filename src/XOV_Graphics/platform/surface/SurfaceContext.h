#pragma once

#include "XOV_Graphics/platform/GraphicsContext.h"

#include <QRectF>
#include <QTransform>

namespace xov {

/// What all contexts that show a part of a view have in common: where it lies on the device, what of it shows, and
/// where the lines of a text stand.
class SurfaceContext : public GraphicsContext {
protected:
  /// `surface` is what the device can show, in view points.
  SurfaceContext(const QTransform& viewToDevice, const QRectF& surface)
      : viewToDevice_(viewToDevice),
        surface_(surface) {}

  const QTransform& viewToDevice() const { return viewToDevice_; }
  /// From the coordinates of the drawing calls.
  QTransform toDevice() const { return state().transform * viewToDevice_; }
  /// The part of the surface that drawing can change, in the coordinates of the drawing calls.
  QRectF clippedRect() const;
  /// What can show of lines of that width, ends and joins included.
  QRectF visibleRect(double lineWidth) const;
  /// What a fill of the path covers: its shape, and the areas of its traces as far as they show.
  QPainterPath filledShape(const Path& path) const;

  void onText(const QString& text, QPointF position, const TextAttributes& attributes) override;
  /// Draws one line of text, which is not empty, from its place on the baseline on.
  virtual void drawTextLine(const QString& line, QPointF baseline, const TextAttributes& attributes) = 0;

private:
  QTransform viewToDevice_;
  QRectF surface_;
};

} // namespace xov
