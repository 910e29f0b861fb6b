#include "XOV_Graphics/platform/pixels/LineClip.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

const QRectF kBounds(0, 0, 10, 10);

TEST(LineClip, aLineInsideStaysWhole) {
  const QPolygonF line({{1, 1}, {5, 9}, {9, 1}});
  EXPECT_EQ(clipPolyline(line, kBounds), std::vector<QPolygonF>{line});
}

TEST(LineClip, aLineThatLeavesAndReturnsIsTwoPieces) {
  // From (5, 5) up to (5, 15), across, and back down: cut at y = 10 both times.
  const auto pieces = clipPolyline(QPolygonF({{5, 5}, {5, 15}, {7, 15}, {7, 5}}), kBounds);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(pieces[0], QPolygonF({{5, 5}, {5, 10}}));
  EXPECT_EQ(pieces[1], QPolygonF({{7, 10}, {7, 5}}));
}

TEST(LineClip, aLineThroughIsCutAtBothEnds) {
  const auto pieces = clipPolyline(QPolygonF({{-10, 5}, {20, 5}}), kBounds);
  ASSERT_EQ(pieces.size(), 1u);
  EXPECT_EQ(pieces[0], QPolygonF({{0, 5}, {10, 5}}));
}

TEST(LineClip, whatMissesTheRectangleLeavesNothing) {
  EXPECT_TRUE(clipPolyline(QPolygonF({{-5, 5}, {5, 25}}), kBounds).empty());
  EXPECT_TRUE(clipPolyline(QPolygonF({{5, 5}}), kBounds).empty());
  EXPECT_TRUE(clipPolyline(QPolygonF(), kBounds).empty());
}

} // namespace
} // namespace xov
