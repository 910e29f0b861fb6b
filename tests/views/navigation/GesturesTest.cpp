#include "NavigatedSection.h"

#include <QGestureEvent>
#include <QNativeGestureEvent>
#include <QPointingDevice>

#include <cmath>

namespace xov::testing {
namespace {

constexpr QPointF kPinchPlace(160, 200); // 25 s, a quarter of the section

/// Fingers on a touchpad whose distance becomes 1 + `change` times what it was, with the pointer at a point of the
/// view.
bool pinchTouchpad(XOVView& view, double change, Qt::NativeGestureType type = Qt::ZoomNativeGesture) {
  const QPointF place(kPinchPlace.x(), view.height() - kPinchPlace.y());
  QNativeGestureEvent event(type, QPointingDevice::primaryPointingDevice(), 2, place, place, view.mapToGlobal(place),
                            change, {}, 1);
  return QCoreApplication::sendEvent(&view, &event);
}

/// The same of fingers on a screen.
void pinchScreen(XOVView& view, double factor, QPinchGesture::ChangeFlags changes) {
  const QPointF place(kPinchPlace.x(), view.height() - kPinchPlace.y());
  QPinchGesture pinch;
  pinch.setCenterPoint(view.mapToGlobal(place));
  pinch.setScaleFactor(factor);
  pinch.setChangeFlags(changes);
  QGestureEvent event({&pinch});
  event.setWidget(&view);
  QCoreApplication::sendEvent(&view, &event);
}

// 100 s become 80 where fingers are 1.25 times as far apart; 25 s stay at a quarter.
TEST(Gestures, pinchingATouchpadZoomsAboutThePointer) {
  const NavigatedSection section;
  pinchTouchpad(*section.view, 0.25);
  expectSpan(section.shown(), 5, 85);
  pinchTouchpad(*section.view, -0.2); // 0.8 of that
  expectSpan(section.shown(), 0, 100);
}

TEST(Gestures, pinchingAScreenZoomsAboutTheFingers) {
  const NavigatedSection section;
  pinchScreen(*section.view, 1.25, QPinchGesture::ScaleFactorChanged);
  expectSpan(section.shown(), 5, 85, 0.2); // global positions are whole pixels
}

TEST(Gestures, otherGesturesChangeNothing) {
  const NavigatedSection section;
  pinchTouchpad(*section.view, 30, Qt::RotateNativeGesture);
  pinchScreen(*section.view, 1.25, QPinchGesture::RotationAngleChanged);
  QPanGesture pan;
  QGestureEvent event({&pan});
  event.setWidget(section.view.get());
  QCoreApplication::sendEvent(section.view.get(), &event);
  EXPECT_FALSE(section.view->shownPart().has_value());
}

TEST(Gestures, nonsenseChangesNothing) {
  const NavigatedSection section;
  pinchTouchpad(*section.view, -1); // fingers on one spot
  pinchTouchpad(*section.view, -3);
  pinchTouchpad(*section.view, std::nan(""));
  pinchScreen(*section.view, 0, QPinchGesture::ScaleFactorChanged);
  EXPECT_FALSE(section.view->shownPart().has_value());
}

} // namespace
} // namespace xov::testing
