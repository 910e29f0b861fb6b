#include "XOV_Graphics/views/image/XOVImageView.h"

#include "XOV_Graphics/colour/ColorValues.h"
#include "XOV_Graphics/platform/Colors.h"
#include "tests/support/LogCatcher.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov {
namespace {

using test::LogCatcher;
using testing::gridOf;
using testing::recorded;
using testing::recordedStep;
using testing::Recording;

// 500 × 400 points: pRect is (20, 20, 460, 360), iRect (64, 50, 404, 320).
const QRectF kFrame(0, 0, 500, 400);
const QRectF kInner(64, 50, 404, 320);

QRgb valueColor(const XOVImageView& view, float share) {
  std::uint32_t red = 0;
  std::uint32_t green = 0;
  std::uint32_t blue = 0;
  getColorValues(view.nShades(), view.palette(), &red, &green, &blue, nullptr, share);
  return qRgb(int(red), int(green), int(blue));
}

class ImageView : public ::testing::Test {
protected:
  ImageView() : view(kFrame) {}
  void hand(std::vector<float> values, int rows, int cols) {
    view.setXLimitsMinMax(0, float(cols));
    view.setYLimitsMinMax(0, float(rows));
    view.setupImageDataNROWSNCOLS(gridOf(std::move(values)), rows, cols);
  }
  RecordedItem drawnImage() {
    const auto images = recorded(view).images();
    EXPECT_EQ(images.size(), 1u);
    return images.empty() ? RecordedItem() : images[0];
  }
  XOVImageView view;
};

TEST_F(ImageView, beginsWithTheWholeGlobeInGreyShadesOfElevations) {
  EXPECT_EQ(view.xyRect(), QRectF(0, -90, 360, 180));
  EXPECT_EQ(view.nr(), 0);
  EXPECT_EQ(view.nc(), 0);
  EXPECT_EQ(view.nShades(), 64);
  EXPECT_EQ(view.palette(), 0);
  EXPECT_EQ(view.floatOrIntData(), 0);
  EXPECT_EQ(view.imageFloats(), nullptr);
  EXPECT_EQ(view.imageInts(), nullptr);
  EXPECT_TRUE(view.anImage().isNull());
  EXPECT_TRUE(view.showAxes());
  EXPECT_FALSE(view.inverted());
  EXPECT_FALSE(view.hideImage());
  EXPECT_TRUE(view.useTopoValues());
}

TEST(ImageViewLog, saysThatAViewIsMade) {
  const LogCatcher caught;
  const XOVImageView view(kFrame);
  EXPECT_EQ(LogCatcher::lines(), QStringList{QStringLiteral("xov: In initWithFrame")});
}

TEST_F(ImageView, offersTheTextOfTheGridLastInItsMenu) {
  const auto items = view.contextualMenu()->actions();
  ASSERT_EQ(items.size(), 6);
  EXPECT_EQ(items.last()->text(), QStringLiteral("Save to XYZ"));
  EXPECT_TRUE(items.last()->shortcut().isEmpty());
}

// Range, scale and shares of the colours.

TEST_F(ImageView, aGridOfFivesHasTheFullShareEverywhere) {
  view.setUseTopoValues(false);
  hand(std::vector<float>(6, 5.0F), 2, 3);
  EXPECT_EQ(view.maxValue(), 5);
  EXPECT_EQ(view.minValue(), -5);
  EXPECT_EQ(view.scaleFactor(), 10); // (5 − −5) / 10 = 1
  EXPECT_EQ(view.anImage().pixel(0, 0), valueColor(view, 1));
}

TEST_F(ImageView, aRangeOnBothSidesOfZeroIsMadeSymmetric) {
  view.setUseTopoValues(false);
  hand({-2, 0, 3, 8}, 2, 2);
  EXPECT_EQ(view.maxValue(), 8);
  EXPECT_EQ(view.minValue(), -8);
  EXPECT_EQ(view.scaleFactor(), 16);
  EXPECT_EQ(view.anImage().pixel(1, 0), valueColor(view, 0.5F)); // (0 − −8) / 16
}

TEST_F(ImageView, aRangeThatIsMostlyNegativeIsMadeSymmetric) {
  hand({-9, 0, 3, 8}, 2, 2);
  EXPECT_EQ(view.maxValue(), 9);
  EXPECT_EQ(view.minValue(), -9);
  EXPECT_EQ(view.scaleFactor(), 18);
}

TEST_F(ImageView, aGridOfZerosIsScaledByOne) {
  hand({0, 0, 0, 0}, 2, 2);
  EXPECT_EQ(view.scaleFactor(), 1);
}

// The first value is −4 and 4 for the minimum, which −4 itself then lowers.
TEST_F(ImageView, anAllNegativeRangeIsScaledByItsMaximum) {
  hand({-4, -8, -6, -3}, 2, 2);
  EXPECT_EQ(view.maxValue(), -3);
  EXPECT_EQ(view.minValue(), -8);
  EXPECT_EQ(view.scaleFactor(), -3);
}

TEST_F(ImageView, aRangeOfTheHostsIsScaledAnew) {
  view.setMinMax(2, 10);
  EXPECT_EQ(view.minValue(), 2);
  EXPECT_EQ(view.scaleFactor(), 10);
  view.setMinMax(-1, 10);
  EXPECT_EQ(view.minValue(), -10);
  EXPECT_EQ(view.scaleFactor(), 20);
  view.setScaleFactor(3);
  EXPECT_EQ(view.scaleFactor(), 3);
}

// Picture and planes.

TEST_F(ImageView, theExtentIsThatOfTheLimitsWhenTheGridArrives) {
  view.setXLimitsMinMax(10, 16);
  view.setYLimitsMinMax(-2, 2);
  view.setupImageDataNROWSNCOLS(gridOf({1, 2, 3, 4, 5, 6}), 2, 3);
  view.setXLimitsMinMax(0, 1);
  EXPECT_EQ(view.xminImage(), 10);
  EXPECT_EQ(view.xmaxImage(), 16);
  EXPECT_EQ(view.yminImage(), -2);
  EXPECT_EQ(view.ymaxImage(), 2);
  EXPECT_EQ(view.dxImage(), 2);
  EXPECT_EQ(view.dyImage(), 2);
  EXPECT_EQ(view.iSize(), QSizeF(3, 2));
}

TEST_F(ImageView, elevationsHaveColoursOfTheirOwn) {
  hand({-8000, 0, 6000, -0.5F}, 2, 2);
  EXPECT_EQ(view.anImage().pixel(0, 0), qRgb(1, 1, 150));     // the row below −7000
  EXPECT_EQ(view.anImage().pixel(1, 0), qRgb(100, 150, 100)); // lowland
  EXPECT_EQ(view.anImage().pixel(0, 1), qRgb(255, 255, 255)); // the last row
  EXPECT_EQ(view.anImage().pixel(1, 1), qRgb(240, 240, 255)); // shallow water
}

TEST_F(ImageView, planesHoldTheComponentsAndAnAlphaOfOne) {
  hand({-8000, 0, 6000, -0.5F}, 2, 2);
  const auto& planes = view.iPlanes();
  const std::vector<int> cell1 = {planes[0][1], planes[1][1], planes[2][1], planes[3][1]};
  EXPECT_EQ(cell1, (std::vector<int>{100, 150, 100, 1}));
  EXPECT_EQ(planes[4], nullptr);
  EXPECT_EQ(view.anImage().pixel(1, 0) >> 24, 255U) << "the picture is opaque all the same";
}

TEST_F(ImageView, invertedPlanesHoldTheComplementAndTheSameAlpha) {
  view.setInverted(true);
  hand({-8000, 0, 6000, -0.5F}, 2, 2);
  EXPECT_EQ(view.anImage().pixel(1, 0), qRgb(155, 105, 155));
  EXPECT_EQ(view.iPlanes()[3][1], 1);
}

TEST_F(ImageView, theFirstRowIsAtTheTop) {
  hand({-8000, -8000, 6000, 6000}, 2, 2);
  const RecordedItem image = drawnImage();
  EXPECT_EQ(image.image.pixel(0, 0), qRgb(1, 1, 150));
  const QImage picture = view.pictureOfRect(view.bounds());
  EXPECT_EQ(picture.pixel(250, 400 - 360), qRgb(1, 1, 150));
  EXPECT_EQ(picture.pixel(250, 400 - 60), qRgb(255, 255, 255));
}

TEST_F(ImageView, newColoursShowAfterAnUpdate) {
  view.setUseTopoValues(false);
  hand({0, 8, 4, 2}, 2, 2);
  const QRgb before = view.anImage().pixel(1, 0);
  view.setPalette(3);
  EXPECT_EQ(view.anImage().pixel(1, 0), before);
  view.updateImagePlanes();
  EXPECT_NE(view.anImage().pixel(1, 0), before);
  EXPECT_EQ(view.anImage().pixel(1, 0), valueColor(view, 1));
}

TEST_F(ImageView, anUpdateKeepsAPictureOfTheHosts) {
  hand({0, 8, 4, 2}, 2, 2);
  QImage own(4, 4, QImage::Format_RGB32);
  own.fill(Qt::magenta);
  view.setAnImage(own);
  view.updateImagePlanes();
  EXPECT_EQ(view.anImage(), own);
}

TEST_F(ImageView, theLogCountsWhoHoldsBitmapAndGrid) {
  const auto grid = gridOf({1, 2, 3, 4});
  const LogCatcher caught;
  view.setupImageDataNROWSNCOLS(grid, 2, 2);
  // The view holds the bitmap; the host and the view hold the grid.
  EXPECT_EQ(LogCatcher::lines(),
            QStringList{QStringLiteral("xov: setupNSImage Retain Counts: iRep:1 imageFloats:2")});
}

TEST_F(ImageView, theSizeChangesWithAGridOnly) {
  hand({1, 2, 3, 4, 5, 6}, 2, 3);
  view.setImageNRowsNCols(7, 9);
  EXPECT_EQ(view.nr(), 2);
  EXPECT_EQ(view.nc(), 3);
}

TEST_F(ImageView, anEmptyGridMakesAndDrawsNothing) {
  for (const auto& [rows, cols] : {std::pair(0, 3), {3, 0}, {-1, 3}, {3, -2}}) {
    view.setupImageDataNROWSNCOLS(gridOf({1, 2, 3}), rows, cols);
    view.updateImagePlanes();
    EXPECT_TRUE(view.anImage().isNull());
    EXPECT_TRUE(recorded(view).images().empty());
  }
  view.setupImageDataNROWSNCOLS(nullptr, 2, 2);
  EXPECT_TRUE(view.anImage().isNull());
}

// Of 4 × 2 cells the buffer holds two rows and a half: two rows, the upper half of the frame.
TEST_F(ImageView, aShortBufferShowsTheRowsThatItHolds) {
  hand({0, 0, 6000, 6000, 1}, 4, 2);
  EXPECT_EQ(view.anImage().size(), QSize(2, 2));
  const RecordedItem image = drawnImage();
  EXPECT_EQ(image.target, QRectF(64, 50 + 160, 404, 160));
}

TEST_F(ImageView, anEnormousGridTakesNoMoreThanItsBuffer) {
  const int most = std::numeric_limits<int>::max();
  view.setupImageDataNROWSNCOLS(gridOf({1, 2, 3}), most, most);
  EXPECT_EQ(view.anImage().size(), QSize(3, 1));
  view.computeImagePeakLocation();
  recorded(view);
}

// Layout and drawing.

TEST_F(ImageView, isLaidOutWithRoomForAxes) {
  view.computeRects();
  EXPECT_EQ(view.pRect(), QRectF(20, 20, 460, 360));
  EXPECT_EQ(view.iRect(), kInner);
}

TEST_F(ImageView, withoutAxesThePictureFillsTheOuterRectangle) {
  hand({1, 2, 3, 4}, 2, 2);
  view.setShowAxes(false);
  const Recording recording = recorded(view);
  EXPECT_EQ(view.iRect(), QRectF(20, 20, 460, 360));
  ASSERT_EQ(recording.images().size(), 1u);
  EXPECT_EQ(recording.images()[0].target, QRectF(20, 20, 460, 360));
  EXPECT_TRUE(recording.strokes().empty());
  EXPECT_TRUE(recording.texts().empty());
}

TEST_F(ImageView, thePictureLiesOnWhiteWithinTheFrame) {
  hand({1, 2, 3, 4}, 2, 2);
  const Recording recording = recorded(view);
  ASSERT_GE(recording.items().size(), 2u);
  EXPECT_EQ(recording.items()[0].kind, RecordedItem::Kind::Fill);
  EXPECT_EQ(recording.items()[0].color, colors::white);
  EXPECT_EQ(recording.items()[0].path.shape().boundingRect(), kInner);
  EXPECT_EQ(recording.items()[1].kind, RecordedItem::Kind::Image);
  EXPECT_EQ(recording.items()[1].target, kInner);
  EXPECT_EQ(recording.items()[1].source, QRectF(0, 0, 2, 2));
  EXPECT_EQ(recording.items()[1].fraction, 1);
}

// Limits 1 … 3 of 0 … 4 select columns 1 and 2; 0 … 1 select the lowest row, the last of the picture.
TEST_F(ImageView, narrowerLimitsShowAPartOfThePicture) {
  hand(std::vector<float>(16), 4, 4);
  view.setXLimitsMinMax(1, 3);
  view.setYLimitsMinMax(0, 1);
  const RecordedItem image = drawnImage();
  EXPECT_EQ(image.source, QRectF(1, 3, 2, 1));
  EXPECT_EQ(image.target, kInner);
}

TEST_F(ImageView, aPictureOfTheHostsIsSpreadOverTheNominalCells) {
  hand(std::vector<float>(16), 4, 4);
  QImage own(8, 2, QImage::Format_RGB32);
  own.fill(Qt::magenta);
  view.setAnImage(own);
  view.setXLimitsMinMax(1, 3);
  view.setYLimitsMinMax(2, 4);
  const RecordedItem image = drawnImage();
  // Half of the columns from the second quarter on, and the upper half of the rows.
  EXPECT_EQ(image.source, QRectF(2, 0, 4, 1));
}

TEST_F(ImageView, whatLiesBeyondThePictureStaysWhite) {
  hand(std::vector<float>(16), 4, 4);
  view.setXLimitsMinMax(2, 6);
  const RecordedItem image = drawnImage();
  EXPECT_EQ(image.source, QRectF(2, 0, 2, 4));
  EXPECT_EQ(image.target, QRectF(64, 50, 202, 320));
}

TEST_F(ImageView, missingCellsHaveTheLowestColourUnlessTheyAreTransparent) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const auto grid = gridOf({0, nan, 2, 4});
  XOVImageView image(QRectF(0, 0, 400, 300));
  image.setUseTopoValues(false);
  EXPECT_FALSE(image.missingCellsTransparent());
  image.setupImageDataNROWSNCOLS(grid, 2, 2);
  EXPECT_FALSE(image.anImage().hasAlphaChannel());
  const QImage opaque = image.anImage();
  image.setMissingCellsTransparent(true);
  image.updateImagePlanes();
  const QImage picture = image.anImage();
  EXPECT_EQ(qAlpha(picture.pixel(1, 0)), 0);
  for (const QPoint cell : {QPoint(0, 0), QPoint(0, 1), QPoint(1, 1)})
    EXPECT_EQ(picture.pixel(cell), opaque.pixel(cell));
  // The paper shows through: the cell covers the upper right quarter of the data frame.
  const QImage snapshot = image.snapshot();
  const QPointF middle(image.iRect().x() + 0.75 * image.iRect().width(),
                       300 - (image.iRect().y() + 0.75 * image.iRect().height()));
  const double ratio = snapshot.width() / 400.0;
  EXPECT_EQ(snapshot.pixel((middle * ratio).toPoint()), qRgb(255, 255, 255));
  // Without missing cells there is nothing to see through.
  image.setupImageDataNROWSNCOLS(gridOf({0, 1, 2, 4}), 2, 2);
  EXPECT_FALSE(image.anImage().hasAlphaChannel());
}

