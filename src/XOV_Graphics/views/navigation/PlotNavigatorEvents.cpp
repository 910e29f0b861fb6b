#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/views/navigation/PartHistory.h"
#include "XOV_Graphics/views/navigation/PlotNavigator.h"

#include <QCoreApplication>
#include <QGestureEvent>
#include <QGuiApplication>
#include <QInputDevice>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QPointingDevice>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kNotch = 120;     // of a wheel, in the unit of angles
constexpr double kNotchZoom = 0.8; // of the width
constexpr double kNotchGain = 1.25;
constexpr double kNotchPan = 0.1;   // of the width
constexpr double kMostNotches = 40; // of one event
constexpr double kKeyZoom = 0.5;
constexpr double kKeyPan = 0.1;
constexpr double kKeyGain = 1.25;

double notches(int angle) { return std::clamp(angle / kNotch, -kMostNotches, kMostNotches); }

// Qt says so where the window system does.
bool isTouchpad(const QWheelEvent& event) {
  if (event.pixelDelta().isNull()) return false;
  const QPointingDevice* device = event.pointingDevice();
  const bool isNamed = device != nullptr && device->type() == QInputDevice::DeviceType::TouchPad;
  return isNamed || event.phase() != Qt::NoScrollPhase;
}

} // namespace

QPointF PlotNavigator::toView(QPointF widgetPoint) const {
  return {widgetPoint.x(), view_->height() - widgetPoint.y()};
}

bool PlotNavigator::eventFilter(QObject* watched, QEvent* event) {
  // A view that is going away is a plain widget by the time that it hears of it.
  const bool isView = watched == view_ && qobject_cast<XOVView*>(watched) != nullptr;
  bool taken = false;
  if (isView && enabled_ && !forwards_) contained("navigation", [&] { taken = take(*event); });
  return taken;
}

bool PlotNavigator::take(QEvent& event) {
  switch (event.type()) {
  case QEvent::Leave:
    leave();
    return false;
  case QEvent::Wheel:
    if (!view_->reach().movesAnything()) return false;
    event.accept();
    return wheel(static_cast<QWheelEvent&>(event));
  case QEvent::MouseButtonPress:
  case QEvent::MouseButtonDblClick:
    return press(static_cast<QMouseEvent&>(event));
  case QEvent::MouseMove:
    return move(static_cast<QMouseEvent&>(event));
  case QEvent::MouseButtonRelease:
    return release(static_cast<QMouseEvent&>(event));
  case QEvent::KeyPress:
    return key(static_cast<QKeyEvent&>(event));
  case QEvent::NativeGesture:
    return nativeGesture(static_cast<QNativeGestureEvent&>(event));
  case QEvent::Gesture:
    return gesture(static_cast<QGestureEvent&>(event));
  default:
    return false;
  }
}

// Parts of a notch, as fine wheels tell them, are parts of its factor: they multiply to the whole one.
bool PlotNavigator::wheel(const QWheelEvent& event) {
  const QPointF at = toView(event.position());
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  const QPoint angle = event.angleDelta();
  if (modifiers.testFlag(Qt::ControlModifier)) {
    amplifyBy(std::pow(kNotchGain, notches(angle.y())), at, Step::Gain);
  } else if (isTouchpad(event)) {
    scroll(QPointF(event.pixelDelta()));
  } else if (modifiers.testFlag(Qt::ShiftModifier)) {
    panBy(-kNotchPan * (notches(angle.y()) + notches(angle.x())), 0, Step::Pan);
  } else if (angle.y() != 0) {
    zoomBy(std::pow(kNotchZoom, notches(angle.y())), at, Step::Zoom);
  } else if (angle.x() != 0) {
    panBy(-kNotchPan * notches(angle.x()), 0, Step::Pan);
  }
  return true;
}

// The drawing follows the fingers.
void PlotNavigator::scroll(QPointF pixels) {
  const QRectF frame = view_->partFrame(view_->iRect().center());
  if (!(frame.width() > 0) || !(frame.height() > 0)) return;
  panBy(-pixels.x() / frame.width(), pixels.y() / frame.height(), Step::Pan);
}

bool PlotNavigator::press(const QMouseEvent& event) {
  if (!view_->reach().movesAnything()) return false;
  const QPointF at = toView(event.position());
  switch (event.button()) {
  case Qt::BackButton:
    goBack();
    return true;
  case Qt::ForwardButton:
    goForward();
    return true;
  case Qt::MiddleButton:
    press_ = Press{at, event.button(), event.modifiers(), view_->currentPart()};
    return true;
  case Qt::LeftButton:
    break;
  default:
    return false;
  }
  if (!zoomsToBoxes_ || event.modifiers() != Qt::NoModifier) return false;
  if (view_->partFrame(at).isEmpty()) return false;
  if (event.type() == QEvent::MouseButtonDblClick) {
    press_.reset();
    goBack();
    return true;
  }
  view_->setFocus(Qt::MouseFocusReason);
  press_ = Press{at, event.button(), event.modifiers(), view_->currentPart()};
  return true;
}

bool PlotNavigator::move(const QMouseEvent& event) {
  const QPointF at = toView(event.position());
  if (!press_) {
    point(at);
    return false;
  }
  const int distance = QGuiApplication::styleHints()->startDragDistance();
  if (!press_->isDrag && (at - press_->point).manhattanLength() < distance) return true;
  press_->isDrag = true;
  dragTo(at);
  return true;
}

