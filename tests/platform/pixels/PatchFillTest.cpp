#include "XOV_Graphics/platform/pixels/PatchFill.h"

#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/RecordingContext.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

using namespace xov;

namespace {

constexpr int kSide = 24;

QImage filled(const Patches& patches, const QRect& clip = QRect(0, 0, kSide, kSide), const QTransform& matrix = {},
              QRgb paper = qRgb(255, 255, 255)) {
  QImage image(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
  image.fill(paper);
  fillPatches({image.bits(), image.bytesPerLine(), kSide, kSide}, patches, matrix, clip);
  return image;
}

Patches patch(const std::vector<std::vector<QPointF>>& contours, const QColor& color = Qt::black) {
  Patches patches;
  patches.begin(color);
  for (const std::vector<QPointF>& contour : contours)
    patches.addContour(contour);
  return patches;
}

int inkAt(const QImage& image, int x, int y) { return 255 - qRed(image.pixel(x, y)); }

// How often a contour goes around a point.
int winding(const std::vector<QPointF>& contour, QPointF at) {
  int turns = 0;
  for (std::size_t i = 0; i < contour.size(); ++i) {
    const QPointF a = contour[i];
    const QPointF b = contour[(i + 1) % contour.size()];
    const double side = (b.x() - a.x()) * (at.y() - a.y()) - (at.x() - a.x()) * (b.y() - a.y());
    if (a.y() <= at.y() && b.y() > at.y() && side > 0) ++turns;
    if (a.y() > at.y() && b.y() <= at.y() && side < 0) --turns;
  }
  return turns;
}

// The share of a pixel inside, by 12 × 12 samples of it.
double sampledCover(const std::vector<QPointF>& contour, int x, int y) {
  constexpr int kSamples = 12;
  int inside = 0;
  for (int i = 0; i < kSamples; ++i) {
    for (int j = 0; j < kSamples; ++j)
      inside += winding(contour, {x + (i + 0.5) / kSamples, y + (j + 0.5) / kSamples}) != 0 ? 1 : 0;
  }
  return double(inside) / (kSamples * kSamples);
}

std::vector<QPointF> polygonAbout(QPointF center, double radius, int corners, double start = 0) {
  std::vector<QPointF> points;
  for (int i = 0; i < corners; ++i) {
    const double angle = start + 2 * M_PI * i / corners;
    points.emplace_back(center.x() + radius * std::cos(angle), center.y() + radius * std::sin(angle));
  }
  return points;
}

} // namespace

// A rectangle from (2.5, 3.25) to (5, 6): half a pixel on its left, three quarters at its top.
TEST(PatchFill, coversEdgesByTheShareInside) {
  const QImage image = filled(patch({{{2.5, 3.25}, {5, 3.25}, {5, 6}, {2.5, 6}}}));
  EXPECT_EQ(inkAt(image, 3, 4), 255);
  EXPECT_EQ(inkAt(image, 2, 4), 127) << "paper of 127.5 is rounded up";
  EXPECT_EQ(inkAt(image, 3, 3), 191);
  EXPECT_EQ(inkAt(image, 2, 3), 96);
  EXPECT_EQ(inkAt(image, 5, 4), 0);
  EXPECT_EQ(inkAt(image, 1, 4), 0);
  EXPECT_EQ(inkAt(image, 3, 6), 0);
}

TEST(PatchFill, isThatOfManySamples) {
  std::mt19937 random(23);
  std::uniform_real_distribution<double> place(3, 20);
  for (int trial = 0; trial < 6; ++trial) {
    const std::vector<QPointF> contour =
        trial % 2 == 0 ? std::vector<QPointF>{{place(random), place(random)},
                                              {place(random), place(random)},
                                              {place(random), place(random)}}
                       : polygonAbout({place(random), place(random)}, 2.3, 5 + trial, place(random));
    const QImage image = filled(patch({contour}));
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x)
        EXPECT_NEAR(inkAt(image, x, y), 255 * sampledCover(contour, x, y), 12)
            << x << ' ' << y << ", trial " << trial;
    }
  }
}

TEST(PatchFill, leavesHolesWhereAContourTurnsTheOtherWay) {
  std::vector<QPointF> hole = polygonAbout({12, 12}, 4, 40);
  std::ranges::reverse(hole);
  const QImage ring = filled(patch({polygonAbout({12, 12}, 8, 40), hole}));
  EXPECT_EQ(inkAt(ring, 12, 12), 0);
  EXPECT_EQ(inkAt(ring, 12, 6), 255);
  const QImage twice = filled(patch({polygonAbout({12, 12}, 8, 40), polygonAbout({12, 12}, 4, 40)}));
  EXPECT_EQ(inkAt(twice, 12, 12), 255);
}

TEST(PatchFill, blendsLaterPatchesOverEarlierOnes) {
  Patches patches = patch({{{0, 0}, {8, 0}, {8, 8}, {0, 8}}}, QColor(255, 0, 0));
  patches.begin(QColor(0, 0, 255, 128));
  patches.addContour(std::vector<QPointF>{{0, 0}, {4, 0}, {4, 8}, {0, 8}});
  const QImage image = filled(patches, QRect(0, 0, kSide, kSide), {}, qRgba(0, 0, 0, 0));
  EXPECT_EQ(image.pixel(6, 4), qRgb(255, 0, 0));
  EXPECT_EQ(image.pixel(2, 4), qRgb(127, 0, 128));
  EXPECT_EQ(qAlpha(image.pixel(12, 4)), 0);
}

