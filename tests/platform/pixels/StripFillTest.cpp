#include "XOV_Graphics/platform/pixels/StripFill.h"

#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <QPainter>

#include <random>

namespace xov::testing {
namespace {

constexpr int kWidth = 300, kHeight = 120;

struct Filled {
  QImage picture;
  bool inStrips;
};

Filled filled(const QPainterPath& shape, const QColor& color, const QTransform& transform, bool strips,
              const QRectF& clip = QRectF()) {
  Filled result{QImage(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied), true};
  result.picture.fill(Qt::white);
  QPainter painter(&result.picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setTransform(transform);
  if (!clip.isEmpty()) painter.setClipRect(clip);
  if (strips) {
    result.inStrips = fillInStrips(painter, shape, color);
  } else {
    painter.fillPath(shape, color);
  }
  return result;
}

// Bars side by side, each of a random height, from a border between pixels to any place on one.
QPainterPath bars(int count, double width, std::mt19937& random) {
  std::uniform_real_distribution<double> height(0, kHeight);
  QPainterPath shape;
  shape.setFillRule(Qt::WindingFill);
  for (int i = 0; i < count; ++i) {
    const double x = 3.3 + i * width;
    const double top = height(random);
    shape.moveTo(x, 0);
    shape.lineTo(x, top);
    shape.lineTo(x + width, top);
    shape.lineTo(x + width, 0);
  }
  return shape;
}

TEST(StripFill, hasThePixelsOfOneFill) {
  std::mt19937 random(11);
  const QTransform upwards(1, 0, 0, -1, 0, kHeight);
  for (const double width : {0.07, 0.31, 0.97, 4.1}) {
    const QPainterPath shape = bars(int(290 / width), width, random);
    for (const QColor& color : {QColor(170, 170, 170), QColor(200, 30, 40, 90)}) {
      for (const QTransform& transform : {upwards, QTransform::fromScale(0.5, 0.5) * upwards}) {
        for (const QRectF& clip : {QRectF(), QRectF(20.4, 10, 130.7, 60)}) {
          const Filled one = filled(shape, color, transform, false, clip);
          const Filled strips = filled(shape, color, transform, true, clip);
          ASSERT_TRUE(strips.inStrips) << width;
          EXPECT_EQ(differingPixels(one.picture, strips.picture), 0) << width;
          EXPECT_GT(differingPixels(one.picture, filled({}, color, transform, false).picture), 500);
        }
      }
    }
  }
}

TEST(StripFill, hasThePixelsOfOneFillForCurvesAndPiecesThatOverlap) {
  std::mt19937 random(12);
  std::uniform_real_distribution<double> place(-20, kWidth + 20);
  for (const Qt::FillRule rule : {Qt::WindingFill, Qt::OddEvenFill}) {
    QPainterPath shape;
    shape.setFillRule(rule);
    for (int i = 0; i < 400; ++i)
      shape.addEllipse(QPointF(place(random), place(random) / 2), 7, 5);
    const Filled strips = filled(shape, Qt::blue, {}, true);
    ASSERT_TRUE(strips.inStrips);
    EXPECT_EQ(differingPixels(filled(shape, Qt::blue, {}, false).picture, strips.picture), 0);
  }
}

TEST(StripFill, leavesShapesOfFewOrWidePiecesAlone) {
  std::mt19937 random(13);
  const Filled few = filled(bars(10, 4, random), Qt::blue, {}, true);
  EXPECT_FALSE(few.inStrips);
  QPainterPath wide;
  for (int i = 0; i < 100; ++i)
    wide.addRect(10, i, 200, 0.5);
  const Filled rows = filled(wide, Qt::blue, {}, true);
  EXPECT_FALSE(rows.inStrips);
  EXPECT_EQ(differingPixels(rows.picture, filled({}, Qt::blue, {}, false).picture), 0) << "nothing drawn";
}

} // namespace
} // namespace xov::testing
