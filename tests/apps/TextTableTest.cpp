#include "apps/xov/terminal/TextTable.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

TEST(TextTable, alignsCellsUnderTheirHeadings) {
  TextTable table;
  table.addColumn("sta");
  table.addColumn("npts", TextTable::Align::Right);
  table.addColumn("file");
  table.addRow({"TLY", "12684", "a"});
  table.addRow({"BRP10", "7", "b c"});
  EXPECT_EQ(table.text(), "sta     npts  file\n"
                          "TLY    12684  a\n"
                          "BRP10      7  b c\n");
}

TEST(TextTable, fillsEmptyAndMissingCells) {
  TextTable table;
  table.addColumn("a");
  table.addColumn("b");
  table.addColumn("c");
  table.addRow({"", "2"});
  EXPECT_EQ(table.text(), "a  b  c\n-  2  -\n");
}

TEST(TextTable, leavesNoBlanksAtTheEndOfALine) {
  TextTable table;
  table.addColumn("a");
  table.addColumn("long heading");
  table.addRow({"1", "2"});
  EXPECT_EQ(table.text(), "a  long heading\n1  2\n");
}

TEST(TextTable, keepsACellWithControlCharactersOnItsLine) {
  TextTable table;
  table.addColumn("file");
  table.addRow({"a\nb\x1b[31m"});
  EXPECT_EQ(table.text(), "file\na?b?[31m\n");
}

TEST(TextTable, keepsTheDirectionOfItsText) {
  TextTable table;
  table.addColumn("file");
  // An override and an isolate, which would turn what follows round; letters of a script that runs so stay.
  table.addRow({QString("a") + QChar(0x202E) + "b" + QChar(0x2067) + QChar(0x05D0)});
  EXPECT_EQ(table.text(), QString("file\na?b?") + QChar(0x05D0) + "\n");
}

} // namespace
} // namespace xov::cli
