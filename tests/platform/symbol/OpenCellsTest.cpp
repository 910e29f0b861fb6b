#include "XOV_Graphics/platform/symbol/OpenCells.h"

#include <gtest/gtest.h>

#include <vector>

namespace xov {
namespace {

bool sameSpan(CellSpan a, int first, int last) { return a.first == first && a.last == last; }

// Half chords of a disc of radius 5: 4 at a distance of 3 from the centre, 3 at 4.
TEST(CellDisc, touchesAndCoversTheCellsBetweenItsChords) {
  const CellDisc disc{10, 10, 5};
  EXPECT_TRUE(sameSpan(disc.touchedRows(100), 5, 15));
  EXPECT_TRUE(sameSpan(disc.touchedColumns(100), 5, 15));
  EXPECT_TRUE(sameSpan(disc.touchedIn(13, 100), 6, 14)); // nearest edge 3 away
  EXPECT_TRUE(sameSpan(disc.coveredIn(13, 100), 7, 13)); // farthest edge 4 away
  EXPECT_TRUE(sameSpan(disc.touchedIn(10, 100), 5, 15));
  EXPECT_TRUE(disc.touchedIn(15, 100).isEmpty());
  EXPECT_TRUE(disc.coveredIn(14, 100).isEmpty());
}

TEST(CellDisc, spansAreHeldInsideTheGrid) {
  const CellDisc disc{0, 0, 1e30};
  EXPECT_TRUE(sameSpan(disc.touchedRows(7), 0, 7));
  EXPECT_TRUE(sameSpan(disc.touchedIn(3, 9), 0, 9));
  EXPECT_TRUE(sameSpan(disc.coveredIn(3, 9), 0, 9));
  EXPECT_TRUE((CellDisc{-50, 3, 2}.touchedColumns(9).isEmpty()));
}

TEST(OpenCells, allCellsStartOpen) {
  const OpenCells cells(130, 3);
  EXPECT_EQ(cells.openCount(), 390);
  EXPECT_TRUE(cells.anyOpen(0, {129, 130}));
  EXPECT_FALSE(cells.anyOpen(0, {5, 5}));
  EXPECT_EQ(cells.countOpen(0, {0, 130}), 130);
  EXPECT_EQ(cells.countOpen(0, {5, 5}), 0);
}

TEST(OpenCells, closedStretchesAreFoundAcrossWordBoundaries) {
  OpenCells cells(200, 1);
  cells.close(0, {60, 140});
  EXPECT_EQ(cells.openCount(), 120);
  EXPECT_FALSE(cells.anyOpen(0, {60, 140}));
  EXPECT_FALSE(cells.anyOpen(0, {64, 128}));
  EXPECT_TRUE(cells.anyOpen(0, {59, 140}));
  EXPECT_TRUE(cells.anyOpen(0, {60, 141}));
  EXPECT_EQ(cells.countOpen(0, {50, 150}), 20);
  EXPECT_EQ(cells.countOpen(0, {61, 139}), 0);
}

TEST(OpenCells, visitsEachOpenCellOfAStretchAndClosesThoseItIsToldTo) {
  OpenCells cells(100, 2);
  cells.close(1, {10, 20});
  std::vector<int> seen;
  cells.visitOpen(1, {8, 23}, [&](int column) {
    seen.push_back(column);
    return column == 21;
  });
  EXPECT_EQ(seen, (std::vector<int>{8, 9, 20, 21, 22}));
  EXPECT_FALSE(cells.anyOpen(1, {21, 22}));
  EXPECT_EQ(cells.openCount(), 200 - 11);
}

TEST(OpenCells, aDiscIsHiddenOnceEveryCellItTouchesIsClosed) {
  OpenCells cells(20, 20);
  const CellDisc disc{10, 10, 5};
  EXPECT_TRUE(cells.anyOpenUnder(disc));
  for (int row = 5; row < 15; ++row)
    cells.close(row, disc.touchedIn(row, 20));
  EXPECT_FALSE(cells.anyOpenUnder(disc));
  EXPECT_TRUE(cells.anyOpenUnder({10, 10, 5.1}));
}

} // namespace
} // namespace xov
