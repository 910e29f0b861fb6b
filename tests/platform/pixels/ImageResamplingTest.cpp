#include "XOV_Graphics/platform/pixels/ImageResampling.h"

#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

#include <QColor>

namespace xov {
namespace {

constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kGreen = 0xff00ff00;
constexpr QRgb kBlue = 0xff0000ff;
constexpr QRgb kBlack = 0xff000000;
constexpr QRgb kWhite = 0xffffffff;

QImage row(std::initializer_list<QRgb> pixels) {
  QImage image(int(pixels.size()), 1, QImage::Format_RGB32);
  int x = 0;
  for (const QRgb pixel : pixels)
    image.setPixel(x++, 0, pixel);
  return image;
}

std::vector<QRgb> pixelsOf(const QImage& image, int y = 0) {
  std::vector<QRgb> pixels;
  for (int x = 0; x < image.width(); ++x)
    pixels.push_back(image.pixel(x, y));
  return pixels;
}

const QRect kEverything(0, 0, 1000, 1000);

TEST(ImageResampling, largeCellsKeepSharpEdges) {
  const auto shown = resampleImage(row({kRed, kBlue}), {0, 0, 2, 1}, {10, 20, 6, 1}, kEverything);
  EXPECT_EQ(shown.topLeft, QPoint(10, 20));
  EXPECT_EQ(pixelsOf(shown.image), (std::vector<QRgb>{kRed, kRed, kRed, kBlue, kBlue, kBlue}));
}

// Five pixels for two cells: the third pixel's middle, 2.5, is the beginning of the second cell.
TEST(ImageResampling, aPixelOnTwoCellsTakesTheOneThatItsMiddleLiesIn) {
  const auto shown = resampleImage(row({kRed, kBlue}), {0, 0, 2, 1}, {0, 0, 5, 1}, kEverything);
  EXPECT_EQ(pixelsOf(shown.image), (std::vector<QRgb>{kRed, kRed, kBlue, kBlue, kBlue}));
}

// Two black and two white cells make one pixel each; a black and a white one make (0 + 255) / 2 = 127.5, rounded up.
TEST(ImageResampling, smallCellsAreAveragedByArea) {
  const auto pairs = resampleImage(row({kBlack, kBlack, kWhite, kWhite}), {0, 0, 4, 1}, {0, 0, 2, 1}, kEverything);
  EXPECT_EQ(pixelsOf(pairs.image), (std::vector<QRgb>{kBlack, kWhite}));
  const auto mixed = resampleImage(row({kBlack, kWhite, kBlack, kWhite}), {0, 0, 4, 1}, {0, 0, 2, 1}, kEverything);
  EXPECT_EQ(pixelsOf(mixed.image), (std::vector<QRgb>{0xff808080, 0xff808080}));
}

// The third of five pixels lies half on either of two cells: 255 / 2 = 127.5, rounded up.
TEST(ImageResampling, sharedEdgesGiveAPixelTheMeanOfItsCellsByArea) {
  const auto shown = resampleImage(row({kBlack, kWhite}), {0, 0, 2, 1}, {0, 0, 5, 1}, kEverything, CellEdges::Shared);
  EXPECT_EQ(pixelsOf(shown.image), (std::vector<QRgb>{kBlack, kBlack, 0xff808080, kWhite, kWhite}));
}

// A cell a pixel, shifted by a quarter: each pixel is three quarters of one cell and a quarter of the next.
TEST(ImageResampling, sharedEdgesMoveAPictureByAPartOfAPixel) {
  const auto shown = resampleImage(row({kBlack, kWhite, kWhite, kBlack}), {0.25, 0, 3, 1}, {0, 0, 3, 1}, kEverything,
                                   CellEdges::Shared);
  EXPECT_EQ(pixelsOf(shown.image), (std::vector<QRgb>{0xff404040, kWhite, 0xffbfbfbf}));
}

// Three cells on two pixels: each pixel is two thirds of one cell and one third of the middle one: 255 / 3 = 85.
TEST(ImageResampling, aCellOnTwoPixelsIsSharedOut) {
  const auto shown = resampleImage(row({kBlack, kWhite, kBlack}), {0, 0, 3, 1}, {0, 0, 2, 1}, kEverything);
  EXPECT_EQ(pixelsOf(shown.image), (std::vector<QRgb>{0xff555555, 0xff555555}));
}

// Four columns on two pixels are averaged while one row on two pixels is repeated.
TEST(ImageResampling, directionsAreIndependent) {
  const auto shown = resampleImage(row({kBlack, kWhite, kWhite, kWhite}), {0, 0, 4, 1}, {0, 0, 2, 2}, kEverything);
  ASSERT_EQ(shown.image.size(), QSize(2, 2));
  for (const int y : {0, 1})
    EXPECT_EQ(pixelsOf(shown.image, y), (std::vector<QRgb>{0xff808080, kWhite}));
}

TEST(ImageResampling, onlyTheSourceIsShown) {
  const auto cells = row({kRed, kGreen, kBlue});
  EXPECT_EQ(pixelsOf(resampleImage(cells, {1, 0, 1, 1}, {0, 0, 2, 1}, kEverything).image),
            (std::vector<QRgb>{kGreen, kGreen}));
  EXPECT_EQ(pixelsOf(resampleImage(cells, {1, 0, 2, 1}, {0, 0, 2, 1}, kEverything).image),
            (std::vector<QRgb>{kGreen, kBlue}));
}

// A rectangle from 0.5 to 2 covers half of the first pixel: half of 255 is 127.5, rounded up, in alpha and colour.
TEST(ImageResampling, pixelsOnTheEdgeAreCoveredByTheirShare) {
  const auto shown = resampleImage(row({kWhite}), {0, 0, 1, 1}, {0.5, 0, 1.5, 1}, kEverything);
  ASSERT_EQ(shown.image.width(), 2);
  EXPECT_EQ(reinterpret_cast<const QRgb*>(shown.image.constScanLine(0))[0], 0x80808080U);
  EXPECT_EQ(shown.image.pixel(1, 0), kWhite);
}

TEST(ImageResampling, whatIsNotVisibleIsNotMade) {
  const auto shown = resampleImage(row({kRed, kBlue}), {0, 0, 2, 1}, {-1e6, -1e6, 2e6 + 8, 2e6}, {0, 0, 8, 4});
  EXPECT_EQ(shown.image.size(), QSize(8, 4));
  EXPECT_EQ(shown.topLeft, QPoint(0, 0));
  // The cells meet at x = 4.
  EXPECT_EQ(shown.image.pixel(3, 0), kRed);
  EXPECT_EQ(shown.image.pixel(4, 0), kBlue);
  EXPECT_TRUE(resampleImage(row({kRed}), {0, 0, 1, 1}, {20, 0, 5, 5}, {0, 0, 8, 4}).image.isNull());
}

TEST(ImageResampling, nothingComesOfNothing) {
  EXPECT_TRUE(resampleImage({}, {0, 0, 1, 1}, {0, 0, 1, 1}, kEverything).image.isNull());
  EXPECT_TRUE(resampleImage(row({kRed}), {}, {0, 0, 1, 1}, kEverything).image.isNull());
  EXPECT_TRUE(resampleImage(row({kRed}), {0, 0, 1, 1}, {}, kEverything).image.isNull());
  EXPECT_TRUE(resampleImage(row({kRed}), {0, 0, 1, 1}, {0, 0, 1, 1}, {}).image.isNull());
}

TEST(ImageResampling, otherPixelFormatsAndTransparencyCount) {
  QImage image(2, 1, QImage::Format_ARGB32);
  image.setPixel(0, 0, 0xffffffff);
  image.setPixel(1, 0, 0x00ffffff);
  const auto shown = resampleImage(image, {0, 0, 2, 1}, {0, 0, 1, 1}, kEverything);
  // Half white, half nothing.
  EXPECT_EQ(reinterpret_cast<const QRgb*>(shown.image.constScanLine(0))[0], 0x80808080U);
}

// 72 points are an inch: two cells on it take 150 pixels of 1/300 inch each.
TEST(ImageResampling, cellsOnPaperAreManyPixels) {
  const QImage page = imageForPaper(row({kRed, kBlue}), {0, 0, 2, 1}, {72, 72});
  ASSERT_EQ(page.size(), QSize(300, 300));
  EXPECT_EQ(page.pixel(149, 0), kRed);
  EXPECT_EQ(page.pixel(150, 299), kBlue);
}

// 6.0 points of paper hold 50 dots of 1/600 inch.
TEST(ImageResampling, finerPicturesThanAPrintersDotsAreReduced) {
  QImage image(1000, 1, QImage::Format_RGB32);
  image.fill(kGreen);
  const QImage page = imageForPaper(image, {0, 0, 1000, 1}, {6, 6});
  EXPECT_EQ(page.width(), 50);
  EXPECT_EQ(page.pixel(20, 0), kGreen);
}

// 72 points are an inch: 900 pixels become 300 of a picture, and stay 900 of cells.
TEST(ImageResampling, picturesOnPaperHoldNoMoreThan300DotsAnInch) {
  QImage image(900, 1, QImage::Format_RGB32);
  image.fill(kGreen);
  for (const ImageKind kind : {ImageKind::Picture, ImageKind::ExactPicture})
    EXPECT_EQ(imageForPaper(image, {0, 0, 900, 1}, {72, 72}, kind).width(), 300);
  EXPECT_EQ(imageForPaper(image, {0, 0, 900, 1}, {72, 72}, ImageKind::Cells).width(), 600);
}

TEST(ImageResampling, onlyLargeOpaquePicturesBecomeJpegOnPaper) {
  const QImage large(257, 256, QImage::Format_RGB32);
  const QImage small(256, 256, QImage::Format_RGB32);
  EXPECT_TRUE(isJpegOnPaper(large, true, ImageKind::Picture));
  EXPECT_TRUE(isJpegOnPaper(large, true, ImageKind::ExactPicture));
  EXPECT_FALSE(isJpegOnPaper(small, true, ImageKind::Picture));
  EXPECT_FALSE(isJpegOnPaper(large, false, ImageKind::Picture));
  EXPECT_FALSE(isJpegOnPaper(large, true, ImageKind::Cells));
}

TEST(ImageResampling, aPosterDoesNotTakeAllMemory) {
  const QImage page = imageForPaper(row({kRed, kBlue}), {0, 0, 2, 1}, {1e7, 1e7});
  EXPECT_LE(page.width(), 4096);
  EXPECT_LE(page.height(), 4096);
  EXPECT_GE(page.width(), 4000);
}

TEST(ImageResampling, isTheSameWithAnyNumberOfThreads) {
  QImage image(200, 300, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, y, qRgb(x, y % 256, (x * y) % 256));
  }
  for (const QSizeF size : {QSizeF(150, 210), QSizeF(500, 900)}) {
    const auto shown = [&] {
      return resampleImage(image, image.rect(), {QPointF(0.3, 0.7), size}, kEverything, CellEdges::Sharp).image;
    };
    setThreadCount(1);
    const QImage alone = shown();
    for (const int threads : kThreadCounts) {
      const WithThreads with(threads);
      EXPECT_EQ(shown(), alone) << threads << " threads";
    }
  }
}

} // namespace
} // namespace xov
