#include "XOV_Graphics/views/xy/xyScatterPlot.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using namespace testing;

class XYScatter : public ::testing::Test {
protected:
  void setPoints(const std::vector<float>& x, const std::vector<float>& y) {
    view.setDataPointersXY(x, y);
    view.setNpts(std::int32_t(x.size()));
  }
  // The points (0, 0), (10, 5), (20, 10) in a frame of 19 points a unit along x and 30 along y.
  void setThreePoints() {
    setPoints({0, 10, 20}, {0, 5, 10});
    view.setXLimitsMinMax(0, 20);
    view.setYLimitsMinMax(0, 10);
  }

  xyScatterPlot view{QRectF(0, 0, 500, 400)};
};

TEST_F(XYScatter, limitsAreWidenedBy5PercentOnBothSides) {
  setPoints({0, 10}, {-100, 100});
  view.computePlotLimits();
  EXPECT_FLOAT_EQ(view.xmin(), -0.5f);
  EXPECT_FLOAT_EQ(view.xmax(), 10.5f);
  EXPECT_FLOAT_EQ(view.ymin(), -110);
  EXPECT_FLOAT_EQ(view.ymax(), 110);
}

TEST_F(XYScatter, aSinglePointIsNotWidened) {
  setPoints({3}, {4});
  view.computePlotLimits();
  EXPECT_EQ(view.xmin(), 3);
  EXPECT_EQ(view.xmax(), 3);
  EXPECT_EQ(view.ymin(), 4);
  EXPECT_EQ(view.ymax(), 4);
}

TEST_F(XYScatter, withoutPointsTheLimitsStay) {
  view.setXLimitsMinMax(1, 2);
  view.computePlotLimits();
  EXPECT_EQ(view.xmin(), 1);
  EXPECT_EQ(view.xmax(), 2);
}

TEST_F(XYScatter, dataRangesAreNotWidened) {
  setPoints({0, 10}, {0, 20});
  EXPECT_EQ(view.computeDataRanges(), QRectF(0, 0, 10, 20));
  EXPECT_EQ(view.xmin(), 0);
  EXPECT_EQ(view.xmax(), 10);
}

TEST_F(XYScatter, withoutPointsOnlyThePaperIsDrawn) { EXPECT_EQ(recorded(view)->items().size(), 2u); }

TEST_F(XYScatter, threePointsDrawTwoSymbolsTheFirstIsSkipped) {
  setThreePoints();
  const auto fills = recorded(view)->fills();
  ASSERT_EQ(fills.size(), 3u); // the paper and two symbols
  EXPECT_EQ(boxOf(fills[1]), QRectF(250 - 6, 210 - 6, 12, 12));
  EXPECT_EQ(boxOf(fills[2]), QRectF(440 - 6, 360 - 6, 12, 12));
}

TEST_F(XYScatter, withOnePointNoSymbolIsDrawnButTheFrameAndTheAxesAre) {
  setPoints({1}, {2});
  view.setXLimitsMinMax(0, 2);
  view.setYLimitsMinMax(0, 4);
  const auto recording = recorded(view);
  EXPECT_EQ(recording->fills().size(), 1u); // the paper
  EXPECT_EQ(boxOf(recording->strokes().at(1)), QRectF(60, 60, 380, 300));
  EXPECT_EQ(axisStrokes(*recording).size(), 1u);
}

TEST_F(XYScatter, symbolsAreAlways12PointsWide) {
  setThreePoints();
  view.setXLimitsMinMax(0, 2000);
  EXPECT_EQ(boxOf(recorded(view)->fills().at(1)).size(), QSizeF(12, 12));
}

TEST_F(XYScatter, eachSymbolIsFilledGrayAndStrokedBlackBeforeTheNext) {
  setThreePoints();
  const auto recording = recorded(view);
  const RecordedItem& symbols = recording->items().at(3); // paper, its edge, the frame, the symbols
  ASSERT_EQ(symbols.kind, RecordedItem::Kind::Symbols);
  const auto steps = symbols.steps();
  ASSERT_EQ(steps.size(), 4u);
  for (std::size_t i = 0; i < steps.size(); ++i) {
    EXPECT_EQ(steps[i].kind, i % 2 == 0 ? RecordedItem::Kind::Fill : RecordedItem::Kind::Stroke);
    EXPECT_EQ(steps[i].color, i % 2 == 0 ? colors::gray : colors::black);
    EXPECT_EQ(steps[i].path.lineWidth(), 1);
    EXPECT_EQ(boxOf(steps[i]).center(), i < 2 ? QPointF(250, 210) : QPointF(440, 360));
  }
}

