#include "apps/resources/PostScriptLines.h"

#include <gtest/gtest.h>

#include <QByteArrayList>

using namespace xov;
using namespace xov::maker;

namespace {

/// Compresses rows of equal length as a PostScript file that extracts itself.
QByteArray selfExtracting(const QByteArrayList& rows, char filter = 2) {
  QByteArray predicted;
  QByteArray above(rows[0].size(), 0);
  for (const QByteArray& row : rows) {
    predicted += filter;
    for (qsizetype i = 0; i < row.size(); ++i)
      predicted += char(row[i] - above[i]);
    above = row;
  }
  return "%!PS\ncurrentfile<</Predictor 12/Columns " + QByteArray::number(rows[0].size()) +
         ">>/FlateDecode filter cvx exec\n" + qCompress(predicted).mid(4);
}

} // namespace

TEST(PostScriptLines, extractRowsThatArePredictedFromTheOneAbove) {
  const Result<QByteArray> text = selfExtractedText(selfExtracting({"abc\n", "abd\n", QByteArray("\xff\0x\n", 4)}));
  ASSERT_TRUE(text) << qPrintable(text.error());
  EXPECT_EQ(*text, QByteArray("abc\nabd\n\xff\0x\n", 12));
}

TEST(PostScriptLines, refuseAnotherPrediction) {
  EXPECT_EQ(selfExtractedText(selfExtracting({"abc\n"}, 1)).error(),
            QStringLiteral("a row is not predicted from the one above it"));
}

TEST(PostScriptLines, refuseDamagedFiles) {
  const QByteArray whole = selfExtracting({"abc\n", "abd\n"});
  for (qsizetype length = 0; length < whole.size() - 4; ++length) // the last four bytes are a checksum
    EXPECT_FALSE(selfExtractedText(whole.left(length))) << length;
  EXPECT_FALSE(selfExtractedText("%!PS\n/Columns 99999999999 /FlateDecode exec\nxx"));
}

TEST(PostScriptLines, areArraysOfArraysOfPairs) {
  const Result<Segments> lines = postScriptLines("/ridge[[  \n[-32.3 37.4]\n[1 2]\n][\n[180 -90]]\n]def");
  ASSERT_TRUE(lines) << qPrintable(lines.error());
  EXPECT_EQ(*lines, (Segments{{{-32.3, 37.4}, {1, 2}}, {{180, -90}}}));
}

TEST(PostScriptLines, refuseWhatIsNoPairOfDegrees) {
  EXPECT_EQ(postScriptLines("/a[[[1 2 3]]]").error(), QStringLiteral("byte 10: no pair of longitude and latitude"));
  EXPECT_EQ(postScriptLines("/a[[[1 91]]]").error(), QStringLiteral("byte 9: no pair of longitude and latitude"));
  EXPECT_EQ(postScriptLines("/a[[[1 x]]]").error(), QStringLiteral("byte 8: no pair of longitude and latitude"));
}

TEST(PostScriptLines, refuseBracketsThatDoNotMatch) {
  EXPECT_EQ(postScriptLines("/a[[[[1 2]]]]").error(), QStringLiteral("byte 5: a bracket too many"));
  EXPECT_EQ(postScriptLines("/a[[[1 2]").error(), QStringLiteral("the array does not end"));
  EXPECT_EQ(postScriptLines("/a def").error(), QStringLiteral("no array"));
}
