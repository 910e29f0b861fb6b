#include "NavigatedSection.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/image/xovFKImageView.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "XOV_Graphics/views/seismic/ParticleMotionView.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/ThreeCompView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"
#include "XOV_Graphics/views/xy/xyScatterPlot.h"

#include <QTest>

#include <cmath>

namespace xov::testing {
namespace {

// The points of all traces of a drawing that lie within its frame from left to right.
std::vector<QPointF> drawnPoints(XOVView& view) {
  RecordingContext recording;
  view.drawInto(recording);
  std::vector<QPointF> points;
  for (const RecordedItem& item : recording.items()) {
    for (const Trace& trace : item.path.traces())
      for (const QPointF& point : trace.points())
        points.push_back(point);
  }
  return points;
}

std::shared_ptr<SeismogramArray> lateRecords() {
  // 40000 samples a hundredth of a second apart, from 86,000 s on, where single precision is 1/128 s fine.
  return std::make_shared<SeismogramArray>(
      SeismogramArray{makeRecord({.begin = 86000, .interval = 0.01F, .count = 40000})});
}

// A tenth of a second from 200 s into them: 56 points a sample. The first point may lie one sample to the left.
void expectTenthOfASecond(const std::vector<QPointF>& points, double left, double width) {
  ASSERT_GE(points.size(), 10U);
  ASSERT_LE(points.size(), 13U);
  const double interval = double(0.01F);
  const double first = std::floor(200 / interval) * interval; // of the sample before, or at, 200 s
  for (std::size_t i = 0; i < points.size(); ++i)
    EXPECT_NEAR(points[i].x(), left + (first + double(i) * interval - 200) / 0.1 * width, 0.05) << i;
}

TEST(NavigatedViews, aTenthOfASecondLateInADayIsDrawnToAFractionOfAPoint) {
  const auto records = lateRecords();
  const PlotPart part{.x = {86200, 86200.1}, .y = {-1e9, 1e9}};
  MultiSeisView section(QRectF(0, 0, 600, 400));
  section.setWvfrmsArray(records);
  section.showPart(part);
  EXPECT_EQ(section.xOrigin(), 86200);
  expectTenthOfASecond(drawnPoints(section), 20, 560);
  EXPECT_NEAR(section.dataAt({300, 200}).x(), 86200.05, 1e-6);
  const auto pointed = section.recordAt({300, 210});
  ASSERT_TRUE(pointed.has_value());
  EXPECT_NEAR(pointed->seconds, 86200.05, 1e-4);

  SeisView02 stack(QRectF(0, 0, 600, 400)); // frame (80, 60, 480, 300)
  stack.setWvfrmsArray(records);
  stack.showPart(part);
  expectTenthOfASecond(drawnPoints(stack), 80, 480);
}

TEST(NavigatedViews, secondsOfAxesWithAnOriginOfTheirOwnSayWhereItIs) {
  const auto records = lateRecords();
  MultiSeisView section(QRectF(0, 0, 600, 400));
  section.setWvfrmsArray(records);
  section.setXLabelString(QStringLiteral("Time (s)"));
  section.showPart(PlotPart{.x = {86200, 86200.1}, .y = {}});
  RecordingContext recording;
  section.drawInto(recording);
  const auto isAxisLabel = [](const auto& entry) { return entry.text == QStringLiteral("Time (s) after 86200 s"); };
  EXPECT_TRUE(std::any_of(recording.items().begin(), recording.items().end(), isAxisLabel));
}

TEST(NavigatedViews, stacksZoomTheirAxisOfAmplitudesAndBandsTheirGain) {
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{makeRecord({.count = 101})}); // 0 … 100
  SeisView02 stack(QRectF(0, 0, 600, 400));
  stack.setWvfrmsArray(records);
  stack.snapshot(); // amplitudes -5 … 105
  PlotNavigator navigator(&stack);
  navigator.amplify(2, QPointF(320, 60)); // at the lower edge
  expectSpan(stack.currentPart().y, -5, 50, 1e-4);
  navigator.amplify(0);
  expectSpan(stack.currentPart().y, -5, 50, 1e-4);
  stack.snapshot();
  EXPECT_EQ(stack.ymin(), -5);
  EXPECT_EQ(stack.ymax(), 50);
  navigator.showAll();
  stack.setplotStyle(SeisView02::Bands);
  navigator.amplify(2);
  stack.snapshot();
  EXPECT_EQ(stack.ymin(), 22.5F); // half of 110 about 50
  EXPECT_EQ(stack.ymax(), 77.5F);
}

struct VerticalObservation : ThreeComponentObservation {
  std::shared_ptr<SeismogramRecord> vertical() const override { return record; }
  std::shared_ptr<SeismogramRecord> radial() const override { return nullptr; }
  std::shared_ptr<SeismogramRecord> transverse() const override { return nullptr; }
  std::shared_ptr<SeismogramRecord> record = makeRecord({.count = 101});
};

TEST(NavigatedViews, threeComponentsShowTheTimeAndTheGain) {
  const auto observation = std::make_shared<VerticalObservation>();
  ThreeCompView view(QRectF(0, 0, 600, 400));
  view.setObservation(observation);
  view.snapshot();
  const double height = drawnPoints(view).back().y() - drawnPoints(view).front().y(); // of 99
  view.showPart(PlotPart{.x = {20, 60}, .y = {}, .gain = 2});
  const std::vector<QPointF> points = drawnPoints(view);
  ASSERT_EQ(points.size(), 41U); // 20 … 60, and none between them and the edges
  EXPECT_NEAR(points.back().y() - points.front().y(), 2 * height * 40 / 99, 0.01);
}

TEST(NavigatedViews, panelsOfPairsShowSecondsSinceTheirTracesBegin) {
  const auto record = makeRecord({.begin = 500, .count = 101}); // shown from the left edge, 0, on
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{record, record});
  wvfrmView view(QRectF(0, 0, 600, 400));
  view.setWvfrmArray(records);
  view.setXLimitsMinMax(0, 100);
  view.setMaxAmplitude(100);
  const std::vector<QPointF> whole = drawnPoints(view);
  ASSERT_EQ(whole.size(), 202U);
  view.showPart(PlotPart{.x = {20.5, 70.5}, .y = {}}); // half of it: twice as far apart
  const std::vector<QPointF> part = drawnPoints(view);
  ASSERT_EQ(part.size(), 104U); // samples 20 … 71 of both
  const double step = whole[1].x() - whole[0].x();
  EXPECT_NEAR(part[0].x(), whole[0].x() - step, 1e-3); // half a second before the edge
  EXPECT_NEAR(part[1].x() - part[0].x(), 2 * step, 1e-3);
}

