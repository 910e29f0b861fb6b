#include "XOV_Graphics/map/BoundaryText.h"

#include "tests/map/CommaLocale.h"
#include "tests/map/MapPrinting.h"
#include "tests/support/LogCatcher.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace xov;
using namespace xov::test;

namespace {

XOVPolygonArray bird(const QByteArray& text) {
  XOVPolygonArray polygons;
  SegmentCollector segments(kBirdSegmentPoints, SegmentCollector::Bounds::NotComputed, polygons);
  readBirdBoundaries(text, segments);
  return polygons;
}

XOVPolygonArray typed(const std::vector<QByteArray>& texts) {
  XOVPolygonArray polygons;
  SegmentCollector segments(kTypedSegmentPoints, SegmentCollector::Bounds::Computed, polygons);
  for (const QByteArray& text : texts)
    readTypedBoundaries(text, segments);
  return polygons;
}

XOVPolygonArray typed(const QByteArray& text) { return typed(std::vector<QByteArray>{text}); }

/// The points of the only polygon.
Points onlyPoints(const XOVPolygonArray& polygons) {
  EXPECT_EQ(polygons.size(), 1U);
  return polygons.empty() ? Points() : pointsOf(*polygons[0]);
}

/// Points (1, 1), (2, 2) and so on, a line each.
QByteArray pointLines(int count) {
  QByteArray text;
  for (int i = 1; i <= count; ++i)
    text += QByteArray::number(i % 100) + ' ' + QByteArray::number(i % 90) + '\n';
  return text;
}

} // namespace

TEST(BirdBoundaries, giveASegmentWithItsTitleAndPoints) {
  const XOVPolygonArray polygons = bird("AF-AN\n-10.0 5.0\n20.0 -5.0\n***\n");
  EXPECT_EQ(onlyPoints(polygons), (Points{{350, 5}, {20, -5}}));
  EXPECT_EQ(polygons[0]->npts(), 2);
  EXPECT_EQ(polygons[0]->title(), QStringLiteral("AF-AN\n"));
}

TEST(BirdBoundaries, loseASegmentThatIsNotClosed) {
  EXPECT_EQ(bird("A\n1 2\n3 4\n").size(), 0U);
  EXPECT_EQ(onlyPoints(bird("A\n1 2\n*** end of line segment ***\nB\n3 4\n5 6\n")), (Points{{1, 2}}));
}

TEST(BirdBoundaries, keepALongitudeOf0AndTurnNegativeOnes) {
  EXPECT_EQ(onlyPoints(bird("A\n0 1\n-0.5 1\n-180 1\n180 1\n359.5 1\n***\n")),
            (Points{{0, 1}, {359.5F, 1}, {180, 1}, {180, 1}, {359.5F, 1}}));
}

TEST(BirdBoundaries, turnALongitudeOnlyOnce) { EXPECT_EQ(onlyPoints(bird("A\n-400 1\n***\n")), (Points{{-40, 1}})); }

TEST(BirdBoundaries, computeNoBoundingBox) { EXPECT_EQ(bird("A\n1 2\n***\n")[0]->bRect(), QRectF(0, 0, 0, 0)); }

TEST(BirdBoundaries, comeInTheOrderOfTheText) {
  const XOVPolygonArray polygons = bird("A\n1 1\n***\nB\n2 2\n***\nC\n3 3\n***\n");
  ASSERT_EQ(polygons.size(), 3U);
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("B\n"));
  EXPECT_EQ(pointsOf(*polygons[2]), (Points{{3, 3}}));
}

TEST(BirdBoundaries, giveEmptySegmentsAsPolygonsWithoutPoints) {
  const XOVPolygonArray polygons = bird("A\n***\n***\n");
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[0]->npts(), 0);
  EXPECT_EQ(polygons[0]->title(), QStringLiteral("A\n"));
  EXPECT_EQ(polygons[1]->npts(), 0);
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("Untitled"));
}

TEST(BirdBoundaries, areClosedByThreeStarsAtTheStartOfALineOnly) {
  EXPECT_EQ(onlyPoints(bird("A\n1 2\n** 9\n ***\n3 4\n***x\n")), (Points{{1, 2}, {0, 0}, {0, 0}, {3, 4}}));
}

TEST(BirdBoundaries, needNoLineEndAtTheEnd) { EXPECT_EQ(onlyPoints(bird("A\n1 2\n***")), (Points{{1, 2}})); }

TEST(BirdBoundaries, readWindowsLineEndsAsLineEnds) {
  const XOVPolygonArray polygons = bird("A\r\n1 2\r\n3 4\r\n***\r\nB\r\n5 6\r\n***\r\n");
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[0]->title(), QStringLiteral("A\n"));
  EXPECT_EQ(pointsOf(*polygons[0]), (Points{{1, 2}, {3, 4}}));
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("B\n"));
}

TEST(BirdBoundaries, ofAnEmptyTextAreNone) {
  EXPECT_EQ(bird("").size(), 0U);
  EXPECT_EQ(bird("\n").size(), 0U);
}