TEST_F(ImageView, tellsWhetherThePeakLiesInAnOutermostRowOrColumn) {
  XOVImageView image(QRectF(0, 0, 400, 300));
  EXPECT_FALSE(image.isPeakOnGridEdge());
  for (int peak = 0; peak < 16; ++peak) {
    std::vector<float> values(16, 1);
    values[std::size_t(peak)] = 2;
    image.setupImageDataNROWSNCOLS(gridOf(values), 4, 4);
    const bool inside = peak == 5 || peak == 6 || peak == 9 || peak == 10;
    EXPECT_EQ(image.isPeakOnGridEdge(), !inside) << peak;
  }
  image.setupImageDataNROWSNCOLS(gridOf(std::vector<float>(4, std::numeric_limits<float>::quiet_NaN())), 2, 2);
  EXPECT_FALSE(image.isPeakOnGridEdge());
}

TEST_F(ImageView, cellsKeepSharpEdgesOnPixels) {
  view.setUseTopoValues(false);
  hand({0, 1, 1, 0}, 2, 2);
  view.setShowAxes(false);
  const QImage picture = view.pictureOfRect(view.bounds());
  // The cells meet at x = 20 + 230 = 250.
  EXPECT_EQ(picture.pixel(249, 100), qRgb(255, 255, 255)); // the range is 0 … 1
  EXPECT_EQ(picture.pixel(250, 100), qRgb(0, 0, 0));
}