TEST(NavigatedViews, lineplotsZoomWithinTheirLimitsAndLogarithmsByDecades) {
  xyPlotView view(QRectF(0, 0, 600, 400)); // frame (60, 60, 480, 300)
  const std::vector<float> x{1, 10, 100, 10000};
  view.setDataPointersXY(x, x);
  view.setNpts(4);
  view.setLogX(true);
  view.computePlotLimits();
  view.snapshot();
  PlotNavigator navigator(&view);
  navigator.zoom(0.5, QPointF(300, 200)); // the middle, 100
  expectSpan(view.currentPart().x, 10, 1000, 1e-3);
  EXPECT_NEAR(view.xmin(), 10, 1e-4);
  EXPECT_EQ(view.ymin(), 1);
  navigator.showAll();
  EXPECT_EQ(view.xmin(), 1);
  EXPECT_FALSE(view._fixedXAxisRange());
}

TEST(NavigatedViews, scatterPlotsZoomBothAxes) {
  XOV2DScatterPlotView view(QRectF(0, 0, 600, 400));
  const auto values = std::make_shared<std::vector<float>>(std::vector<float>{0, 50, 100});
  view.setXpYpNpts(values, values, 3);
  view.computePlotLimits();
  view.snapshot();
  PlotNavigator navigator(&view);
  turnWheel(view, {60, 60}, {0, 120}); // the lower left corner
  expectSpan(view.currentPart().x, 0, 80);
  expectSpan(view.currentPart().y, 0, 80);
}

