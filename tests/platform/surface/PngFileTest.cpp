#include "XOV_Graphics/platform/surface/PngFile.h"

#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/platform/surface/PngColors.h"
#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <algorithm>
#include <functional>
#include <new>
#include <random>
#include <string>
#include <vector>

namespace xov {
namespace {

using Kind = PngPixels::Kind;

QImage pictureOf(QSize size, QImage::Format format, const std::function<QRgb(int x, int y)>& color) {
  QImage image(size, QImage::Format_ARGB32);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x)
      image.setPixel(x, y, color(x, y));
  }
  return image.convertToFormat(format);
}

// So many colours in turn.
QImage colorful(int colors, const std::function<QRgb(int)>& color, QSize size = {37, 21},
                QImage::Format format = QImage::Format_ARGB32_Premultiplied) {
  return pictureOf(size, format, [&](int x, int y) { return color((x + size.width() * y) % colors); });
}

// Smooth, with a little noise, as a photograph is.
QImage photograph(QImage::Format format, bool translucent = false) {
  std::mt19937 random(3);
  return pictureOf({300, 200}, format, [&](int x, int y) {
    const auto level = [&](int value) { return std::clamp(value + int(random() % 5), 0, 255); };
    return qRgba(level(x * 200 / 300), level(y), level((x + y) / 3), translucent ? level(x / 2 + y / 4) : 255);
  });
}

// White paper with black lines, as a plot is.
QImage lines() {
  return pictureOf({300, 200}, QImage::Format_RGB32, [](int x, int y) {
    const int shade = (x * 7 + y * y) % 97 < 3 ? (x * 37) % 200 : 255;
    return qRgb(shade, shade, shade);
  });
}

int byteAt(const QByteArray& bytes, qsizetype at) { return int(static_cast<unsigned char>(bytes.at(at))); }

// What the header says: behind the signature of 8 bytes, length and type of 4, width and height of 4 bytes.
int bitsOf(const QByteArray& png) { return byteAt(png, 24); }
int kindOf(const QByteArray& png) { return byteAt(png, 25); }

void expectReadsBack(const QByteArray& png, const QImage& image) {
  const QImage read = QImage::fromData(png, "png");
  ASSERT_EQ(read.size(), image.size());
  const QImage::Format format = image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
  const QImage expected = image.convertToFormat(format), found = read.convertToFormat(format);
  int differing = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      differing += expected.pixel(x, y) != found.pixel(x, y) ? 1 : 0;
  }
  EXPECT_EQ(differing, 0);
}

QByteArray writtenByQt(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter(&buffer, "png").write(image);
  return bytes;
}

struct Case {
  const char* name;
  QImage image;
  Kind kind;
  int bits;
};

const std::vector<Case>& cases() {
  const auto grey = [](int step) { return [step](int i) { return qRgb(step * i, step * i, step * i); }; };
  const auto color = [](int i) { return qRgb(i % 256, 7 * i % 256, i / 2 % 256); };
  const auto faint = [](int i) { return qRgba(255 - i, 40, 20, i % 2 == 0 ? 255 : 100 + i); };
  static const std::vector<Case> all = {
      {"black and white", colorful(2, grey(255)), Kind::Grey, 1},
      {"one colour", colorful(1, [](int) { return qRgb(1, 2, 3); }), Kind::Palette, 1},
      {"quarters of white", colorful(4, grey(85)), Kind::Grey, 2},
      {"fifteenths of white", colorful(16, grey(17)), Kind::Grey, 4},
      {"three other greys", colorful(3, grey(90)), Kind::Palette, 2},
      {"all greys", colorful(256, grey(1)), Kind::Grey, 8},
      {"black, white and red",
       colorful(3, [](int i) { return i == 2 ? qRgb(255, 0, 0) : qRgb(255 * i, 255 * i, 255 * i); }), Kind::Palette,
       2},
      {"16 colours", colorful(16, color), Kind::Palette, 4},
      {"17 colours", colorful(17, color), Kind::Palette, 8},
      {"256 colours", colorful(256, color), Kind::Palette, 8},
      {"257 colours", colorful(257, color), Kind::Rgb, 8},
      {"few translucent colours", colorful(10, faint, {37, 21}, QImage::Format_ARGB32), Kind::Palette, 4},
      {"nothing", colorful(1, [](int) { return 0U; }), Kind::Palette, 1},
      {"a photograph", photograph(QImage::Format_RGB32), Kind::Rgb, 8},
      {"one of 24 bits", photograph(QImage::Format_RGB888), Kind::Rgb, 8},
      {"a translucent one", photograph(QImage::Format_ARGB32, true), Kind::Rgba, 8},
      {"a premultiplied one", photograph(QImage::Format_ARGB32_Premultiplied, true), Kind::Rgba, 8},
      {"lines", lines(), Kind::Grey, 8},
      {"a bitmap", colorful(2, grey(255), {13, 5}, QImage::Format_Mono), Kind::Grey, 1},
      {"a pixel", colorful(1, grey(0), {1, 1}), Kind::Grey, 1},
      {"a row", colorful(300, color, {300, 1}), Kind::Rgb, 8},
      {"a column", colorful(3, grey(85), {1, 300}), Kind::Grey, 2},
  };
  return all;
}

