#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QGestureEvent;
class QKeyEvent;
class QMouseEvent;
class QNativeGestureEvent;
class QWheelEvent;

namespace xov {

class PartHistory;

/// Lets mouse, touchpad and keys move a view over its data. To switch it on:
///
///     auto* navigator = new PlotNavigator(view); // the view owns it
///     navigator->setCrossHair(PlotNavigator::CrossHair::Vertical);
///
/// The wheel zooms time (of plots of two like axes, both) about the pointer, with Ctrl the gain or the other axis,
/// with Shift it pans. Dragging with the left button zooms to a box, with the middle one it pans; a double click,
/// Backspace and the mouse's back button go back, Shift+Backspace and the forward button forward. Arrows, Page Up and
/// Page Down pan, + and - zoom, Ctrl with the upward and downward arrow changes the gain, Home shows all. Two fingers
/// on a touchpad pan, and pinching zooms. keys() has it all as texts, for a help sheet.
///
/// It moves the view through XOVView::showPart(), within XOVView::reach(). A view that has none is as before. A plain
/// click is reported to the host when the button is let go, so that one that begins a box is not; Shift and the left
/// button drag a picture out as ever. Marks lie over the window and in no export. Hosts' own event filters that are
/// installed later come first, and keep what they take. Main thread only.
class XOV_EXPORT PlotNavigator : public QObject {
  Q_OBJECT

public:
  /// Where lines through the pointer are shown.
  enum class CrossHair {
    None,     ///< no lines
    Vertical, ///< a line at the pointer's x
    Both,     ///< lines at its x and its y
  };
  Q_ENUM(CrossHair)
  /// A line of the help sheet.
  struct Key {
    QString keys;   ///< such as "Home"
    QString effect; ///< what they do, in a few words
  };

  /// `view`, not null, becomes the parent.
  explicit PlotNavigator(XOVView* view);
  ~PlotNavigator() override;

  /// The view that is moved.
  XOVView* view() const { return view_; }
  /// On at first.
  bool isEnabled() const { return enabled_; }
  /// Sets isEnabled().
  void setEnabled(bool enabled);
  /// Whether dragging with the left button zooms to a box; on at first. Off leaves the left button to the view and
  /// the host.
  bool zoomsToBoxes() const { return zoomsToBoxes_; }
  void setZoomsToBoxes(bool zooms);
  /// None at first.
  CrossHair crossHair() const { return crossHair_; }
  void setCrossHair(CrossHair crossHair);
  /// Keys and mouse in this program's language.
  static std::vector<Key> keys();

  // What they do, for menus and buttons. Each is a step of the history.

  /// Makes the part that is shown `factor` times as wide (0.5 zooms in) about a point of the view, or its middle.
  void zoom(double factor, std::optional<QPointF> about = {});
  /// Multiplies the gain, or zooms the axis of y in by as much.
  void amplify(double factor, std::optional<QPointF> about = {});
  /// Moves on by shares of the part's width and height, to the right and upwards where they are positive.
  void pan(double xShare, double yShare);
  /// Shows what is inside a box of the view, in view points. One of no width or height does nothing.
  void zoomTo(const QRectF& box);
  /// Shows the whole of the plot.
  void showAll();
  /// Whether goBack() has anything to go back to.
  bool canGoBack() const;
  /// Whether goForward() has anything to go to.
  bool canGoForward() const;
  /// Shows the part before.
  void goBack();
  /// Shows the part that goBack() has left.
  void goForward();
  /// Forgets the parts shown so far.
  void forgetHistory();

  /// Marks a value of x, which another view's pointer is at; nothing takes the mark away.
  void showCursor(std::optional<double> x);

  /// Hears the events of the view.
  bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
  /// canGoBack() or canGoForward() may have changed.
  void historyChanged();
  /// The pointer is at a value of x, or has left the data.
  void pointed(double x);
  /// The pointer has left the data.
  void pointerLeft();

private:
  bool take(QEvent& event);
  /// What steps of the history that follow each other soon are joined by.
  enum class Step { Zoom, Gain, Pan, Drag, Keys, Other };
  struct Press {
    QPointF point;
    Qt::MouseButton button = Qt::NoButton;
    Qt::KeyboardModifiers modifiers;
    PlotPart part;
    bool isDrag = false;
  };

  using Shown = std::optional<PlotPart>;
  void show(const Shown& part, Step step);
  void zoomBy(double factor, std::optional<QPointF> about, Step step);
  void amplifyBy(double factor, std::optional<QPointF> about, Step step);
  void panBy(double xShare, double yShare, Step step);
  void go(const Shown& part);
  QPointF toView(QPointF widgetPoint) const;
  bool wheel(const QWheelEvent& event);
  void scroll(QPointF pixels);
  bool press(const QMouseEvent& event);
  bool move(const QMouseEvent& event);
  bool release(const QMouseEvent& event);
  void dragTo(QPointF point);
  void forwardClick(const QMouseEvent& event);
  bool key(const QKeyEvent& event);
  bool nativeGesture(const QNativeGestureEvent& event);
  bool gesture(QGestureEvent& event);
  void point(QPointF viewPoint);
  void leave();
  void renewOverlay();

  XOVView* view_;
  bool enabled_ = true;
  bool zoomsToBoxes_ = true;
  bool forwards_ = false; ///< a click of the view's that was kept from it
  CrossHair crossHair_ = CrossHair::None;
  std::unique_ptr<PartHistory> history_;
  QElapsedTimer sinceStep_;
  Step lastStep_ = Step::Other;
  double waitingFactor_ = 1; ///< zooms that a view with steps has not followed yet
  double waitingShareX_ = 0; ///< the same of panning
  std::optional<Press> press_;
  std::optional<QPointF> pointer_; ///< in the data, in view points
  std::optional<double> cursor_;
  QRectF band_;
};

} // namespace xov