TEST(NavigatedViews, slownessKeepsItsProportionsAndItsPeak) {
  xovFKImageView view(QRectF(0, 0, 600, 600));
  view.setXLimitsMinMax(-0.4F, 0.4F);
  view.setYLimitsMinMax(-0.4F, 0.4F);
  std::vector<float> powers(81, 0);
  powers[20] = 1; // third row from the top, third column: (-0.2, 0.2)
  view.setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(powers), 9, 9);
  view.snapshot();
  EXPECT_NEAR(view.xZmax(), -0.2F, 1e-6);
  PlotNavigator navigator(&view);
  navigator.zoomTo(QRectF(view.iRect().x(), view.iRect().y(), view.iRect().width() / 4, view.iRect().height() / 2));
  const PlotPart part = view.currentPart();
  EXPECT_NEAR(part.x.width(), 0.4, 1e-6); // grown from 0.2 to the proportions of the whole
  EXPECT_NEAR(part.y.width(), 0.4, 1e-6);
  view.snapshot();
  EXPECT_NEAR(view.xZmax(), -0.2F, 1e-6);
  EXPECT_NEAR(view.yZmax(), 0.2F, 1e-6);
}

TEST(NavigatedViews, mapsZoomBothAxesAndReachNoFurtherThanTheGlobe) {
  geoMapView view(QRectF(0, 0, 720, 400));
  view.setXLimitsMinMax(0, 40);
  view.setYLimitsMinMax(40, 60);
  view.snapshot();
  PlotNavigator navigator(&view);
  navigator.zoom(0.5);
  expectSpan(view.currentPart().x, 10, 30, 1e-5);
  expectSpan(view.currentPart().y, 45, 55, 1e-5);
  navigator.amplify(2); // degrees of one axis alone do not change
  expectSpan(view.currentPart().y, 45, 55, 1e-5);
  for (int i = 0; i < 20; ++i)
    navigator.zoom(2);
  EXPECT_LE(view.currentPart().y.upper, 90.001);
  EXPECT_LE(view.currentPart().x.width(), 360.001);
}

TEST(NavigatedViews, liveDisplaysHaveAGainThatTheClockLeavesAlone) {
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{makeRecord({.count = 101})});
  realTimeDisplayView01 view(QRectF(0, 0, 800, 480));
  view.setWvfrmsArray(records);
  view.setXLimitsMinMax(0, 100);
  view.setYLimitsMinMax(0, 100);
  PlotNavigator navigator(&view);
  turnWheel(view, {300, 200}, {0, 120});
  EXPECT_NEAR(view.currentPart().gain, 1.25, 1e-9);
  view.setXLimitsMinMax(1, 101); // a second later
  EXPECT_NEAR(view.currentPart().gain, 1.25, 1e-9);
  EXPECT_EQ(view.xmax(), 101);
  EXPECT_EQ(view.waveformGain(), 1);
}

TEST(NavigatedViews, stacksMoveUpAndDownByKeysAsFarAsTheirAxisReaches) {
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{makeRecord({.count = 101})});
  SeisView02 stack(QRectF(0, 0, 600, 400));
  stack.setWvfrmsArray(records);
  stack.snapshot(); // amplitudes -5 … 105
  const PlotNavigator navigator(&stack);
  stack.showPart(PlotPart{.x = {0, 100}, .y = {0, 50}});
  QTest::keyClick(&stack, Qt::Key_Up); // a tenth of 50
  expectSpan(stack.currentPart().y, 5, 55, 1e-4);
  QTest::keyClick(&stack, Qt::Key_Down);
  QTest::keyClick(&stack, Qt::Key_Down);
  expectSpan(stack.currentPart().y, -5, 45, 1e-4);
  QTest::keyClick(&stack, Qt::Key_Down);
  expectSpan(stack.currentPart().y, -5, 45, 1e-4);
}

