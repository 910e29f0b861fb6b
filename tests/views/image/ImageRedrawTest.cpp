#include "XOV_Graphics/views/image/XOVImageView.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using testing::gridOf;
using testing::recorded;

const QRectF kFrame(0, 0, 500, 400);

class ImageRedraw : public ::testing::Test {
protected:
  ImageRedraw() : view(kFrame) {}
  void hand(std::vector<float> values, int rows, int cols) {
    view.setXLimitsMinMax(0, float(cols));
    view.setYLimitsMinMax(0, float(rows));
    view.setupImageDataNROWSNCOLS(gridOf(std::move(values)), rows, cols);
  }
  XOVImageView view;
};

TEST_F(ImageRedraw, isCellsForEverySurface) {
  view.setupImageDataNROWSNCOLS(gridOf({0, 1, 2, 3}), 2, 2);
  view.setPlacesCellsExactly(true);
  EXPECT_EQ(recorded(view).images().front().imageKind, ImageKind::Cells);
}

// Each change of what the picture shows is in the next drawing, though the view keeps its pixels between drawings.
TEST_F(ImageRedraw, redrawsWhatHasChanged) {
  view.setUseTopoValues(false);
  view.setShowAxes(false);
  hand({0, 1, 1, 0}, 2, 2);
  QImage before = view.pictureOfRect(view.bounds());
  EXPECT_EQ(view.pictureOfRect(view.bounds()), before);
  const auto changes = [&](const auto& change) {
    change();
    const QImage now = view.pictureOfRect(view.bounds());
    // As a view that has never drawn anything shows the same picture.
    XOVImageView fresh(kFrame);
    fresh.setShowAxes(false);
    fresh.setXLimitsMinMax(0, 2);
    fresh.setYLimitsMinMax(0, 2);
    fresh.setupImageDataNROWSNCOLS(view.imageFloats(), view.nr(), view.nc());
    fresh.setXLimitsMinMax(view.xmin(), view.xmax());
    fresh.setAnImage(view.anImage());
    fresh.setExportPixelRatio(view.exportPixelRatio());
    const bool isRight = now != before && now == fresh.pictureOfRect(fresh.bounds());
    before = now;
    return isRight;
  };
  EXPECT_TRUE(changes([&] { hand({1, 0, 0, 1}, 2, 2); }));
  EXPECT_TRUE(changes([&] {
    view.setPalette(3);
    view.updateImagePlanes();
  }));
  EXPECT_TRUE(changes([&] {
    view.setInverted(true);
    view.updateImagePlanes();
  }));
  EXPECT_TRUE(changes([&] { view.setXLimitsMinMax(0, 1); }));
  EXPECT_TRUE(changes([&] { view.setExportPixelRatio(2); }));
  QImage own(2, 2, QImage::Format_RGB32);
  own.fill(Qt::green);
  EXPECT_TRUE(changes([&] { view.setAnImage(own); }));
}

// A view that colours a grid in the memory of the last one leaves alone what a host has of that.
TEST_F(ImageRedraw, leavesBitmapsAndPicturesOfHostsAsTheyAre) {
  view.setUseTopoValues(false);
  hand({0, 1, 1, 0}, 2, 2);
  const QImage picture = view.anImage();
  const auto bitmap = view.iRep();
  hand({1, 0, 0, 1}, 2, 2);
  EXPECT_EQ(picture.pixel(0, 0), qRgb(255, 255, 255));
  EXPECT_EQ(bitmap->plane(0)[0], 255);
  EXPECT_EQ(view.anImage().pixel(0, 0), qRgb(0, 0, 0));
  EXPECT_EQ(view.iRep()->plane(0)[0], 0);
  hand({0, 0, 1, 1}, 2, 2); // the view's alone by now
  EXPECT_EQ(view.anImage().pixel(0, 0), qRgb(255, 255, 255));
  EXPECT_EQ(view.anImage().pixel(0, 1), qRgb(0, 0, 0));
  EXPECT_EQ(view.iRep()->plane(0)[0], 255);
  EXPECT_EQ(view.iRep()->plane(3)[3], 1);
  EXPECT_EQ(view.iPlanes()[0], view.iRep()->plane(0).data());
}

} // namespace
} // namespace xov