void PlotNavigator::dragTo(QPointF point) {
  if (press_->button == Qt::LeftButton) {
    const QRectF frame = view_->partFrame(press_->point);
    const QPointF held(std::clamp(point.x(), frame.left(), std::max(frame.left(), frame.right())),
                       std::clamp(point.y(), frame.top(), std::max(frame.top(), frame.bottom())));
    band_ = QRectF(press_->point, held).normalized();
    renewOverlay();
    return;
  }
  // What was under the pointer when it went down is to be there again. A drum's x goes on from row to row.
  const auto from = view_->partPosition(press_->point);
  const auto to = view_->partPosition(point);
  if (!from || !to) return;
  const PlotReach reach = view_->reach();
  const PlotPart now = view_->currentPart();
  PlotPart part = press_->part;
  part.gain = now.gain;
  const auto moved = [](const PlotSpan& start, const PlotSpan& shown, double a, double b, PlotReach::Motion motion) {
    const double share = shareOfSpan(shown, a, motion) - shareOfSpan(shown, b, motion);
    return motion == PlotReach::Motion::None ? start : shiftedSpan(start, share, motion);
  };
  part.x = moved(part.x, now.x, from->x(), to->x(), reach.x);
  part.y = moved(part.y, now.y, from->y(), to->y(), reach.y);
  show(part, Step::Drag);
}

bool PlotNavigator::release(const QMouseEvent& event) {
  if (!press_ || event.button() != press_->button) return false;
  const Press press = *press_;
  const QRectF band = band_;
  press_.reset();
  band_ = {};
  renewOverlay();
  lastStep_ = Step::Other;
  if (press.button != Qt::LeftButton) return true;
  if (press.isDrag) {
    zoomTo(band);
  } else {
    forwardClick(event);
  }
  return true;
}

// The press that was kept from the view until it was clear that no box follows.
void PlotNavigator::forwardClick(const QMouseEvent& event) {
  const QPointer<PlotNavigator> self(this);
  QMouseEvent press(QEvent::MouseButtonPress, event.position(), event.scenePosition(), event.globalPosition(),
                    Qt::LeftButton, Qt::LeftButton, event.modifiers(), event.pointingDevice());
  forwards_ = true;
  QCoreApplication::sendEvent(view_, &press);
  if (self) forwards_ = false;
}

bool PlotNavigator::key(const QKeyEvent& event) {
  if (!view_->reach().movesAnything()) return false;
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const int pressed = event.key();
  if (modifiers == Qt::ControlModifier && (pressed == Qt::Key_Up || pressed == Qt::Key_Down)) {
    amplifyBy(pressed == Qt::Key_Up ? kKeyGain : 1 / kKeyGain, {}, Step::Gain);
    return true;
  }
  const bool isZoom = pressed == Qt::Key_Plus || pressed == Qt::Key_Equal || pressed == Qt::Key_Minus;
  const bool isBack = pressed == Qt::Key_Backspace;
  if (modifiers != Qt::NoModifier && !(modifiers == Qt::ShiftModifier && (isZoom || isBack))) return false;
  switch (pressed) {
  case Qt::Key_Left:
    panBy(-kKeyPan, 0, Step::Keys);
    return true;
  case Qt::Key_Right:
    panBy(kKeyPan, 0, Step::Keys);
    return true;
  case Qt::Key_Up:
    panBy(0, kKeyPan, Step::Keys);
    return true;
  case Qt::Key_Down:
    panBy(0, -kKeyPan, Step::Keys);
    return true;
  case Qt::Key_PageUp:
    panBy(-1, 0, Step::Keys);
    return true;
  case Qt::Key_PageDown:
    panBy(1, 0, Step::Keys);
    return true;
  case Qt::Key_Plus:
  case Qt::Key_Equal:
    zoomBy(kKeyZoom, pointer_, Step::Keys);
    return true;
  case Qt::Key_Minus:
    zoomBy(1 / kKeyZoom, pointer_, Step::Keys);
    return true;
  case Qt::Key_Home:
    showAll();
    return true;
  case Qt::Key_Backspace:
    if (modifiers == Qt::ShiftModifier) {
      goForward();
    } else {
      goBack();
    }
    return true;
  default:
    return false;
  }
}

bool PlotNavigator::nativeGesture(const QNativeGestureEvent& event) {
  if (event.gestureType() != Qt::ZoomNativeGesture) return false;
  const double scale = 1 + event.value(); // the fingers' distance to that before
  if (scale > 0) zoomBy(1 / scale, toView(event.position()), Step::Zoom);
  return true;
}

bool PlotNavigator::gesture(QGestureEvent& event) {
  const auto* pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
  if (pinch == nullptr) return false;
  event.accept();
  const double scale = pinch->scaleFactor();
  if (pinch->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged) && scale > 0)
    zoomBy(1 / scale, toView(view_->mapFromGlobal(pinch->centerPoint())), Step::Zoom);
  return true;
}

void PlotNavigator::point(QPointF viewPoint) {
  const bool isInside = !view_->partFrame(viewPoint).isEmpty();
  const auto position = isInside ? view_->partPosition(viewPoint) : std::nullopt;
  if (!position) return leave();
  pointer_ = viewPoint;
  renewOverlay();
  Q_EMIT pointed(position->x());
}

void PlotNavigator::leave() {
  if (!pointer_) return;
  pointer_.reset();
  renewOverlay();
  Q_EMIT pointerLeft();
}

} // namespace xov
