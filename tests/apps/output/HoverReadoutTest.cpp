#include "apps/xov/output/HoverReadout.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QToolTip>

#include <XOV_Graphics/platform/RecordingContext.h>
#include <XOV_Graphics/views/map/geoMapView.h>

namespace xov::cli {
namespace {

// The globe from Greenwich on: 504 by 252 points at (64, 84), 1.4 points a degree, in 400 points of height.
class HoverReadouts : public ::testing::Test {
protected:
  HoverReadouts() {
    new HoverReadout(map);
    map.show();
    RecordingContext recording;
    map.drawInto(recording);
  }
  QPointF at(double lon, double lat) const { return {64 + 1.4 * lon, 400 - (84 + 1.4 * (lat + 90))}; }
  void send(QEvent::Type type, QPointF where, Qt::MouseButtons buttons = {}) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, where, where, map.mapToGlobal(where), button, buttons, {});
    QApplication::sendEvent(&map, &event);
  }
  QString told(QPointF where, Qt::MouseButtons buttons = {}) {
    send(QEvent::MouseMove, where, buttons);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  }
  geoMapView map{QRectF(0, 0, 600, 400)};
};

TEST_F(HoverReadouts, tellWhatTheViewShowsUnderThePointer) {
  EXPECT_TRUE(map.hasMouseTracking());
  EXPECT_EQ(told(at(142, 38)), QStringLiteral("longitude 142.0°\nlatitude 38.0°"));
}

TEST_F(HoverReadouts, ofMapsCountDistancesFromTheLastClick) {
  send(QEvent::MouseButtonPress, at(0.5, 0), Qt::LeftButton);
  const QString text = told(at(90.5, 0));
  EXPECT_TRUE(text.contains(QStringLiteral("distance 90.0°\nor 10008 km\nazimuth 90.0°"))) << qPrintable(text);
}

} // namespace
} // namespace xov::cli
