#include "XOV_Graphics/views/image/ImagePlacement.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

// 12 × 6 cells of 1 × 1 over x 0 … 12, y 0 … 6.
const ImageExtent kExtent{0, 12, 0, 6, 1, 1};

QRectF select(const PlotLimits& limits, const ImageExtent& extent = kExtent) {
  return selectedCells(limits, extent, 6, 12);
}

TEST(SelectedCells, areAllForLimitsEqualToTheExtent) { EXPECT_EQ(select({0, 12, 0, 6}), QRectF(0, 0, 12, 6)); }

TEST(SelectedCells, areWholeCellsFromTheLowerLeftCorner) {
  // From 2.9 on: cell 2; 4.2 wide: 4 cells. From 1.5 on: cell 1; 2.5 high: 2 cells.
  EXPECT_EQ(select({2.9F, 7.1F, 1.5F, 4}), QRectF(2, 1, 4, 2));
}

// A cell size that is a little too large: at equal limits X counts 12 / 1.1 = 10 cells, Y takes all of them.
TEST(SelectedCells, atEqualUpperLimitsAreCountedAlongXAndAllAlongY) {
  EXPECT_EQ(select({0, 12, 0, 6}, {0, 12, 0, 6, 1.1F, 1.1F}), QRectF(0, 0, 10, 6));
}

TEST(SelectedCells, keepTheWholeCountWhereLimitsReachBeyondThePicture) {
  EXPECT_EQ(select({3, 20, 2, 9}), QRectF(3, 2, 12, 6));
}

TEST(SelectedCells, startAtThePictureWhereLimitsStartBefore) {
  EXPECT_EQ(select({-4, 8, -1, 5}), QRectF(0, 0, 12, 6));
}

TEST(SelectedCells, areAllInADirectionWithoutACellSize) {
  EXPECT_EQ(select({3, 5, 2, 4}, {0, 12, 0, 6, 0, 1}), QRectF(0, 2, 12, 2));
  EXPECT_EQ(select({3, 5, 2, 4}, {0, 12, 0, 6, 1, 0}), QRectF(3, 0, 2, 6));
  EXPECT_EQ(select({3, 5, 2, 4}, {0, 12, 0, 6, -0.4F, 1}), QRectF(0, 2, 12, 2));
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(select({3, 5, 2, 4}, {0, 12, 0, 6, nan, nan}), QRectF(0, 0, 12, 6));
}

TEST(SelectedCells, ofAbsurdLimitsAreFewOrMany) {
  const float huge = 3e38F;
  const QRectF cells = select({-huge, 5, -huge, 5});
  EXPECT_EQ(cells.width(), double(std::numeric_limits<int>::max()));
  EXPECT_TRUE(select({5, 3, 0, 6}).isEmpty());
}

const QRectF kFrame(100, 50, 240, 120);
const QRectF kHeld(0, 0, 12, 6);

TEST(ExactCells, reachToTheFractionOfACellFromTheLowerLeftCorner) {
  EXPECT_EQ(exactCells({1.25F, 4.5F, 2.75F, 6}, kExtent, 6, 12), QRectF(1.25, 2.75, 3.25, 3.25));
  // Two cells a unit along x, and one in two units along y.
  EXPECT_EQ(exactCells({1.25F, 4.5F, 2.5F, 5}, {0, 12, 0, 6, 9, 9}, 3, 24), QRectF(2.5, 1.25, 6.5, 1.25));
}

TEST(ExactCells, followTheExtentWhateverTheCellSizeIs) {
  EXPECT_EQ(exactCells({3, 6, 0, 6}, {0, 12, 0, 6, -9.4F, 1}, 6, 12), QRectF(3, 0, 3, 6));
}

TEST(ExactCells, mayReachBeyondThePicture) {
  EXPECT_EQ(exactCells({-1.5F, 13, -2, 8}, kExtent, 6, 12), QRectF(-1.5, -2, 14.5, 10));
}

