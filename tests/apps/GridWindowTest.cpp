#include "apps/xov/map/GridWindow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace xov::cli {
namespace {

// A grid whose cell in row r and column k holds 100 r + k.
std::vector<float> numbered(int rows, int columns) {
  std::vector<float> values;
  for (int r = 0; r < rows; ++r) {
    for (int k = 0; k < columns; ++k)
      values.push_back(float(100 * r + k));
  }
  return values;
}

constexpr PlotLimits kGlobe = {0, 360, -90, 90};

TEST(GridWindow, isTheWholeGridForItsOwnLimits) {
  const std::vector<float> grid = numbered(2, 4);
  const GridWindow window = cutGrid(grid, 2, 4, kGlobe, kGlobe);
  EXPECT_EQ(window.values, grid);
  EXPECT_EQ(window.extent.rect(), QRectF(0, -90, 360, 180));
}

TEST(GridWindow, holdsTheCellsThatTheLimitsReachInto) {
  // Cells of 10 by 10 degrees from 100 to 150 E and from 50 down to 20 N.
  const GridWindow window = cutGrid(numbered(3, 5), 3, 5, {100, 150, 20, 50}, {115, 125, 32, 38});
  EXPECT_EQ(window.rows, 1);
  EXPECT_EQ(window.columns, 2);
  EXPECT_EQ(window.values, (std::vector<float>{101, 102}));
  EXPECT_EQ(window.extent.rect(), QRectF(110, 30, 20, 10));
}

TEST(GridWindow, goesOnAroundTheGlobe) {
  // Cells of 90 degrees: from -90 to 90 there are columns 3 and 0, from 270 to 450 the same.
  const std::vector<float> grid = numbered(1, 4);
  EXPECT_EQ(cutGrid(grid, 1, 4, kGlobe, {-90, 90, -90, 90}).values, (std::vector<float>{3, 0}));
  EXPECT_EQ(cutGrid(grid, 1, 4, kGlobe, {-90, 90, -90, 90}).extent.rect(), QRectF(-90, -90, 180, 180));
  EXPECT_EQ(cutGrid(grid, 1, 4, kGlobe, {270, 450, -90, 90}).values, (std::vector<float>{3, 0}));
  EXPECT_EQ(cutGrid(grid, 1, 4, kGlobe, {-180, 360, -90, 90}).values, (std::vector<float>{2, 3, 0, 1, 2, 3}));
}

TEST(GridWindow, ofARegionalGridEndsWhereThatEnds) {
  const GridWindow window = cutGrid(numbered(2, 2), 2, 2, {0, 20, 0, 20}, {-5, 50, -40, 5});
  EXPECT_EQ(window.values, (std::vector<float>{100, 101}));
  EXPECT_EQ(window.extent.rect(), QRectF(0, 0, 20, 10));
}

TEST(GridWindow, isEmptyBesideTheGrid) {
  EXPECT_EQ(cutGrid(numbered(2, 2), 2, 2, {0, 20, 0, 20}, {30, 40, 0, 20}).rows, 0);
  EXPECT_EQ(cutGrid(numbered(2, 2), 2, 2, {0, 20, 0, 20}, {0, 20, 30, 40}).rows, 0);
  EXPECT_EQ(cutGrid({}, 2, 2, kGlobe, kGlobe).rows, 0);
  EXPECT_EQ(cutGrid({}, 0, 0, kGlobe, kGlobe).rows, 0);
}

// Another way to the same: every cell of the window names the cell of the grid under its middle.
TEST(GridWindow, agreesWithTheCellUnderEachMiddleOverRandomRegions) {
  std::mt19937 random(82);
  std::uniform_real_distribution<double> share(0, 1);
  const int rows = 36;
  const int columns = 72;
  const std::vector<float> grid = numbered(rows, columns);
  for (int i = 0; i < 300; ++i) {
    const double west = -180 + 400 * share(random);
    const double south = -90 + 150 * share(random);
    const PlotLimits limits = {float(west), float(west + 1 + 300 * share(random)), float(south),
                               float(south + 1 + (89 - south) * share(random))};
    const GridWindow window = cutGrid(grid, rows, columns, kGlobe, limits);
    ASSERT_EQ(window.values.size(), std::size_t(window.rows * window.columns));
    ASSERT_LE(window.extent.xmin, limits.xmin);
    ASSERT_GE(window.extent.xmax, limits.xmax);
    ASSERT_LE(window.extent.ymin, limits.ymin);
    ASSERT_GE(window.extent.ymax, limits.ymax);
    for (int r = 0; r < window.rows; ++r) {
      for (int k = 0; k < window.columns; ++k) {
        const double lon = double(window.extent.xmin) + (k + 0.5) * 5;
        const double lat = double(window.extent.ymax) - (r + 0.5) * 5;
        const int column = int(std::floor(lon - 360 * std::floor(lon / 360))) / 5;
        const int row = int(std::floor(90 - lat)) / 5;
        ASSERT_EQ(window.values[std::size_t(r * window.columns + k)], float(100 * row + column));
      }
    }
  }
}

} // namespace
} // namespace xov::cli
