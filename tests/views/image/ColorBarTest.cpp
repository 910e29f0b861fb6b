#include "XOV_Graphics/views/image/ColorBar.h"

#include "XOV_Graphics/colour/ColorValues.h"
#include "XOV_Graphics/views/image/xovFKImageView.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

using testing::gridOf;
using testing::recorded;

// A frame 200 points wide and 300 high, from (50, 40).
ColorBar barOf(float lowest, float highest) {
  return layoutColorBar({.picture = QRectF(50, 40, 200, 300), .lowest = lowest, .highest = highest, .fontSize = 14});
}

TEST(ColorBar, standsBesideThePictureAsHighAsIt) {
  const ColorBar bar = barOf(0, 10);
  EXPECT_EQ(bar.bar, QRectF(264, 40, 14, 300)); // 250 + 14
  EXPECT_EQ(bar.title, QPointF(324, 190));      // 250 + 74, half way up
}

TEST(ColorBar, hasTicksAndLabelsAtTheHeightOfTheirValues) {
  const ColorBar bar = barOf(0, 10);
  ASSERT_FALSE(bar.labels.empty());
  ASSERT_EQ(bar.labels.size(), bar.ticks.size());
  for (std::size_t i = 0; i < bar.labels.size(); ++i) {
    const double value = std::stod(bar.labels[i].text);
    EXPECT_NEAR(bar.ticks[i].y1, 40 + 30 * value, 1e-3) << "300 points for 10 units";
    EXPECT_EQ(bar.ticks[i].x1, 278) << "from the right edge of the bar";
    EXPECT_EQ(bar.ticks[i].x2, 282) << "outwards";
    EXPECT_EQ(bar.labels[i].x, 285);
  }
}

TEST(ColorBar, dividesLongLabelsByAPowerOfTen) {
  const ColorBar bar = barOf(0, 50000);
  EXPECT_EQ(bar.suffix, " x 10^+04");
  ASSERT_GE(bar.labels.size(), 2U);
  for (std::size_t i = 0; i < bar.labels.size(); ++i)
    EXPECT_NEAR(bar.ticks[i].y1, 40 + 300 * std::stod(bar.labels[i].text) / 5, 1e-3);
}

TEST(ColorBar, hasNoTicksWithoutARange) {
  for (const float highest :
       {3.0F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    const ColorBar bar = barOf(3, highest);
    EXPECT_TRUE(bar.labels.empty());
    EXPECT_EQ(bar.bar.height(), 300);
  }
}

TEST(ColorBar, ofAPictureBeyondTheReachOfAxesHasNoTicks) {
  const ColorBar bar = layoutColorBar({.picture = QRectF(0, 0, 1e9, 100), .lowest = 0, .highest = 1});
  EXPECT_TRUE(bar.labels.empty());
}

class ColorBarOfAView : public ::testing::Test {
protected:
  ColorBarOfAView() : view(QRectF(0, 0, 500, 400)) {
    view.setUseTopoValues(false);
    view.setPalette(XOVImageView::Viridis);
    view.setNShades(256);
    view.setXLimitsMinMax(0, 2);
    view.setYLimitsMinMax(0, 2);
    view.setupImageDataNROWSNCOLS(gridOf({0, 1, 2, 8}), 2, 2);
  }
  XOVImageView view;
};

TEST_F(ColorBarOfAView, isOffAtFirst) {
  EXPECT_FALSE(view.showColorBar());
  EXPECT_EQ(recorded(view).images().size(), 1U);
  EXPECT_EQ(view.iRect(), QRectF(64, 50, 404, 320));
}

TEST_F(ColorBarOfAView, takesItsRoomFromThePicture) {
  view.setShowColorBar(true);
  view.computeRects();
  EXPECT_EQ(view.iRect(), QRectF(64, 50, 404 - 88, 320));
}

TEST_F(ColorBarOfAView, showsTheColorsOfValuesFromTheLowestToTheHighest) {
  view.setShowColorBar(true);
  const auto images = recorded(view).images();
  ASSERT_EQ(images.size(), 2U);
  const QImage bar = images[1].image;
  ASSERT_EQ(bar.size(), QSize(1, 256));
  EXPECT_EQ(images[1].source, QRectF(0, 0, 1, 256));
  // The grid spans 0 to 8, and so does the palette: the middle of row r from the top is (255.5 - r) / 256 of it.
  for (const int row : {0, 64, 128, 255}) {
    std::uint32_t red = 0, green = 0, blue = 0;
    getColorValues(256, kViridisPalette, &red, &green, &blue, nullptr, (255.5F - float(row)) / 256);
    EXPECT_EQ(bar.pixel(0, row), qRgb(int(red), int(green), int(blue))) << row;
  }
}

TEST_F(ColorBarOfAView, isNamedAlongItsLabels) {
  view.setShowColorBar(true);
  view.setColorBarTitle(QStringLiteral("Residual (s)"));
  EXPECT_TRUE(recorded(view).strings().contains(QStringLiteral("Residual (s)")));
}

TEST_F(ColorBarOfAView, leavesOtherTextsAsTheyAre) {
  view.setXLabelString(QStringLiteral("Longitude"));
  const auto size = [&] { return recorded(view).textReading(QStringLiteral("Longitude"))->attributes.pointSize(); };
  const double before = size();
  view.setShowColorBar(true);
  EXPECT_EQ(size(), before);
  EXPECT_EQ(size(), before) << "nor in the next drawing";
}

TEST(ColorBarOfViews, isNoneBesideAPictureWithoutRoom) {
  for (const QSizeF& size : {QSizeF(180, 400), QSizeF(500, 70)}) { // 64 + 32 + 88 across, 50 + 30 upright
    XOVImageView view(QRectF(QPointF(), size));
    view.setUseTopoValues(false);
    view.setShowColorBar(true);
    view.setColorBarTitle(QStringLiteral("Residual (s)"));
    view.setupImageDataNROWSNCOLS(gridOf({0, 1, 2, 8}), 2, 2);
    const auto drawn = recorded(view);
    EXPECT_TRUE(drawn.images().empty()) << size.width();
    EXPECT_FALSE(drawn.strings().contains(QStringLiteral("Residual (s)"))) << size.width();
  }
}

TEST(ColorBarOfViews, ofSlownessAreAsThoseOfGridsAndMapsHaveNone) {
  xovFKImageView slowness(QRectF(0, 0, 480, 480));
  slowness.setShowColorBar(true);
  slowness.computeRects();
  EXPECT_EQ(slowness.iRect().width(), 480 - 48 - 40 - 88);
  geoMapView with(QRectF(0, 0, 480, 480)), without(QRectF(0, 0, 480, 480));
  with.setShowColorBar(true);
  with.computeRects();
  without.computeRects();
  EXPECT_EQ(with.iRect(), without.iRect());
}

} // namespace
} // namespace xov