TEST(ExactCells, areNoneWhereNothingIsSpanned) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr float kMost = std::numeric_limits<float>::max();
  EXPECT_TRUE(exactCells({3, 3, 0, 6}, kExtent, 6, 12).isEmpty());
  EXPECT_TRUE(exactCells({3, 1, 0, 6}, kExtent, 6, 12).isEmpty());
  EXPECT_TRUE(exactCells({0, 1, 0, kNan}, kExtent, 6, 12).isEmpty());
  EXPECT_TRUE(exactCells({0, 1, 0, 1}, {5, 5, 0, 6, 1, 1}, 6, 12).isEmpty());
  EXPECT_TRUE(exactCells({0, 1, 0, 1}, {kNan, 5, 0, 6, 1, 1}, 6, 12).isEmpty());
  EXPECT_TRUE(exactCells({0, 1, 0, 1}, kExtent, 0, 0).isEmpty());
  // Reckoned in double precision, the widest limits are a number of cells.
  EXPECT_FALSE(exactCells({-kMost, kMost, 0, 1}, kExtent, 6, 12).isEmpty());
}

TEST(ImagePlacement, spreadsThePictureOverTheFrame) {
  const auto place = placeImage(kHeld, kHeld, {12, 6}, kFrame);
  ASSERT_TRUE(place);
  EXPECT_EQ(place->source, QRectF(0, 0, 12, 6));
  EXPECT_EQ(place->target, kFrame);
}

// Cells are counted from below, pixels from above: rows 1 and 2 of 6 are the pixels from 6 − 1 − 2 = 3 on.
TEST(ImagePlacement, countsPixelsFromTheTop) {
  const auto place = placeImage({2, 1, 4, 2}, kHeld, {12, 6}, kFrame);
  ASSERT_TRUE(place);
  EXPECT_EQ(place->source, QRectF(2, 3, 4, 2));
  EXPECT_EQ(place->target, kFrame);
}

// Cells 3 … 14 of 12: nine of twelve are there, so three quarters of the frame.
TEST(ImagePlacement, cutsTheTargetInProportion) {
  const auto place = placeImage({3, 2, 12, 6}, kHeld, {12, 6}, kFrame);
  ASSERT_TRUE(place);
  EXPECT_EQ(place->source, QRectF(3, 0, 9, 4));
  EXPECT_EQ(place->target, QRectF(100, 50, 180, 80));
}

// The same cells in half as many and in twice as many pixels.
TEST(ImagePlacement, scalesCellsToThePixelsThatThereAre) {
  const auto small = placeImage({2, 1, 4, 2}, kHeld, {6, 3}, kFrame);
  const auto large = placeImage({2, 1, 4, 2}, kHeld, {24, 12}, kFrame);
  ASSERT_TRUE(small && large);
  EXPECT_EQ(small->source, QRectF(1, 1.5, 2, 1));
  EXPECT_EQ(large->source, QRectF(4, 6, 8, 4));
  EXPECT_EQ(small->target, kFrame);
}

// Of six rows the picture has the upper four: the lower third of the frame stays empty.
TEST(ImagePlacement, leavesRowsThatThePictureLacksEmpty) {
  const auto place = placeImage(kHeld, {0, 2, 12, 4}, {12, 4}, kFrame);
  ASSERT_TRUE(place);
  EXPECT_EQ(place->source, QRectF(0, 0, 12, 4));
  EXPECT_EQ(place->target, QRectF(100, 90, 240, 80));
}

TEST(ImagePlacement, isNothingWhereNothingShows) {
  EXPECT_FALSE(placeImage({20, 0, 4, 4}, kHeld, {12, 6}, kFrame));
  EXPECT_FALSE(placeImage({0, 0, 0, 4}, kHeld, {12, 6}, kFrame));
  EXPECT_FALSE(placeImage({0, 0, -3, 4}, kHeld, {12, 6}, kFrame));
  EXPECT_FALSE(placeImage(kHeld, kHeld, {}, kFrame));
  EXPECT_FALSE(placeImage(kHeld, kHeld, {12, 6}, {100, 50, -10, 5}));
}

} // namespace
} // namespace xov
