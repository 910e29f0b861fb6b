#include "XOV_Graphics/platform/pixels/ScaledImages.h"

#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using testing::DrawingView;
using testing::pixelAt;

const QRectF kSource(0, 0, 2, 1);
const QRectF kDevice(0, 0, 10, 5);
const QRect kVisible(0, 0, 100, 100);

QImage cells() {
  QImage image(2, 1, QImage::Format_RGB32);
  image.fill(Qt::red);
  return image;
}

qint64 keyOf(ScaledImages& kept, const QImage& image, const QRectF& source = kSource, const QRectF& device = kDevice,
             const QRect& visible = kVisible, CellEdges edges = CellEdges::Sharp) {
  return kept.scaled(image, source, device, visible, edges).image.cacheKey();
}

TEST(ScaledImages, anImageIsScaledOnceForItsPlace) {
  ScaledImages kept;
  const QImage image = cells();
  const qint64 first = keyOf(kept, image);
  EXPECT_EQ(keyOf(kept, image), first);
  EXPECT_EQ(keyOf(kept, QImage(image)), first);
  EXPECT_EQ(kept.scaled(image, kSource, kDevice, kVisible, CellEdges::Sharp).image,
            resampleImage(image, kSource, kDevice, kVisible, CellEdges::Sharp).image);
}

TEST(ScaledImages, anyOtherPlaceIsMadeAnew) {
  const QImage image = cells();
  const auto isAnew = [&image](const auto& other) {
    ScaledImages kept;
    const qint64 first = keyOf(kept, image);
    return other(kept) != first;
  };
  constexpr double kTiny = 1e-13; // QRectF takes such rectangles for equal
  EXPECT_TRUE(isAnew([&](auto& kept) { return keyOf(kept, image, {0, 0, 2 - kTiny, 1}); }));
  EXPECT_TRUE(isAnew([&](auto& kept) { return keyOf(kept, image, kSource, {kTiny, 0, 10, 5}); }));
  EXPECT_TRUE(isAnew([&](auto& kept) { return keyOf(kept, image, kSource, kDevice, {0, 0, 9, 100}); }));
  EXPECT_TRUE(isAnew([&](auto& kept) { return keyOf(kept, image, kSource, kDevice, kVisible, CellEdges::Shared); }));
}

TEST(ScaledImages, aChangedPixelShows) {
  ScaledImages kept;
  QImage image = cells();
  EXPECT_EQ(kept.scaled(image, kSource, kDevice, kVisible, CellEdges::Sharp).image.pixel(0, 0), qRgb(255, 0, 0));
  image.setPixel(0, 0, qRgb(0, 0, 255));
  EXPECT_EQ(kept.scaled(image, kSource, kDevice, kVisible, CellEdges::Sharp).image.pixel(0, 0), qRgb(0, 0, 255));
}

TEST(ScaledImages, theTwoThatWereAskedForLastAreKept) {
  ScaledImages kept;
  const QImage a = cells(), b = cells(), c = cells();
  const qint64 keyA = keyOf(kept, a);
  const qint64 keyB = keyOf(kept, b);
  EXPECT_EQ(keyOf(kept, a), keyA);
  keyOf(kept, c); // takes the place of b
  EXPECT_EQ(keyOf(kept, a), keyA);
  EXPECT_NE(keyOf(kept, b), keyB);
}

// Ten by five pixels of four bytes are 200.
TEST(ScaledImages, ofMoreThanTheMostBytesAreNotKept) {
  const QImage image = cells();
  ScaledImages large(200), small(199);
  EXPECT_EQ(keyOf(large, image), keyOf(large, image));
  EXPECT_NE(keyOf(small, image), keyOf(small, image));
}

TEST(ScaledImages, ofAViewAreMadeAnewWhenTheyAreForgotten) {
  // Pixels in memory of the test's own, whose changes no QImage knows of.
  std::vector<QRgb> memory(2, qRgb(255, 0, 0));
  const QImage image(reinterpret_cast<const uchar*>(memory.data()), 2, 1, QImage::Format_RGB32);
  struct Forgetful : DrawingView {
    using DrawingView::DrawingView;
    using View::forgetScaledImages;
  } view({0, 0, 10, 5}, [&image](const QRectF&) {
    GraphicsContext::current().drawImage(image, {0, 0, 10, 5}, {0, 0, 2, 1});
  });
  EXPECT_EQ(pixelAt(view.pictureOfRect(view.bounds()), 1, 1), qRgb(255, 0, 0));
  memory.assign(2, qRgb(0, 255, 0));
  view.forgetScaledImages();
  EXPECT_EQ(pixelAt(view.pictureOfRect(view.bounds()), 1, 1), qRgb(0, 255, 0));
}

} // namespace
} // namespace xov
