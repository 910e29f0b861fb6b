#include "XOV_Graphics/views/map/MapPictures.h"

#include "XOV_Graphics/base/Resources.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>

namespace xov {
namespace {

struct Row {
  int index;
  const char* file;
  int rows;
  int columns;
  float dx;
  float dy;
};

TEST(MapPictures, areFourWideOnesOfOneAndAHalfGlobes) {
  const Row rows[] = {
      {1, "nasa_satellite_wide.tif", 1024, 3072, 540.0F / 3072, 180.0F / 1024},
      {2, "natural_wide.jpg", 2700, 8100, 540.0F / 8100, 180.0F / 2700},
      {3, "noaa_image_wide.jpg", 3600, 10800, 540.0F / 10800, 180.0F / 3600},
      {4, "living_earth_wide.jpg", 1200, 3600, 540.0F / 3600, 180.0F / 1200},
  };
  for (const Row& row : rows) {
    const MapPicture* picture = mapPicture(row.index);
    ASSERT_NE(picture, nullptr) << row.index;
    EXPECT_STREQ(picture->file, row.file);
    EXPECT_EQ(picture->rows, row.rows);
    EXPECT_EQ(picture->columns, row.columns);
    EXPECT_EQ(picture->extent.rect(), QRectF(-180, -90, 540, 180));
    EXPECT_EQ(picture->dx, row.dx);
    EXPECT_EQ(picture->dy, row.dy);
  }
}

TEST(MapPictures, haveARegionalOneWithANegativeCellWidth) {
  const MapPicture* picture = mapPicture(10);
  ASSERT_NE(picture, nullptr);
  EXPECT_STREQ(picture->file, "wusGray.tif");
  EXPECT_EQ(picture->rows, 540);
  EXPECT_EQ(picture->columns, 613);
  EXPECT_EQ(picture->extent.rect(), QRectF(-130, 30, 25, 22));
  // The sum of the longitudes, -130 - 105, for their difference.
  EXPECT_EQ(picture->dx, -235.0F / 613);
  EXPECT_EQ(picture->dy, 22.0F / 540);
}

TEST(MapPictures, haveNoOtherIndices) {
  for (const int index : {-1, 0, 5, 6, 9, 11, 1000})
    EXPECT_EQ(mapPicture(index), nullptr) << index;
}

class MapPictureFile : public ::testing::Test {
protected:
  MapPictureFile() { setHostResourceFolder(files.folder()); }
  ~MapPictureFile() override { setHostResourceFolder({}); }

  static QByteArray encoded(const QSize& size, const char* format) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(10, 200, 30));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes;
  }

  QString refusal() { return readMapPicture(*mapPicture(2)).error(); }

  test::TemporaryFiles files;
};

TEST_F(MapPictureFile, isReadInTheSizeThatItHas) {
  files.write("natural_wide.jpg", encoded({60, 20}, "JPG"));
  const Result<QImage> image = readMapPicture(*mapPicture(2));
  ASSERT_TRUE(image) << qPrintable(image.error());
  EXPECT_EQ(image->size(), QSize(60, 20));
  EXPECT_NEAR(image->pixelColor(30, 10).green(), 200, 3);
}

TEST_F(MapPictureFile, isReadWhateverFormatItsNameSays) {
  files.write("natural_wide.jpg", encoded({60, 20}, "PNG"));
  EXPECT_EQ(readMapPicture(*mapPicture(2))->pixelColor(0, 0), QColor(10, 200, 30));
}

TEST_F(MapPictureFile, ofTheLargestSizeIsRead) {
  files.write("noaa_image_wide.jpg", encoded({10800, 3600}, "JPG"));
  const int limit = QImageReader::allocationLimit();
  EXPECT_EQ(readMapPicture(*mapPicture(3))->size(), QSize(10800, 3600));
  EXPECT_EQ(QImageReader::allocationLimit(), limit) << "which is the program's, and stays";
}

TEST_F(MapPictureFile, ofTooManyPixelsIsRefused) {
  QByteArray bytes = encoded({60, 20}, "JPG");
  // The frame header of a JPEG file: FF C0, length (2 bytes), precision, height and width (2 bytes each).
  const qsizetype frame = bytes.indexOf("\xFF\xC0");
  ASSERT_GT(frame, 0);
  bytes.replace(frame + 5, 4, QByteArray(4, '\xFA')); // 64250 by 64250 pixels
  const QString path = files.write("natural_wide.jpg", bytes);
  const QString expected = path + ": found a picture of 64250 by 64250 pixels, expected at most 67108864 of them";
  EXPECT_EQ(refusal(), expected);
  // Also in a program that has no limit of its own.
  const int limit = QImageReader::allocationLimit();
  QImageReader::setAllocationLimit(0);
  EXPECT_EQ(refusal(), expected);
  QImageReader::setAllocationLimit(limit);
  // One row more than 67,108,864 pixels make: 8193 rows of 8192.
  bytes.replace(frame + 5, 4, QByteArray("\x20\x01\x20\x00", 4));
  files.write("natural_wide.jpg", bytes);
  EXPECT_TRUE(refusal().contains("8192 by 8193 pixels")) << refusal().toStdString();
}

TEST_F(MapPictureFile, thatIsDamagedIsRefused) {
  const QString path = files.write("natural_wide.jpg", "no picture at all");
  EXPECT_TRUE(refusal().startsWith(path + QStringLiteral(": "))) << refusal().toStdString();
  EXPECT_FALSE(refusal().contains(QLatin1Char('\n')));
}

TEST_F(MapPictureFile, thatIsCutOffIsRefused) {
  const QByteArray whole = encoded({600, 200}, "JPG");
  const QString path = files.write("natural_wide.jpg", whole.first(whole.size() * 2 / 3));
  EXPECT_EQ(refusal(), path + QStringLiteral(": the picture is cut off at the end of the file"));
  const QByteArray tiff = encoded({600, 200}, "TIFF");
  files.write("natural_wide.jpg", tiff.first(tiff.size() * 2 / 3));
  EXPECT_FALSE(refusal().isEmpty());
}

TEST_F(MapPictureFile, thatIsEmptyIsRefused) {
  files.write("natural_wide.jpg", {});
  EXPECT_FALSE(refusal().isEmpty());
}

} // namespace
} // namespace xov
