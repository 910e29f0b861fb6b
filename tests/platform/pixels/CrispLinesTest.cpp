#include "XOV_Graphics/platform/pixels/CrispLines.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

QPainterPath line(QPointF from, QPointF to) {
  QPainterPath path(from);
  path.lineTo(to);
  return path;
}

constexpr QSize kPicture(100, 80);

TEST(CrispLines, aLineOnAPixelBorderTakesOnePixelWholly) {
  const auto rects = crispLines(line({10, 20}, {10, 30}), 1, kPicture);
  ASSERT_TRUE(rects);
  EXPECT_EQ(*rects, std::vector<QRect>{QRect(10, 20, 1, 11)});
}

TEST(CrispLines, thinLinesKeepOnePixel) {
  const auto rects = crispLines(line({10, 20.5}, {30, 20.5}), 0.3, kPicture);
  ASSERT_TRUE(rects);
  EXPECT_EQ(*rects, std::vector<QRect>{QRect(10, 20, 21, 1)});
}

TEST(CrispLines, widerLinesAreCentredOnTheirPosition) {
  // Three pixels about x = 50.5: 49, 50 and 51. Two pixels about x = 50: 49 and 50.
  EXPECT_EQ(crispLines(line({50.5, 0}, {50.5, 9}), 3, kPicture)->front().x(), 49);
  EXPECT_EQ(crispLines(line({50, 0}, {50, 9}), 2, kPicture)->front().x(), 49);
}

TEST(CrispLines, theFrameOfAPictureStaysInsideIt) {
  QPainterPath frame;
  frame.addRect(0, 0, 100, 80);
  const auto rects = crispLines(frame, 1, kPicture);
  ASSERT_TRUE(rects);
  QRect all;
  for (const QRect& rect : *rects)
    all |= rect;
  EXPECT_EQ(all, QRect(0, 0, 100, 80));
}

TEST(CrispLines, slantedAndCurvedAndWideLinesAreLeftAlone) {
  EXPECT_FALSE(crispLines(line({0, 0}, {10, 1}), 1, kPicture));
  QPainterPath oval;
  oval.addEllipse(0, 0, 10, 10);
  EXPECT_FALSE(crispLines(oval, 1, kPicture));
  EXPECT_FALSE(crispLines(line({0, 0}, {10, 0}), kCrispWidthLimit, kPicture));
}

TEST(CrispLines, absurdCoordinatesStayInRange) {
  const auto rects = crispLines(line({-1e99, 5}, {1e99, 5}), 1, kPicture);
  ASSERT_TRUE(rects && !rects->empty());
  EXPECT_TRUE(rects->front().intersects(QRect(QPoint(0, 0), kPicture)));
}

} // namespace
} // namespace xov
