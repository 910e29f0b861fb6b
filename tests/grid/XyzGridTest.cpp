#include "XOV_Graphics/grid/XyzGrid.h"

#include "tests/map/CommaLocale.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

Result<Grid> parse(const char* text) { return parseXyzGrid(text, QStringLiteral("in")); }
QString errorOf(const char* text) { return parse(text).error(); }

constexpr char kTwoByThree[] = "# xmin,xmax,dx = 0, 2 1\n"
                               "0 5 1\n1 5 2\n2 5 3\n"
                               "0 4 4\n1 4 5\n2 4 6\n";

void expectTwoByThree(const Result<Grid>& grid) {
  ASSERT_TRUE(grid) << qPrintable(grid.error());
  EXPECT_EQ(grid->rows, 2);
  EXPECT_EQ(grid->columns, 3);
  EXPECT_EQ(grid->values, (std::vector<float>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(grid->xmin, 0);
  EXPECT_EQ(grid->xmax, 2);
  EXPECT_EQ(grid->ymin, 4);
  EXPECT_EQ(grid->ymax, 5);
}

TEST(XyzGrid, isReadRowByRowFromTheTop) { expectTwoByThree(parse(kTwoByThree)); }

TEST(XyzGrid, mayHaveItsLinesInAnyOrder) {
  expectTwoByThree(parse("0 4 4\n0 5 1\n1 4 5\n1 5 2\n2 4 6\n2 5 3"));
  expectTwoByThree(parse("2 4 6\n1 5 2\n0 4 4\n2 5 3\n1 4 5\n0 5 1\n"));
}

TEST(XyzGrid, mayHaveAnySeparatorsAndLineEnds) {
  expectTwoByThree(
      parse("\xEF\xBB\xBF# heading\r\n\r\n0,5,1\r\n1;5;2;more\r\n2\t5\t3\r\n 0 , 4 , +4\r\n1 4 5 x\r\n2 4 6"));
}

TEST(XyzGrid, mayHaveValuesThatAreNoNumbers) {
  const auto grid = parse("0 0 nan\n1 0 inf\n2 0 1e300\n3 0 -1e300\n");
  ASSERT_TRUE(grid);
  EXPECT_TRUE(std::isnan(grid->values[0]));
  EXPECT_EQ(grid->values[1], HUGE_VALF);
  EXPECT_EQ(grid->values[2], HUGE_VALF);
  EXPECT_EQ(grid->values[3], -HUGE_VALF);
}

TEST(XyzGrid, mayHaveRoundedCoordinates) {
  const auto grid = parse("0 0 1\n0.33 0 2\n0.67 0 3\n1 0 4\n");
  ASSERT_TRUE(grid) << qPrintable(grid.error());
  EXPECT_EQ(grid->columns, 4);
}

TEST(XyzGrid, mayBeASingleCell) {
  const auto grid = parse("3 4 5");
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->rows, 1);
  EXPECT_EQ(grid->columns, 1);
  EXPECT_EQ(grid->xmin, 3);
  EXPECT_EQ(grid->xmax, 3);
}

TEST(XyzGrid, hasPointsInEveryLocale) {
  const test::CommaLocale locale;
  EXPECT_EQ(parse("0.5 1.5 2.5")->values[0], 2.5F);
}

TEST(XyzGrid, refusesLinesWithoutThreeNumbers) {
  const QString expected = QStringLiteral("in: line 2: expected three numbers, x, y and value");
  for (const char* text :
       {"0 0 1\n1 0\n", "0 0 1\n1 0 x\n", "0 0 1\n1 0 2x\n", "0 0 1\nnan 0 2\n", "0 0 1\n0 inf 2\n",
        "0 0 1\n0 0 1e999\n", "0 0 1\nx 0 2\n", "0 0 1\n1 y 2\n", "0 0 1\n1\n"})
    EXPECT_EQ(errorOf(text), expected) << text;
}

TEST(XyzGrid, refusesGridsWithHoles) {
  EXPECT_EQ(errorOf("0 0 1\n1 0 2\n0 1 3\n"),
            QStringLiteral("in: 3 lines, expected one for each of 2 values of x and 2 of y"));
  EXPECT_EQ(errorOf("0 0 1\n1 0 2\n0 1 3\n1 2 4\n"),
            QStringLiteral("in: 4 lines, expected one for each of 2 values of x and 3 of y"));
}

TEST(XyzGrid, refusesCellsThatAreThereTwice) {
  EXPECT_EQ(errorOf("0 0 1\n1 0 2\n0 1 3\n0 1 4\n"), QStringLiteral("in: more than one line for x 0, y 1"));
}

TEST(XyzGrid, refusesUnevenSpacing) {
  EXPECT_EQ(errorOf("0 0 1\n1 0 2\n5 0 3\n"), QStringLiteral("in: the values of x are not evenly spaced"));
  EXPECT_EQ(errorOf("0 0 1\n0 1 2\n0 5 3\n"), QStringLiteral("in: the values of y are not evenly spaced"));
  EXPECT_EQ(errorOf("-1.7e308 0 1\n1.7e308 0 2\n"), QStringLiteral("in: the values of x are not evenly spaced"));
}

TEST(XyzGrid, refusesFilesWithoutCells) {
  EXPECT_EQ(errorOf(""), QStringLiteral("in: holds no grid"));
  EXPECT_EQ(errorOf("# nothing\n\n"), QStringLiteral("in: holds no grid"));
}

TEST(XyzGrid, isReadFromAFile) {
  const test::TemporaryFiles files;
  expectTwoByThree(readXyzGrid(files.write("grid.txt", kTwoByThree)));
  const QString missing = files.path("missing.txt");
  EXPECT_EQ(readXyzGrid(missing).error(), missing + QStringLiteral(": cannot be opened: No such file or directory"));
  EXPECT_EQ(readXyzGrid(files.folder()).error(), files.folder() + QStringLiteral(": is a folder, expected a file"));
}

} // namespace
} // namespace xov
