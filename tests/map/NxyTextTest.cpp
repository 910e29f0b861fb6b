#include "XOV_Graphics/map/NxyText.h"

#include "XOV_Graphics/map/XOVPolygon.h"
#include "tests/map/MapPrinting.h"

#include <gtest/gtest.h>

#include <limits>

using namespace xov;
using namespace xov::test;

namespace {

Points scanned(const QString& text) {
  XOVPolygon polygon;
  QString error;
  EXPECT_TRUE(polygon.scanFromNXYString(text, &error)) << error.toStdString();
  return pointsOf(polygon);
}

Points scanned(const char* text) { return scanned(QString::fromUtf8(text)); }

/// The error line of a text that must be refused.
QString refusal(const QString& text) {
  XOVPolygon polygon = polygonOf({{1, 2}});
  QString error;
  EXPECT_FALSE(polygon.scanFromNXYString(text, &error)) << text.toStdString();
  EXPECT_EQ(polygon.pointCount(), 0);
  EXPECT_TRUE(polygon.xp().empty() && polygon.yp().empty());
  EXPECT_FALSE(polygon.scanFromNXYString(text)); // the error is not asked for
  EXPECT_FALSE(error.isEmpty());
  EXPECT_FALSE(error.contains(QLatin1Char('\n'))) << error.toStdString();
  return error;
}

QString refusal(const char* text) { return refusal(QString::fromUtf8(text)); }

const Points kTwoPoints = {{1.5F, 2.5F}, {3, 4}};

} // namespace

TEST(NxyText, givesPointsAndIgnoresWhatFollowsThem) {
  EXPECT_EQ(scanned("2 1.5 2.5 3 4 and more"), kTwoPoints);
  EXPECT_EQ(scanned("2\n1.5 2.5\n3 4\n5 6\n"), kTwoPoints);
  EXPECT_EQ(scanned("2 1.5 2.5 3 4end"), kTwoPoints);
}

TEST(NxyText, endingEarlyIsRefused) {
  EXPECT_EQ(refusal("3\n0 0\n1 0"), QStringLiteral("number of points: found 3, but only 8 characters follow"));
  EXPECT_EQ(refusal("3\n0 0\n1 0\n     "),
            QStringLiteral("x of point 3: found the end of the text, expected a number"));
  EXPECT_EQ(refusal("3\n0 0\n1 0\n1.0     "),
            QStringLiteral("y of point 3: found the end of the text, expected a number"));
}

TEST(NxyText, keepsTheCountOfARefusedText) {
  XOVPolygon polygon;
  EXPECT_FALSE(polygon.scanFromNXYString(QStringLiteral("3\n0 0\n1 0\n     ")));
  EXPECT_EQ(polygon.npts(), 3);
  EXPECT_FALSE(polygon.scanFromNXYString(QStringLiteral("-7")));
  EXPECT_EQ(polygon.npts(), -7);
  EXPECT_FALSE(polygon.scanFromNXYString(QStringLiteral("none")));
  EXPECT_EQ(polygon.npts(), -7);
}

TEST(NxyText, mayHoldNoPoints) {
  EXPECT_EQ(scanned("0"), Points());
  EXPECT_EQ(scanned("0\nand more"), Points());
  EXPECT_EQ(scanned("-0"), Points());
}

TEST(NxyText, isSeparatedByAnyWhiteSpace) {
  EXPECT_EQ(scanned("2 1.5 2.5 3 4"), kTwoPoints);
  EXPECT_EQ(scanned("\r\n\t 2\r\n1.5\t2.5\r\n\v\f3\n\n\n4"), kTwoPoints);
  // No-break space, line separator, ideographic space.
  EXPECT_EQ(scanned(QStringLiteral("2\u00a01.5\u20282.5\u30003\u00854")), kTwoPoints);
}

TEST(NxyText, isSeparatedByNothingElse) {
  EXPECT_EQ(refusal("2 1.5, 2.5 3 4 "), QStringLiteral("x of point 1: found \"1.5,\", expected a number"));
  EXPECT_EQ(refusal("2 1.5;2.5;3;4 and some more"),
            QStringLiteral("x of point 1: found \"1.5;2.5;3;4\", expected a number"));
  EXPECT_EQ(refusal("2 1.5 2.5-3 4 5 6"), QStringLiteral("y of point 1: found \"2.5-3\", expected a number"));
  EXPECT_EQ(refusal("2, 1.5 2.5 3 4"), QStringLiteral("number of points: found \"2,\", expected a whole number"));
}