TEST_F(ImageView, theFrameIsStrokedTwoPointsWideInBlack) {
  hand({1, 2, 3, 4}, 2, 2);
  const auto strokes = recorded(view).strokes();
  ASSERT_GE(strokes.size(), 2u);
  EXPECT_EQ(strokes[0].path.lineWidth(), 2);
  EXPECT_EQ(strokes[0].path.shape().boundingRect(), kInner);
  EXPECT_EQ(strokes[0].color, colors::black);
  EXPECT_EQ(strokes.back().path.lineWidth(), 0.75);
}

TEST_F(ImageView, tickLabelsKeepTheirSize) {
  view.setLabelFontSize(9);
  view.setXLabelString(QStringLiteral("Longitude"));
  hand({1, 2, 3, 4}, 2, 2);
  const Recording recording = recorded(view);
  EXPECT_EQ(recording.textReading(QStringLiteral("Longitude"))->attributes.pointSize(), 9);
  int tickLabels = 0;
  for (const RecordedItem& text : recording.texts()) {
    if (text.text == QStringLiteral("Longitude")) continue;
    EXPECT_EQ(text.attributes.pointSize(), 18);
    ++tickLabels;
  }
  EXPECT_GE(tickLabels, 4);
}

// Centred below the frame, 24 points down to its top; turned by 90 degrees around x = 36.
TEST_F(ImageView, axisTitlesStandBelowAndLeftOfTheFrame) {
  view.setXLabelString(QStringLiteral("Longitude"));
  view.setYLabelString(QStringLiteral("Latitude"));
  hand({1, 2, 3, 4}, 2, 2);
  const Recording recording = recorded(view);
  const auto x = recording.textReading(QStringLiteral("Longitude"));
  const auto y = recording.textReading(QStringLiteral("Latitude"));
  ASSERT_TRUE(x && y);
  const QSizeF xSize = view.labelAttributes()->size(QStringLiteral("Longitude"));
  EXPECT_NEAR(x->position.x() + xSize.width() / 2, 64 + 202, 1e-3);
  EXPECT_NEAR(x->position.y() + xSize.height(), 50 - 24, 1e-3);
  EXPECT_EQ(y->angleDegrees, 90);
  const QSizeF ySize = view.labelAttributes()->size(QStringLiteral("Latitude"));
  EXPECT_NEAR(y->position.x() + ySize.height() / 2, 36, 1e-3);
  EXPECT_NEAR(y->position.y() + ySize.width() / 2, 50 + 160, 1e-3);
}