TEST(BirdBoundaries, countALineWithoutNumbersAsAPointWithWhatStoodThere) {
  // The second segment meets the points that the first one left in their places.
  const XOVPolygonArray polygons = bird("A\n1 2\nnone\n3 4\n***\nB\nnone\n\n7\n***\n");
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(pointsOf(*polygons[0]), (Points{{1, 2}, {0, 0}, {3, 4}}));
  EXPECT_EQ(pointsOf(*polygons[1]), (Points{{1, 2}, {0, 0}, {7, 4}}));
}

TEST(BirdBoundaries, readTheNumbersThatALineBeginsWith) {
  EXPECT_EQ(onlyPoints(bird("A\n \t1.5   +2.5 and more\n-1e1,7\n3-4\n.5.25\n***\n")),
            (Points{{1.5F, 2.5F}, {350, 0}, {3, -4}, {0.5F, 0.25F}}));
}

TEST(BirdBoundaries, areReadAlikeInEveryLocale) {
  const CommaLocale commas;
  EXPECT_EQ(onlyPoints(bird("A\n1.5 2.5\n3,5 4,5\n***\n")), (Points{{1.5F, 2.5F}, {3, 0}}));
}

TEST(BirdBoundaries, passOnWhatIsNoPlace) {
  const Points points = onlyPoints(bird("A\nnan inf\n-inf 1\n***\n"));
  ASSERT_EQ(points.size(), 2U);
  EXPECT_TRUE(std::isnan(points[0].first));
  EXPECT_EQ(points[0].second, std::numeric_limits<float>::infinity());
  EXPECT_EQ(points[1].first, -std::numeric_limits<float>::infinity());
}

TEST(BirdBoundaries, leaveOutNumbersBeyondSinglePrecision) {
  EXPECT_EQ(onlyPoints(bird("A\n1e99 1\n1 -1e99\n1 1e-60\n***\n")), (Points{{0, 0}, {1, 0}, {1, 0}}));
}

TEST(BirdBoundaries, continueALongLineAsTheNextOne) {
  // 127 bytes are the title, the rest of the line is a point.
  const QByteArray title(127, 'T');
  const XOVPolygonArray polygons = bird(title + "5 6 more\n1 2\n***\n");
  EXPECT_EQ(onlyPoints(polygons), (Points{{5, 6}, {1, 2}}));
  EXPECT_EQ(polygons[0]->title(), QString::fromLatin1(title));
}

TEST(BirdBoundaries, takeALineOf126BytesWhole) {
  const QByteArray title(126, 'T');
  EXPECT_EQ(bird(title + "\n1 2\n***\n")[0]->title(), QString::fromLatin1(title) + QStringLiteral("\n"));
  // One byte more, and the line end is a line, that is a point.
  EXPECT_EQ(onlyPoints(bird(title + "T\n1 2\n***\n")), (Points{{0, 0}, {1, 2}}));
}

TEST(BirdBoundaries, cutPointsInALongLineToo) {
  // The buffer ends within the second number, 12|34, whose rest begins the next line.
  const QByteArray line = QByteArray("1").rightJustified(124, ' ') + " 1234 7\n";
  EXPECT_EQ(onlyPoints(bird("A\n" + line + "***\n")), (Points{{1, 12}, {34, 7}}));
}

TEST(BirdBoundaries, endATitleAtAZeroByte) {
  EXPECT_EQ(bird(QByteArray("A\0B\n1 2\n***\n", 12))[0]->title(), QStringLiteral("A"));
  EXPECT_EQ(bird(QByteArray("\0B\n1 2\n***\n", 11))[0]->title(), QString());
}

TEST(BirdBoundaries, keepEveryByteOfATitle) {
  EXPECT_EQ(bird("R\xfc"
                 "cken\n***\n")[0]
                ->title(),
            QStringLiteral("Rücken\n"));
}

TEST(BirdBoundaries, holdASegmentOf512Points) {
  const LogCatcher log;
  const XOVPolygonArray polygons = bird("A\n" + pointLines(512) + "***\n");
  EXPECT_EQ(onlyPoints(polygons).size(), 512U);
  EXPECT_EQ(LogCatcher::lines(), QStringList());
}

TEST(BirdBoundaries, closeALongerSegmentThereAndSayItInTheLog) {
  const LogCatcher log;
  const XOVPolygonArray polygons = bird("A\n" + pointLines(513) + "***\n");
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[0]->npts(), 512);
  EXPECT_EQ(polygons[1]->title(), polygons[0]->title());
  // Point 512 is in both lines, so that no gap is left between them.
  EXPECT_EQ(pointsOf(*polygons[1]), (Points{{12, 62}, {13, 63}}));
  EXPECT_EQ(LogCatcher::lines(),
            QStringList(QStringLiteral("xov: plate boundary \"A\": more than 512 points; closed there, the rest "
                                       "becomes a line of its own")));
}

