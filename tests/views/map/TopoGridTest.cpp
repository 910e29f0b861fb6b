#include "XOV_Graphics/views/map/TopoGrid.h"

#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

namespace xov {
namespace {

// Writes cells as the machine holds them.
QByteArray bytesOf(const std::vector<std::int16_t>& cells) {
  return {reinterpret_cast<const char*>(cells.data()), qsizetype(cells.size() * sizeof(std::int16_t))};
}

class TopoGridFile : public ::testing::Test {
protected:
  // A grid whose cell in row r and column k holds 100 r + k.
  QString writeGrid(int rows, int columns) const {
    std::vector<std::int16_t> cells;
    for (int r = 0; r < rows; ++r) {
      for (int k = 0; k < columns; ++k)
        cells.push_back(std::int16_t(100 * r + k));
    }
    return files.write("grid.i2", bytesOf(cells));
  }

  QString refusal(const QString& path, const TopoFileSize& size, int factor) {
    return readTopoGrid(path, size, factor).error();
  }

  test::TemporaryFiles files;
};

TEST_F(TopoGridFile, isReadRowByRow) {
  const auto grid = readTopoGrid(writeGrid(2, 3), {2, 3}, 1);
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->rows, 2);
  EXPECT_EQ(grid->columns, 3);
  EXPECT_EQ(grid->values, (std::vector<float>{0, 1, 2, 100, 101, 102}));
}

TEST_F(TopoGridFile, keepsSignsAndTheWholeRange) {
  const QString path = files.write("grid.i2", bytesOf({-32768, 32767, -1, 0}));
  EXPECT_EQ(readTopoGrid(path, {1, 4}, 1)->values, (std::vector<float>{-32768, 32767, -1, 0}));
}

TEST_F(TopoGridFile, givesEveryDthRowAndColumnOfWholeSteps) {
  // 5 rows and 7 columns by 2: rows 0 and 2, columns 0, 2 and 4.
  const auto grid = readTopoGrid(writeGrid(5, 7), {5, 7}, 2);
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->rows, 2);
  EXPECT_EQ(grid->columns, 3);
  EXPECT_EQ(grid->values, (std::vector<float>{0, 2, 4, 200, 202, 204}));
}

TEST_F(TopoGridFile, reducedByItsOwnHeightIsOneRow) {
  const auto grid = readTopoGrid(writeGrid(3, 8), {3, 8}, 3);
  ASSERT_TRUE(grid);
  EXPECT_EQ(grid->values, (std::vector<float>{0, 3}));
}

TEST_F(TopoGridFile, agreesWithPlainIndexingOverRandomSizesAndFactors) {
  std::mt19937 random(74);
  const auto between = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
  for (int i = 0; i < 200; ++i) {
    const int rows = between(1, 30);
    const int columns = between(1, 40);
    const int factor = between(1, std::min(rows, columns));
    std::vector<std::int16_t> cells(std::size_t(rows * columns));
    for (std::int16_t& cell : cells)
      cell = std::int16_t(between(-11000, 9000));
    const auto grid = readTopoGrid(files.write("random.i2", bytesOf(cells)), {rows, columns}, factor);
    ASSERT_TRUE(grid) << grid.error().toStdString();
    ASSERT_EQ(grid->rows, rows / factor);
    ASSERT_EQ(grid->columns, columns / factor);
    for (int r = 0; r < grid->rows; ++r) {
      for (int k = 0; k < grid->columns; ++k)
        ASSERT_EQ(grid->values[std::size_t(r * grid->columns + k)],
                  float(cells[std::size_t(factor * r * columns + factor * k)]));
    }
  }
}

TEST_F(TopoGridFile, ofAnotherSizeIsRefusedWithBothSizes) {
  const QString path = writeGrid(2, 3);
  EXPECT_EQ(refusal(path, {2, 4}, 1), path + QStringLiteral(": found 12 bytes, expected 16"));
  EXPECT_EQ(refusal(path, {1, 3}, 1), path + QStringLiteral(": found 12 bytes, expected 6"));
  const QString empty = files.write("empty.i2", {});
  EXPECT_EQ(refusal(empty, {2160, 4320}, 1), empty + QStringLiteral(": found 0 bytes, expected 18662400"));
}

TEST_F(TopoGridFile, isRefusedForAFactorThatLeavesNothing) {
  const QString path = writeGrid(3, 8);
  EXPECT_EQ(refusal(path, {3, 8}, 0), path + QStringLiteral(": found a reduction by 0, expected 1 to 3"));
  EXPECT_EQ(refusal(path, {3, 8}, -2), path + QStringLiteral(": found a reduction by -2, expected 1 to 3"));
  EXPECT_EQ(refusal(path, {3, 8}, 4), path + QStringLiteral(": found a reduction by 4, expected 1 to 3"));
}

TEST_F(TopoGridFile, isRefusedForASizeWithoutCells) {
  const QString path = writeGrid(3, 8);
  EXPECT_EQ(refusal(path, {0, 8}, 1), path + QStringLiteral(": found 0 by 8 cells, expected at least 1 by 1"));
  EXPECT_EQ(refusal(path, {-3, -8}, 1), path + QStringLiteral(": found -3 by -8 cells, expected at least 1 by 1"));
}

TEST_F(TopoGridFile, allocatesNothingForASizeThatTheFileHasNot) {
  const int most = std::numeric_limits<int>::max();
  const QString path = writeGrid(2, 3);
  EXPECT_EQ(refusal(path, {most, most}, 1), path + QStringLiteral(": found 12 bytes, expected 9223372028264841218"));
}

TEST_F(TopoGridFile, thatIsNoFileIsRefused) {
  const QString missing = files.path("missing.i2");
  EXPECT_EQ(refusal(missing, {2, 3}, 1), missing + QStringLiteral(": cannot be opened: No such file or directory"));
  EXPECT_EQ(refusal(files.folder(), {2, 3}, 1), files.folder() + QStringLiteral(": is a folder, expected a file"));
}

} // namespace
} // namespace xov
