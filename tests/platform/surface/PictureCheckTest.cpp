#include "XOV_Graphics/platform/surface/PictureCheck.h"

#include "XOV_Graphics/platform/ImageFile.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace xov {
namespace {

struct CheckedFormat {
  ImageFormat format;
  const char* name;
};

constexpr CheckedFormat kCheckedFormats[] = {{ImageFormat::Png, "png"},
                                             {ImageFormat::Jpeg, "jpeg"},
                                             {ImageFormat::Tiff, "tiff"},
                                             {ImageFormat::TiffLzw, "lzw"}};

QImage checkedImage() {
  QImage image(61, 43, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, y, qRgb(x * y % 256, 4 * x, 5 * y));
  }
  return image;
}

TEST(PictureCheck, findsWholePicturesWhole) {
  for (const auto& [format, name] : kCheckedFormats)
    EXPECT_TRUE(isWholePicture(encodeImage(checkedImage(), format), {61, 43})) << name;
  QByteArray texts;
  QBuffer buffer(&texts);
  QImage withText = checkedImage();
  withText.setText(QStringLiteral("Title"), QStringLiteral("A plot"));
  ASSERT_TRUE(withText.save(&buffer, "PNG")); // Qt's writer, with chunks of its own
  EXPECT_TRUE(isWholePicture(texts, {61, 43}));
}

TEST(PictureCheck, findsOneThatBreaksOffAnywhere) {
  for (const auto& [format, name] : kCheckedFormats) {
    const QByteArray file = encodeImage(checkedImage(), format);
    ASSERT_GT(file.size(), 100);
    for (qsizetype size = 0; size < file.size(); ++size)
      EXPECT_FALSE(isWholePicture(file.first(size), {61, 43})) << name << size << " of " << file.size();
  }
}

TEST(PictureCheck, findsOneOfAnotherSize) {
  for (const auto& [format, name] : kCheckedFormats) {
    const QByteArray file = encodeImage(checkedImage(), format);
    EXPECT_FALSE(isWholePicture(file, {61, 44})) << name;
    EXPECT_FALSE(isWholePicture(file, {60, 43})) << name;
  }
}

TEST(PictureCheck, findsAPngOfADamagedByte) {
  const QByteArray file = encodeImage(checkedImage(), ImageFormat::Png);
  for (qsizetype at = 0; at < file.size(); ++at) {
    QByteArray damaged = file;
    damaged[at] = char(damaged[at] ^ 0x40);
    EXPECT_FALSE(isWholePicture(damaged, {61, 43})) << at;
  }
}

TEST(PictureCheck, bearsAnyBytes) {
  for (const char* begin : {"\x89PNG\r\n\x1a\n", "\xff\xd8", "II*", "MM"}) {
    for (int size = 0; size < 64; ++size) {
      for (const char fill : {'\0', '\x7f', '\xff'})
        EXPECT_FALSE(isWholePicture(begin + QByteArray(size, fill), {61, 43})) << begin << size;
    }
  }
}

} // namespace
} // namespace xov