TEST(PatchFill, fillsRowsOfAnyNumberOfPixels) {
  for (int width = 1; width <= 9; ++width) {
    const QImage image = filled(patch({{{2, 1}, {2.0 + width, 1}, {2.0 + width, 3}, {2, 3}}}));
    for (int x = 0; x < kSide; ++x)
      EXPECT_EQ(inkAt(image, x, 2), x >= 2 && x < 2 + width ? 255 : 0) << x << " of a row of " << width;
  }
}

TEST(PatchFill, changesOnlyPixelsInsideTheClipAndThoseInTheSameWay) {
  const Patches ball = patch({polygonAbout({11.3, 12.8}, 9, 50)});
  const QImage all = filled(ball);
  const QRect clip(8, 2, 7, 15);
  const QImage some = filled(ball, clip);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x)
      EXPECT_EQ(some.pixel(x, y), clip.contains(x, y) ? all.pixel(x, y) : qRgb(255, 255, 255)) << x << ' ' << y;
  }
}

TEST(PatchFill, takesPatchesFarLargerThanThePicture) {
  const QImage image = filled(patch({{{-1e12, -1e12}, {1e12, -1e12}, {1e12, 10}, {-1e12, 10}}}));
  EXPECT_EQ(inkAt(image, 0, 0), 255);
  EXPECT_EQ(inkAt(image, kSide - 1, 9), 255);
  EXPECT_EQ(inkAt(image, 5, 10), 0);
  const QImage beside = filled(patch({{{1, 0}, {1e301, 0}, {1e300, 9}}}));
  EXPECT_EQ(inkAt(beside, kSide - 1, 5), 0) << "beyond reckoning";
}

// Left of a line at x = y + 12 that crosses the picture from far beyond it; upwards and downwards.
TEST(PatchFill, cutsSlantedEdgesOfLargePatchesWhereTheyCrossThePicture) {
  std::vector<QPointF> contour{{-1000, -1000}, {-988, -1000}, {1012, 1000}, {-1000, 1000}};
  for (int turn = 0; turn < 2; ++turn, std::ranges::reverse(contour)) {
    const QImage image = filled(patch({contour}));
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x)
        EXPECT_NEAR(inkAt(image, x, y), x < y + 12 ? 255 : x == y + 12 ? 127.5 : 0, 1) << x << ' ' << y;
    }
  }
}

TEST(PatchFill, goesThroughTheTransform) {
  QTransform upright;
  upright.translate(0, kSide);
  upright.scale(2, -2);
  const QImage image = filled(patch({{{1, 1}, {3, 1}, {3, 2}, {1, 2}}}), QRect(0, 0, kSide, kSide), upright);
  EXPECT_EQ(inkAt(image, 2, kSide - 3), 255);
  EXPECT_EQ(inkAt(image, 5, kSide - 4), 255);
  EXPECT_EQ(inkAt(image, 2, kSide - 5), 0);
  EXPECT_EQ(inkAt(image, 2, kSide - 2), 0);
}

TEST(Patches, leaveOutContoursWithoutAnAreaOrANumber) {
  Patches patches;
  patches.addContour(std::vector<QPointF>{{0, 0}, {1, 0}, {0, 1}});
  EXPECT_TRUE(patches.isEmpty()) << "no patch has begun";
  patches.begin(Qt::red);
  patches.addContour(std::vector<QPointF>{{0, 0}, {1, 0}});
  patches.addContour(std::vector<QPointF>{{0, 0}, {1, std::nan("")}, {0, 1}});
  EXPECT_EQ(patches.contourCount(0), 0U);
  patches.addContour(std::vector<QPointF>{{0, 0}, {1, 0}, {0, 1}});
  patches.begin(Qt::blue);
  patches.addContour(std::vector<QPointF>{{5, 0}, {6, 0}, {5, 1}, {4, 4}});
  ASSERT_EQ(patches.contourCount(0), 1U);
  ASSERT_EQ(patches.contourCount(1), 1U);
  EXPECT_EQ(patches.contour(1, 0).size(), 4U);
  EXPECT_EQ(patches.contour(1, 0)[0], QPointF(5, 0));
}

TEST(Patches, areFillsOfPathsWhereThereIsNoFasterWay) {
  Patches patches = patch({{{0, 0}, {8, 0}, {8, 8}}}, Qt::red);
  patches.begin(Qt::blue);
  patches.addContour(std::vector<QPointF>{{0, 0}, {4, 0}, {4, 8}});
  RecordingContext recording;
  recording.fillPatches(patches);
  const auto fills = recording.fills();
  ASSERT_EQ(fills.size(), 2U);
  EXPECT_EQ(fills[0].color, QColor(Qt::red));
  EXPECT_EQ(fills[1].color, QColor(Qt::blue));
  EXPECT_EQ(fills[1].path.shape().boundingRect(), QRectF(0, 0, 4, 8));
}
