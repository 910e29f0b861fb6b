#pragma once

#include "XOV_Graphics/platform/surface/PainterContext.h"

namespace xov {

class PaperTraces;

/// Paper, and whatever else a painter paints on: text stays text, lines stay lines, and traces are reduced to what a
/// page shows. Of the painter's own state it keeps clip and opacity, and narrows and deepens them.
class PaperContext final : public PainterContext {
public:
  /// Shows what of a view lies in `surface` (view points). Traces go into `traces`, and only their markers onto the
  /// page, unless it is null.
  PaperContext(QPainter& painter, const QTransform& viewToDevice, const QRectF& surface, PaperTraces* traces);

protected:
  void onStroke(const Path& path) override;
  void onFill(const Path& path) override;
  void onSymbols(const Symbols& symbols) override;
  void onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
               ImageKind kind) override;
  void drawLineAtDesignSize(const QString& line, const TextAttributes& attributes) override;

private:
  void strokeTraces(const Path& path, const QRectF& visible);
  void fillMarker(const QPainterPath& marker, const QColor& color);
  void drawDots(const Symbols& symbols, const QColor& color);
  void drawCircles(const Symbols& symbols);
  void drawCircle(const SymbolLook& look, const QPainterPath& circle);
  QSizeF sizeOnPage(const QRectF& rect);

  PaperTraces* traces_;
};

} // namespace xov
