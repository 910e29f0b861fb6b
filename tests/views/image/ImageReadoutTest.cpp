#include "XOV_Graphics/views/image/SpectrogramView.h"
#include "XOV_Graphics/views/image/xovFKImageView.h"
#include "tests/support/FakeRecord.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace xov {
namespace {

using testing::gridOf;
using testing::recorded;

constexpr QLatin1String kValue("value");
constexpr float kMissing = std::numeric_limits<float>::quiet_NaN();

// 500 × 400 points: iRect is (64, 50, 404, 320): cells of a 4 × 4 grid are 101 by 80.
class GridReadout : public ::testing::Test {
protected:
  void hand(std::vector<float> values, int rows, int cols) {
    view.setUseTopoValues(false);
    view.setXLimitsMinMax(0, float(cols));
    view.setYLimitsMinMax(0, float(rows));
    view.setupImageDataNROWSNCOLS(gridOf(std::move(values)), rows, cols);
    recorded(view);
  }
  // Of a cell's middle, the row counted from the top.
  PlotReadout inCell(int row, int column) const {
    return view.readout({64 + 101 * (column + 0.5), 370 - 80 * (row + 0.5)});
  }
  XOVImageView view{QRectF(0, 0, 500, 400)};
};

TEST_F(GridReadout, tellsTheValueOfTheCellThatIsDrawnThere) {
  hand({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, kMissing}, 4, 4);
  for (int i = 0; i < 15; ++i)
    EXPECT_EQ(inCell(i / 4, i % 4).value(kValue), i + 1);
  EXPECT_EQ(inCell(3, 3).find(kValue), nullptr); // without a value
  EXPECT_NEAR(inCell(3, 3).value(QLatin1String("x")), 3.5, 1e-6);
  EXPECT_NEAR(inCell(3, 3).value(QLatin1String("y")), 0.5, 1e-6);
  // The outermost points belong to the outermost cells.
  EXPECT_EQ(view.readout({64 + 404, 370}).value(kValue), 4);
  EXPECT_EQ(view.readout({64, 50}).value(kValue), 13);
}

TEST_F(GridReadout, followsTheCellsThatNarrowerLimitsSelect) {
  hand({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 4, 4);
  view.setXLimitsMinMax(1, 3);
  recorded(view);
  EXPECT_EQ(view.readout({64 + 101, 60}).value(kValue), 14); // two cells of 202 points
  EXPECT_EQ(view.readout({64 + 303, 60}).value(kValue), 15);
  view.setPlacesCellsExactly(true);
  view.setXLimitsMinMax(1.5F, 3.5F);
  recorded(view);
  EXPECT_EQ(view.readout({64 + 50, 60}).value(kValue), 14); // half a cell
  EXPECT_EQ(view.readout({64 + 150, 60}).value(kValue), 15);
  EXPECT_EQ(view.readout({64 + 390, 60}).value(kValue), 16);
}

TEST_F(GridReadout, namesValuesByTheColourBarAndElevationsAsHeights) {
  view.setColorBarTitle(QStringLiteral("Residual (s)"));
  hand({1, 2, 3, 4}, 2, 2);
  EXPECT_EQ(view.readout({100, 60}).find(kValue)->text, QStringLiteral("Residual 3 s"));
  view.setUseTopoValues(true);
  EXPECT_EQ(view.readout({100, 60}).find(QLatin1String("height"))->text, QStringLiteral("height 3 m"));
}

TEST_F(GridReadout, ofAGridThatIsNotAllThereTellsTheRowsThatAre) {
  hand({1, 2, 3, 4, 5}, 3, 2); // two rows of three
  EXPECT_EQ(view.readout({100, 370 - 20}).value(kValue), 1);
  EXPECT_EQ(view.readout({100, 370 - 160}).value(kValue), 3);
  EXPECT_EQ(view.readout({100, 60}).find(kValue), nullptr);
  EXPECT_FALSE(view.readout({100, 60}).isEmpty());
}

TEST_F(GridReadout, ofASingleColumnIsDrawnAndTellsItsRows) {
  hand({1, 2, 3}, 3, 1);
  const QImage picture = view.anImage();
  EXPECT_EQ(picture.size(), QSize(1, 3));
  EXPECT_EQ(recorded(view).images().size(), 1U);
  view.setInverted(true);
  view.updateImagePlanes();
  EXPECT_NE(view.anImage(), picture);
  EXPECT_EQ(view.readout({100, 360}).value(kValue), 1);
  EXPECT_EQ(view.readout({100, 60}).value(kValue), 3);
}

// The picture shows two rows until the view is set up anew.
TEST_F(GridReadout, ofAGridThatHasShrunkSinceTellsTheRowsThatAreLeft) {
  hand({1, 2, 3, 4}, 2, 2);
  std::vector<float> upper{1, 2, 3, 4};
  upper.resize(2);
  view.setImageFloats(gridOf(std::move(upper)));
  EXPECT_EQ(view.readout({100, 360}).value(kValue), 1);
  EXPECT_EQ(view.readout({100, 60}).find(kValue), nullptr);
}

TEST_F(GridReadout, tellsNothingWithoutAGridAndForAbsurdPlaces) {
  recorded(view);
  EXPECT_TRUE(view.readout({100, 100}).isEmpty());
  hand({1, 2, 3, 4}, 2, 2);
  for (const QPointF odd : {QPointF(63, 100), QPointF(100, 371), QPointF(1e30, 1e30), QPointF(double(kMissing), 100)})
    EXPECT_TRUE(view.readout(odd).isEmpty());
  view.setAnImage(QImage(4, 4, QImage::Format_RGB32)); // of the host's, which shows no values
  EXPECT_EQ(view.readout({100, 100}).find(kValue), nullptr);
  view.setImageFloats(gridOf({}));
  EXPECT_EQ(view.readout({100, 100}).find(kValue), nullptr);
}

// iRect is (64, 60, 412, 400): 412 points for −0.5 to 0.5 s/km east, 400 for as much north.
TEST(FKReadout, tellsSlownessVelocityBackAzimuthAndPower) {
  xovFKImageView view(QRectF(0, 0, 500, 480));
  BeamPower beam;
  beam.steps = 3;
  beam.slownessLimit = 0.5;
  beam.power = {0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F, 0.9F};
  view.setBeamPower(beam);
  view.setPeakUnit(QStringLiteral("dB"));
  recorded(view);
  const PlotReadout readout = view.readout({64 + 412 * 0.8, 60 + 400 * 0.9}); // 0.3 east, 0.4 north
  EXPECT_NEAR(readout.value(QLatin1String("slownessEast")), 0.3, 1e-6);
  EXPECT_NEAR(readout.value(QLatin1String("slownessNorth")), 0.4, 1e-6);
  EXPECT_NEAR(readout.value(QLatin1String("slowness")), 0.5, 1e-6);
  EXPECT_NEAR(readout.value(QLatin1String("slownessPerDegree")), 55.5975, 1e-4);
  EXPECT_NEAR(readout.value(QLatin1String("velocity")), 2, 1e-6);
  EXPECT_NEAR(readout.value(QLatin1String("backAzimuth")), 36.8699, 1e-4); // the angle of 3, 4 and 5
  EXPECT_NEAR(readout.value(QLatin1String("power")), 0.3, 1e-7);           // the north-east of three by three
  EXPECT_EQ(readout.find(QLatin1String("power"))->unit, QStringLiteral("dB"));
  // 0.3 west, 0.4 south comes from the opposite direction.
  EXPECT_NEAR(view.readout({64 + 412 * 0.2, 60 + 400 * 0.1}).value(QLatin1String("backAzimuth")), 216.8699, 1e-4);
  const PlotReadout below = view.readout({64 + 206, 60 + 200});
  EXPECT_NEAR(below.value(QLatin1String("slowness")), 0, 1e-12);
  EXPECT_EQ(below.find(QLatin1String("velocity")), nullptr);
  EXPECT_EQ(below.find(QLatin1String("backAzimuth")), nullptr);
  EXPECT_TRUE(view.readout({10, 10}).isEmpty());
  for (const QSize size : {QSize(3, 0), QSize(0, 3)}) { // of no power at all, under a picture of the host's
    view.setupImageDataNROWSNCOLS(gridOf({}), size.height(), size.width());
    view.setAnImage(QImage(4, 4, QImage::Format_RGB32));
    EXPECT_TRUE(view.readout({64 + 206, 60 + 300}).isEmpty());
  }
}

TEST(SpectrogramReadout, tellsTimeFrequencyAndPowerOfTheCellAndAmplitudesAbove) {
  SpectrogramView view(QRectF(0, 0, 700, 420));
  std::vector<float> samples(2000);
  for (std::size_t k = 0; k < samples.size(); ++k)
    samples[k] = float(3 * std::sin(2 * std::numbers::pi * 10 * double(k) / 100)); // 10 Hz at 100 Hz
  const auto record = std::make_shared<testing::FakeRecord>(samples, 0.01F, 0.0F);
  view.setWindowSeconds(1);
  view.setTimeReference(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
  EXPECT_TRUE(view.readout({300, 100}).isEmpty());
  view.setRecords(std::make_shared<const SeismogramArray>(SeismogramArray{record}));
  view.pictureOfRect(view.bounds());
  const auto at = [&](double seconds, double hz) {
    return view.readout(dataToView({seconds, hz}, view.iRect(), view.limits()));
  };
  const Spectrogram& picture = view.picture();
  const auto cell = [&](double seconds, double hz) {
    const auto column = std::size_t(
        std::floor((seconds - picture.startSeconds) / (picture.endSeconds - picture.startSeconds) * picture.columns));
    const auto row =
        std::size_t(picture.rows - 1) -
        std::size_t(std::floor((hz - picture.lowestHz) / (picture.highestHz - picture.lowestHz) * picture.rows));
    return double(picture.decibels[row * std::size_t(picture.columns) + column]);
  };
  const PlotReadout loud = at(5.003, 10.02);
  EXPECT_NEAR(loud.value(QLatin1String("time")), 5.003, 1e-5);
  EXPECT_NEAR(loud.value(QLatin1String("frequency")), 10.02, 1e-4);
  EXPECT_NEAR(loud.value(QLatin1String("utc")), 1577836805.003, 1e-3);
  EXPECT_EQ(loud.value(QLatin1String("power")), cell(5.003, 10.02));
  EXPECT_EQ(at(7.111, 30.03).value(QLatin1String("power")), cell(7.111, 30.03));
  EXPECT_GT(loud.value(QLatin1String("power")), at(5.003, 30.03).value(QLatin1String("power")) + 30);
  // The seismogram stands 12 points above the picture.
  const double above = view.iRect().y() + view.iRect().height() + 12 + 10;
  const PlotReadout seismogram = view.readout({view.iRect().x() + 100, above});
  EXPECT_LE(std::abs(seismogram.value(QLatin1String("amplitude"))), 3.001);
  EXPECT_EQ(seismogram.find(QLatin1String("frequency")), nullptr);
  EXPECT_TRUE(view.readout({view.iRect().x() + 100, above - 16}).isEmpty()); // between both
}

} // namespace
} // namespace xov