TEST(NavigatedViews, stacksWithFixedLimitsReachAsFarAsThese) {
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{makeRecord({.count = 101})});
  SeisView02 stack(QRectF(0, 0, 600, 400));
  stack.setWvfrmsArray(records);
  stack.set_fixedXAxisRange(true);
  stack.set_fixedYAxisRange(true);
  stack.setXLimitsMinMax(10, 30);
  stack.setYLimitsMinMax(-20, 20);
  stack.snapshot();
  stack.showPart(PlotPart{.x = {15, 20}, .y = {0, 10}});
  expectSpan(stack.reach().whole.x, 10, 30);
  expectSpan(stack.reach().whole.y, -20, 20);
  stack.showPart({});
  expectSpan(stack.currentPart().x, 10, 30);
  expectSpan(stack.currentPart().y, -20, 20);
}

TEST(NavigatedViews, everyPanelOfPairsMovesAllOfThemAndShowsThePointersTime) {
  const auto record = makeRecord({.count = 101});
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{record, record, record, record});
  wvfrmView view(QRectF(0, 0, 600, 400)); // panels of 144 × 72 at (12, 264) and (12, 180)
  view.setWvfrmArray(records);
  view.setXLimitsMinMax(0, 100);
  PlotNavigator navigator(&view);
  navigator.setCrossHair(PlotNavigator::CrossHair::Vertical);
  sendMouse(view, QEvent::MouseMove, {48, 200}, Qt::NoButton); // a quarter of the second one
  const ViewOverlay hair = view.overlay();
  ASSERT_EQ(hair.lines.size(), 2U);
  EXPECT_EQ(hair.lines[0], QLineF(48, 264, 48, 336));
  EXPECT_EQ(hair.lines[1], QLineF(48, 180, 48, 252));
  turnWheel(view, {48, 200}, {0, 120});
  expectSpan(view.currentPart().x, 5, 85); // 80 s of which 25 s is at a quarter
  EXPECT_TRUE(view.linesAt(4).empty());
  EXPECT_EQ(view.linesAt(85).size(), 2U);
  EXPECT_FALSE(view.partPosition({48, 258}).has_value()); // between the panels
  sendMouse(view, QEvent::MouseMove, {48, 258}, Qt::NoButton);
  EXPECT_TRUE(view.overlay().isEmpty());
}

TEST(NavigatedViews, particleMotionGrowsAboutItsMiddle) {
  ParticleMotionView view(QRectF(0, 0, 900, 400));
  view.setXLimitsMinMax(-6, 2);
  view.setYLimitsMinMax(-4, 4);
  PlotNavigator navigator(&view);
  navigator.amplify(4);
  EXPECT_EQ(view.currentPart().gain, 4);
  EXPECT_EQ(view.xmin(), -1.5F);
  EXPECT_EQ(view.xmax(), 0.5F);
  EXPECT_EQ(view.ymin(), -1);
  EXPECT_EQ(view.ymax(), 1);
  navigator.zoom(2); // it has no axis that could be zoomed
  EXPECT_EQ(view.currentPart().gain, 2);
  navigator.showAll();
  EXPECT_EQ(view.xmin(), -6);
  EXPECT_EQ(view.ymax(), 4);
}

TEST(NavigatedViews, pointsOfTwoQuantitiesZoomBothAxesByTheWheel) {
  xyScatterPlot view(QRectF(0, 0, 600, 400)); // frame (60, 60, 480, 300)
  const std::vector<float> x{0, 100};
  view.setDataPointersXY(x, x);
  view.setNpts(2);
  view.computePlotLimits(); // -5 … 105
  view.snapshot();
  const PlotNavigator navigator(&view);
  turnWheel(view, {60, 60}, {0, 120}); // the lower left corner: 0.8 of 110
  expectSpan(view.currentPart().x, -5, 83, 1e-4);
  expectSpan(view.currentPart().y, -5, 83, 1e-4);
}

} // namespace
} // namespace xov::testing
