#include "XOV_Graphics/views/image/xovFKImageView.h"

#include "XOV_Graphics/colour/ColorValues.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/Drag.h"
#include "tests/support/LogCatcher.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>

namespace xov {
namespace {

using test::LogCatcher;
using testing::gridOf;
using testing::recorded;
using testing::recordedStep;
using testing::Recording;

// 500 × 480 points: pRect is (24, 60, 452, 400), iRect (64, 60, 412, 400).
const QRectF kFrame(0, 0, 500, 480);
const QRectF kInner(64, 60, 412, 400);

class FKImageView : public ::testing::Test {
protected:
  FKImageView() : view(kFrame) {
    QLoggingCategory::setFilterRules(QStringLiteral("xov.cells.debug=false"));
    setLimits(-0.5F, 0.5F);
  }
  ~FKImageView() override { QLoggingCategory::setFilterRules(QString()); }
  void setLimits(float min, float max) {
    view.setXLimitsMinMax(min, max);
    view.setYLimitsMinMax(min, max);
  }
  QStringList labelsFor(float min, float max) {
    setLimits(min, max);
    return recordedStep([this] {
             view.computeRects();
             view.drawAxes();
           })
        .strings();
  }
  xovFKImageView view;
};

TEST_F(FKImageView, isLaidOutWithRoomForTheAxes) {
  view.computeRects();
  EXPECT_EQ(view.pRect(), QRectF(24, 60, 452, 400));
  EXPECT_EQ(view.iRect(), kInner);
  view.setShowAxes(false);
  view.computeRects();
  EXPECT_EQ(view.iRect(), QRectF(24, 60, 452, 400));
  EXPECT_TRUE(recordedStep([this] { view.drawAxes(); }).items().empty());
}

TEST_F(FKImageView, theScaleIsTheWidthOfTheRange) {
  view.setMinMax(-2, 8);
  EXPECT_EQ(view.scaleFactor(), 10);
  EXPECT_EQ(view.minValue(), -2) << "the range is not made symmetric";
}

TEST_F(FKImageView, aGridOfZerosIsScaledByOne) {
  view.setupImageDataNROWSNCOLS(gridOf({0, 0, 0, 0}), 2, 2);
  EXPECT_EQ(view.scaleFactor(), 1);
}

// Maximum 5, minimum −5: a scale of 10, so every share is 5 / 10, without the minimum being taken off.
TEST_F(FKImageView, aGridOfFivesHasHalfTheShareEverywhere) {
  view.setupImageDataNROWSNCOLS(gridOf({5, 5, 5, 5}), 2, 2);
  EXPECT_EQ(view.maxValue(), 5);
  EXPECT_EQ(view.minValue(), -5);
  EXPECT_EQ(view.scaleFactor(), 10);
  std::uint32_t grey = 0;
  getColorValues(64, 0, &grey, nullptr, nullptr, nullptr, 0.5F);
  EXPECT_EQ(view.anImage().pixel(0, 0), qRgb(int(grey), int(grey), int(grey)));
  EXPECT_EQ(view.iPlanes()[3][0], 1);
}

TEST_F(FKImageView, aNewPaletteColoursPowersAndNotElevations) {
  view.setupImageDataNROWSNCOLS(gridOf({0, 5, 2, 3}), 2, 2);
  view.setPalette(3);
  view.setInverted(true);
  view.updateImagePlanes();
  // The share of the largest power is 5 / (5 − 0) = 1: red (255, 51, 0), inverted.
  EXPECT_EQ(view.anImage().pixel(1, 0), qRgb(0, 204, 255));
}

TEST_F(FKImageView, theLogHasALineForEachCell) {
  QLoggingCategory::setFilterRules(QString());
  const auto grid = gridOf({0, 4, 2, 4});
  view.setPalette(3);
  const LogCatcher caught;
  view.setupImageDataNROWSNCOLS(grid, 2, 2);
  // The first value is 0, so the range is 0 … 4. Blue at 0; at 0.5 level 127 and row 18 · 127 / 255 = 8.96, counted
  // from the other end: 18 − (18 − 8) = 8; red at 1.
  EXPECT_EQ(
      LogCatcher::lines(),
      (QStringList{QStringLiteral("xov.cells: 0.000000 0 51 255"), QStringLiteral("xov.cells: 1.000000 255 51 0"),
                   QStringLiteral("xov.cells: 0.500000 0 255 51"), QStringLiteral("xov.cells: 1.000000 255 51 0"),
                   QStringLiteral("xov: setupNSImage Retain Counts: iRep:1 image:1"),
                   QStringLiteral("xov: setupNSImage Retain Counts: iRep:2 image:2")}));
}

TEST_F(FKImageView, theLogOfCellsCanBeSilenced) {
  const LogCatcher caught;
  view.setupImageDataNROWSNCOLS(gridOf({0, 4, 2, 4}), 2, 2);
  EXPECT_EQ(LogCatcher::lines().size(), 2);
}

TEST_F(FKImageView, ticksAreATenthApartOverAWideRange) {
  EXPECT_TRUE(labelsFor(-0.5F, 0.5F).contains(QStringLiteral("0.4")));
  EXPECT_FALSE(labelsFor(-0.5F, 0.5F).contains(QStringLiteral("0.05")));
}

QStringList xLabels(const QStringList& all) {
  return all.mid(0, all.indexOf(QStringLiteral("East Slowness (s/km)")));
}

// Ranges 1, 0.4, 0.3, 0.2 and 0.1 have 1 / 0.1 + 1 ticks, 0.4 / 0.05 + 1 and so on.
TEST_F(FKImageView, ticksGrowDenserOverNarrowRanges) {
  EXPECT_EQ(xLabels(labelsFor(-0.5F, 0.5F)).size(), 11);
  EXPECT_EQ(xLabels(labelsFor(-0.25F, 0.25F)).size(), 5) << "a range of 0.5 is above 0.4: −0.2 … 0.2 by 0.1";
  EXPECT_EQ(xLabels(labelsFor(-0.15F, 0.15F)).size(), 7) << "a range of 0.3: −0.15 … 0.15 by 0.05";
  EXPECT_EQ(xLabels(labelsFor(-0.0625F, 0.0625F)).size(), 5) << "a range of 0.125: −0.05 … 0.05 by 0.025";
}

TEST_F(FKImageView, aRangeOfExactlyTwoTenthsKeepsTheDensestTicks) {
  EXPECT_EQ(xLabels(labelsFor(-0.1F, 0.1F)).size(), 9);
}

// Ranges 1.5, 6, 8 and 360 have 0.2, 1, 1 and 50 between ticks: 1.5 / 10 = 0.15 is rounded up to 0.2.
TEST_F(FKImageView, ticksGrowWiderOverRangesAboveOne) {
  EXPECT_EQ(xLabels(labelsFor(-0.75F, 0.75F)).size(), 7) << "−0.6 … 0.6";
  EXPECT_EQ(xLabels(labelsFor(-3, 3)).size(), 7);
  EXPECT_EQ(xLabels(labelsFor(-4, 4)).size(), 9);
  EXPECT_EQ(xLabels(labelsFor(0, 360)).size(), 8) << "0 … 350";
  view.setXLimitsMinMax(0, 360);
  view.setYLimitsMinMax(-90, 90); // what a view has at first: 180 / 10 = 18, rounded up to 20
  const QStringList labels = recordedStep([this] { view.drawAxes(); }).strings();
  EXPECT_LE(labels.size(), 25);
}

TEST_F(FKImageView, noAxisHasMoreThanTwentyOneLabels) {
  for (float range = 0.06F; range < 1e6F; range *= 1.07F) {
    const int labels = int(xLabels(labelsFor(-range / 2, range / 2)).size());
    EXPECT_LE(labels, 21) << range;
    EXPECT_GE(labels, 3) << range;
  }
}

TEST_F(FKImageView, aWideNorthAxisHasAnIntervalOfItsOwn) {
  view.setXLimitsMinMax(-0.5F, 0.5F);
  view.setYLimitsMinMax(-20, 20); // 40 / 10 = 4, rounded up to 5
  view.computeRects();
  const QStringList labels = recordedStep([this] { view.drawAxes(); }).strings();
  EXPECT_EQ(xLabels(labels).size(), 11);
  EXPECT_TRUE(labels.contains(QStringLiteral("-15")));
  EXPECT_FALSE(labels.contains(QStringLiteral("-16")));
  // A narrow one shares that of the X axis.
  view.setYLimitsMinMax(-0.1F, 0.1F);
  const QStringList narrow = recordedStep([this] { view.drawAxes(); }).strings();
  EXPECT_FALSE(narrow.contains(QStringLiteral("0.05")));
}

TEST_F(FKImageView, theAxesHaveTitlesOfTheirOwn) {
  const Recording recording = recorded(view);
  EXPECT_TRUE(recording.textReading(QStringLiteral("East Slowness (s/km)")));
  const auto north = recording.textReading(QStringLiteral("North Slowness (s/km)"));
  ASSERT_TRUE(north);
  EXPECT_EQ(north->angleDegrees, 90);
  const QSizeF size = view.labelAttributes()->size(north->text);
  EXPECT_NEAR(north->position.x() + size.height() / 2, 36, 1e-3);
  EXPECT_NEAR(north->position.y() + size.width() / 2, 60 + 200, 1e-3);
}

// Zero lies in the middle of −0.5 … 0.5: (64 + 206, 60 + 200).
TEST_F(FKImageView, theZeroLinesCrossTheFrame) {
  view.computeRects();
  const auto strokes = recordedStep([this] { view.drawZeroGrid(); }).strokes();
  ASSERT_EQ(strokes.size(), 1u);
  const std::vector<QLineF> lines = {{{64, 260}, {476, 260}}, {{270, 60}, {270, 460}}};
  EXPECT_EQ(strokes[0].segments(), lines);
  EXPECT_EQ(strokes[0].path.lineWidth(), 1);
  EXPECT_EQ(strokes[0].color, colors::black);
}

// A whole 412 points stand for 1 s/km: the circle of 2 km/s has a radius of 206, that of 32 km/s one of 12.875.
TEST_F(FKImageView, circlesOfVelocityAreRoundAroundZeroAndClipped) {
  view.setYLimitsMinMax(-0.25F, 0.25F);
  view.computeRects();
  const auto strokes = recordedStep([this] { view.drawPhaseVelocityCircles(); }).strokes();
  ASSERT_EQ(strokes.size(), 1u);
  EXPECT_EQ(strokes[0].clip, kInner);
  EXPECT_EQ(strokes[0].color, colors::black);
  EXPECT_EQ(strokes[0].path.lineWidth(), 1);
  const QRectF box = strokes[0].path.shape().boundingRect();
  EXPECT_NEAR(box.left(), 270 - 206, 0.01);
  EXPECT_NEAR(box.right(), 270 + 206, 0.01);
  EXPECT_NEAR(box.top(), 260 - 206, 0.01);
  EXPECT_NEAR(box.bottom(), 260 + 206, 0.01);
}

// One path, in which each circle begins where x is largest. A line from one to the next would lie on the zero line.
TEST_F(FKImageView, circlesAreOnePathWithoutLinesBetweenThem) {
  view.computeRects();
  const QPainterPath path = recordedStep([this] { view.drawPhaseVelocityCircles(); }).strokes().at(0).path.shape();
  std::vector<double> starts;
  for (int i = 0; i < path.elementCount(); ++i) {
    EXPECT_FALSE(path.elementAt(i).isLineTo());
    if (path.elementAt(i).isMoveTo()) starts.push_back(path.elementAt(i).x - 270);
  }
  const double velocities[] = {32, 16, 8, 6, 4, 3, 2};
  ASSERT_EQ(starts.size(), std::size(velocities));
  for (std::size_t i = 0; i < starts.size(); ++i)
    EXPECT_NEAR(starts[i], 412 / velocities[i], 0.01);
}

TEST_F(FKImageView, limitsWithoutZeroPutTheLinesOutsideAndClipTheCircles) {
  setLimits(0.1F, 0.5F);
  view.setupImageDataNROWSNCOLS(gridOf({1, 2, 3, 4}), 2, 2);
  view.computeRects();
  const auto zero = recordedStep([this] { view.drawZeroGrid(); }).strokes().at(0).segments();
  EXPECT_LT(zero[0].y1(), kInner.y());
  EXPECT_LT(zero[1].x1(), kInner.x());
  // (0.1, 0.1) is 0.14 s/km away from zero: the circle of 32 km/s, of radius 0.03, shows nowhere.
  EXPECT_EQ(recordedStep([this] { view.drawPhaseVelocityCircles(); }).strokes().at(0).clip, kInner);
}

TEST_F(FKImageView, isDrawnInItsOrder) {
  view.setupImageDataNROWSNCOLS(gridOf({1, 2, 3, 4}), 2, 2);
  const auto items = recorded(view).items();
  EXPECT_EQ(items[0].path.shape().boundingRect(), kFrame);
  EXPECT_EQ(items[0].color, colors::white);
  EXPECT_EQ(items[1].path.shape().boundingRect(), kInner);
  EXPECT_EQ(items[2].kind, RecordedItem::Kind::Image);
  EXPECT_EQ(items[3].path.lineWidth(), 2);
  const std::size_t n = items.size();
  EXPECT_EQ(items[n - 1].color, colors::red);
  EXPECT_EQ(items[n - 2].color, colors::red);
  EXPECT_EQ(items[n - 3].segments().size(), 2u) << "the zero lines lie over the circles";
  EXPECT_TRUE(items[n - 4].clip.has_value());
}

// Of equal maxima the first one is marked: column 1 of row 0 of 3 × 3 cells is at (0, 0.5).
TEST_F(FKImageView, marksTheFirstOfEqualMaximaAtEveryRedraw) {
  view.setupImageDataNROWSNCOLS(gridOf({1, 9, 2, 3, 9, 4, 5, 6, 9}), 3, 3);
  recorded(view);
  EXPECT_EQ(view.xZmax(), 0);
  EXPECT_EQ(view.yZmax(), 0.5F);
  view.setMaxPointXY(0.25F, 0.25F);
  recorded(view);
  EXPECT_EQ(view.xZmax(), 0);
}

TEST_F(FKImageView, showsItsSizeOnlyWhileItIsResized) {
  view.show();
  view.resize(520, 480);
  ASSERT_TRUE(view.inLiveResize());
  EXPECT_EQ(recorded(view).strings().size(), 1);
}

class ClickListener : public PlotController {
public:
  void handleClickedMousePosition(QPointF) override { ++clicks; }
  void handleTrackedMousePosition(QPointF) override {}
  int clicks = 0;
};

TEST_F(FKImageView, aPlainClickReportsNothing) {
  ClickListener host;
  view.setController(&host);
  view.computeRects();
  view.mouseDown({view.convertPointToWindow({270, 260}), {}, 1});
  EXPECT_EQ(host.clicks, 0);
}

TEST_F(FKImageView, shiftDragsATiffOut) {
  std::vector<PictureDrag> drags;
  setDragHandler([&](const PictureDrag& drag) { drags.push_back(drag); });
  view.mouseDown({view.convertPointToWindow({5, 5}), Qt::ShiftModifier, 1});
  setDragHandler({});
  ASSERT_EQ(drags.size(), 1u);
  EXPECT_EQ(drags[0].hotSpot, QPointF(250, 240));
  const QImage tiff = QImage::fromData(drags[0].pasteboard->data(kTiffType), "TIFF");
  EXPECT_EQ(tiff.size(), QSize(500, 480));
}

TEST_F(FKImageView, itsSnapshotHasNoTransparency) {
  const QImage picture = view.snapshot();
  EXPECT_EQ(picture.size(), QSize(500, 480));
  EXPECT_EQ(picture.depth(), 24);
  EXPECT_FALSE(picture.hasAlphaChannel());
  EXPECT_EQ(picture.pixel(2, 2), qRgb(255, 255, 255));
}

TEST_F(FKImageView, labelsCirclesAndPeakOnRequest) {
  view.setupImageDataNROWSNCOLS(gridOf({0.1F, 0.2F, 0.3F, 0.87F}), 2, 2);
  const auto texts = [&](void (xovFKImageView::*step)()) {
    view.computeRects();
    view.computeImagePeakLocation();
    return recordedStep([&] { (view.*step)(); }).strings();
  };
  EXPECT_TRUE(texts(&xovFKImageView::drawCircleLabels).isEmpty());
  EXPECT_TRUE(texts(&xovFKImageView::drawPeakValue).isEmpty());
  view.setCircleLabels(xovFKImageView::KilometresPerSecond);
  EXPECT_EQ(texts(&xovFKImageView::drawCircleLabels).first(4), QStringList({"2 km/s", "3 km/s", "4 km/s", "6 km/s"}));
  view.setCircleLabels(xovFKImageView::SecondsPerDegree);
  EXPECT_EQ(texts(&xovFKImageView::drawCircleLabels).first(), QStringLiteral("55.6 s/°"));
  view.setShowPeakValue(true);
  EXPECT_EQ(texts(&xovFKImageView::drawPeakValue), QStringList("0.87"));
  view.setPeakUnit(QStringLiteral("dB"));
  EXPECT_EQ(texts(&xovFKImageView::drawPeakValue), QStringList("0.87 dB"));
  view.setMaxPointXY(0.9F, 0);
  EXPECT_TRUE(recordedStep([&] { view.drawPeakValue(); }).strings().isEmpty()) << "beyond the limits";
}

// The label would leave the frame at the right and at the top: it stands to the left of the peak and below it.
TEST_F(FKImageView, keepsThePeakValueInsideTheFrame) {
  view.setupImageDataNROWSNCOLS(gridOf({0.1F, 0.9F, 0.1F, 0.1F}), 2, 2);
  view.setShowPeakValue(true);
  view.computeRects();
  view.setMaxPointXY(0.5F, 0.5F);
  const Recording recording = recordedStep([&] { view.drawPeakValue(); });
  ASSERT_EQ(recording.texts().size(), 1U);
  const RecordedItem text = recording.texts()[0];
  EXPECT_LT(text.position.x() + text.attributes.size(text.text).width(), kInner.right());
  EXPECT_LT(text.position.y() + text.attributes.size(text.text).height(), kInner.bottom());
}

TEST_F(FKImageView, colorsNegativePowersFromTheSmallestOn) {
  view.setPalette(0);
  view.setColorsFromMinimum(true);
  view.setupImageDataNROWSNCOLS(gridOf({-20, -10, -5, 0}), 2, 2);
  // White to black.
  const QImage image = view.anImage();
  EXPECT_GT(qGray(image.pixel(0, 0)), qGray(image.pixel(1, 0)));
  EXPECT_GT(qGray(image.pixel(1, 0)), qGray(image.pixel(0, 1)));
  EXPECT_GT(qGray(image.pixel(0, 1)), qGray(image.pixel(1, 1)));
  view.setColorsFromMinimum(false);
  view.updateImagePlanes();
  EXPECT_EQ(view.anImage().pixel(0, 0), view.anImage().pixel(1, 0)) << "below zero all have the first colour";
}

} // namespace
} // namespace xov
