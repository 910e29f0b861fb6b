#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/support/Pixels.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <random>

namespace xov {
namespace {

using namespace testing;

XOV2DScatterPlotView::Buffer buffer(const std::vector<float>& values) {
  return std::make_shared<std::vector<float>>(values);
}

class Scatter2D : public ::testing::Test {
protected:
  Scatter2D() {
    view.setXLabelString(QStringLiteral("East"));
    view.setYLabelString(QStringLiteral("North"));
  }
  void setPoints(const std::vector<float>& x, const std::vector<float>& y) {
    view.setXpYpNpts(buffer(x), buffer(y), std::int32_t(x.size()));
  }
  // The points (0, 0), (10, 5), (20, 10) in a frame of 19 points a unit along x and 30 along y.
  void setThreePoints() {
    setPoints({0, 10, 20}, {0, 5, 10});
    view.setXLimitsMinMax(0, 20);
    view.setYLimitsMinMax(0, 10);
  }

  XOV2DScatterPlotView view{QRectF(0, 0, 500, 400)};
};

TEST_F(Scatter2D, startsWithoutBuffersAndWithSymbolsOf12Points) {
  EXPECT_EQ(view.xp(), nullptr);
  EXPECT_EQ(view.yp(), nullptr);
  EXPECT_EQ(view.npts(), 0);
  EXPECT_EQ(view.symbolDiameter(), 12);
}

TEST_F(Scatter2D, keepsTheHostsBuffersAliveUntilTheyAreReplaced) {
  auto x = buffer({1});
  const std::weak_ptr<std::vector<float>> watched = x;
  view.setXp(x);
  x.reset();
  EXPECT_FALSE(watched.expired());
  view.setXp(nullptr);
  EXPECT_TRUE(watched.expired());
}

TEST_F(Scatter2D, theHostMayChangeWhatTheBuffersHold) {
  setThreePoints();
  (*view.xp())[1] = 20;
  EXPECT_EQ(boxOf(recorded(view)->fills().at(1)).center(), QPointF(440, 210));
}

TEST_F(Scatter2D, buffersAndCountAreSetTogetherOrOneByOne) {
  const auto x = buffer({1});
  const auto y = buffer({2});
  view.setXpYpNpts(x, y, 1);
  EXPECT_EQ(view.xp(), x);
  EXPECT_EQ(view.yp(), y);
  EXPECT_EQ(view.npts(), 1);
  view.setXp(y);
  view.setYp(x);
  view.setNpts(5);
  EXPECT_EQ(view.xp(), y);
  EXPECT_EQ(view.yp(), x);
  EXPECT_EQ(view.npts(), 5);
}

TEST_F(Scatter2D, limitsAreTheExactExtremes) {
  setPoints({0, 10, kNan}, {5, -5, 100});
  view.computePlotLimits();
  EXPECT_EQ(view.xmin(), 0);
  EXPECT_EQ(view.xmax(), 10);
  EXPECT_EQ(view.ymin(), -5);
  EXPECT_EQ(view.ymax(), 100);
  setPoints({3}, {4});
  view.computeDataRanges();
  EXPECT_EQ(view.xmin(), 3);
  EXPECT_EQ(view.xmax(), 3);
  EXPECT_EQ(view.ymax(), 4);
}

TEST_F(Scatter2D, withoutPointsTheLimitsStay) {
  view.setXLimitsMinMax(1, 2);
  view.computePlotLimits();
  view.computeDataRanges();
  EXPECT_EQ(view.xmin(), 1);
  EXPECT_EQ(view.xmax(), 2);
}

TEST_F(Scatter2D, withoutPointsOnlyThePaperIsDrawn) { EXPECT_EQ(recorded(view)->items().size(), 2u); }

TEST_F(Scatter2D, threePointsDrawTwoSymbolsTheFirstIsSkipped) {
  setThreePoints();
  const auto fills = recorded(view)->fills();
  ASSERT_EQ(fills.size(), 3u); // the paper and two symbols
  EXPECT_EQ(boxOf(fills[1]), QRectF(250 - 6, 210 - 6, 12, 12));
  EXPECT_EQ(boxOf(fills[2]), QRectF(440 - 6, 360 - 6, 12, 12));
}

TEST_F(Scatter2D, withOnePointNoSymbolIsDrawnButTheFrameAndTheAxesAre) {
  setPoints({1}, {2});
  view.setXLimitsMinMax(0, 2);
  view.setYLimitsMinMax(0, 4);
  const auto recording = recorded(view);
  EXPECT_EQ(recording->fills().size(), 1u); // the paper
  EXPECT_EQ(boxOf(recording->strokes().at(1)), QRectF(60, 60, 380, 300));
  EXPECT_EQ(axisStrokes(*recording).size(), 2u);
}

TEST_F(Scatter2D, aDiameterOf20DrawsCirclesOf20PointsCentredOnThePoints) {
  setThreePoints();
  view.setSymbolDiameter(20);
  EXPECT_EQ(boxOf(recorded(view)->fills().at(1)), QRectF(250 - 10, 210 - 10, 20, 20));
}

TEST_F(Scatter2D, aSymbolIsACircleAboutItsPoint) {
  setThreePoints();
  const RecordedItem fill = recorded(view)->fills().at(1);
  for (const QPolygonF& line : fill.path.polylines()) {
    for (const QPointF& point : line)
      EXPECT_NEAR(std::hypot(point.x() - 250, point.y() - 210), 6, 0.01);
  }
}

TEST_F(Scatter2D, symbolsAreGrayWithABlackOutlineAndClippedAtTheFrame) {
  setThreePoints();
  const auto recording = recorded(view);
  const RecordedItem& item = recording->items().at(3); // paper, its edge, the frame, the symbols
  ASSERT_EQ(item.kind, RecordedItem::Kind::Symbols);
  EXPECT_EQ(item.symbols.fill, colors::gray);
  EXPECT_EQ(item.symbols.stroke, colors::black);
  EXPECT_EQ(item.symbols.lineWidth, 1);
  EXPECT_EQ(item.clip, QRectF(60, 60, 380, 300));
}

TEST_F(Scatter2D, pixelsBeyondTheFrameStayWhiteBesideASymbolOnItsEdge) {
  setPoints({0, 20}, {0, 5}); // the symbol at (440, 210), half outside
  view.setXLimitsMinMax(0, 20);
  view.setYLimitsMinMax(0, 10);
  view.setExportPixelRatio(1);
  const QImage picture = view.pictureOfRect(view.bounds());
  // Beside the tick at the middle of the axis.
  EXPECT_EQ(pixelAt(picture, 437, 187), 0xFF808080u);
  EXPECT_EQ(pixelAt(picture, 442, 187), 0xFFFFFFFFu);
}

TEST_F(Scatter2D, theInnerRectangleIsTheFrame) {
  setThreePoints();
  recorded(view);
  EXPECT_EQ(view.pRect(), QRectF(60, 60, 380, 300));
  EXPECT_EQ(view.iRect(), view.pRect());
}

// As in the line plot: 14 points high labels, 28 points below and left.
TEST_F(Scatter2D, theLabelsStandBelowAndLeftOfTheFrame) {
  setThreePoints();
  const auto recording = recorded(view);
  const TextAttributes font = TextAttributes::helvetica(14);
  const auto x = recording->textReading(QStringLiteral("East"));
  const auto y = recording->textReading(QStringLiteral("North"));
  ASSERT_TRUE(x && y);
  EXPECT_EQ(x->attributes, font);
  EXPECT_NEAR(x->position.x(), 250 - font.size(QStringLiteral("East")).width() / 2, 1e-4);
  EXPECT_NEAR(x->position.y(), 32 - 16.1, 1e-4);
  EXPECT_NEAR(y->position.x(), 28, 1e-4);
  EXPECT_NEAR(y->position.y(), 210 - font.size(QStringLiteral("North")).width() / 2, 1e-4);
  EXPECT_NEAR(y->angleDegrees, 90, 1e-6);
  EXPECT_EQ(*view.labelAttributes(), font);
}

TEST_F(Scatter2D, rangesAreLabelledAsTheyAreWhateverTheirSize) {
  setThreePoints();
  view.setXLimitsMinMax(0, 50000);
  view.setYLimitsMinMax(0, 0.001f);
  const auto recording = recorded(view);
  EXPECT_TRUE(recording->textReading(QStringLiteral("East")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("North")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("40000")));
  EXPECT_STREQ(view.xLabel(), "");
}

TEST_F(Scatter2D, missingAndShortBuffersDrawThePairsThatAreThere) {
  setThreePoints();
  view.setNpts(2000000000);
  EXPECT_EQ(recorded(view)->fills().size(), 3u);
  view.setYp(buffer({0, 5}));
  EXPECT_EQ(recorded(view)->fills().size(), 2u);
  view.setYp(nullptr);
  EXPECT_EQ(recorded(view)->fills().size(), 1u);
  view.computePlotLimits();
  EXPECT_TRUE(drawsEverywhere(view));
}

TEST_F(Scatter2D, pairsThatAreNotFiniteAreLeftOut) {
  setPoints({0, kNan, 10, kInfinity, 20}, {0, 5, 5, 5, kNan});
  view.setXLimitsMinMax(0, 20);
  view.setYLimitsMinMax(0, 10);
  EXPECT_EQ(recorded(view)->fills().size(), 2u); // the paper and (10, 5)
}

TEST_F(Scatter2D, oddDiametersAreDrawnOrLeftOut) {
  setThreePoints();
  view.setSymbolDiameter(-8);
  EXPECT_EQ(boxOf(recorded(view)->fills().at(1)).size(), QSizeF(8, 8));
  for (const float diameter : {0.0f, kNan, kInfinity}) {
    view.setSymbolDiameter(diameter);
    EXPECT_EQ(recorded(view)->fills().size(), 1u) << diameter;
    EXPECT_TRUE(drawsEverywhere(view)) << diameter;
  }
  for (const float diameter : {1e-30f, 0.3f, 1e5f, 1e30f, 3e38f}) {
    view.setSymbolDiameter(diameter);
    EXPECT_TRUE(drawsEverywhere(view)) << diameter;
  }
}

TEST_F(Scatter2D, oddLimitsAreDrawn) {
  setThreePoints();
  for (const float end : {0.0f, -20.0f, kNan, kInfinity, 1e-38f, 3e38f}) {
    view.setXLimitsMinMax(0, end);
    view.setYLimitsMinMax(end, 0);
    EXPECT_TRUE(drawsEverywhere(view)) << end;
  }
}

// Sent to a page, a quarter of a million scattered points would be 8 MB of circles one by one.
TEST_F(Scatter2D, aPageOfManyPointsHoldsThoseThatShow) {
  constexpr std::int32_t kCount = 250000;
  std::mt19937 random(20111103);
  std::uniform_real_distribution<float> uniform(0, 1);
  const auto x = buffer({});
  const auto y = buffer({});
  for (std::int32_t i = 0; i < kCount; ++i) {
    x->push_back(uniform(random));
    y->push_back(uniform(random));
  }
  view.setXpYpNpts(x, y, kCount);
  view.computePlotLimits();
  EXPECT_LT(view.dataWithPDFInsideRect(view.bounds()).size(), 1000000);
}

} // namespace
} // namespace xov