TEST(NxyText, takesNumbersInEveryNotation) {
  EXPECT_EQ(scanned("+3 +1 -1 .5 5. 1e2 -2.5E-1"), (Points{{1, -1}, {0.5F, 5}, {100, -0.25F}}));
}

TEST(NxyText, roundsToTheNearestSinglePrecisionNumber) {
  // Just above the middle between 1 and the next number, 1 + 2^-23: the last digit decides.
  EXPECT_EQ(scanned("1 1.00000005960464477539062500001 1.000000059604644775390625"),
            (Points{{1 + std::numeric_limits<float>::epsilon(), 1}}));
}

TEST(NxyText, takesNumbersTooSmallForSinglePrecisionAs0) { EXPECT_EQ(scanned("1 1e-60 -1e-300"), (Points{{0, 0}})); }

TEST(NxyText, refusesNumbersThatAreNone) {
  for (const char* word :
       {"x",   "-",   "+",    ".",   "e5",       "--1",  "+-1",   "-+1",   "1.2.3",  "1e",   "0x10",
        "1,5", "nan", "-NaN", "inf", "Infinity", "1e39", "-1e39", "1e400", "1e-400", "\x01", "\u0661"}) {
    const QString expected =
        QStringLiteral("y of point 1: found \"%1\", expected a number").arg(QString::fromUtf8(word));
    const QString error = refusal(QStringLiteral("2 1 %1 2 3").arg(QString::fromUtf8(word)));
    if (word[0] > ' ' && word[0] < '~') {
      EXPECT_EQ(error, expected);
    } else {
      EXPECT_EQ(error, QStringLiteral("y of point 1: found \"?\", expected a number"));
    }
  }
}

TEST(NxyText, refusesCountsThatAreNone) {
  for (const char* text : {"", "   \n", "x", "2.5 1 2 3 4 5", ".5 1 2", "nan", "2147483648 1 2", "1e3 1 2", "2x 1 2"})
    EXPECT_TRUE(refusal(text).startsWith(QStringLiteral("number of points: found "))) << text;
}

TEST(NxyText, refusesNegativeCounts) {
  EXPECT_EQ(refusal("-1 1 2"), QStringLiteral("number of points: found -1, expected at least 0"));
  EXPECT_TRUE(refusal("-2147483648 1 2").contains(QStringLiteral("-2147483648")));
}

TEST(NxyText, refusesCountsThatItCannotHoldBeforeAnythingIsAllocated) {
  // Two arrays of that size would be 16 GB.
  EXPECT_EQ(refusal("2147483647 1 2"),
            QStringLiteral("number of points: found 2147483647, but only 4 characters follow"));
}

TEST(NxyText, ofTheShortestKindIsRead) {
  // Four characters a point: the count is believed as soon as they are there.
  EXPECT_EQ(scanned("2 1 2 3 4"), (Points{{1, 2}, {3, 4}}));
  EXPECT_EQ(refusal("3 1 2 3 4 5 "), QStringLiteral("number of points: found 3, but only 11 characters follow"));
}

TEST(NxyText, namesLongWordsByTheirBeginning) {
  const QString word(5000, QLatin1Char('q'));
  EXPECT_EQ(refusal(QStringLiteral("1 1 ") + word),
            QStringLiteral("y of point 1: found \"%1...\", expected a number").arg(word.first(24)));
}

TEST(NxyText, isDecodedByItsByteOrderMark) {
  const QByteArray utf16("\xff\xfe"
                         "1\0 \0005\0 \0006\0",
                         12);
  EXPECT_EQ(scanned(decodeNxy(utf16)), (Points{{5, 6}}));
  EXPECT_EQ(scanned(decodeNxy("\xef\xbb\xbf"
                              "1 5 6")),
            (Points{{5, 6}}));
}

TEST(NxyText, isDecodedAsUtf8ElseLatin1) {
  EXPECT_EQ(decodeNxy("Z\xc3\xbcrich"), QStringLiteral("Zürich"));
  EXPECT_EQ(decodeNxy("Z\xfcrich"), QStringLiteral("Zürich"));
  EXPECT_EQ(decodeNxy("Z\xc3"), QStringLiteral("ZÃ"));
  EXPECT_EQ(decodeNxy(QByteArray()), QString());
}
