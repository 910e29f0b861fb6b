// Logarithmic axes of the plots of numbers.
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"
#include "XOV_Graphics/views/xy/XOVHistogramView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"
#include "XOV_Graphics/views/xy/xyScatterPlot.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

using namespace testing;

const QRectF kFrame(0, 0, 500, 400); // the frame of the data is (60, 60, 380, 300)

bool hasText(const RecordingContext& recording, const QString& text) {
  const auto& items = recording.items();
  return std::any_of(items.begin(), items.end(), [&](const RecordedItem& item) { return item.text == text; });
}

xyPlotView* lineOf(const std::vector<float>& x, const std::vector<float>& y) {
  auto* view = new xyPlotView(kFrame);
  view->setDataPointersXY(x, y);
  view->setNpts(std::int32_t(x.size()));
  return view;
}

TEST(LogPlots, areLinearAtFirst) {
  EXPECT_EQ(xyPlotView().logAxes(), LogAxes());
  EXPECT_EQ(XOV2DScatterPlotView().logAxes(), LogAxes());
  EXPECT_EQ(XOVHistogramView().logAxes(), LogAxes());
}

// Decades of 190 points along x and 100 along y.
TEST(LogPlots, aLineThroughPowersOfTenIsStraight) {
  const std::unique_ptr<xyPlotView> view(lineOf({1, 10, 100}, {1, 10, 100}));
  view->setLogX(true);
  view->setLogY(true);
  view->setXLimitsMinMax(1, 100);
  view->setYLimitsMinMax(1, 1000);
  const auto lines = recorded(*view)->strokes().at(2).path.polylines();
  ASSERT_EQ(lines.size(), 1u);
  ASSERT_EQ(lines[0].size(), 3);
  EXPECT_NEAR(lines[0][1].x(), 250, 1e-3);
  EXPECT_NEAR(lines[0][1].y(), 160, 1e-3);
  EXPECT_NEAR(lines[0][2].x(), 440, 1e-3);
  EXPECT_NEAR(lines[0][2].y(), 260, 1e-3);
}

TEST(LogPlots, whatIsNotAboveZeroBreaksTheLine) {
  const std::unique_ptr<xyPlotView> view(lineOf({1, 2, 3, 4, 5}, {1, 10, 0, 10, 100}));
  view->setLogY(true);
  view->setXLimitsMinMax(1, 5);
  view->setYLimitsMinMax(1, 100);
  EXPECT_EQ(recorded(*view)->strokes().at(2).path.polylines().size(), 2u);
}

TEST(LogPlots, limitsAreComputedOfWhatIsAboveZero) {
  const std::unique_ptr<xyPlotView> view(lineOf({-5, 0, 1, 100}, {3, 7, 0, 20}));
  view->setLogX(true);
  view->computePlotLimits();
  EXPECT_EQ(view->limits(), (PlotLimits{1, 100, 0, 20}));
  view->setLogY(true);
  view->computePlotLimits();
  EXPECT_EQ(view->limits(), (PlotLimits{1, 100, 3, 20}));
}

TEST(LogPlots, ticksAreDecadesAndLabelsAreNotScaled) {
  const std::unique_ptr<xyPlotView> view(lineOf({1e-6F, 1e-3F}, {1, 1000}));
  view->setXLabelString(QStringLiteral("Energy"));
  view->setLogX(true);
  view->setXLimitsMinMax(1e-6F, 1e-3F);
  view->setYLimitsMinMax(1, 1000);
  const auto recording = recorded(*view);
  EXPECT_TRUE(hasText(*recording, QStringLiteral("Energy")));
  EXPECT_TRUE(hasText(*recording, QStringLiteral("−6")));
  EXPECT_TRUE(hasText(*recording, QStringLiteral("−3")));
}

TEST(LogPlots, clicksAreReportedInDataCoordinates) {
  const std::unique_ptr<xyPlotView> view(lineOf({1, 10000}, {0, 30}));
  view->setLogX(true);
  view->setXLimitsMinMax(1, 10000);
  view->setYLimitsMinMax(0, 30);
  recorded(*view);
  std::vector<QPointF> clicks;
  QObject::connect(view.get(), &XOVView::clicked, [&clicks](QPointF position) { clicks.push_back(position); });
  view->mouseDown({{60 + 190, 400 - 60 - 100}, {}, 1}); // y downwards
  ASSERT_EQ(clicks.size(), 1u);
  EXPECT_NEAR(clicks[0].x(), 100, 1e-2); // the middle of four decades
  EXPECT_NEAR(clicks[0].y(), 10, 1e-5);
}

