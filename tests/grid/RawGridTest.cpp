#include "XOV_Graphics/grid/RawGrid.h"

#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

RawGridLayout layout(int rows, int columns, RawCell cell, ByteOrder order) { return {rows, columns, cell, order}; }

QByteArray bytes(std::initializer_list<unsigned> values) {
  QByteArray all;
  for (const unsigned value : values)
    all.append(char(value));
  return all;
}

// 258 = 0x0102, −2 = 0xfffe.
TEST(RawGrid, holdsIntegersOfEitherByteOrder) {
  const auto little = layout(1, 2, RawCell::Int16, ByteOrder::Little);
  const auto big = layout(1, 2, RawCell::Int16, ByteOrder::Big);
  const std::vector<float> expected = {258, -2};
  EXPECT_EQ(parseRawGrid(bytes({2, 1, 0xfe, 0xff}), little, QStringLiteral("in"))->values, expected);
  EXPECT_EQ(parseRawGrid(bytes({1, 2, 0xff, 0xfe}), big, QStringLiteral("in"))->values, expected);
}

// 1.5 is 0x3fc00000.
TEST(RawGrid, holdsFloatsOfEitherByteOrder) {
  const auto little = layout(1, 1, RawCell::Float32, ByteOrder::Little);
  const auto big = layout(1, 1, RawCell::Float32, ByteOrder::Big);
  EXPECT_EQ(parseRawGrid(bytes({0, 0, 0xc0, 0x3f}), little, QStringLiteral("in"))->values[0], 1.5F);
  EXPECT_EQ(parseRawGrid(bytes({0x3f, 0xc0, 0, 0}), big, QStringLiteral("in"))->values[0], 1.5F);
}

TEST(RawGrid, countsRowsAndColumnsForItsLimits) {
  const auto grid = parseRawGrid(bytes({1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0}),
                                 layout(3, 2, RawCell::Int16, ByteOrder::Little), QStringLiteral("in"));
  EXPECT_EQ(grid->rows, 3);
  EXPECT_EQ(grid->columns, 2);
  EXPECT_EQ(grid->values, (std::vector<float>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(grid->xmax, 1);
  EXPECT_EQ(grid->ymax, 2);
}

TEST(RawGrid, refusesFilesOfAnotherSizeBeforeTheyAreRead) {
  const test::TemporaryFiles files;
  const QString path = files.write("grid.i2", QByteArray(13, '\0'));
  EXPECT_EQ(readRawGrid(path, layout(2, 3, RawCell::Int16, ByteOrder::Little)).error(),
            path + QStringLiteral(": 13 bytes, expected 12 for 2 rows of 3 columns"));
  const int most = std::numeric_limits<int>::max();
  EXPECT_TRUE(readRawGrid(path, layout(most, most, RawCell::Int16, ByteOrder::Little))
                  .error()
                  .startsWith(path + QStringLiteral(": 13 bytes, expected 9223372028264841218 for")));
}

TEST(RawGrid, refusesCountsThatAreNotPositive) {
  EXPECT_EQ(parseRawGrid({}, layout(0, 3, RawCell::Int16, ByteOrder::Little), QStringLiteral("in")).error(),
            QStringLiteral("in: 0 rows of 3 columns: expected at least one"));
  EXPECT_EQ(parseRawGrid({}, layout(3, -1, RawCell::Int16, ByteOrder::Little), QStringLiteral("in")).error(),
            QStringLiteral("in: 3 rows of -1 columns: expected at least one"));
}

TEST(RawGrid, isReadFromAFile) {
  const test::TemporaryFiles files;
  const QString path = files.write("grid.i2", bytes({7, 0}));
  EXPECT_EQ(readRawGrid(path, layout(1, 1, RawCell::Int16, ByteOrder::Little))->values[0], 7);
  const QString missing = files.path("missing");
  EXPECT_EQ(readRawGrid(missing, layout(1, 1, RawCell::Int16, ByteOrder::Little)).error(),
            missing + QStringLiteral(": cannot be opened: No such file or directory"));
}

} // namespace
} // namespace xov
