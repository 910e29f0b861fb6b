#pragma once

#include "XOV_Graphics/views/navigation/PlotNavigator.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <memory>

namespace xov::testing {

/// A wheel at a point of the view (y upwards): angles in eighths of a degree, 120 a notch.
inline void turnWheel(XOVView& view, QPointF at, QPoint angle, Qt::KeyboardModifiers modifiers = {},
                      QPoint pixels = {}, Qt::ScrollPhase phase = Qt::NoScrollPhase) {
  const QPointF place(at.x(), view.height() - at.y());
  QWheelEvent event(place, view.mapToGlobal(place), pixels, angle, Qt::NoButton, modifiers, phase, false);
  QCoreApplication::sendEvent(&view, &event);
}

inline void sendMouse(XOVView& view, QEvent::Type type, QPointF at, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers = {}) {
  const QPointF place(at.x(), view.height() - at.y());
  const bool isMove = type == QEvent::MouseMove;
  QMouseEvent event(type, place, view.mapToGlobal(place), isMove ? Qt::NoButton : button,
                    type == QEvent::MouseButtonRelease ? Qt::NoButton : button, modifiers);
  QCoreApplication::sendEvent(&view, &event);
}

inline void drag(XOVView& view, QPointF from, QPointF to, Qt::MouseButton button) {
  sendMouse(view, QEvent::MouseButtonPress, from, button);
  sendMouse(view, QEvent::MouseMove, (from + to) / 2, button);
  sendMouse(view, QEvent::MouseMove, to, button);
  sendMouse(view, QEvent::MouseButtonRelease, to, button);
}

inline void expectSpan(const PlotSpan& span, double lower, double upper, double within = 1e-6) {
  EXPECT_NEAR(span.lower, lower, within);
  EXPECT_NEAR(span.upper, upper, within);
}

/// A section of one record from 0 to 100 s in a view of 600 × 400: its frame is (20, 60, 560, 300), and a second is
/// 5.6 points wide.
struct NavigatedSection {
  explicit NavigatedSection(const RecordFields& fields = {.count = 101})
      : records(std::make_shared<SeismogramArray>(SeismogramArray{makeRecord(fields)})) {
    view->setWvfrmsArray(records);
    view->snapshot(); // lays out
    navigator = new PlotNavigator(view.get());
  }

  static double xOf(double seconds) { return 20 + 5.6 * seconds; }
  PlotSpan shown() const { return view->currentPart().x; }

  std::shared_ptr<SeismogramArray> records;
  std::unique_ptr<MultiSeisView> view = std::make_unique<MultiSeisView>(QRectF(0, 0, 600, 400));
  PlotNavigator* navigator = nullptr;
};

} // namespace xov::testing
