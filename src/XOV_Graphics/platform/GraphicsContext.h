#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/Patches.h"
#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/Symbols.h"
#include "XOV_Graphics/platform/TextAttributes.h"
#include "XOV_Graphics/platform/TraceStrokes.h"

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTransform>

#include <cstdint>
#include <optional>
#include <vector>

namespace xov {

/// What the pixels of an image are, which decides how surfaces scale and keep it.
enum class ImageKind : std::uint8_t {
  Cells,        ///< values, cell by cell: large cells keep sharp edges, and files hold every colour as it is
  Picture,      ///< a photograph or a relief: large ones are kept in files with losses that the eye does not see
  ExactPicture, ///< the same, to the fraction of a device pixel: what lies on several of its pixels takes their mean
};

/// What saveState() keeps: colours, transform and clip.
struct XOV_EXPORT GraphicsState {
  /// Of fills; text has a colour of its own.
  QColor fillColor = QColor::fromRgbF(0, 0, 0);
  /// Of strokes.
  QColor strokeColor = QColor::fromRgbF(0, 0, 0);
  /// From the coordinates that drawing calls use to view points.
  QTransform transform;
  /// The clip in view points; none clips nothing. `clipRect` is its bounding box, and the whole of it while
  /// `clipIsRect` holds.
  std::optional<QRectF> clipRect;
  bool clipIsRect = true; ///< whether clipRect is all of the clip
  QPainterPath clipPath;  ///< where it is not
};

/// The surface that views draw on: a window, a picture, a page or a recording, all through the same calls.
/// Coordinates are view points with y upwards; 72 points make an inch on paper.
///
/// During a drawing pass current() is the surface being drawn on. Outside a pass it is a context that ignores every
/// call, so that drawing operations of a view may be called at any time. Each thread has a current() of its own.
class XOV_EXPORT GraphicsContext {
public:
  virtual ~GraphicsContext();
  GraphicsContext(const GraphicsContext&) = delete;
  GraphicsContext& operator=(const GraphicsContext&) = delete;

  /// The surface being drawn on; outside a pass one that ignores every call.
  static GraphicsContext& current();

  /// Makes a context the current one for its own lifetime; passes nest. When it ends, the context's state is as it
  /// was before, even if the drawing saved and restored unevenly.
  class XOV_EXPORT Pass {
  public:
    /// Makes a context the current one.
    explicit Pass(GraphicsContext& context);
    ~Pass();
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

  private:
    GraphicsContext& context_;
    GraphicsContext* previous_;
    std::size_t depth_;
  };

  /// Keeps the state for restoreState(); where both stand in one scope, SavedState says it in one line.
  void saveState();
  /// Brings back the state of the matching saveState(); without one it does nothing.
  void restoreState();

  /// Prepends a transform: later drawing goes through it first. A transform with a non-finite entry is ignored.
  void concat(const QTransform& transform);
  /// Narrows the clip. A rectangle of negative size counts as empty, one that is not finite clips nothing.
  void clipToRect(const QRectF& rect);
  /// Narrows the clip to the inside of a path, by its winding rule.
  void clipToPath(const Path& path);

  /// Sets both the fill and the stroke colour.
  void setColor(const QColor& color);
  /// Sets the colour of fills alone.
  void setFillColor(const QColor& color);
  /// Sets the colour of strokes alone.
  void setStrokeColor(const QColor& color);

  /// Strokes a path with its own width, cap, join and dashes in the stroke colour.
  void strokePath(const Path& path);
  /// Fills a path under its winding rule in the fill colour. Each unbroken piece of a trace is closed and filled,
  /// too; where more than four samples share a quarter of a point, only the first and the last of them count, since a
  /// stroke of the trace covers what lies between.
  void fillPath(const Path& path);
  /// Strokes the outline of a rectangle, line width 1.
  void strokeRect(const QRectF& rect);
  /// Fills a rectangle in the fill colour.
  void fillRect(const QRectF& rect);
  /// Fills each patch in its own colour.
  void fillPatches(const Patches& patches);
  /// Strokes traces one after the other, in the strokes' own colours.
  void strokeTraces(const TraceStrokes& strokes);
  /// Fills and strokes each symbol, one after the other, in the symbols' own colours.
  void drawSymbols(const Symbols& symbols);
  /// Draws text, one line below the other at line feeds, with the lower left corner of its box at `position`.
  void drawText(const QString& text, QPointF position, const TextAttributes& attributes);
  /// Draws the part `source` of an image (pixels, from its upper left corner, y downwards) into `target` (view
  /// points). Cells larger than a device pixel keep sharp edges, unless `kind` says otherwise; smaller ones are
  /// averaged. `fraction` is the opacity.
  void drawImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction = 1,
                 ImageKind kind = ImageKind::Cells);

  /// Colours, transform and clip in force.
  const GraphicsState& state() const { return states_.back(); }
  /// How many states are kept, the one in force among them.
  std::size_t stateDepth() const { return states_.size(); }

protected:
  GraphicsContext();

  // The surface: what a kind of context does with each call. state() is up to date when these are called.
  /// A state was put on the stack.
  virtual void onSave() {}
  /// The state before is in force again.
  virtual void onRestore() {}
  /// The transform has changed.
  virtual void onTransform() {}
  /// A rectangle, in the coordinates before the transform, has narrowed the clip.
  virtual void onClipRect(const QRectF&) {}
  /// A path has narrowed the clip.
  virtual void onClipPath(const Path&) {}
  /// Strokes a path with the stroke colour.
  virtual void onStroke(const Path&) {}
  /// Fills a path with the fill colour.
  virtual void onFill(const Path&) {}
  /// Fills the patches as paths one by one; overridden where there is a faster way.
  virtual void onPatches(const Patches& patches);
  /// Strokes a path for each stroke of traces; overridden where there is a faster way to the same picture.
  virtual void onTraceStrokes(const TraceStrokes& strokes);
  /// Fills and strokes the circles one by one; overridden where there is a faster way to the same picture.
  virtual void onSymbols(const Symbols& symbols);
  /// Draws a text with the lower left corner of its box at a point.
  virtual void onText(const QString&, QPointF, const TextAttributes&) {}
  /// Draws the source part of an image into a target, with a share of its opacity.
  virtual void onImage(const QImage&, const QRectF&, const QRectF&, double, ImageKind) {}

private:
  void narrowClip(const QPainterPath& path, bool isRect);

  std::vector<GraphicsState> states_;
};

/// Keeps a context's state for its own lifetime: one saveState() where it is made, one restoreState() where its scope
/// ends.
class XOV_EXPORT SavedState {
public:
  /// Saves the state, which the destructor restores.
  explicit SavedState(GraphicsContext& context) : context_(context) { context_.saveState(); }
  ~SavedState() { context_.restoreState(); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;

private:
  GraphicsContext& context_;
};

} // namespace xov