TEST(PngFile, holdsEveryPictureInTheLeastKindOfPixels) {
  for (const Case& each : cases()) {
    SCOPED_TRACE(each.name);
    const QByteArray png = pngFile(each.image);
    EXPECT_EQ(kindOf(png), int(each.kind));
    EXPECT_EQ(bitsOf(png), each.bits);
    expectReadsBack(png, each.image);
  }
}

TEST(PngFile, isTheSameWithAnyNumberOfThreads) {
  for (const Case& each : cases()) {
    SCOPED_TRACE(each.name);
    setThreadCount(1);
    const QByteArray alone = pngFile(each.image);
    for (const int threads : kThreadCounts) {
      const WithThreads with(threads);
      EXPECT_EQ(pngFile(each.image), alone) << threads << " threads";
    }
  }
}

TEST(PngFile, isSmallerThanQtsWherePicturesAreLinesAndElseAsSmall) {
  const auto ratio = [](const QImage& image) {
    return double(pngFile(image).size()) / double(writtenByQt(image).size());
  };
  EXPECT_LT(ratio(lines()), 0.8);
  EXPECT_LT(ratio(photograph(QImage::Format_RGB32)), 1.01);
  EXPECT_LT(ratio(photograph(QImage::Format_ARGB32, true)), 1.01);
}

TEST(PngFile, holdsWholeChunksInTheirOrderWithTheResolution) {
  QImage image = colorful(
      3, [](int i) { return qRgba(9, 9, 9, 100 * i); }, {37, 21}, QImage::Format_ARGB32);
  image.setDotsPerMeterX(5669);
  image.setDotsPerMeterY(2834);
  const QByteArray png = pngFile(image);
  std::string types;
  for (qsizetype at = 8; at + 12 <= png.size();) {
    const QByteArray type = png.mid(at + 4, 4);
    types += type.toStdString() + ' ';
    // 5669 = 0x1625, 2834 = 0x0b12, by the metre
    if (type == "pHYs") {
      EXPECT_EQ(png.mid(at + 8, 9).toHex(), "0000162500000b1201");
    }
    if (type == "IHDR") {
      EXPECT_EQ(png.mid(at + 8, 13).toHex(), "00000025000000150203000000");
    }
    if (type == "tRNS") {
      EXPECT_EQ(png.mid(at + 8, 3).toHex(), "0064c8");
    }
    at += 12 + (byteAt(png, at) << 24 | byteAt(png, at + 1) << 16 | byteAt(png, at + 2) << 8 | byteAt(png, at + 3));
  }
  EXPECT_EQ(types, "IHDR PLTE tRNS pHYs IDAT IEND ");
}

TEST(PngFile, isSaidToBeWithoutMemoryWherePixelsCannotBeHeld) { EXPECT_THROW(pngFile(QImage()), std::bad_alloc); }

// Those of a host's own pictures.
TEST(ImageFile, pngKeepsTextsAndColorSpaces) {
  QImage image = lines();
  image.setText(QStringLiteral("Title"), QStringLiteral("Section"));
  EXPECT_EQ(QImage::fromData(encodeImage(image, ImageFormat::Png)).text(QStringLiteral("Title")),
            QStringLiteral("Section"));
  QImage wide = lines();
  wide.setColorSpace(QColorSpace::DisplayP3);
  EXPECT_EQ(QImage::fromData(encodeImage(wide, ImageFormat::Png)).colorSpace().primaries(),
            QColorSpace::Primaries::DciP3D65);
}

} // namespace
} // namespace xov
