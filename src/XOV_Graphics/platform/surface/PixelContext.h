#pragma once

#include "XOV_Graphics/platform/surface/PainterContext.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include <QRect>

#include <functional>

namespace xov {

struct KeptPixels;

/// Pixels: lines along them stay crisp, text is filled outlines, and traces, symbols and images go through
/// rasterisers of our own.
class PixelContext final : public PainterContext {
public:
  /// `painter` paints on the image behind `target`, whose memory traces are blended into directly. What the memory
  /// holds at first is cleared. Scaled images and texts are taken from `kept`, and go there, where it is given.
  PixelContext(QPainter& painter, const QTransform& viewToDevice, const PixelTarget& target,
               KeptPixels* kept = nullptr);
  PixelContext(const PixelContext&) = delete;
  PixelContext& operator=(const PixelContext&) = delete;
  ~PixelContext() override;

protected:
  void onClipRect(const QRectF& rect) override;
  void onStroke(const Path& path) override;
  void onFill(const Path& path) override;
  void onPatches(const Patches& patches) override;
  void onTraceStrokes(const TraceStrokes& strokes) override;
  void onSymbols(const Symbols& symbols) override;
  void onText(const QString& text, QPointF position, const TextAttributes& attributes) override;
  void onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
               ImageKind kind) override;
  void drawLineAtDesignSize(const QString& line, const TextAttributes& attributes) override;

private:
  void clearOnce();
  bool fillsAll(const QPainterPath& shape) const;
  QRect clippedPixels() const;
  bool drawUnderClip(const std::function<bool(const PixelTarget&, const QRect& clip)>& draw);
  bool layOnKept(const QString& line, const TextAttributes& attributes);
  void strokeShape(const Path& path);
  bool strokeCrisp(const Path& path);
  bool fillTracesAlone(const Path& path);
  void strokeTracesPointByPoint(const Path& path);

  PixelTarget target_;
  KeptPixels* kept_;
  bool isUncleared_ = true; // until something is drawn: mostly a view's background, which needs no clearing
};

} // namespace xov
