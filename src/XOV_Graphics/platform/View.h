#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/ViewOverlay.h"

#include <QByteArray>
#include <QCursor>
#include <QElapsedTimer>
#include <QImage>
#include <QRegion>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QPainter;

namespace xov {

struct KeptPixels;

/// A press of a mouse button, as a view is told of it.
struct XOV_EXPORT MouseEvent {
  /// In the coordinates of the view's window, in logical pixels from its upper left corner, y downwards.
  QPointF locationInWindow;
  /// Keys that were held down.
  Qt::KeyboardModifiers modifierFlags;
  /// 1 for a single click, 2 for the second of a double click, and so on.
  int clickCount = 1;
};

/// A widget that draws in view points: y upwards from the lower left corner, one point a logical pixel on screen and
/// 1/72 inch on paper. Subclasses override drawRect(); the same drawing then serves the window, pictures of any pixel
/// ratio, PDF and recordings.
///
/// In a layout it takes all the room there is, and Tab reaches it. Which thread may do what: docs/reliability.md.
class XOV_EXPORT View : public QWidget {
  Q_OBJECT
  Q_CLASSINFO("shows", "drawing")
  Q_PROPERTY(double exportPixelRatio READ exportPixelRatio WRITE setExportPixelRatio)

public:
  /// A view without a frame: a layout, or sizeHint() when it is shown as a window, gives it its size.
  explicit View(QWidget* parent = nullptr);
  /// A view of the frame's size (rounded to whole points, negative sizes as 0) at the frame's place in its parent. A
  /// window takes the place for its own upper left corner, title bar included, not left of the screen's corner nor
  /// above it; at (0, 0) the window system places it. The empty frame QRectF() is none.
  explicit View(const QRectF& frame, QWidget* parent = nullptr);
  ~View() override;

  /// The frame's size, or usualSize() of a view that was made without one.
  QSize sizeHint() const override;
  /// A third of usualSize(), which leaves room for something between the margins.
  QSize minimumSizeHint() const override;
  /// The size at which a view of this kind reads well, in view points.
  virtual QSize usualSize() const;

  /// (0, 0, width, height).
  QRectF bounds() const { return {0, 0, double(width()), double(height())}; }

  /// Draws the view; called with the area that needs it. The base draws nothing.
  virtual void drawRect(const QRectF& dirty);
  /// Draws the whole view onto a context, in a pass of its own. What drawRect() throws ends the drawing and goes to
  /// the log.
  void drawInto(GraphicsContext& context);

  /// Asks for a redraw of the window.
  void setNeedsDisplay(bool needed = true);

  /// Marks over the window's drawing, which no export has. What lies below is kept, so that moving them draws nothing
  /// of the view anew.
  void setOverlay(const ViewOverlay& overlay);
  const ViewOverlay& overlay() const { return overlay_; }

  /// True from a change of the window's size until shortly after the last one of a series.
  bool inLiveResize() const { return liveResizeTimer_.isActive(); }
  /// Called once after a series of size changes. The base does nothing.
  virtual void viewDidEndLiveResize();

  /// The part of the view inside a rectangle as a one-page PDF of that size in points: vector drawing, text that can
  /// be selected, fonts embedded. The same drawing gives the same bytes. Empty for an empty rectangle, and where it
  /// cannot be made whole.
  QByteArray dataWithPDFInsideRect(const QRectF& rect);
  /// The part of the view inside a rectangle as an SVG document of that size in points: lines, traces and text as
  /// such, only images as pixels. The same drawing gives the same bytes. Empty for an empty rectangle, and where it
  /// cannot be made whole.
  QByteArray dataWithSVGInsideRect(const QRectF& rect);
  /// Draws the whole view as vectors with a painter of the host's, into `target` in the painter's coordinates (y
  /// downwards), which it fills: give it the view's own proportions, or it is stretched. For a page of a QPrinter, a
  /// QSvgGenerator, a QQuickPaintedItem and the like. Text stays text where the painter's device has fonts, and
  /// traces are lines; nothing outside `target` is painted on as far as the device knows clips. The painter's clip,
  /// transform and opacity hold, and all of its state is as before when this returns. An inactive painter and an
  /// empty target draw nothing.
  void paint(QPainter& painter, const QRectF& target);
  /// The part of the view inside a rectangle, at exportPixelRatio() pixels a point; transparent where nothing is
  /// drawn. A rectangle inside the bounds gives the same pixels as the picture of the whole view has there, on whose
  /// pixels it starts. A null image when the rectangle is empty or memory does not allow it.
  QImage pictureOfRect(const QRectF& rect);