TEST_F(XYScatter, symbolsAreClippedAtTheFrame) {
  setThreePoints();
  EXPECT_EQ(recorded(view)->items().at(3).clip, QRectF(60, 60, 380, 300));
}

TEST_F(XYScatter, clicksAreReportedByTheFrameThatIsDrawn) {
  struct Clicks : PlotController {
    void handleClickedMousePosition(QPointF position) override { positions.push_back(position); }
    void handleTrackedMousePosition(QPointF) override {}
    std::vector<QPointF> positions;
  } clicks;
  setThreePoints();
  view.setXLimitsMinMax(0, 38);
  view.setYLimitsMinMax(0, 30);
  view.setController(&clicks);
  recorded(view);
  EXPECT_EQ(view.iRect(), QRectF(60, 60, 380, 300));
  // Ten points a unit along both axes from (60, 60) on.
  const auto click = [this](QPointF place) { view.mouseDown({view.convertPointToWindow(place), {}, 1}); };
  click({160, 90});
  click({50, 90}); // left of the frame
  view.viewDidEndLiveResize();
  recorded(view);
  click({440, 360});
  ASSERT_EQ(clicks.positions.size(), 2u);
  EXPECT_NEAR(clicks.positions[0].x(), 10, 1e-9);
  EXPECT_NEAR(clicks.positions[0].y(), 3, 1e-9);
  EXPECT_NEAR(clicks.positions[1].x(), 38, 1e-9);
  EXPECT_NEAR(clicks.positions[1].y(), 30, 1e-9);
}

TEST_F(XYScatter, theAxisTitlesAreFixedWhateverTheLabelStringsSay) {
  setThreePoints();
  view.setXLabelString(QStringLiteral("other"));
  view.setYLabelString(QStringLiteral("another"));
  const auto recording = recorded(view);
  EXPECT_TRUE(recording->textReading(QStringLiteral("Moment")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("Rise Time (s)")));
  EXPECT_FALSE(recording->textReading(QStringLiteral("other")));
  EXPECT_FALSE(recording->textReading(QStringLiteral("another")));
  EXPECT_STREQ(view.xLabel(), "Rise Time (s)");
}

TEST_F(XYScatter, theXTitleIsCentredBelowTheFrameAndTheYTitleStartsAtItsLeftEnd) {
  setThreePoints();
  const auto recording = recorded(view);
  const auto x = recording->textReading(QStringLiteral("Moment"));
  const auto y = recording->textReading(QStringLiteral("Rise Time (s)"));
  ASSERT_TRUE(x && y);
  const double width = TextAttributes::helvetica(18).size(QStringLiteral("Moment")).width();
  EXPECT_NEAR(x->position.x() + width / 2, 250, 1);
  EXPECT_NEAR(x->position.y(), 60 - 2.5 * 18, 1);
  EXPECT_GT(y->position.y(), 360);
}

TEST_F(XYScatter, wideRangesAreNotScaled) {
  setThreePoints();
  view.setXLimitsMinMax(0, 50000);
  const auto recording = recorded(view);
  EXPECT_TRUE(recording->textReading(QStringLiteral("Moment")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("40000")));
}

TEST_F(XYScatter, bothAxesAreOneStrokeInTheViewsOwnLabelFont) {
  setThreePoints();
  EXPECT_EQ(axisStrokes(*recorded(view)).size(), 1u);
  EXPECT_EQ(*view.labelAttributes(), TextAttributes::helvetica(18));
}

TEST_F(XYScatter, pairsThatAreNotFiniteAreLeftOut) {
  setPoints({0, kNan, 10, kInfinity, 20}, {0, 5, 5, 5, kNan});
  view.setXLimitsMinMax(0, 20);
  view.setYLimitsMinMax(0, 10);
  EXPECT_EQ(recorded(view)->fills().size(), 2u); // the paper and (10, 5)
}

TEST_F(XYScatter, countsBeyondTheSamplesAndOddLimitsAreDrawn) {
  setThreePoints();
  view.setNpts(2000000000);
  EXPECT_EQ(recorded(view)->fills().size(), 3u);
  for (const float end : {0.0f, kNan, kInfinity}) {
    view.setXLimitsMinMax(0, end);
    view.setYLimitsMinMax(end, 0);
    EXPECT_TRUE(drawsEverywhere(view)) << end;
  }
}

} // namespace
} // namespace xov
