#include "XOV_Graphics/platform/symbol/DiscCoverage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov {
namespace {

constexpr double kPi = std::numbers::pi;
// What the quick arcsine leaves of the exact area.
constexpr double kTolerance = 1e-6;

double sumOver(DiscCoverage& coverage, const QRect& cells) {
  double sum = 0;
  for (int row = cells.top(); row <= cells.bottom(); ++row) {
    for (int column = cells.left(); column <= cells.right(); ++column)
      sum += coverage.of(column, row);
  }
  return sum;
}

TEST(DiscCoverage, aSmallDiscInsideACellCoversItsOwnArea) {
  DiscCoverage coverage;
  coverage.reset({3.5, 7.5}, 0.25, {3, 7, 1, 1});
  EXPECT_NEAR(coverage.of(3, 7), kPi / 16, kTolerance);
}

TEST(DiscCoverage, aDiscAboutACornerCoversAQuarterOfItselfInEachCell) {
  DiscCoverage coverage;
  coverage.reset({5, 5}, 1, {4, 4, 2, 2});
  for (const QPoint cell : {QPoint(4, 4), QPoint(5, 4), QPoint(4, 5), QPoint(5, 5)}) {
    EXPECT_NEAR(coverage.of(cell.x(), cell.y()), kPi / 4, kTolerance);
  }
}

// The square about the centre of a disc of radius 1 that reaches from -1/2 to 1/2 lies inside it. The cell right of
// it is cut by the arc from (cos 30°, 1/2) to (cos 30°, -1/2): between x = 1/2 and the arc lie the sector of 60°,
// pi/6, less the triangle under it with corners at the centre, (√3/2, ±1/2), √3/4; plus the rectangle up to √3/2.
TEST(DiscCoverage, aCellCutByAnArcIsCoveredByRectangleAndSegment) {
  DiscCoverage coverage;
  coverage.reset({0.5, 0.5}, 1, {-1, -1, 4, 4});
  EXPECT_NEAR(coverage.of(0, 0), 1, kTolerance);
  const double root = std::sqrt(3.0);
  EXPECT_NEAR(coverage.of(1, 0), (root / 2 - 0.5) + (kPi / 6 - root / 4), kTolerance);
  EXPECT_NEAR(coverage.of(1, 0), coverage.of(0, -1), kTolerance);
}

TEST(DiscCoverage, theCellsOfADiscAddUpToItsArea) {
  for (const double radius : {0.3, 1.0, 5.5, 6.5, 13.0, 40.25}) {
    for (const QPointF center : {QPointF(50, 50), QPointF(50.37, 49.81), QPointF(50.5, 50.999)}) {
      DiscCoverage coverage;
      const QRect cells(0, 0, 100, 100);
      coverage.reset(center, radius, cells);
      EXPECT_NEAR(sumOver(coverage, cells), kPi * radius * radius, 1e-3) << radius;
    }
  }
}

TEST(DiscCoverage, cellsAwayFromTheDiscAreNotCovered) {
  DiscCoverage coverage;
  coverage.reset({10, 10}, 3, {0, 0, 20, 20});
  EXPECT_EQ(coverage.of(0, 0), 0);
  EXPECT_NEAR(coverage.of(13, 10), 0, kTolerance);
  EXPECT_EQ(coverage.of(19, 10), 0);
}

TEST(DiscCoverage, theNextDiscStartsAfresh) {
  DiscCoverage coverage;
  coverage.reset({10, 10}, 3, {0, 0, 20, 20});
  EXPECT_NEAR(coverage.of(10, 10), 1, kTolerance);
  coverage.reset({3, 3}, 3, {0, 0, 20, 20});
  EXPECT_NEAR(coverage.of(10, 10), 0, kTolerance);
  EXPECT_NEAR(coverage.of(3, 3), 1, kTolerance);
}

TEST(DiscCoverage, theEdgeOfAVeryLargeDiscIsAStraightLine) {
  for (const double radius : {1e3, 9e4, 2e5, 1e9}) {
    DiscCoverage coverage;
    coverage.reset({-radius + 10.25, 5.5}, radius, {9, 5, 3, 1});
    EXPECT_NEAR(coverage.of(9, 5), 1, 1e-3) << radius;
    EXPECT_NEAR(coverage.of(10, 5), 0.25, 1e-3) << radius;
    EXPECT_NEAR(coverage.of(11, 5), 0, 1e-3) << radius;
  }
}

TEST(DiscCoverage, aDiscWithoutRadiusCoversNothing) {
  DiscCoverage coverage;
  coverage.reset({0.5, 0.5}, 0, {0, 0, 1, 1});
  EXPECT_EQ(coverage.of(0, 0), 0);
}

} // namespace
} // namespace xov
