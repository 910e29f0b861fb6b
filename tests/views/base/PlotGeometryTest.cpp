#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <gtest/gtest.h>

#include <QTimeZone>

#include <random>

namespace xov {
namespace {

TEST(PlotGeometry, dataAndViewPointsAreInversesOfEachOther) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> size(1, 2000);
  std::uniform_real_distribution<float> limit(-1000, 1000);
  for (int i = 0; i < 500; ++i) {
    const QRectF frame(size(random), size(random), size(random), size(random));
    const PlotLimits limits{limit(random), limit(random), limit(random), limit(random)};
    const QPointF point(frame.x() + 0.3 * frame.width(), frame.y() + 0.8 * frame.height());
    const QPointF back = dataToView(viewToData(point, frame, limits), frame, limits);
    EXPECT_NEAR(back.x(), point.x(), 1e-6 * frame.width());
    EXPECT_NEAR(back.y(), point.y(), 1e-6 * frame.height());
  }
}

// Two decades on 200 points: 1 at 50, 10 at 150, 100 at 250.
TEST(PlotGeometry, aLogarithmicAxisHasDecadesEquallyFarApart) {
  const QRectF frame(50, 10, 200, 100);
  const PlotLimits limits{1, 100, 0, 5};
  const QPointF data = viewToData({150, 60}, frame, limits, {.x = true});
  EXPECT_NEAR(data.x(), 10, 1e-5);
  EXPECT_EQ(data.y(), 2.5);
  EXPECT_NEAR(dataToView({10, 2.5}, frame, limits, {.x = true}).x(), 150, 1e-4);
  EXPECT_EQ(viewToData({150, 60}, frame, limits, {}), viewToData({150, 60}, frame, limits));
}

TEST(PlotGeometry, logarithmicLimitsNotAboveZeroLieAMillionthBelow) {
  EXPECT_EQ(logRange(0.01F, 1).upper, 0);
  EXPECT_NEAR(logRange(0.01F, 1).lower, -2, 1e-7);
  EXPECT_EQ(logRange(0, 100).lower, -4);
  EXPECT_EQ(logRange(100, -3).upper, -4); // limits in descending order
  EXPECT_TRUE(std::isnan(logRange(-1, 0).lower) && std::isnan(logRange(-1, 0).upper));
  EXPECT_EQ(drawnLimits({0, 100, -7, 7}, {.x = true}), (PlotLimits{-4, 2, -7, 7}));
}

TEST(PlotGeometry, limitDifferencesAreTakenInSinglePrecision) {
  // 16777216 + 1 is not a float: the range 16777217 − 0.3 rounds to 16777216.
  const PlotLimits limits{0.3f, 16777216.0f, 0, 1};
  EXPECT_EQ(limits.rect().width(), double(16777216.0f - 0.3f));
  EXPECT_EQ(limits.rect().width(), 16777216.0);
}

TEST(PlotGeometry, everyEdgeOfARectangleIsInside) {
  const QRectF rect(10, 20, 30, 40);
  for (QPointF inside : {QPointF(10, 20), QPointF(40, 60), QPointF(10, 60), QPointF(40, 20), QPointF(25, 40)}) {
    EXPECT_TRUE(containsPoint(rect, inside));
  }
  for (QPointF outside : {QPointF(9.999, 20), QPointF(40.001, 60), QPointF(25, 19.9), QPointF(25, 60.1)}) {
    EXPECT_FALSE(containsPoint(rect, outside));
  }
  EXPECT_FALSE(containsPoint(QRectF(10, 20, -5, 5), {8, 22}));
  EXPECT_FALSE(containsPoint(rect, {std::nan(""), 30}));
}

TEST(PlotGeometry, textIsPlacedByItsCodes) {
  const QSizeF size(40, 10);
  EXPECT_EQ(alignedTextOrigin({100, 50}, size, 1, 1), QPointF(100, 50));
  EXPECT_EQ(alignedTextOrigin({100, 50}, size, 2, 2), QPointF(80, 45));
  EXPECT_EQ(alignedTextOrigin({100, 50}, size, 3, 3), QPointF(60, 40));
  EXPECT_EQ(alignedTextOrigin({100, 50}, size, 7, 4), QPointF(100, 50));
  EXPECT_EQ(rotatedTextOrigin({100, 50}, size, 2, 2), QPointF(95, 30));
  EXPECT_EQ(rotatedTextOrigin({100, 50}, size, 3, 3), QPointF(90, 10));
  EXPECT_EQ(rotatedTextOrigin({100, 50}, size, 1, 1), QPointF(100, 50));
}

TEST(PlotGeometry, aTimeStampNamesTheZonesOffset) {
  const QDate day(2011, 3, 11);
  const QTime time(14, 46, 23);
  EXPECT_EQ(timeStampText(QDateTime(day, time, Qt::OffsetFromUTC, 9 * 3600)),
            QStringLiteral("2011-03-11 14:46:23 +0900"));
  EXPECT_EQ(timeStampText(QDateTime(day, time, Qt::OffsetFromUTC, -(3 * 3600 + 30 * 60))),
            QStringLiteral("2011-03-11 14:46:23 -0330"));
  EXPECT_EQ(timeStampText(QDateTime(day, time, Qt::UTC)), QStringLiteral("2011-03-11 14:46:23 +0000"));
}

} // namespace
} // namespace xov
