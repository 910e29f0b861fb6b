#include "XOV_Graphics/platform/symbol/DiscBlock.h"

#include "XOV_Graphics/platform/symbol/DiscCoverage.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace xov {
namespace {

// How far from the centre the nearest or the farthest point of a cell is along one direction.
double nearest(double center, int cell) { return std::max(0.0, std::abs(cell + 0.5 - center) - 0.5); }
double farthest(double center, int cell) { return std::abs(cell + 0.5 - center) + 0.5; }

double expected(DiscCoverage& coverage, QPointF center, double radius, int column, int row) {
  const double squared = radius * radius;
  if (std::pow(farthest(center.x(), column), 2) + std::pow(farthest(center.y(), row), 2) <= squared) return 1;
  if (std::pow(nearest(center.x(), column), 2) + std::pow(nearest(center.y(), row), 2) >= squared) return 0;
  return coverage.of(column, row);
}

TEST(DiscBlock, holdsTheNumbersOfSingleCellsAtEveryVectorWidth) {
  testing::forEachVectorWidth([] {
    std::mt19937 random(2009);
    std::uniform_real_distribution<double> place(-3, 19);
    std::uniform_real_distribution<double> size(0, 8);
    DiscBlock block;
    DiscCoverage coverage;
    for (int disc = 0; disc < 300; ++disc) {
      const QRect cells(int(random() % 5) - 2, int(random() % 5) - 2, 1 + int(random() % DiscBlock::kMostCells),
                        1 + int(random() % DiscBlock::kMostCells));
      // Some on lines and middles of cells, where the pieces of the area meet.
      const bool isRound = disc % 4 == 0;
      const double radius = isRound ? std::round(2 * size(random)) / 2 : size(random);
      const QPointF center = isRound ? QPointF(std::round(2 * place(random)) / 2, std::round(2 * place(random)) / 2)
                                     : QPointF(place(random), place(random));
      block.cover(center, radius, cells);
      coverage.reset(center, radius, cells);
      for (int row = 0; row < cells.height(); ++row) {
        for (int column = 0; column < cells.width(); ++column)
          ASSERT_EQ(block.at(column, row), expected(coverage, center, radius, cells.x() + column, cells.y() + row))
              << radius << " about " << center.x() << " " << center.y();
      }
    }
  });
}

TEST(DiscBlock, ofADiscWithoutRadiusIsEmpty) {
  DiscBlock block;
  block.cover({1.5, 1.5}, 1, {0, 0, 3, 3});
  EXPECT_EQ(block.at(1, 1), 1);
  block.cover({1.5, 1.5}, 0, {0, 0, 3, 3});
  EXPECT_EQ(block.at(1, 1), 0);
}

TEST(DiscBlock, takesSixteenCellsASide) {
  EXPECT_TRUE(DiscBlock::fits({-3, 5, 16, 16}));
  EXPECT_FALSE(DiscBlock::fits({0, 0, 17, 1}));
  EXPECT_FALSE(DiscBlock::fits({0, 0, 1, 17}));
}

} // namespace
} // namespace xov
