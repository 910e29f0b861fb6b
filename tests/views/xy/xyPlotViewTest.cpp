#include "XOV_Graphics/views/xy/xyPlotView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/support/Pixels.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace xov {
namespace {

using namespace testing;

const QRectF kFrame(0, 0, 500, 400);

class XYPlot : public ::testing::Test {
protected:
  XYPlot() {
    view.setXLabelString(QStringLiteral("Distance"));
    view.setYLabelString(QStringLiteral("Height"));
  }
  // The points (0, 0), (10, 5), (20, 10) in a frame of 19 points a unit along x and 30 along y.
  void setThreePoints() {
    setPoints({0, 10, 20}, {0, 5, 10});
    view.setXLimitsMinMax(0, 20);
    view.setYLimitsMinMax(0, 10);
  }
  void setPoints(const std::vector<float>& x, const std::vector<float>& y) {
    view.setDataPointersXY(x, y);
    view.setNpts(std::int32_t(x.size()));
  }
  std::vector<QPolygonF> drawnLines() { return recorded(view)->strokes().at(2).path.polylines(); }

  xyPlotView view{kFrame};
};

TEST_F(XYPlot, startsEmpty) {
  EXPECT_EQ(view.npts(), 0);
  EXPECT_TRUE(view.xp().empty());
  EXPECT_TRUE(view.yp().empty());
}

TEST_F(XYPlot, withoutPointsOnlyTheWhitePaperAndItsBlackFrameAreDrawn) {
  const auto recording = recorded(view);
  ASSERT_EQ(recording->items().size(), 2u);
  EXPECT_EQ(recording->items()[0].kind, RecordedItem::Kind::Fill);
  EXPECT_EQ(recording->items()[0].color, colors::white);
  EXPECT_EQ(boxOf(recording->items()[0]), kFrame);
  EXPECT_EQ(recording->items()[1].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(recording->items()[1].color, colors::black);
  EXPECT_EQ(boxOf(recording->items()[1]), kFrame);
}

TEST_F(XYPlot, aNegativeCountDrawsNoAxesEither) {
  setThreePoints();
  view.setNpts(-1);
  EXPECT_EQ(recorded(view)->items().size(), 2u);
}

TEST_F(XYPlot, onePointIsAPathWithASingleMoveAndTheAxesAreDrawn) {
  setPoints({1}, {2});
  view.setXLimitsMinMax(0, 2);
  view.setYLimitsMinMax(0, 4);
  const auto recording = recorded(view);
  ASSERT_EQ(recording->strokes().size(), 5u); // view, frame, data, two axes
  EXPECT_EQ(recording->strokes()[2].path.polylines(), std::vector<QPolygonF>{QPolygonF{{QPointF(250, 210)}}});
  EXPECT_TRUE(recording->textReading(QStringLiteral("Distance")));
}

TEST_F(XYPlot, dataAloneShowNothingUntilTheCountIsSet) {
  view.setDataPointersXY(std::vector<float>{0, 1}, std::vector<float>{0, 1});
  EXPECT_EQ(view.npts(), 0);
  EXPECT_EQ(recorded(view)->items().size(), 2u);
  view.setNpts(2);
  view.computePlotLimits();
  EXPECT_GT(recorded(view)->items().size(), 2u);
}

TEST_F(XYPlot, aViewOf500By400PointsFrames380By300) {
  setThreePoints();
  const auto strokes = recorded(view)->strokes();
  EXPECT_EQ(boxOf(strokes.at(1)), QRectF(60, 60, 380, 300));
  EXPECT_EQ(strokes.at(1).color, colors::black);
  EXPECT_EQ(view.pRect(), QRectF(60, 60, 380, 300));
  EXPECT_EQ(view.iRect(), view.pRect());
}

TEST_F(XYPlot, everyPointIsMappedIntoTheFrameInOrder) {
  setThreePoints();
  EXPECT_EQ(drawnLines(), std::vector<QPolygonF>{QPolygonF({{60, 60}, {250, 210}, {440, 360}})});
}

TEST_F(XYPlot, theLineIsBlackAndOnePointWide) {
  setThreePoints();
  const RecordedItem line = recorded(view)->strokes().at(2);
  EXPECT_EQ(line.color, colors::black);
  EXPECT_EQ(line.path.lineWidth(), 1);
}

TEST_F(XYPlot, pointsOutsideTheLimitsAreClippedAtTheFrame) {
  setThreePoints();
  view.setXLimitsMinMax(0, 10);
  const auto recording = recorded(view);
  const RecordedItem line = recording->strokes().at(2);
  EXPECT_EQ(line.clip, QRectF(60, 60, 380, 300));
  EXPECT_EQ(line.path.polylines().front().last(), QPointF(60 + 2 * 380, 360));
}

TEST_F(XYPlot, theAxesAreNotClipped) {
  setThreePoints();
  for (const RecordedItem& axis : axisStrokes(*recorded(view)))
    EXPECT_FALSE(axis.clip.has_value());
}

TEST_F(XYPlot, valuesThatAreNotFiniteBreakTheLine) {
  setPoints({0, 10, 15, 20, 20}, {0, kNan, 5, 10, kInfinity});
  view.setXLimitsMinMax(0, 20);
  view.setYLimitsMinMax(0, 10);
  EXPECT_EQ(drawnLines(),
            (std::vector<QPolygonF>{QPolygonF{{QPointF(60, 60)}}, QPolygonF({{345, 210}, {440, 360}})}));
}

TEST_F(XYPlot, aLineHasTheSamePixelsFromRightToLeft) {
  std::mt19937 random(3);
  std::vector<float> x, y;
  for (int i = 0; i < 5000; ++i) {
    x.push_back(float(i));
    y.push_back(float(random() % 1000));
  }
  const auto picture = [this](const std::vector<float>& xs, const std::vector<float>& ys) {
    setPoints(xs, ys);
    view.setXLimitsMinMax(0, 5000);
    view.setYLimitsMinMax(0, 1000);
    return view.pictureOfRect(view.bounds());
  };
  const QImage rightwards = picture(x, y);
  const auto reversed = [](std::vector<float> values) {
    std::ranges::reverse(values);
    return values;
  };
  EXPECT_EQ(differingPixels(rightwards, picture(reversed(x), reversed(y))), 0);
  // There and back again is the same line, too, but for what its ends and its turn add.
  std::vector<float> back = reversed(x), backY = reversed(y);
  back.insert(back.begin(), x.begin(), x.end());
  backY.insert(backY.begin(), y.begin(), y.end());
  EXPECT_LE(differingPixels(rightwards, picture(back, backY), 2), 4);
}

TEST_F(XYPlot, aCountBeyondTheSamplesDrawsThoseThatAreThere) {
  setThreePoints();
  view.setNpts(1000000000);
  EXPECT_EQ(drawnLines().front().size(), 3);
  view.computePlotLimits();
  EXPECT_EQ(view.xmax(), 20);
}

TEST_F(XYPlot, buffersOfDifferentLengthDrawTheirPairs) {
  view.setDataPointersXY(std::vector<float>{0, 10, 20}, std::vector<float>{0, 10});
  view.setNpts(3);
  view.computePlotLimits();
  EXPECT_EQ(view.xmax(), 10);
  EXPECT_EQ(drawnLines().front().size(), 2);
}

TEST_F(XYPlot, limitsAreTheExtremesWhateverTheFixedRangeFlagsSay) {
  setPoints({3, -2, 7, kNan}, {10, 30, 20, 25});
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  view.setMinYRange(1000);
  view.computePlotLimits();
  EXPECT_EQ(view.xmin(), -2);
  EXPECT_EQ(view.xmax(), 7);
  EXPECT_EQ(view.ymin(), 10);
  EXPECT_EQ(view.ymax(), 30);
}

TEST_F(XYPlot, computingLimitsLeavesTheDataRectangleAlone) {
  view.setXLimitsMinMax(1, 2);
  view.setYLimitsMinMax(3, 5);
  setPoints({0, 10}, {0, 10});
  view.computePlotLimits();
  EXPECT_EQ(view.xyRect(), QRectF(1, 3, 1, 2));
}

TEST_F(XYPlot, withoutPointsTheLimitsStay) {
  view.setXLimitsMinMax(1, 2);
  view.computePlotLimits();
  EXPECT_EQ(view.xmin(), 1);
  EXPECT_EQ(view.xmax(), 2);
}

TEST_F(XYPlot, dataRangesAreReturnedAndSet) {
  EXPECT_EQ(view.computeDataRanges(), QRectF());
  setPoints({1, 4}, {-3, 9});
  EXPECT_EQ(view.computeDataRanges(), QRectF(1, -3, 3, 12));
  EXPECT_EQ(view.xmax(), 4);
  EXPECT_EQ(view.ymin(), -3);
}

TEST_F(XYPlot, settingDataReplacesAndAppendingAddsWhileTheCountStays) {
  setPoints({1, 2}, {3, 4});
  view.appendDataPointersXY(std::vector<float>{5}, std::vector<float>{6});
  EXPECT_EQ(view.xp(), (std::vector<float>{1, 2, 5}));
  EXPECT_EQ(view.yp(), (std::vector<float>{3, 4, 6}));
  EXPECT_EQ(view.npts(), 2);
  view.incrementNpts(1);
  EXPECT_EQ(view.npts(), 3);
  view.setDataPointersXY(std::vector<float>{7}, std::vector<float>{8});
  EXPECT_EQ(view.xp(), std::vector<float>{7});
  EXPECT_EQ(view.npts(), 3);
}

TEST_F(XYPlot, theCountStopsAtTheEndsOfItsRange) {
  using Limits = std::numeric_limits<std::int32_t>;
  view.setNpts(Limits::max() - 1);
  view.incrementNpts(5);
  EXPECT_EQ(view.npts(), Limits::max());
  view.setNpts(Limits::min());
  view.incrementNpts(-1);
  EXPECT_EQ(view.npts(), Limits::min());
}

// The label box of 14 points is 1.15 · 14 = 16.1 high. X: centred on 60 + 380/2, its top at 60 - 28. Y: turned, its
// lower left corner at x 28, centred on 60 + 300/2.
TEST_F(XYPlot, theAxisLabelsStandBelowAndLeftOfTheFrame) {
  setThreePoints();
  const auto recording = recorded(view);
  const TextAttributes font = TextAttributes::helvetica(14);
  const auto x = recording->textReading(QStringLiteral("Distance"));
  const auto y = recording->textReading(QStringLiteral("Height"));
  ASSERT_TRUE(x && y);
  EXPECT_EQ(x->attributes, font);
  EXPECT_NEAR(x->position.x(), 250 - font.size(QStringLiteral("Distance")).width() / 2, 1e-4);
  EXPECT_NEAR(x->position.y(), 32 - 16.1, 1e-4);
  EXPECT_EQ(x->angleDegrees, 0);
  EXPECT_NEAR(y->position.x(), 28, 1e-4);
  EXPECT_NEAR(y->position.y(), 210 - font.size(QStringLiteral("Height")).width() / 2, 1e-4);
  EXPECT_NEAR(y->angleDegrees, 90, 1e-6);
}

TEST_F(XYPlot, eachAxisIsStrokedByItselfBeforeItsLabel) {
  setThreePoints();
  const auto recording = recorded(view);
  const auto axes = axisStrokes(*recording);
  ASSERT_EQ(axes.size(), 2u);
  // Both horizontal, then both vertical sides of the frame.
  EXPECT_EQ(boxOf(axes[0]), QRectF(60, 60, 380, 300));
  EXPECT_EQ(boxOf(axes[1]), QRectF(60, 60, 380, 300));
  EXPECT_EQ(recording->items().back().text, QStringLiteral("Height"));
}

TEST_F(XYPlot, drawingTheAxesLeavesTheLabelFontAt14Points) {
  setThreePoints();
  recordedStep([this] { view.drawAxes(); });
  EXPECT_EQ(*view.labelAttributes(), TextAttributes::helvetica(14));
}

TEST_F(XYPlot, aWideOrNarrowRangeIsScaledAndItsLabelSaysSo) {
  setThreePoints();
  view.setXLimitsMinMax(0, 50000);
  view.setYLimitsMinMax(0, 0.001f);
  const auto recording = recorded(view);
  EXPECT_TRUE(recording->textReading(QStringLiteral("Distance (/ 10^3)")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("Height (/ 10^-3)")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("40"))); // a tick of the axis from 0 to 50
}

TEST_F(XYPlot, theAxisFunctionsGetAnEmptyLabel) {
  setThreePoints();
  recorded(view);
  EXPECT_STREQ(view.xLabel(), "");
}

TEST_F(XYPlot, equalLimitsAndLimitsThatAreNotFiniteDrawAFrame) {
  setThreePoints();
  for (const float end : {0.0f, kNan, kInfinity, -kInfinity}) {
    view.setXLimitsMinMax(0, end);
    view.setYLimitsMinMax(0, end);
    EXPECT_EQ(boxOf(recorded(view)->strokes().at(1)), QRectF(60, 60, 380, 300)) << end;
    EXPECT_TRUE(drawsEverywhere(view)) << end;
  }
}

TEST_F(XYPlot, aViewSmallerThanItsMarginsIsDrawn) {
  view.resize(50, 30);
  setThreePoints();
  EXPECT_TRUE(drawsEverywhere(view));
  EXPECT_EQ(view.pRect(), QRectF(60, 60, -70, -70));
}

} // namespace
} // namespace xov
