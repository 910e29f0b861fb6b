#include "apps/xov/commands/PanelsCommand.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

TEST(PanelTimes, areTheHeadersWhereAllRecordsBeginTogether) {
  const PanelTimes times = panelTimes({makeRecord({.begin = 30}), makeRecord({.begin = 30.4F, .count = 21})});
  EXPECT_EQ(times.min, 30) << "within half a sample";
  EXPECT_EQ(times.max, 50) << "20 intervals on";
  EXPECT_TRUE(times.begins);
}

TEST(PanelTimes, countFrom0WhereRecordsBeginApart) {
  const PanelTimes times = panelTimes({makeRecord({.begin = 30}), makeRecord({.begin = 31})});
  EXPECT_EQ(times.min, 0);
  EXPECT_EQ(times.max, 9);
  EXPECT_FALSE(times.begins);
}

TEST(PanelTimes, haveAWidthWithoutOne) {
  const PanelTimes times = panelTimes({makeRecord({.begin = 30, .count = 1})});
  EXPECT_EQ(times.min, 30);
  EXPECT_EQ(times.max, 31);
}

TEST(SizeOfPanels, growsByRowsAndColumns) {
  // A column is 144 and 12 points wide; a row 72 and 12 high, under a header of 52 and over an axis of 56.
  EXPECT_EQ(sizeOfPanels(1), QSizeF(640, 192));
  EXPECT_EQ(sizeOfPanels(4), QSizeF(640, 192)) << "4 columns take 636 points, the header more";
  EXPECT_EQ(sizeOfPanels(5), QSizeF(640, 276)) << "2 rows";
  EXPECT_EQ(sizeOfPanels(12), QSizeF(640, 360));
  EXPECT_EQ(sizeOfPanels(36), QSizeF(12 + 6 * 156, 612)) << "6 rows are the most";
  EXPECT_LE(sizeOfPanels(1000000).width(), Output::kLargestSize);
}

} // namespace
} // namespace xov::cli
