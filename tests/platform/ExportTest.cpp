#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/platform/PlanarBitmap.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <QImageReader>
#include <QThread>

#include <new>

namespace xov {
namespace {

using testing::pixelAt;

void drawSample(GraphicsContext& context) {
  context.setColor(colors::white);
  context.fillRect({0, 0, 200, 100});
  context.setColor(colors::red);
  context.fillRect({0, 0, 50, 50});
  context.drawText(QStringLiteral("Seismogram 123"), {60, 40}, TextAttributes::helvetica(14));
}

TEST(PdfPage, isAsLargeAsTheRectangle) {
  const QByteArray pdf = pdfPage({0, 0, 504, 360}, drawSample);
  EXPECT_TRUE(pdf.startsWith("%PDF-"));
  EXPECT_TRUE(pdf.contains("/MediaBox [0 0 504.000000 360.000000]")) << pdf.left(400).constData();
}

TEST(PdfPage, isOnePage) { EXPECT_TRUE(pdfPage({0, 0, 50, 50}, drawSample).contains("/Count 1")); }

TEST(PdfPage, theSameDrawingGivesTheSameBytesAtAnyTime) {
  const QByteArray first = pdfPage({0, 0, 200, 100}, drawSample);
  QThread::msleep(1100); // the date in a PDF counts whole seconds
  EXPECT_EQ(pdfPage({0, 0, 200, 100}, drawSample), first);
}

TEST(PdfPage, embedsItsFonts) {
  const QByteArray pdf = pdfPage({0, 0, 200, 100}, drawSample);
  EXPECT_TRUE(pdf.contains("/FontFile2") || pdf.contains("/FontFile3"));
}

// Where there was no memory for the drawing, Qt has none for the fonts of a page that it ends.
TEST(PdfPage, isLaidAsideWhereItsDrawingThrowsAndEndedByTheNext) {
  const QByteArray whole = pdfPage({0, 0, 200, 100}, drawSample);
  const auto drawHalf = [](GraphicsContext& context) {
    drawSample(context);
    throw std::bad_alloc();
  };
  for (int page = 0; page < 3; ++page)
    EXPECT_THROW(pdfPage({0, 0, 200, 100}, drawHalf), std::bad_alloc);
  EXPECT_EQ(pdfPage({0, 0, 200, 100}, drawSample), whole);
}

TEST(PdfPage, anEmptyRectangleGivesNothing) {
  EXPECT_TRUE(pdfPage({0, 0, 0, 10}, drawSample).isEmpty());
  EXPECT_TRUE(pdfPage({0, 0, 10, -10}, drawSample).isEmpty());
}

QImage sample(double ratio) { return picture({0, 0, 200, 100}, ratio, drawSample); }

TEST(ImageFile, tiffAndPngKeepEveryPixel) {
  for (ImageFormat format : {ImageFormat::Tiff, ImageFormat::TiffLzw, ImageFormat::Png}) {
    const QImage read = QImage::fromData(encodeImage(sample(2), format));
    EXPECT_EQ(read.size(), QSize(400, 200));
    EXPECT_EQ(testing::differingPixels(read, sample(2)), 0);
  }
}

TEST(ImageFile, lzwIsSmallerThanPlainTiff) {
  EXPECT_LT(encodeImage(sample(1), ImageFormat::TiffLzw).size() * 4,
            encodeImage(sample(1), ImageFormat::Tiff).size());
}

TEST(ImageFile, theResolutionIsInTheFile) {
  for (ImageFormat format : {ImageFormat::Tiff, ImageFormat::Png, ImageFormat::Jpeg}) {
    const QImage read = QImage::fromData(encodeImage(sample(2), format));
    EXPECT_NEAR(read.dotsPerMeterX() * 0.0254, 144, 0.6) << int(format);
  }
}

TEST(ImageFile, jpegPutsTransparencyOnWhite) {
  QImage clear(16, 16, QImage::Format_ARGB32_Premultiplied);
  clear.fill(Qt::transparent);
  const QImage read = QImage::fromData(encodeImage(clear, ImageFormat::Jpeg));
  EXPECT_GE(qRed(read.pixel(8, 8)), 250);
}

TEST(ImageFile, jpegOfLowerQualityIsSmaller) {
  QImage image(64, 64, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, y, qRgb(x * y % 256, 4 * x, 4 * y));
  }
  EXPECT_LT(encodeJpeg(image, 60).size(), encodeJpeg(image, 92).size());
  EXPECT_EQ(encodeJpeg(image, 92), encodeImage(image, ImageFormat::Jpeg));
}

TEST(ImageFile, pngKeepsTransparency) {
  QImage half(2, 2, QImage::Format_ARGB32);
  half.fill(QColor(255, 0, 0, 100));
  EXPECT_EQ(qAlpha(QImage::fromData(encodeImage(half, ImageFormat::Png)).pixel(0, 0)), 100);
}

TEST(ImageFile, aNullImageIsSaidInOneLine) {
  QString error;
  EXPECT_TRUE(encodeImage(QImage(), ImageFormat::Png, &error).isEmpty());
  EXPECT_FALSE(error.isEmpty());
  EXPECT_FALSE(error.contains(QLatin1Char('\n')));
}

TEST(PlanarBitmap, holdsAPlaneOfBytesAChannel) {
  PlanarBitmap bitmap(3, 2);
  ASSERT_EQ(bitmap.plane(0).size(), 6u);
  bitmap.plane(0)[4] = 10; // row 1, column 1
  bitmap.plane(1)[4] = 20;
  bitmap.plane(2)[4] = 30;
  bitmap.plane(3)[4] = 255;
  const QImage image = bitmap.toImage();
  EXPECT_EQ(image.pixel(1, 1), qRgba(10, 20, 30, 255));
  EXPECT_EQ(image.pixel(0, 0), qRgba(0, 0, 0, 0));
  EXPECT_TRUE(bitmap.plane(4).empty());
  EXPECT_TRUE(bitmap.plane(-1).empty());
}

TEST(PlanarBitmap, sizesThatCannotBeHaveNoPixels) {
  EXPECT_TRUE(PlanarBitmap(0, 5).isNull());
  EXPECT_TRUE(PlanarBitmap(-1, 5).isNull());
  EXPECT_TRUE(PlanarBitmap(100000, 100000).isNull());
  EXPECT_TRUE(PlanarBitmap().toImage().isNull());
}

TEST(PlanarBitmap, isOpaqueWithoutItsAlphaPlane) {
  PlanarBitmap bitmap(3, 2);
  bitmap.plane(0)[2] = 10; // row 0, column 2
  bitmap.plane(1)[3] = 20; // row 1, column 0
  bitmap.plane(2)[4] = 30; // row 1, column 1
  const QImage image = bitmap.toOpaqueImage();
  EXPECT_EQ(image.size(), QSize(3, 2));
  EXPECT_EQ(image.pixel(2, 0), qRgb(10, 0, 0));
  EXPECT_EQ(image.pixel(0, 1), qRgb(0, 20, 0));
  EXPECT_EQ(image.pixel(1, 1), qRgb(0, 0, 30));
  EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
  EXPECT_TRUE(PlanarBitmap().toOpaqueImage().isNull());
}

} // namespace
} // namespace xov