TEST(BirdBoundaries, closeASegmentOfManyThousandPointsAsOftenAsItTakes) {
  const LogCatcher log;
  const XOVPolygonArray polygons = bird("A\n" + pointLines(5000) + "***\nB\n1 2\n***\n");
  // 512 points, then 511 new ones a line: 512 + 8 · 511 = 4600, and 400 are left.
  ASSERT_EQ(polygons.size(), 11U);
  EXPECT_EQ(polygons[9]->npts(), 401);
  EXPECT_EQ(LogCatcher::lines().size(), 9);
  EXPECT_EQ(pointsOf(*polygons[10]), (Points{{1, 2}}));
}

TEST(TypedBoundaries, giveASegmentWithTheSecondLineAsTitleAndItsBox) {
  const XOVPolygonArray polygons = typed("H1\nH2\n1 1\n2 2\n>\n");
  EXPECT_EQ(onlyPoints(polygons), (Points{{1, 1}, {2, 2}}));
  EXPECT_EQ(polygons[0]->title(), QStringLiteral("H2\n"));
  EXPECT_EQ(polygons[0]->bRect(), QRectF(1, 1, 1, 1));
}

TEST(TypedBoundaries, haveOneHeaderLineInEverySegmentButTheFirst) {
  const XOVPolygonArray polygons = typed("H1\nH2\n1 1\n>\nH3\n2 2\n>\nH4\n3 3\n>\n");
  ASSERT_EQ(polygons.size(), 3U);
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("H3\n"));
  EXPECT_EQ(pointsOf(*polygons[1]), (Points{{2, 2}}));
  EXPECT_EQ(pointsOf(*polygons[2]), (Points{{3, 3}}));
}

TEST(TypedBoundaries, takeTheFirstLineAsATitleWhateverItIs) {
  EXPECT_EQ(typed(">\n").size(), 0U);
  EXPECT_EQ(typed("> x\nH2\n1 1\n>\n")[0]->title(), QStringLiteral("H2\n"));
  // Closed before its second header line: the first one is the title.
  EXPECT_EQ(typed("H1\n>\n")[0]->title(), QStringLiteral("H1\n"));
}

TEST(TypedBoundaries, loseASegmentThatIsNotClosed) {
  EXPECT_EQ(typed("H1\nH2\n1 1\n2 2\n").size(), 0U);
  EXPECT_EQ(typed("H1\nH2\n1 1\n>\nH3\n2 2\n").size(), 1U);
  // Nor does the next file go on with it.
  EXPECT_EQ(onlyPoints(typed({"H1\nH2\n1 1\n2 2\n", "H1\nH2\n3 3\n>\n"})), (Points{{3, 3}}));
}

TEST(TypedBoundaries, turnNegativeLongitudes) {
  EXPECT_EQ(onlyPoints(typed("H1\nH2\n0 1\n-0.5 1\n>\n")), (Points{{0, 1}, {359.5F, 1}}));
}

TEST(TypedBoundaries, giveEmptySegmentsAsPolygonsWithoutPoints) {
  const XOVPolygonArray polygons = typed("H1\nH2\n>\n>\n");
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[1]->npts(), 0);
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("Untitled"));
  EXPECT_EQ(polygons[1]->bRect().width(), -2e9);
}

TEST(TypedBoundaries, readWindowsLineEndsAsLineEnds) {
  const XOVPolygonArray polygons = typed("H1\r\nH2\r\n1 1\r\n2 2\r\n>\r\n");
  EXPECT_EQ(onlyPoints(polygons), (Points{{1, 1}, {2, 2}}));
  EXPECT_EQ(polygons[0]->title(), QStringLiteral("H2\n"));
}

TEST(TypedBoundaries, needNoLineEndAtTheEnd) { EXPECT_EQ(onlyPoints(typed("H1\nH2\n1 2\n>")), (Points{{1, 2}})); }

TEST(TypedBoundaries, continueALongLineAsTheNextOne) {
  // The rest of the first line is the second one, which is the title.
  EXPECT_EQ(typed(QByteArray(127, 'H') + "rest\n1 1\n>\n")[0]->title(), QStringLiteral("rest\n"));
}

TEST(TypedBoundaries, countALineWithoutNumbersAsAPointWithWhatStoodThereInAnyFile) {
  const XOVPolygonArray polygons = typed({"H1\nH2\n1 2\n>\n", "H1\nH2\nnone\n>\n"});
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(pointsOf(*polygons[1]), (Points{{1, 2}}));
}

TEST(TypedBoundaries, holdASegmentOf1024PointsAndCloseALongerOneThere) {
  const LogCatcher log;
  EXPECT_EQ(onlyPoints(typed("H1\nH2\n" + pointLines(1024) + ">\n")).size(), 1024U);
  EXPECT_EQ(LogCatcher::lines(), QStringList());
  const XOVPolygonArray polygons = typed("H1\nH2\n" + pointLines(1025) + ">\n");
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[0]->npts(), 1024);
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("H2\n"));
  EXPECT_EQ(polygons[1]->bRect(), QRectF(24, 34, 1, 1)); // points 1024 and 1025
  EXPECT_EQ(LogCatcher::lines().size(), 1);
}
