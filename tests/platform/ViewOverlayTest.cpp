#include "XOV_Graphics/platform/ViewOverlay.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <limits>

namespace xov {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// On a white window of 100 by 80 points.
QImage painted(const ViewOverlay& overlay) {
  QImage window(100, 80, QImage::Format_RGB32);
  window.fill(Qt::white);
  QPainter painter(&window);
  paintOverlay(painter, overlay, window.height());
  return window;
}

TEST(ViewOverlay, aBandCoversItsBoxWithY0AtTheBottom) {
  for (const QRectF& box : {QRectF(20, 10, 30, 40), QRectF(50, 50, -30, -40)}) { // also drawn up from its far corner
    const QImage window = painted({.lines = {}, .band = box});
    const QRgb inside = window.pixel(35, 80 - 30);
    EXPECT_NE(inside, qRgb(255, 255, 255));
    EXPECT_EQ(window.pixel(22, 80 - 12), inside);
    EXPECT_EQ(window.pixel(48, 80 - 48), inside);
    for (const QPoint beside : {QPoint(17, 50), QPoint(53, 50), QPoint(35, 80 - 53), QPoint(35, 80 - 7)})
      EXPECT_EQ(window.pixel(beside), qRgb(255, 255, 255)) << beside.x() << ' ' << beside.y();
  }
}

TEST(ViewOverlay, linesAndBandsThatAreNotFiniteArePaintedNowhere) {
  const QImage empty = painted({});
  EXPECT_EQ(painted({.lines = {QLineF(kNaN, 0, 10, 10), QLineF(0, 0, 10, kNaN)}, .band = {}}), empty);
  EXPECT_NE(painted({.lines = {QLineF(0, 0, 10, 10)}, .band = {}}), empty);
  EXPECT_TRUE(overlayRegion({.lines = {}, .band = QRectF(kNaN, 0, 10, 10)}, {100, 80}).isEmpty());
}

TEST(ViewOverlay, whatIsPaintedAnewHoldsLinesAndBand) {
  const QRegion region = overlayRegion({.lines = {QLineF(30, 0, 30, 80)}, .band = QRectF(60, 10, 20, 20)}, {100, 80});
  EXPECT_TRUE(region.contains(QPoint(30, 40)));
  EXPECT_TRUE(region.contains(QRect(60, 50, 20, 20)));
  EXPECT_FALSE(region.contains(QPoint(45, 40)));
  EXPECT_FALSE(region.contains(QPoint(70, 20)));
}

} // namespace
} // namespace xov