  /// Pixels a point of pictures: that of the screen which the view is on, unless set. Clamped to 0.1 … 32.
  double exportPixelRatio() const;
  /// 0 returns to the screen's.
  void setExportPixelRatio(double ratio);
  /// Why the last page, document or picture of the view was empty, in a few words, such as "not enough memory" or
  /// what drawRect() threw; empty where it was not, or only because its rectangle was.
  const QString& exportError() const { return exportError_; }

  /// The point of the view (y upwards) under a point of its window (logical pixels, y downwards).
  QPointF convertPointFromWindow(QPointF locationInWindow) const;
  /// The way back.
  QPointF convertPointToWindow(QPointF viewPoint) const;

  /// Called when cursor rectangles must be set up anew: when the view is shown and after each drawing of its window,
  /// which may have laid it out anew. The base adds none.
  virtual void resetCursorRects();
  /// Shows a cursor while the pointer is inside a rectangle (view points), from its next movement on. A cursor that a
  /// host gives the view with setCursor() goes before those of rectangles, until unsetCursor().
  void addCursorRect(const QRectF& rect, const QCursor& cursor);
  /// Takes all cursor rectangles away.
  void discardCursorRects();

  /// A button of the mouse went down in the view; does nothing unless overridden.
  virtual void mouseDown(const MouseEvent& event);

  // For screen readers, where the host has set no accessibleName() or accessibleDescription().

  /// What kind of view it is, in lower case: the class information "shows" of the class or the nearest above it.
  QString kind() const;
  /// The name: the kind, unless there is a better one.
  virtual QString spokenName() const;
  /// More about what the view shows; nothing here.
  virtual QString spokenDescription() const;

protected:
  /// Qt's event, with nothing thrown out of it.
  bool event(QEvent* event) override;
  /// Whether drawRect() is at work for any surface.
  bool isDrawing() const { return drawings_ > 0; }
  /// Called when a drawing is over. The base does nothing.
  virtual void didDraw();
  /// Makes images that are drawn as before anew from their pixels. A QImage tells of changes of its pixels, unless
  /// they lie in memory of the host's own.
  void forgetScaledImages();

  /// Draws through drawRect(), or from the last drawing where nothing has changed.
  void paintEvent(QPaintEvent* event) override;
  /// Draws the frame that shows the keyboard's focus.
  void focusInEvent(QFocusEvent* event) override;
  /// Takes that frame away.
  void focusOutEvent(QFocusEvent* event) override;
  /// Tells the end of a resize to viewDidEndLiveResize(), some time after the last event.
  void resizeEvent(QResizeEvent* event) override;
  /// Sets up the cursor rectangles.
  void showEvent(QShowEvent* event) override;
  /// Turns the event into mouseDown().
  void mousePressEvent(QMouseEvent* event) override;
  /// As a press, with two clicks.
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  /// Sets the cursor of the rectangle that the pointer is in.
  void mouseMoveEvent(QMouseEvent* event) override;
  /// Takes the cursor of a rectangle away.
  void leaveEvent(QEvent* event) override;

private:
  struct CursorRect {
    QRectF rect;
    QCursor cursor;
  };
  /// What the window showed last, for marks that move over it.
  struct KeptDrawing {
    QImage image;
    QPointF topLeft;
    QSize size;
    QPointF corner;
    double ratio = 0;
  };
  void draw(GraphicsContext& context, const QRectF& area);
  void drawAll(GraphicsContext& context);
  template <typename Made>
  Made madeOfView(const std::function<Made(const std::function<void(GraphicsContext&)>& drawing)>& make) noexcept;
  bool takeEvent(QEvent* event);
  bool renewsOverlayOnly(const QRegion& region, const KeptDrawing& wanted) const;
  void setFocusShown(bool shown);
  void press(QMouseEvent* event);
  int countClick(QPointF position);
  void renewCursorRects();
  void showCursor(const QCursor* cursor);

  std::unique_ptr<KeptPixels> keptPixels_;
  QTimer liveResizeTimer_;
  std::vector<CursorRect> cursorRects_;
  QSize frameSize_;
  bool hasHostsCursor_ = false;
  bool changesCursor_ = false; // we do, not the host
  int drawings_ = 0;
  bool focusShown_ = false;
  double exportPixelRatio_ = 0;
  QString exportError_;
  ViewOverlay overlay_;
  QRegion overlayArea_; ///< to be painted for the overlay's sake
  KeptDrawing kept_;
  QElapsedTimer sinceLastClick_;
  QPointF lastClick_;
  int clickCount_ = 0;
};

} // namespace xov
