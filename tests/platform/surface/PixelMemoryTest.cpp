#include "XOV_Graphics/platform/surface/PixelMemory.h"

#include <gtest/gtest.h>

#include <memory>

namespace xov {
namespace {

constexpr QSize kLarge(1024, 1100); // 4.5 MB
constexpr auto kFormat = QImage::Format_ARGB32_Premultiplied;

TEST(PixelMemory, goesOnToTheNextPictureLikeIt) {
  QImage image = reusedImage(kLarge, kFormat);
  ASSERT_EQ(image.size(), kLarge);
  ASSERT_EQ(image.format(), kFormat);
  const uchar* const pixels = image.constBits();
  image = {};
  const QImage other(kLarge, kFormat); // would get the memory if it had been given back
  EXPECT_NE(other.constBits(), pixels);
  QImage next = reusedImage({1024, 1050}, kFormat);
  EXPECT_EQ(next.constBits(), pixels);
  EXPECT_NE(reusedImage(kLarge, kFormat).constBits(), pixels) << "taken twice";
}

TEST(PixelMemory, isKeptForPicturesOfSeveralSizesInTurn) {
  const QSize larger(2048, 1100);
  QImage first = reusedImage(kLarge, kFormat), second = reusedImage(larger, kFormat);
  const uchar* const pixels[] = {first.constBits(), second.constBits()};
  for (int repeat = 0; repeat < 3; ++repeat) {
    first = {};
    second = {};
    second = reusedImage(larger, kFormat);
    first = reusedImage(kLarge, kFormat);
    EXPECT_EQ(first.constBits(), pixels[0]);
    EXPECT_EQ(second.constBits(), pixels[1]);
  }
}

TEST(PixelMemory, isNotSharedWithACopyThatIsChanged) {
  QImage image = reusedImage(kLarge, kFormat);
  image.fill(Qt::white);
  QImage copy = image;
  copy.setPixel(0, 0, qRgb(255, 0, 0));
  EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
  image = {};
  EXPECT_EQ(copy.pixel(1, 1), qRgb(255, 255, 255)) << "lost with the first picture";
}

TEST(PixelMemory, holdsEveryPixelOfAPicture) {
  QImage image = reusedImage({1200, 1000}, kFormat);
  for (int y = 0; y < image.height(); ++y)
    std::uninitialized_fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)), image.width(), qRgba(0, 0, 0, y % 256));
  for (int y = 0; y < image.height(); y += 37) {
    EXPECT_EQ(qAlpha(image.pixel(0, y)), y % 256);
    EXPECT_EQ(qAlpha(image.pixel(1199, y)), y % 256);
  }
}

TEST(PixelMemory, givesNoPictureOfNoSize) {
  EXPECT_TRUE(reusedImage({0, 100}, kFormat).isNull());
  EXPECT_TRUE(reusedImage({-5, 100}, kFormat).isNull());
  EXPECT_TRUE(reusedImage({-5000, -5000}, kFormat).isNull());
}

} // namespace
} // namespace xov
