#include "XOV_Graphics/base/TextLines.h"

#include <gtest/gtest.h>

#include <QByteArrayList>

namespace xov {
namespace {

QByteArrayList all(QByteArrayView text) {
  QByteArrayList list;
  TextLines lines(text);
  while (const auto line = lines.next())
    list.append(line->toByteArray());
  return list;
}

TEST(TextLines, endWithLineFeedsOfEitherKind) {
  EXPECT_EQ(all("a\nb\r\nc\r\r\n\nd"), (QByteArrayList{"a", "b", "c", "", "d"}));
  EXPECT_EQ(all("a\n"), (QByteArrayList{"a"}));
  EXPECT_TRUE(all("").isEmpty());
}

TEST(TextLines, keepACarriageReturnWithinALine) { EXPECT_EQ(all("a\rb\n"), (QByteArrayList{"a\rb"})); }

TEST(TextLines, areCountedFrom1) {
  TextLines lines("a\n\nb");
  EXPECT_EQ(lines.number(), 0);
  EXPECT_EQ(lines.remaining(), 4);
  (void)lines.next();
  EXPECT_EQ(lines.number(), 1);
  EXPECT_EQ(lines.remaining(), 2);
  (void)lines.next();
  (void)lines.next();
  EXPECT_EQ(lines.number(), 3);
  EXPECT_FALSE(lines.next());
  EXPECT_EQ(lines.number(), 3);
}

TEST(TextLines, beginBehindTheMarkOfUtf8) {
  EXPECT_EQ(withoutMark("\xEF\xBB\xBFx").toByteArray(), "x");
  EXPECT_EQ(withoutMark("\xEF\xBBx").toByteArray(), "\xEF\xBBx");
}

TEST(TextLines, loseBlanksAtTheirEndsOnly) {
  EXPECT_EQ(withoutBlanks("\t a b ").toByteArray(), "a b");
  EXPECT_TRUE(withoutBlanks(" \t").isEmpty());
}

TEST(TextLines, giveWordsAndColumns) {
  QByteArrayView rest = "  one\ttwo ";
  EXPECT_EQ(takeWord(rest).toByteArray(), "one");
  EXPECT_EQ(rest.toByteArray(), "two ");
  EXPECT_EQ(takeWord(rest).toByteArray(), "two");
  EXPECT_TRUE(takeWord(rest).isEmpty());

  rest = "  12 345";
  EXPECT_EQ(takeColumns(rest, 4).toByteArray(), "12");
  EXPECT_EQ(takeColumns(rest, 3).toByteArray(), "34");
  EXPECT_EQ(takeColumns(rest, 3).toByteArray(), "5");
  EXPECT_TRUE(takeColumns(rest, 3).isEmpty());
}

TEST(TextLines, giveColumnsAsDescriptionsCountThem) {
  const QByteArrayView line = "ab 12 ";
  EXPECT_EQ(columnsOf(line, 1, 2).toByteArray(), "ab");
  EXPECT_EQ(columnsOf(line, 3, 6).toByteArray(), "12") << "without the blanks around";
  EXPECT_EQ(columnsOf(line, 5, 90).toByteArray(), "2");
  EXPECT_TRUE(columnsOf(line, 7, 9).isEmpty());
  EXPECT_TRUE(columnsOf({}, 1, 1).isEmpty());
}

TEST(TextLines, shortenWhatAMessageQuotes) {
  EXPECT_EQ(shortened(QStringLiteral("four"), 4), QStringLiteral("four"));
  EXPECT_EQ(shortened(QStringLiteral("fives"), 4), QStringLiteral("five..."));
}

} // namespace
} // namespace xov
