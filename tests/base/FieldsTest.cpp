#include "XOV_Graphics/base/Fields.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace xov {
namespace {

/// What the fields of a line say.
QStringList texts(const char* line, char separator) {
  QStringList list;
  for (const QByteArrayView field : fieldsOf(line, separator))
    list.append(fieldText(field));
  return list;
}

TEST(Fields, standBetweenSeparatorsWithoutBlanks) {
  EXPECT_EQ(texts("a, b c ,\td", ','), (QStringList{"a", "b c", "d"}));
  EXPECT_EQ(texts("a|b", ','), QStringList("a|b"));
}

TEST(Fields, mayBeEmpty) {
  EXPECT_EQ(texts(",a,,b,", ','), (QStringList{"", "a", "", "b", ""}));
  EXPECT_EQ(texts("", ','), QStringList(""));
}

TEST(Fields, areWordsBetweenAnyNumberOfBlanks) {
  EXPECT_EQ(texts("  a \t b\tc  ", kBlankSeparator), (QStringList{"a", "b", "c"}));
  EXPECT_TRUE(texts(" \t ", kBlankSeparator).isEmpty());
}

TEST(Fields, holdSeparatorsAndQuotesInQuotes) {
  EXPECT_EQ(texts("\"a, b\", \"c\"", ','), (QStringList{"a, b", "c"}));
  EXPECT_EQ(texts("\"km N of \"\"A, B\"\"\",2", ','), (QStringList{"km N of \"A, B\"", "2"}));
  EXPECT_EQ(texts("\"a b\" c", kBlankSeparator), (QStringList{"a b", "c"}));
  EXPECT_EQ(texts("\"\",1", ','), (QStringList{"", "1"}));
}

TEST(Fields, takeAQuoteThatIsNotClosedForACharacter) {
  EXPECT_EQ(texts("\"a,b", ','), (QStringList{"\"a", "b"}));
  EXPECT_EQ(texts("6\" tall,b", ','), (QStringList{"6\" tall", "b"}));
  EXPECT_EQ(texts("\"", ','), QStringList("\""));
}

TEST(Fields, areToldApartByTabulatorsBeforeAQuote) {
  EXPECT_EQ(texts("\t\"a\tb\"\tc", '\t'), (QStringList{"", "a\tb", "c"}));
}

TEST(Fields, nameTheSameHeadingHoweverItIsWritten) {
  for (const char* heading : {"Latitude (deg)", " \"latitude_deg\"", "LATITUDE-DEG"})
    EXPECT_EQ(headingKey(heading), QStringLiteral("latitudedeg"));
}

} // namespace
} // namespace xov
