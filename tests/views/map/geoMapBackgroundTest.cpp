#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/LogCatcher.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>

#include <cstdint>

namespace xov {
namespace {

using namespace testing;
using test::LogCatcher;

const QRectF kFrame(0, 0, 600, 400);
constexpr int kRows = 2160;
constexpr int kColumns = 4320;

QByteArray bytesOf(const std::vector<std::int16_t>& cells) {
  return {reinterpret_cast<const char*>(cells.data()), qsizetype(cells.size() * sizeof(std::int16_t))};
}

// A host with a data root and resources of its own.
class GeoMapBackground : public ::testing::Test {
protected:
  GeoMapBackground() {
    setDataRoot(files.folder());
    setHostResourceFolder(files.folder());
  }
  ~GeoMapBackground() override {
    setDataRoot({});
    setHostResourceFolder({});
  }

  // A global grid: the northern hemisphere 1000 m above the sea and the southern one 3000 m below, apart from one
  // cell in eight of row 1, which no reduction by 2 or more sees.
  void writeEtopo5() const {
    std::vector<std::int16_t> cells(std::size_t(kRows) * kColumns, -3000);
    std::fill_n(cells.begin(), std::size_t(kRows / 2) * kColumns, std::int16_t(1000));
    for (int k = 0; k < kColumns; k += 8)
      cells[std::size_t(kColumns + k)] = 5555;
    ASSERT_TRUE(QDir(files.folder()).mkpath(QStringLiteral("DATA/Grids")));
    files.write("DATA/Grids/etopo5.i2", bytesOf(cells));
  }

