#include "XOV_Graphics/views/xy/PowerSpectraView.h"
#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"
#include "XOV_Graphics/views/xy/XOVHistogramView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"
#include "XOV_Graphics/views/xy/xyScatterPlot.h"
#include "XYDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace xov::testing {
namespace {

constexpr QLatin1String kX("x");
constexpr QLatin1String kY("y");
constexpr QLatin1String kPoint("point");

// The frame of a view of 320 × 300 is 200 points wide and high, at (60, 60).
const QRectF kView(0, 0, 320, 300);

void showPoints(xyPlotView& view, const std::vector<float>& x, const std::vector<float>& y) {
  view.setDataPointersXY(x, y);
  view.setNpts(int(x.size()));
  view.computePlotLimits();
  recorded(view);
}

// Ten seconds on 200 points: 20 a second; y from 0 to 100: 2 a unit.
TEST(XYReadout, tellsTheAxesOfALinePlotUnderTheirLabels) {
  xyPlotView view(kView);
  view.setXLabelString(QStringLiteral("Time (s)"));
  showPoints(view, {0, 4, 10}, {0, 100, 50});
  const PlotReadout readout = view.readout({60 + 20 * 7, 60 + 2 * 25});
  EXPECT_NEAR(readout.value(kX), 7, 1e-6);
  EXPECT_NEAR(readout.value(kY), 25, 1e-6);
  EXPECT_EQ(readout.text(), QStringLiteral("Time 7.00 s   y 25.0"));
}

TEST(XYReadout, namesThePointOfALineWithinTwelvePoints) {
  xyPlotView view(kView);
  showPoints(view, {0, 4, 10}, {0, 100, 50});
  // Point 1 is drawn at (140, 260).
  const PlotReadout near = view.readout({140 + 7, 260 - 7});
  EXPECT_EQ(near.value(kPoint), 1);
  EXPECT_EQ(near.value(QLatin1String("pointX")), 4);
  EXPECT_EQ(near.value(QLatin1String("pointY")), 100);
  EXPECT_EQ(view.readout({140 + 9, 260 - 9}).find(kPoint), nullptr); // 12.7 points away
}

TEST(XYReadout, findsEachCircleWhereAScatterPlotHasDrawnItAndNotTheFirstPair) {
  XOV2DScatterPlotView view(kView);
  const auto x = std::make_shared<std::vector<float>>(std::vector<float>{1, 2, 5, 8, 3, 10});
  const auto y = std::make_shared<std::vector<float>>(std::vector<float>{5, 9, 2, 8, 4, 1});
  view.setXpYpNpts(x, y, 6);
  view.computePlotLimits();
  const auto recording = recorded(view);
  const Symbols drawn = symbolsOf(*recording).at(0);
  ASSERT_EQ(drawn.last - drawn.first, 5);
  for (std::int64_t i = drawn.first; i < drawn.last; ++i) {
    const QPointF at(double(drawn.x[i] - drawn.xOrigin) * drawn.xScale + drawn.xOffset,
                     double(drawn.y[i] - drawn.yOrigin) * drawn.yScale + drawn.yOffset);
    const PlotReadout readout = view.readout(at);
    EXPECT_EQ(readout.value(kPoint), double(i));
    EXPECT_EQ(readout.value(QLatin1String("pointY")), double((*y)[std::size_t(i)]));
  }
  // The first pair would lie at the left edge, in the middle.
  EXPECT_EQ(view.readout({60, 60 + 100}).find(kPoint), nullptr);
}

TEST(XYReadout, findsPointsOfLargeCirclesOverAllOfThem) {
  XOV2DScatterPlotView view(kView);
  const auto values = std::make_shared<std::vector<float>>(std::vector<float>{0, 5, 10});
  view.setXpYpNpts(values, values, 3);
  view.computePlotLimits();
  recorded(view);
  EXPECT_EQ(view.readout({160 + 20, 160}).find(kPoint), nullptr);
  view.setSymbolDiameter(50);
  EXPECT_EQ(view.readout({160 + 20, 160}).value(kPoint), 1);
}

// Decades from 1 to 100: 100 points each.
TEST(XYReadout, tellsValuesOfLogarithmicAxes) {
  xyScatterPlot view(kView);
  view.setLogX(true);
  view.setDataPointersXY(std::vector<float>{1, 10, 100}, std::vector<float>{0, 1, 2});
  view.setNpts(3);
  view.setXLimitsMinMax(1, 100);
  view.setYLimitsMinMax(0, 2);
  recorded(view);
  const PlotReadout readout = view.readout({60 + 100, 60 + 100});
  EXPECT_NEAR(readout.value(kX), 10, 1e-4);
  EXPECT_EQ(readout.value(kPoint), 1);
  EXPECT_EQ(readout.value(QLatin1String("pointX")), 10);
}

TEST(XYReadout, tellsBinEdgesAndCountOfTheBarThatIsDrawnThere) {
  XOVHistogramView view(kView);
  const std::vector<float> values{0.5F, 1.5F, 1.6F, 3.5F, 3.6F, 3.7F};
  view.setValuesNPts(values.data(), int(values.size()));
  view.setNBinsMinMax(4, 0, 5); // bins 1 wide
  ASSERT_TRUE(view.binValues());
  recorded(view);
  // iRect is (50, 50, 240, 220): 48 points a unit.
  const PlotReadout second = view.readout({50 + 48 * 1.5, 60});
  EXPECT_EQ(second.value(QLatin1String("bin")), 1);
  EXPECT_EQ(second.value(QLatin1String("from")), 1);
  EXPECT_EQ(second.value(QLatin1String("to")), 2);
  EXPECT_EQ(second.value(QLatin1String("count")), 2);
  EXPECT_NEAR(second.value(kX), 1.5, 1e-6);
  EXPECT_EQ(view.readout({50 + 48 * 2.5, 60}).value(QLatin1String("count")), 0);
  EXPECT_EQ(view.readout({50 + 48 * 3.01, 200}).value(QLatin1String("bin")), 3);
  // The width divides the range by one bin more than there are.
  const PlotReadout beyond = view.readout({50 + 48 * 4.5, 60});
  EXPECT_EQ(beyond.find(QLatin1String("bin")), nullptr);
  EXPECT_NEAR(beyond.value(kX), 4.5, 1e-6);
}

TEST(XYReadout, namesTheNearestCurveOfPowerSpectra) {
  PowerSpectraView view(QRectF(0, 0, 308, 312)); // a frame of 200 × 200 at (84, 60)
  view.setLogX(false);
  view.setLogY(false);
  view.setYLabelString(QStringLiteral("Power (dB)"));
  const SpectrumCurves curves{{QStringLiteral("low"), {0, 5, 10}, {0, 10, 20}, {}},
                              {QStringLiteral("high"), {0, 5, 10}, {100, 90, 80}, {}}};
  view.setCurves(std::make_shared<const SpectrumCurves>(curves));
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  view.setXLimitsMinMax(0, 10);
  view.setYLimitsMinMax(0, 100);
  recorded(view);
  // "high" passes (84 + 100, 60 + 180) at 5 Hz.
  const PlotReadout readout = view.readout({84 + 104, 60 + 176});
  EXPECT_EQ(readout.find(QLatin1String("curve"))->text, QStringLiteral("high"));
  EXPECT_EQ(readout.value(QLatin1String("frequency")), 5);
  EXPECT_EQ(readout.value(QLatin1String("power")), 90);
  EXPECT_EQ(readout.find(QLatin1String("power"))->unit, QStringLiteral("dB"));
  EXPECT_EQ(view.readout({84 + 104, 60 + 100}).find(QLatin1String("curve")), nullptr);
}

TEST(XYReadout, tellsNothingOutsideTheFrameWithoutPointsAndForAbsurdPlaces) {
  xyPlotView view(kView);
  recorded(view);
  EXPECT_TRUE(view.readout({100, 100}).isEmpty());
  showPoints(view, {0, 4, 10}, {0, 100, 50});
  EXPECT_FALSE(view.readout({100, 100}).isEmpty());
  for (const QPointF odd :
       {QPointF(59, 100), QPointF(100, 261), QPointF(1e30, 100), QPointF(kNan, 100), QPointF(100, kInfinity)})
    EXPECT_TRUE(view.readout(odd).isEmpty());
  EXPECT_TRUE(xyPlotView().readout({0, 0}).isEmpty()); // never drawn
}

TEST(XYReadout, doesNotReadPointsThatAreGone) {
  XOV2DScatterPlotView view(kView);
  const auto values = std::make_shared<std::vector<float>>(std::vector<float>{0, 5, 10});
  view.setXpYpNpts(values, values, 3);
  view.computePlotLimits();
  recorded(view);
  values->resize(1);
  EXPECT_EQ(view.readout({160, 160}).find(kPoint), nullptr);
  view.setYp(nullptr);
  EXPECT_TRUE(view.readout({160, 160}).isEmpty());
}

} // namespace
} // namespace xov::testing
