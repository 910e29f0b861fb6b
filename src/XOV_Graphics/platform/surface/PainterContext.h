#pragma once

#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include <QRect>

#include <functional>

class QPainter;

namespace xov {

class PaperTraces;

/// A graphics context over a QPainter, for pixels and for paper.
class PainterContext final : public GraphicsContext {
public:
  /// Pixels: `painter` paints on the image behind `target`, whose memory traces are blended into directly. What the
  /// memory holds at first is cleared.
  PainterContext(QPainter& painter, const QTransform& viewToDevice, const PixelTarget& target);
  /// Paper: text stays text, traces are reduced to what a page shows. They go into `traces`, and only their markers
  /// onto the page, unless it is null.
  PainterContext(QPainter& painter, const QTransform& viewToDevice, PaperTraces* traces);
  PainterContext(const PainterContext&) = delete;
  PainterContext& operator=(const PainterContext&) = delete;
  ~PainterContext() override;

protected:
  void onSave() override;
  void onRestore() override;
  void onTransform() override;
  void onClipRect(const QRectF& rect) override;
  void onClipPath(const Path& path) override;
  void onStroke(const Path& path) override;
  void onFill(const Path& path) override;
  void onSymbols(const Symbols& symbols) override;
  void onText(const QString& text, QPointF position, const TextAttributes& attributes) override;
  void onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction) override;

private:
  bool onPaper() const { return target_.bits == nullptr; }
  void clearOnce();
  bool fillsAll(const QPainterPath& shape) const;
  QTransform toDevice() const { return state().transform * viewToDevice_; }
  QRectF visibleRect(double lineWidth) const;
  QRectF clippedRect() const;
  bool drawUnderClip(const std::function<bool(const PixelTarget&, const QRect& clip)>& draw);
  void drawSymbolOnPaper(const SymbolLook& look, const QPainterPath& circle);
  void drawSymbolsOnPaper(const Symbols& symbols);
  void strokeShape(const Path& path);
  void strokeTracesOnPixels(const Path& path);
  void strokeTracesPointByPoint(const Path& path);
  void strokeTracesOnPaper(const Path& path);
  void drawMirrored(const QImage& image, const QRectF& target, const QRectF& source);
  void drawLine(const QString& line, QPointF baseline, const TextAttributes& attributes);

  QPainter& painter_;
  QTransform viewToDevice_;
  PixelTarget target_;
  PaperTraces* paperTraces_ = nullptr;
  bool isUncleared_ = false; // until something is drawn: mostly a view's background, which needs no clearing
};

} // namespace xov