  void writePicture(const char* name, const QSize& size, const char* format) const {
    QImage image(size, QImage::Format_RGB32);
    // Red in the west, blue in the east.
    image.fill(QColor(255, 0, 0));
    for (int y = 0; y < size.height(); ++y) {
      for (int x = size.width() / 2; x < size.width(); ++x)
        image.setPixelColor(x, y, QColor(0, 0, 255));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    ASSERT_TRUE(image.save(&buffer, format));
    files.write(name, bytes);
  }

  test::TemporaryFiles files;
  geoMapView view{kFrame};
};

TEST_F(GeoMapBackground, takesTheExtentOfAGridFromTheLimits) {
  view.setXLimitsMinMax(10, 16);
  view.setYLimitsMinMax(40, 44);
  const QString path = files.write("dem.i2", bytesOf({1, 2, 3, -4, 5, 600}));
  ASSERT_TRUE(view.loadTopoImageFromPathNRowsNColsDSmpl(path, 2, 3, 1));
  EXPECT_EQ(view.nr(), 2);
  EXPECT_EQ(view.nc(), 3);
  EXPECT_EQ(*view.imageFloats(), (std::vector<float>{1, 2, 3, -4, 5, 600}));
  EXPECT_EQ(view.xminImage(), 10);
  EXPECT_EQ(view.xmaxImage(), 16);
  EXPECT_EQ(view.yminImage(), 40);
  EXPECT_EQ(view.ymaxImage(), 44);
  EXPECT_EQ(view.dxImage(), 2);
  EXPECT_EQ(view.dyImage(), 2);
  // The largest value, and the smallest, below the negative of the first; then symmetric about zero.
  EXPECT_EQ(view.maxValue(), 600);
  EXPECT_EQ(view.minValue(), -600);
  EXPECT_EQ(view.scaleFactor(), 1200);
}

TEST_F(GeoMapBackground, colorsAGridByElevationWithItsFirstRowInTheNorth) {
  const QString path = files.write("dem.i2", bytesOf({-9000, 0, 20, 7000}));
  ASSERT_TRUE(view.loadTopoImageFromPathNRowsNColsDSmpl(path, 2, 2, 1));
  EXPECT_EQ(view.anImage().pixelColor(0, 0), QColor(1, 1, 100));     // below -8000 m
  EXPECT_EQ(view.anImage().pixelColor(1, 0), QColor(100, 150, 100)); // 0 m is land
  EXPECT_EQ(view.anImage().pixelColor(0, 1), QColor(100, 150, 100));
  EXPECT_EQ(view.anImage().pixelColor(1, 1), QColor(255, 255, 255)); // above 6000 m
}

TEST_F(GeoMapBackground, refusesAGridOfAnotherSizeInTheLog) {
  const QString good = files.write("good.i2", bytesOf({1, 2, 3, 4}));
  const QString bad = files.write("bad.i2", bytesOf({1, 2, 3}));
  ASSERT_TRUE(view.loadTopoImageFromPathNRowsNColsDSmpl(good, 2, 2, 1));
  const LogCatcher log;
  QString error;
  EXPECT_FALSE(view.loadTopoImageFromPathNRowsNColsDSmpl(bad, 2, 2, 1, &error));
  EXPECT_EQ(error, bad + QStringLiteral(": found 6 bytes, expected 8"));
  EXPECT_TRUE(LogCatcher::lines().isEmpty()) << "the host has the line";
  EXPECT_FALSE(view.loadTopoImageFromPathNRowsNColsDSmpl(bad, 2, 2, 1));
  EXPECT_EQ(LogCatcher::lines(), QStringList(QStringLiteral("xov: topography: ") + error));
  EXPECT_EQ(*view.imageFloats(), (std::vector<float>{1, 2, 3, 4})) << "and nothing changed";
}

TEST_F(GeoMapBackground, refusesAFactorThatIsNotPositiveOrLargerThanTheGrid) {
  const QString path = files.write("dem.i2", bytesOf({1, 2, 3, 4}));
  for (const int factor : {0, -1, 3})
    EXPECT_FALSE(view.loadTopoImageFromPathNRowsNColsDSmpl(path, 2, 2, factor)) << factor;
  EXPECT_EQ(view.nr(), 0);
  EXPECT_TRUE(view.anImage().isNull());
}

TEST_F(GeoMapBackground, loadsEtopo5ReducedBy4AsCellsOfAThirdOfADegree) {
  writeEtopo5();
  view.setXLimitsMinMax(120, 290);
  view.setYLimitsMinMax(-60, 60);
  ASSERT_TRUE(view.loadETOPO5DownSmpl(4));
  EXPECT_EQ(view.nr(), 540);
  EXPECT_EQ(view.nc(), 1080);
  EXPECT_FLOAT_EQ(view.dxImage(), 0.33333334F);
  EXPECT_FLOAT_EQ(view.dyImage(), 0.33333334F);
  EXPECT_EQ(view.xminImage(), 0);
  EXPECT_EQ(view.xmaxImage(), 360);
  EXPECT_EQ(view.yminImage(), -90);
  EXPECT_EQ(view.ymaxImage(), 90);
  EXPECT_EQ(view.xmin(), 120) << "the view's own limits stay";
  EXPECT_EQ(view.imageFloats()->front(), 1000);
  EXPECT_EQ(view.imageFloats()->back(), -3000);
}

TEST_F(GeoMapBackground, loadsEtopo5AtFullSize) {
  writeEtopo5();
  ASSERT_TRUE(view.loadETOPO5DownSmpl(1));
  EXPECT_EQ(view.nr(), kRows);
  EXPECT_EQ(view.nc(), kColumns);
  EXPECT_EQ(view.dxImage(), 0.083333336F);
  EXPECT_EQ(view.imageFloats()->at(kColumns + 8), 5555);
  EXPECT_EQ(view.imageFloats()->at(kColumns + 9), 1000);
}

TEST_F(GeoMapBackground, showsThePartOfEtopo5ThatTheLimitsSelect) {
  writeEtopo5();
  ASSERT_TRUE(view.loadETOPO5DownSmpl(4));
  view.setXLimitsMinMax(120, 290);
  view.setYLimitsMinMax(-60, 30);
  const auto images = recorded(view)->images();
  ASSERT_EQ(images.size(), 1U);
  // Three cells a degree, whole ones: column 360 on, 510 of them; from 30 to 120 degrees above the lower edge, that
  // is rows 540 - 360 = 180 to 540 - 90 = 450 from the top. Single precision may cut one cell off.
  EXPECT_NEAR(images[0].source.x(), 360, 1);
  EXPECT_NEAR(images[0].source.width(), 510, 1);
  EXPECT_NEAR(images[0].source.y(), 180, 1);
  EXPECT_NEAR(images[0].source.height(), 270, 1);
  EXPECT_EQ(images[0].target, view.mapRect());
}

TEST_F(GeoMapBackground, missesEtopo5WhereThereIsNone) {
  QString error;
  EXPECT_FALSE(view.loadETOPO5DownSmpl(1, &error));
  EXPECT_EQ(error,
            files.path("DATA/Grids/etopo5.i2") + QStringLiteral(": cannot be opened: No such file or directory"));
  const LogCatcher log;
  EXPECT_FALSE(view.loadETOPO5DownSmpl(1));
  EXPECT_TRUE(LogCatcher::lines().isEmpty());
  EXPECT_EQ(view.nr(), 0);
}

TEST_F(GeoMapBackground, loadsAPictureAtItsNominalSizeWhateverTheFileHas) {
  writePicture("natural_wide.jpg", {540, 180}, "JPG");
  ASSERT_TRUE(view.loadImageWithIndex(2));
  EXPECT_EQ(view.anImage().size(), QSize(540, 180));
  EXPECT_EQ(view.nr(), 2700);
  EXPECT_EQ(view.nc(), 8100);
  EXPECT_EQ(view.xminImage(), -180);
  EXPECT_EQ(view.xmaxImage(), 360);
  EXPECT_EQ(view.yminImage(), -90);
  EXPECT_EQ(view.ymaxImage(), 90);
  EXPECT_EQ(view.dxImage(), 540.0F / 8100);
  EXPECT_EQ(view.dyImage(), 180.0F / 2700);
  EXPECT_EQ(view.imageFloats(), nullptr) << "the grid's values stay as they are";
}

TEST_F(GeoMapBackground, showsThePartOfAPictureThatTheLimitsSelect) {
  writePicture("natural_wide.jpg", {540, 180}, "JPG");
  ASSERT_TRUE(view.loadImageWithIndex(2));
  view.setXLimitsMinMax(120, 290);
  view.setYLimitsMinMax(-60, 30);
  const auto images = recorded(view)->images();
  ASSERT_EQ(images.size(), 1U);
  // One pixel a degree from -180 on: 300 to 470, and 60 to 150 from the top. A cell is a fifteenth of that.
  EXPECT_NEAR(images[0].source.x(), 300, 0.07);
  EXPECT_NEAR(images[0].source.width(), 170, 0.07);
  EXPECT_NEAR(images[0].source.y(), 60, 0.14);
  EXPECT_NEAR(images[0].source.height(), 90, 0.07);
}

TEST_F(GeoMapBackground, showsTheRegionalPictureWholeFromWestToEast) {
  writePicture("wusGray.tif", {613, 540}, "TIFF");
  ASSERT_TRUE(view.loadImageWithIndex(10));
  EXPECT_EQ(view.nr(), 540);
  EXPECT_EQ(view.nc(), 613);
  EXPECT_EQ(view.dxImage(), -235.0F / 613);
  EXPECT_EQ(view.dyImage(), 22.0F / 540);
  view.setXLimitsMinMax(-125, -115);
  view.setYLimitsMinMax(30, 52);
  const auto images = recorded(view)->images();
  ASSERT_EQ(images.size(), 1U);
  EXPECT_EQ(images[0].source.x(), 0);
  EXPECT_EQ(images[0].source.width(), 613);
  EXPECT_NEAR(images[0].source.height(), 540, 1);
}

TEST_F(GeoMapBackground, saysInTheLogThatItLoadsAPicture) {
  writePicture("natural_wide.jpg", {54, 18}, "JPG");
  const LogCatcher log;
  EXPECT_TRUE(view.loadImageWithIndex(2));
  EXPECT_FALSE(view.loadImageWithIndex(5));
  EXPECT_EQ(LogCatcher::lines(), QStringList(2, QStringLiteral("xov: In loadImageWithIndex")));
}

TEST_F(GeoMapBackground, hasNoPicture5AndLeavesTheOneThatItHasUnchanged) {
  writePicture("natural_wide.jpg", {54, 18}, "JPG");
  ASSERT_TRUE(view.loadImageWithIndex(2));
  const QImage picture = view.anImage();
  QString error;
  EXPECT_FALSE(view.loadImageWithIndex(5, &error));
  EXPECT_EQ(error, QStringLiteral("there is no picture 5"));
  EXPECT_EQ(view.anImage().cacheKey(), picture.cacheKey());
  EXPECT_EQ(view.nc(), 8100);
}

TEST_F(GeoMapBackground, leavesThePictureUnchangedWhenAnotherIsDamaged) {
  writePicture("natural_wide.jpg", {54, 18}, "JPG");
  files.write("noaa_image_wide.jpg", "no picture");
  ASSERT_TRUE(view.loadImageWithIndex(2));
  const QImage picture = view.anImage();
  QString error;
  EXPECT_FALSE(view.loadImageWithIndex(3, &error));
  EXPECT_FALSE(error.isEmpty());
  EXPECT_EQ(view.anImage().cacheKey(), picture.cacheKey());
  EXPECT_EQ(view.nc(), 8100);
  EXPECT_EQ(view.dxImage(), 540.0F / 8100);
}

TEST_F(GeoMapBackground, isAPictureUnlessItHoldsValuesOfAnotherKind) {
  const auto kind = [this] { return recorded(view)->images().front().imageKind; };
  writePicture("natural_wide.jpg", {54, 18}, "JPG");
  ASSERT_TRUE(view.loadImageWithIndex(2));
  EXPECT_EQ(kind(), ImageKind::Picture);
  view.setPlacesCellsExactly(true);
  EXPECT_EQ(kind(), ImageKind::ExactPicture);
  ASSERT_TRUE(view.loadTopoImageFromPathNRowsNColsDSmpl(files.write("dem.i2", bytesOf({1, 2, 3, 4})), 2, 2, 1));
  EXPECT_EQ(kind(), ImageKind::ExactPicture);
  view.setUseTopoValues(false);
  view.updateImagePlanes();
  EXPECT_EQ(kind(), ImageKind::Cells);
}

TEST_F(GeoMapBackground, replacesAGridByAPictureAndAPictureByAGrid) {
  writePicture("natural_wide.jpg", {54, 18}, "JPG");
  const QString path = files.write("dem.i2", bytesOf({1, 2, 3, 4}));
  ASSERT_TRUE(view.loadTopoImageFromPathNRowsNColsDSmpl(path, 2, 2, 1));
  ASSERT_TRUE(view.loadImageWithIndex(2));
  EXPECT_EQ(view.imageFloats()->size(), 4U);
  EXPECT_EQ(view.anImage().width(), 54);
  EXPECT_TRUE(drawsEverywhere(view));
  ASSERT_TRUE(view.loadTopoImageFromPathNRowsNColsDSmpl(path, 2, 2, 1));
  EXPECT_EQ(view.anImage().width(), 2);
  EXPECT_EQ(view.xminImage(), 0);
}

} // namespace
} // namespace xov
