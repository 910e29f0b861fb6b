#include "apps/xov/inputs/ColumnFile.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cmath>
#include <limits>

namespace xov::cli {
namespace {

using Floats = std::vector<float>;

Result<ColumnData> parse(const QByteArray& text, const QStringList& wanted = {"1", "2"}) {
  return parseColumns(text, QStringLiteral("f"), wanted);
}

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(ColumnFile, readsColumnsBetweenBlanksAndTabs) {
  const auto data = parse("1 2\n  3\t \t4.5  \n-1e2 +6\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns, (std::vector<Floats>{{1, 3, -100}, {2, 4.5F, 6}}));
  EXPECT_EQ(data->names, (QStringList{"", ""}));
}

TEST(ColumnFile, takesTheHeadingOfACsvFileForNames) {
  const auto data = parse("Distance (deg), Time (s)\n1,2\n3, 4\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"Distance (deg)", "Time (s)"}));
  EXPECT_EQ(data->columns, (std::vector<Floats>{{1, 3}, {2, 4}}));
}

TEST(ColumnFile, keepsBlanksInNamesBetweenTabs) {
  const auto data = parse("Distance (deg)\tTime (s)\n1\t2\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"Distance (deg)", "Time (s)"}));
}

TEST(ColumnFile, takesNamesBetweenBlanks) {
  const auto data = parse("x y\n1 2\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"x", "y"}));
}

TEST(ColumnFile, separatesAtSemicolonsBeforeCommas) {
  const auto data = parse("depth, km;v\n1;2\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"depth, km", "v"}));
}

TEST(ColumnFile, refusesDecimalCommasInsteadOfMisreadingThem) {
  EXPECT_EQ(parse("x;y\n1,5;2,5\n").error(), "f: line 2: column 1: found '1,5', expected a number");
}

TEST(ColumnFile, keepsSeparatorsInsideQuotes) {
  const auto data = parse("\"x, y\",\"z\"\n\"1\", \"2.5\"\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"x, y", "z"}));
  EXPECT_EQ(data->columns, (std::vector<Floats>{{1}, {2.5F}}));
}

TEST(ColumnFile, readsAQuoteWithoutItsFellowAsText) {
  EXPECT_EQ(parse("1,2\n\"3,4\n").error(), "f: line 2: column 1: found '\"3', expected a number");
}

TEST(ColumnFile, skipsCommentsAndEmptyLines) {
  const auto data = parse("# made by hand\n\n  # x y\n1 2\n\n#3 4\n5 6");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns, (std::vector<Floats>{{1, 5}, {2, 6}}));
}

TEST(ColumnFile, readsWindowsLineEndsAndAByteOrderMark) {
  const auto data = parse("\xEF\xBB\xBFx,y\r\n1,2\r\n\r\n3,4\r\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"x", "y"}));
  EXPECT_EQ(data->columns, (std::vector<Floats>{{1, 3}, {2, 4}}));
}

TEST(ColumnFile, takesAnEmptyFieldForAMissingValue) {
  const auto data = parse("1,\n,4\n", {"1", "2"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns[0][0], 1);
  EXPECT_TRUE(std::isnan(data->columns[1][0]));
  EXPECT_TRUE(std::isnan(data->columns[0][1]));
  EXPECT_EQ(data->columns[1][1], 4);
}

TEST(ColumnFile, readsWhatIsBeyondAFloatAsInfinite) {
  const auto data = parse("1e39 -1e39\n1e999 -1e999\n1e-999 nan\ninf -inf\n");
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns[0], (Floats{kInfinity, kInfinity, 0, kInfinity}));
  EXPECT_EQ(data->columns[1][0], -kInfinity);
  EXPECT_EQ(data->columns[1][1], -kInfinity);
  EXPECT_TRUE(std::isnan(data->columns[1][2]));
  EXPECT_EQ(data->columns[1][3], -kInfinity);
}

TEST(ColumnFile, picksColumnsByNumberAndByHeading) {
  const auto data = parse("a,b,c\n1,2,3\n4,5,6\n", {"c", "1"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->names, (QStringList{"c", "a"}));
  EXPECT_EQ(data->columns, (std::vector<Floats>{{3, 6}, {1, 4}}));
}

TEST(ColumnFile, picksTheSameColumnTwice) {
  const auto data = parse("1 2\n3 4\n", {"2", "2"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns, (std::vector<Floats>{{2, 4}, {2, 4}}));
}

TEST(ColumnFile, prefersAHeadingThatIsANumberToAColumnNumber) {
  const auto data = parse("station,2\nnan,7\n", {"2", "1"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns[0], Floats{7});
}

TEST(ColumnFile, looksOnlyAtTheColumnsThatAreWanted) {
  const auto data = parse("1 TLY 2\n3 ULN 4 # comment\n", {"1", "3"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns, (std::vector<Floats>{{1, 3}, {2, 4}}));
  EXPECT_EQ(data->names, (QStringList{"", ""}));
}

TEST(ColumnFile, hasAHeadingWhereAWantedColumnHoldsNoNumber) {
  const auto data = parse("1 TLY lat\n3 ULN 4\n", {"1", "3"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  EXPECT_EQ(data->columns, (std::vector<Floats>{{3}, {4}}));
  EXPECT_EQ(data->names, (QStringList{"1", "lat"}));
  const auto unnamed = parse("station,,height\nTLY,3,4\n", {"2"});
  ASSERT_TRUE(unnamed) << qPrintable(unnamed.error());
  EXPECT_EQ(unnamed->columns[0], Floats{3});
}

TEST(ColumnFile, namesTheHeadingsWhenNoneIsTheWantedOne) {
  EXPECT_EQ(parse("a,b\n1,2\n", {"a", "time"}).error(), "f: there is no column 'time'; the headings are a, b");
  EXPECT_EQ(parse("1,2\n", {"a", "2"}).error(), "f: there is no column 'a'; the file has no headings");
}

TEST(ColumnFile, refusesColumnsBeforeTheFirst) {
  EXPECT_EQ(parse("1 2\n", {"0", "2"}).error(), "f: there is no column '0'; the file has no headings");
  EXPECT_EQ(parse("1 2\n", {"-1", "2"}).error(), "f: there is no column '-1'; the file has no headings");
  EXPECT_EQ(parse("1 2\n", {"-2147483648"}).error(), "f: there is no column '-2147483648'; the file has no headings");
  EXPECT_EQ(parse("a 2\n", {"-2147483648"}).error(), "f: there is no column '-2147483648'; the headings are a, 2");
}

TEST(ColumnFile, namesTheLineThatIsTooShort) {
  EXPECT_EQ(parse("# comment\n1 2\n3\n").error(), "f: line 3: expected at least 2 columns, found 1");
  EXPECT_EQ(parse("1 2\n", {"1", "2000000000"}).error(), "f: line 1: expected at least 2000000000 columns, found 2");
}

TEST(ColumnFile, namesTheLineAndColumnThatIsNoNumber) {
  EXPECT_EQ(parse("1 2\n3 four\n").error(), "f: line 2: column 2: found 'four', expected a number");
  EXPECT_EQ(parse("1 2\n3 4x\n").error(), "f: line 2: column 2: found '4x', expected a number");
}

TEST(ColumnFile, refusesAFileWithoutNumbers) {
  EXPECT_EQ(parse("").error(), "f: holds no numbers");
  EXPECT_EQ(parse("# only a comment\n").error(), "f: holds no numbers");
  EXPECT_EQ(parse("x,y\n").error(), "f: holds no numbers");
}

class ColumnFileOnDisk : public ::testing::Test {
protected:
  QString write(const QString& name, const QByteArray& contents) {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(contents), contents.size());
    return file.fileName();
  }
  QTemporaryDir folder_;
};

TEST_F(ColumnFileOnDisk, readsAFileLongerThanAChunk) {
  QByteArray text;
  for (int i = 0; i < 200000; ++i)
    text += QByteArray::number(i) + " 0\n";
  const auto data = readColumns(write("long", text), {"1"});
  ASSERT_TRUE(data) << qPrintable(data.error());
  ASSERT_EQ(data->columns[0].size(), 200000U);
  EXPECT_EQ(data->columns[0].back(), 199999);
}

TEST_F(ColumnFileOnDisk, refusesABinaryFile) {
  const QString path = write("binary", QByteArray("1 2\n\0\0", 6));
  EXPECT_EQ(readColumns(path, {"1", "2"}).error(), path + ": is not a text file");
}

TEST_F(ColumnFileOnDisk, refusesAFolderAndAMissingFile) {
  EXPECT_EQ(readColumns(folder_.path(), {"1"}).error(), folder_.path() + ": is a folder, expected a file");
  const QString missing = folder_.filePath("missing");
  EXPECT_EQ(readColumns(missing, {"1"}).error(), missing + ": cannot be opened: No such file or directory");
}

} // namespace
} // namespace xov::cli