TEST_F(ImageView, doesNotFillTheViewAroundTheFrame) {
  hand({1, 2, 3, 4}, 2, 2);
  EXPECT_EQ(qAlpha(view.pictureOfRect(view.bounds()).pixel(5, 5)), 0);
}

TEST_F(ImageView, showsItsSizeOnlyWhileItIsResized) {
  hand({1, 2, 3, 4}, 2, 2);
  view.show();
  view.resize(520, 400);
  ASSERT_TRUE(view.inLiveResize());
  const Recording recording = recorded(view);
  // 520 − 96 = 424 points are 5.89 inches, 320 are 4.44.
  EXPECT_EQ(recording.strings(), QStringList{QStringLiteral("5.89 by 4.44 (inches)")});
  EXPECT_TRUE(recording.images().empty());
}

TEST_F(ImageView, doesNotMarkThePeakByItself) {
  hand({1, 2, 3, 4}, 2, 2);
  for (const RecordedItem& stroke : recorded(view).strokes())
    EXPECT_NE(stroke.color, colors::red);
}

// The peak of 3 × 3 cells, at column 1 and row 0 of 0 … 4 by 0 … 2, is at (2, 2): spacing 4 / 2 and 2 / 2.
TEST_F(ImageView, thePeakIsMarkedInRed) {
  view.setXLimitsMinMax(0, 4);
  view.setYLimitsMinMax(0, 2);
  view.setupImageDataNROWSNCOLS(gridOf({1, 9, 2, 3, 9, 4, 5, 6, 7}), 3, 3);
  view.computeImagePeakLocation();
  EXPECT_EQ(view.xZmax(), 2);
  EXPECT_EQ(view.yZmax(), 2);
  view.setMaxPointXY(1, 0.5F);
  view.computeRects();
  // (64 + 1 · 404 / 4, 50 + 0.5 · 320 / 2) = (165, 130)
  const auto strokes = recordedStep([&] { view.drawMaxLocation(); }).strokes();
  ASSERT_EQ(strokes.size(), 2u);
  const std::vector<QLineF> leaders = {{{65, 130}, {165, 130}}, {{165, 130}, {165, 51}}};
  EXPECT_EQ(strokes[0].segments(), leaders);
  EXPECT_EQ(strokes[1].path.shape().boundingRect(), QRectF(160.5, 125.5, 9, 9));
  for (const RecordedItem& stroke : strokes) {
    EXPECT_EQ(stroke.color, colors::red);
    EXPECT_EQ(stroke.path.lineWidth(), 1);
  }
}

TEST_F(ImageView, aPeakBeyondTheLimitsIsNotMarked) {
  view.computeRects();
  for (const auto& [x, y] : {std::pair(-1.0F, 0.0F), {361, 0}, {0, -91}, {0, 91}, {std::nanf(""), 0}}) {
    view.setMaxPointXY(x, y);
    EXPECT_TRUE(recordedStep([&] { view.drawMaxLocation(); }).items().empty());
  }
  view.setMaxPointXY(360, 90);
  EXPECT_EQ(recordedStep([&] { view.drawMaxLocation(); }).items().size(), 2u);
}

TEST_F(ImageView, thePlaceOfTheSmallestValueIsKeptForTheHost) {
  view.setMinPointXY(3, 4);
  EXPECT_EQ(view.xZmin(), 3);
  EXPECT_EQ(view.yZmin(), 4);
}

} // namespace
} // namespace xov
