#include "XOV_Graphics/views/image/NoiseStatisticsView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

const QRectF kFrame(0, 0, 700, 420);

// Eight periods from 1 s on, an eighth of an octave apart; three segments at -105.5 dB and one at -120.5.
std::shared_ptr<const NoiseStatistics> statistics() {
  auto statistics = std::make_shared<NoiseStatistics>();
  for (int i = 0; i < 8; ++i)
    statistics->periods.push_back(std::exp2(i / 8.0));
  statistics->segments = 4;
  for (int segment = 0; segment < 4; ++segment)
    statistics->decibels.insert(statistics->decibels.end(), 8, segment == 0 ? -120.5F : -105.5F);
  return statistics;
}

class NoiseStatisticsViewTest : public ::testing::Test {
protected:
  QColor at(const QImage& picture, double period, double decibels) {
    const QPointF point = dataToView({period, decibels}, view.iRect(), view.limits(), view.logAxes());
    return picture.pixelColor(int(point.x()), int(kFrame.height() - point.y()));
  }

  NoiseStatisticsView view{kFrame};
};

TEST_F(NoiseStatisticsViewTest, columnsAreCentredOnTheirPeriods) {
  view.setStatistics(statistics());
  EXPECT_EQ(view.nc(), 8);
  EXPECT_EQ(view.nr(), 30); // from -130 to -100
  EXPECT_NEAR(view.xmin(), std::exp2(-1.0 / 16), 1e-6);
  EXPECT_NEAR(view.xmax(), std::exp2(7.0 / 8 + 1.0 / 16), 1e-6);
  EXPECT_EQ(view.ymin(), -130);
  EXPECT_EQ(view.ymax(), -100);
}

TEST_F(NoiseStatisticsViewTest, tellsPeriodPowerAndShareOfACell) {
  view.setStatistics(statistics());
  view.pictureOfRect(view.bounds());
  const auto told = [&](double period, double decibels) {
    return view.readout(dataToView({period, decibels}, view.iRect(), view.limits(), view.logAxes()));
  };
  const PlotReadout most = told(std::exp2(0.5), -105.5);
  EXPECT_NEAR(most.value(QLatin1String("x")), 1.41421, 1e-4);
  EXPECT_NEAR(most.value(QLatin1String("y")), -105.5, 1e-4);
  EXPECT_EQ(most.value(QLatin1String("value")), 75); // three of four
  EXPECT_EQ(told(1, -120.5).value(QLatin1String("value")), 25);
  EXPECT_EQ(told(1, -110.5).find(QLatin1String("value")), nullptr);
}

TEST_F(NoiseStatisticsViewTest, sharesAreColoursAndNothingIsPaper) {
  view.setShowPercentiles(false);
  view.setStatistics(statistics());
  EXPECT_EQ(view.maxValue(), 75);
  const QImage picture = view.pictureOfRect(view.bounds());
  const QColor often = at(picture, 1.2, -105.5);
  const QColor seldom = at(picture, 1.2, -120.5);
  EXPECT_GT(often.green(), 200) << "three quarters: the yellow end";
  EXPECT_LT(seldom.green(), often.green());
  EXPECT_NE(seldom, QColor(Qt::white));
  EXPECT_EQ(at(picture, 1.2, -110.5), QColor(Qt::white));
}

TEST_F(NoiseStatisticsViewTest, theMedianIsDrawnUnlessToldOtherwise) {
  view.setStatistics(statistics());
  const auto lines = [this] {
    int found = 0;
    for (const RecordedItem& item : testing::recorded(view).strokes())
      if (item.path.lineWidth() == 1.25 && item.color == colors::black) ++found;
    return found;
  };
  EXPECT_EQ(lines(), 1);
  view.setShowPercentiles(false);
  EXPECT_EQ(lines(), 0);
}

TEST_F(NoiseStatisticsViewTest, noiseModelsHaveRoom) {
  view.setStatistics(statistics());
  view.setShowNoiseModels(true);
  testing::recorded(view);
  // From 1 to 2 s: the low model falls to -169 dB, the high one rises no higher than -107.
  EXPECT_EQ(view.ymin(), -170);
  EXPECT_EQ(view.ymax(), -100);
}

TEST_F(NoiseStatisticsViewTest, clicksArePeriodAndDecibels) {
  view.setStatistics(statistics());
  testing::recorded(view);
  std::vector<QPointF> clicks;
  QObject::connect(&view, &XOVView::clicked, [&clicks](QPointF position) { clicks.push_back(position); });
  const QPointF middle = view.iRect().center();
  view.mouseDown({{middle.x(), kFrame.height() - middle.y()}, {}, 1});
  ASSERT_EQ(clicks.size(), 1u);
  EXPECT_NEAR(clicks[0].x(), std::exp2(7.0 / 16), 1e-5);
  EXPECT_NEAR(clicks[0].y(), -115, 1e-4);
}

TEST_F(NoiseStatisticsViewTest, withoutSegmentsThePaperIsEmpty) {
  view.setStatistics(nullptr);
  EXPECT_TRUE(testing::recorded(view).images().empty());
  view.setStatistics(std::make_shared<const NoiseStatistics>());
  EXPECT_TRUE(testing::recorded(view).images().empty());
  auto silent = std::make_shared<NoiseStatistics>(*statistics());
  std::fill(silent->decibels.begin(), silent->decibels.end(), kNoPowerDb);
  view.setStatistics(silent);
  EXPECT_TRUE(testing::recorded(view).images().empty());
}

TEST_F(NoiseStatisticsViewTest, hasNoTextsWithoutAxesAndColorBar) {
  view.setStatistics(statistics());
  EXPECT_FALSE(testing::recorded(view).strings().isEmpty());
  view.setShowAxes(false);
  view.setShowColorBar(false);
  EXPECT_EQ(testing::recorded(view).strings(), QStringList());
}

} // namespace
} // namespace xov
