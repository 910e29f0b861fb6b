#include "apps/resources/ElevationGrid.h"

#include "tests/apps/resources/NetcdfBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using namespace xov;
using namespace xov::maker;
using xov::test::NetcdfBytes;

namespace {

/// A source of the shape of ETOPO5, rows from the south; the value tells the row, and the column modulo 10.
NetcdfBytes source() {
  NetcdfBytes file;
  file.variable = "ROSE";
  for (int row = 0; row <= kEtopo5Rows; ++row)
    file.rows.push_back(-90 + row / 12.0);
  for (int column = 0; column < kEtopo5Columns; ++column)
    file.columns.push_back(column / 12.0);
  file.values.reserve(file.rows.size() * file.columns.size());
  for (int row = 0; row <= kEtopo5Rows; ++row) {
    for (int column = 0; column < kEtopo5Columns; ++column)
      file.values.push_back(float(10 * (row - 1080) + column % 10));
  }
  return file;
}

} // namespace

TEST(ElevationGrid, turnsTheSourceNorthUpAndLeavesTheSouthPoleOut) {
  const Result<ElevationGrid> grid = etopo5FromNetcdf(source().bytes());
  ASSERT_TRUE(grid) << qPrintable(grid.error());
  EXPECT_EQ(grid->rows, 2160);
  EXPECT_EQ(grid->columns, 4320);
  // The first row is the last of the source, 2160 from the south: 10 (2160 - 1080) = 10800; column 4319 adds 9.
  EXPECT_EQ(grid->at(0, 0), 10800);
  EXPECT_EQ(grid->at(0, 4319), 10809);
  // The last one is row 1 of the source, 10 (1 - 1080) = -10790; row 0, the pole, is nowhere.
  EXPECT_EQ(grid->at(2159, 3), -10787);
  EXPECT_EQ(machineOrderBytes(*grid).size(), 18662400);
}

TEST(ElevationGrid, refusesASourceOfAnotherShape) {
  NetcdfBytes file{{-90, 90}, {0, 180}, {1, 2, 3, 4}};
  file.variable = "ROSE";
  EXPECT_EQ(etopo5FromNetcdf(file.bytes()).error(), QStringLiteral("ROSE: 2 rows of 2 values, not 2161 of 4320"));
}

TEST(ElevationGrid, refusesValuesThatAreNoWholeMetres) {
  NetcdfBytes file = source();
  file.values[5 * 4320 + 7] = 0.5F;
  EXPECT_EQ(etopo5FromNetcdf(file.bytes()).error(),
            QStringLiteral("ROSE: row 5, column 7: 0.5 is no whole number of metres"));
  file.values[5 * 4320 + 7] = 40000;
  EXPECT_EQ(etopo5FromNetcdf(file.bytes()).error(),
            QStringLiteral("ROSE: row 5, column 7: 40000 is no whole number of metres"));
}

TEST(ElevationGrid, refusesRowsFromTheNorth) {
  NetcdfBytes file = source();
  std::reverse(file.rows.begin(), file.rows.end());
  EXPECT_EQ(etopo5FromNetcdf(file.bytes()).error(),
            QStringLiteral("ROSE: rows do not run from -90 to 90 or columns not from 0 to 360 degrees"));
}

TEST(ElevationGrid, aCoarseCellHasTheMeanOfTheSideThatMostOfItIsOn) {
  const ElevationGrid grid{2,
                           6,
                           {100, 200, -5, -7, 10, -3000, //
                            300, -900, -6, 40, -1000, -2000}};
  const ElevationGrid coarse = coarser(grid, 2);
  EXPECT_EQ(coarse.rows, 1);
  EXPECT_EQ(coarse.columns, 3);
  // (100 + 200 + 300) / 3; (-5 - 7 - 6) / 3; (-3000 - 1000 - 2000) / 3.
  EXPECT_EQ(coarse.metres, (std::vector<std::int16_t>{200, -6, -2000}));
}

TEST(ElevationGrid, aCellThatIsHalfLandIsLand) {
  // The mean of its two points of 1 m.
  EXPECT_EQ(coarser({2, 2, {1, -500, 1, -500}}, 2).metres, (std::vector<std::int16_t>{1}));
}

TEST(ElevationGrid, interpolatesBetweenPointsAndAroundTheGlobe) {
  // Rows at 90 and 0 degrees north, columns at 0, 90, 180 and 270 degrees east.
  const ElevationGrid grid{2, 4, {0, 100, 200, 300, 400, 500, 600, 700}};
  EXPECT_FLOAT_EQ(grid.interpolated(90, 90), 100);
  EXPECT_FLOAT_EQ(grid.interpolated(45, 90), 50);   // between 0 and 100
  EXPECT_FLOAT_EQ(grid.interpolated(-45, 90), 150); // between 300, at 270 degrees, and 0
  EXPECT_FLOAT_EQ(grid.interpolated(180, 45), 400); // between 200 and 600
  EXPECT_FLOAT_EQ(grid.interpolated(360, -90), 400);
}

TEST(ElevationGrid, writesNumbersInTheOrderOfTheMachine) {
  const QByteArray bytes = machineOrderBytes({1, 2, {-2, 258}});
  ASSERT_EQ(bytes.size(), 4);
  std::int16_t numbers[2];
  std::memcpy(numbers, bytes.constData(), sizeof numbers);
  EXPECT_EQ(numbers[0], -2);
  EXPECT_EQ(numbers[1], 258);
}
