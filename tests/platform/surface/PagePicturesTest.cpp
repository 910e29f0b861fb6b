#include "XOV_Graphics/platform/pixels/ImageResampling.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "XOV_Graphics/platform/surface/SvgPage.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <cmath>
#include <random>

namespace xov {
namespace {

constexpr int kSide = 400;
const QRectF kPage(0, 0, 96, 96); // 400 pixels of 1/300 inch
const QRectF kAll(0, 0, kSide, kSide);

// Colours that change slowly, with a grain of some levels of grey.
QImage photograph() {
  QImage image(kSide, kSide, QImage::Format_RGB32);
  std::mt19937 random(2009);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const int grain = int(random() % 17) - 8;
      const auto level = [&](double period) {
        return 128 + grain + int(std::lround(90 * std::sin(x / period) * std::cos(y / 50.0)));
      };
      image.setPixel(x, y, qRgb(level(60), level(80), level(45)));
    }
  }
  return image;
}

QByteArray pageOf(const QImage& image, ImageKind kind) {
  return pdfPage(kPage, [&](GraphicsContext& context) { context.drawImage(image, kPage, kAll, 1, kind); });
}

// The JPEG of a page; a null image where there is none.
QImage jpegOf(const QByteArray& pdf) {
  const qsizetype filter = pdf.indexOf("/DCTDecode");
  const qsizetype stream = filter < 0 ? filter : pdf.indexOf("stream\n", filter);
  return stream < 0 ? QImage() : QImage::fromData(pdf.sliced(stream + 7), "JPG");
}

// Peak signal to noise in decibels, over all three colours.
double psnr(const QImage& a, const QImage& b) {
  double squares = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      for (const int difference : {qRed(p) - qRed(q), qGreen(p) - qGreen(q), qBlue(p) - qBlue(q)})
        squares += difference * difference;
    }
  }
  return 10 * std::log10(255.0 * 255.0 / (squares / (3.0 * a.width() * a.height())));
}

// Quality 94 rounds the 64 frequencies of a block of luminances to multiples of 12 % of 16, 11, 10, ... 99: the mean
// of their squares is 64.2. Rounding moves a number by half a step at most, and a block's mean square is that of its
// frequencies: at most 64.2 / 4 = 16.04 levels squared, or 36.08 dB; a twelfth of that once more for whole levels.
TEST(PagePictures, areJpegsWithin36Decibels) {
  const QByteArray pdf = pageOf(photograph(), ImageKind::Picture);
  const QImage jpeg = jpegOf(pdf);
  ASSERT_EQ(jpeg.size(), QSize(kSide, kSide));
  EXPECT_GE(psnr(jpeg, photograph()), 36);
  EXPECT_LT(pdf.size() * 3, pageOf(photograph(), ImageKind::Cells).size());
}

TEST(PagePictures, cellsKeepTheirColours) { EXPECT_TRUE(jpegOf(pageOf(photograph(), ImageKind::Cells)).isNull()); }

// What a page holds beside its pictures has no losses, whatever stands before it.
TEST(PagePictures, cellsAfterAPictureKeepTheirColours) {
  const QImage image = photograph();
  const QByteArray pdf = pdfPage(kPage, [&](GraphicsContext& context) {
    context.drawImage(image, kPage, kAll, 1, ImageKind::Picture);
    context.drawImage(image, kPage, kAll, 1, ImageKind::Cells);
  });
  EXPECT_EQ(pdf.count("/DCTDecode"), 1);
  EXPECT_EQ(pdf.count("/Subtype /Image"), 2);
}

TEST(PagePictures, areAsFineAsTheHostsPageAllows) {
  testing::DrawingView view(kPage, [image = photograph()](const QRectF&) {
    GraphicsContext::current().drawImage(image, kPage, kAll, 1, ImageKind::ExactPicture);
  });
  const auto widthOnPage = [&view](double points) {
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(1200);
    QPainter painter(&writer);
    const double side = points * 1200 / 72;
    view.paint(painter, {0, 0, side, side});
    painter.end();
    return jpegOf(pdf).width();
  };
  EXPECT_EQ(widthOnPage(96), 400);
  EXPECT_EQ(widthOnPage(72), 300);
  EXPECT_EQ(widthOnPage(500), 5 * 400); // 2083 dots, so that a pixel takes five of them
}

TEST(PagePictures, areJpegsInSvgFilesToo) {
  const QImage image = photograph();
  const auto dataOf = [&](ImageKind kind) {
    return svgPage(kPage, [&](GraphicsContext& context) { context.drawImage(image, kPage, kAll, 1, kind); });
  };
  EXPECT_TRUE(dataOf(ImageKind::ExactPicture).contains("data:image/jpeg;base64,"));
  EXPECT_TRUE(dataOf(ImageKind::Cells).contains("data:image/png;base64,"));
}

// A megabyte and a half as PNG: noise in three colours cannot be packed.
TEST(PagePictures, manyCellsStayExactInSvgFiles) {
  QImage noise(720, 720, QImage::Format_RGB32);
  std::mt19937 random(1);
  for (int y = 0; y < noise.height(); ++y) {
    for (int x = 0; x < noise.width(); ++x)
      noise.setPixel(x, y, 0xff000000U | random());
  }
  const QByteArray svg = svgPage({0, 0, 86.4, 86.4}, [&](GraphicsContext& context) {
    context.drawImage(noise, {0, 0, 86.4, 86.4}, {0, 0, 720, 720});
  });
  EXPECT_GT(svg.size(), 1 << 20);
  EXPECT_TRUE(svg.contains("data:image/png;base64,"));
}

} // namespace
} // namespace xov
