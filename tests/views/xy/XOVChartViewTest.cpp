#include "XOV_Graphics/views/xy/XOVChartView.h"

#include "XOV_Graphics/views/base/XOVView.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace xov {
namespace {

using namespace testing;

TEST(ChartView, madeWithoutAFrameItHasLimitsFrom0To1AndAnEmptyList) {
  const XOVChartView view;
  EXPECT_EQ(view.xmin(), 0);
  EXPECT_EQ(view.xmax(), 1);
  EXPECT_EQ(view.ymin(), 0);
  EXPECT_EQ(view.ymax(), 1);
  ASSERT_NE(view.dataArray(), nullptr);
  EXPECT_TRUE(view.dataArray()->empty());
}

TEST(ChartView, madeWithoutAFrameItsPlottingRectangleIsOfZeroSize) {
  EXPECT_EQ(XOVChartView().pRect(), QRectF(0, 0, 0, 0));
}

TEST(ChartView, thePlottingRectangleDoesNotFollowTheView) {
  XOVChartView view;
  view.resize(300, 200);
  EXPECT_EQ(view.pRect(), QRectF(0, 0, 0, 0));
}

TEST(ChartView, madeWithAFrameNothingIsSetUp) {
  const XOVChartView view(QRectF(0, 0, 300, 200));
  EXPECT_EQ(view.xmax(), 0);
  EXPECT_EQ(view.ymax(), 0);
  EXPECT_EQ(view.dataArray(), nullptr);
  EXPECT_EQ(view.pRect(), QRectF());
  EXPECT_EQ(view.bounds(), QRectF(0, 0, 300, 200));
}

TEST(ChartView, itDrawsNothing) {
  XOVChartView view(QRectF(0, 0, 300, 200));
  EXPECT_TRUE(recorded(view)->items().empty());
  EXPECT_TRUE(drawsEverywhere(view));
}

TEST(ChartView, itIsAPlainView) {
  static_assert(std::is_base_of_v<View, XOVChartView>);
  static_assert(!std::is_base_of_v<XOVView, XOVChartView>);
}

} // namespace
} // namespace xov