TEST(LogPlots, circlesLieByTheirLogarithms) {
  XOV2DScatterPlotView view(kFrame);
  const auto values = std::make_shared<std::vector<float>>(std::vector<float>{1, 10, -1});
  view.setXpYpNpts(values, values, 3);
  view.setLogX(true);
  view.setLogY(true);
  view.computePlotLimits();
  EXPECT_EQ(view.limits(), (PlotLimits{1, 10, 1, 10}));
  // The symbols borrow values that live as long as the drawing, so this is seen on the pixels: one circle, whose
  // middle is the upper right corner of the frame.
  const QImage picture = view.pictureOfRect(view.bounds());
  EXPECT_EQ(picture.pixelColor(438, 400 - 358).rgb(), colors::gray.rgb());
  EXPECT_NE(picture.pixelColor(250, 200).rgb(), colors::gray.rgb());
}

// The padding is 5 % of the decades: 2 decades give 0.1 to both sides.
TEST(LogPlots, paddingIsAShareOfTheDecades) {
  xyScatterPlot view(kFrame);
  const std::vector<float> values{1, 100};
  view.setDataPointersXY(values, values);
  view.setNpts(2);
  view.setLogX(true);
  view.computePlotLimits();
  EXPECT_NEAR(view.xmin(), 0.79433F, 1e-5);
  EXPECT_NEAR(view.xmax(), 125.8925F, 1e-3);
  EXPECT_NEAR(view.ymin(), 1 - 4.95F, 1e-5);
  EXPECT_TRUE(hasText(*recorded(view), QStringLiteral("Moment")));
}

// Three bins over four decades and one more for the view's divisor: a decade each. 0 and -3 are in none.
TEST(LogPlots, binsAreEquallyWideAlongALogarithmicAxis) {
  XOVHistogramView view(kFrame);
  const std::vector<float> values{1, 2, 5, 20, 200, 300, 0, -3};
  ASSERT_TRUE(view.setValuesNPts(values.data(), std::int32_t(values.size())));
  view.setLogX(true);
  view.setNBinsMinMax(3, 1, 10000);
  ASSERT_TRUE(view.binValues());
  EXPECT_EQ(view.binWidth(), 1);
  EXPECT_EQ(*view.counts(), (std::vector<std::int32_t>{3, 1, 2}));
  EXPECT_TRUE(view.description().contains(QStringLiteral("\n1.000e+00 1.000e+01 3\n")));
}

// The axis reaches from 0.5 to 1.5 · 100, 2.4771 decades on 300 points or 121.11 a decade; 1 lies 0.30103 decades up.
TEST(LogPlots, barsShowTheLogarithmsOfCounts) {
  XOVHistogramView view(kFrame);
  const float value = 1;
  ASSERT_TRUE(view.setValuesNPts(&value, 1));
  view.setNBinsMinMax(3, 0, 4);
  view.setCounts(std::make_shared<std::vector<std::int32_t>>(std::vector<std::int32_t>{1, 0, 100}));
  view.setMaxCount(100);
  view.setbinWidth(1);
  view.setLogY(true);
  const auto recording = recorded(view);
  EXPECT_EQ(view.ymin(), 0.5F);
  EXPECT_EQ(view.ymax(), 150);
  const double perDecade = view.iRect().height() / std::log10(300.0);
  const auto bars = std::find_if(recording->items().begin(), recording->items().end(), [&](const RecordedItem& item) {
    return item.kind == RecordedItem::Kind::Fill && item.color == view.barFillColor();
  });
  ASSERT_NE(bars, recording->items().end());
  const auto lines = bars->path.polylines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_NEAR(lines[0][1].y(), view.iRect().y() + perDecade * std::log10(2.0), 1e-3);
  EXPECT_NEAR(lines[1][1].y(), view.iRect().y(), 1e-3);
  EXPECT_NEAR(lines[2][1].y(), view.iRect().y() + perDecade * std::log10(200.0), 1e-3);
}

TEST(LogPlots, absurdLimitsDrawNoMoreThanTheFrame) {
  for (const auto& [low, high] : {std::pair(-3.0F, -1.0F),
                                  {0.0F, 0.0F},
                                  {kNan, 1.0F},
                                  {1.0F, kInfinity},
                                  {1e-45F, 3e38F},
                                  {1.0F, 1.0F},
                                  {1.0F, std::nextafter(1.0F, 2.0F)}}) {
    const std::unique_ptr<xyPlotView> view(lineOf({1, 10, 100}, {1, 0, kInfinity}));
    view->setLogX(true);
    view->setLogY(true);
    view->setXLimitsMinMax(low, high);
    view->setYLimitsMinMax(low, high);
    EXPECT_TRUE(drawsEverywhere(*view)) << low << ' ' << high;
  }
}

} // namespace
} // namespace xov
