#include "apps/resources/BoundaryFiles.h"

#include "XOV_Graphics/map/BoundaryText.h"
#include "tests/map/MapPrinting.h"

#include <gtest/gtest.h>

using namespace xov;
using namespace xov::maker;
using xov::test::Points;
using xov::test::pointsOf;

namespace {

constexpr char kPublished[] = "AF-AN\n"
                              "  -0.4379300E+00,-0.5485140E+02\n"
                              "  -0.3890000E-01,-0.5467500E+02\n"
                              "*** end of line segment ***\n"
                              "AF/EU\n"
                              "  1.0E+01, 3.6E+01\n"
                              "  1.2E+01, 3.65E+01\n"
                              "*** end of line segment ***\n";

QString refusal(const QByteArray& text) { return importedBoundaries(text).error(); }

XOVPolygonArray read(const QByteArray& text, void (*reader)(const QByteArray&, SegmentCollector&)) {
  XOVPolygonArray polygons;
  SegmentCollector segments(kTypedSegmentPoints, SegmentCollector::Bounds::NotComputed, polygons);
  reader(text, segments);
  return polygons;
}

} // namespace

TEST(BoundaryFiles, byTypeAreReadBackWithTheirTitles) {
  const QByteArray text = boundariesByType("All trenches", "trench", {{{-70, 1.5}, {-71, 2}}, {{5, 6}, {7, 8}}});
  EXPECT_EQ(text, "All trenches\n"
                  "trench 1\n-70.00000 1.50000\n-71.00000 2.00000\n>\n"
                  "trench 2\n5.00000 6.00000\n7.00000 8.00000\n>\n");
  const XOVPolygonArray polygons = read(text, readTypedBoundaries);
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[1]->title(), QStringLiteral("trench 2\n"));
  EXPECT_EQ(pointsOf(*polygons[0]), (Points{{290, 1.5F}, {289, 2}}));
}

TEST(BoundaryFiles, inPlaceOfTheModelSaySoInEachTitle) {
  const QByteArray text = derivedBoundariesBySegment({{"ridge", {{{1, 2}, {3, 4}}}}, {"trench", {{{5, 6}, {7, 8}}}}});
  EXPECT_EQ(text, "ridge 1 (generalised, not PB2002)\n1.00000 2.00000\n3.00000 4.00000\n*** end of line segment ***\n"
                  "trench 1 (generalised, not PB2002)\n5.00000 6.00000\n7.00000 8.00000\n"
                  "*** end of line segment ***\n");
  EXPECT_TRUE(areDerivedBoundaries(text));
  EXPECT_FALSE(areDerivedBoundaries(*importedBoundaries(kPublished)));
  EXPECT_EQ(refusal(text), "boundaries that stand in for PB2002, not the published ones");
  EXPECT_EQ(read(text, readBirdBoundaries).size(), 2U);
}

TEST(BoundaryFiles, ofTheModelMayHaveBlanksAlready) {
  QByteArray blanks = kPublished;
  blanks.replace(',', "  ");
  EXPECT_EQ(*importedBoundaries(blanks), *importedBoundaries(kPublished));
  EXPECT_EQ(refusal("A-B\n1 2 3\n4 5\n***\n"),
            QStringLiteral("line 2: \"1 2 3\" is no \"longitude,latitude\" in degrees nor \"***\""));
}

TEST(BoundaryFiles, ofTheModelAreImportedWithBlanksForCommas) {
  const Result<QByteArray> text = importedBoundaries(kPublished);
  ASSERT_TRUE(text) << qPrintable(text.error());
  EXPECT_EQ(*text, "AF-AN\n-0.43793 -54.85140\n-0.03890 -54.67500\n*** end of line segment ***\n"
                   "AF/EU\n10.00000 36.00000\n12.00000 36.50000\n*** end of line segment ***\n");
}

TEST(BoundaryFiles, ofTheModelMayHaveLinesOfWindows) {
  QByteArray windows = kPublished;
  windows.replace("\n", "\r\n");
  EXPECT_EQ(*importedBoundaries(windows), *importedBoundaries(kPublished));
}

TEST(BoundaryFiles, ofTheModelAreCutAtTheMeridians) {
  const Result<QByteArray> text = importedBoundaries("A-B\n359,1\n1,3\n*** end\n");
  // Half way from -1 to 1.
  EXPECT_EQ(*text, "A-B\n-1.00000 1.00000\n-0.00010 2.00000\n*** end of line segment ***\n"
                   "A-B\n0.00000 2.00000\n1.00000 3.00000\n*** end of line segment ***\n");
}

TEST(BoundaryFiles, ofTheModelComeInPiecesThatTheReaderTakes) {
  QByteArray published = "A-B\n";
  for (int i = 0; i < 600; ++i)
    published += QByteArray::number(i * 0.1) + ",0\n";
  const QByteArray text = *importedBoundaries(published + "*** end\n");
  // 512 points and 600 - 511 that begin with the last of them.
  EXPECT_EQ(text.count("A-B\n"), 2);
  EXPECT_EQ(text.count('\n'), 512 + 89 + 2 * 2);
}

TEST(BoundaryFiles, ofTheModelAreRefusedWithTheLineThatIsWrong) {
  EXPECT_EQ(refusal(""), QStringLiteral("no boundary segments"));
  EXPECT_EQ(refusal("1,2\n3,4\n***\n"), QStringLiteral("line 1: \"1,2\" is no name of a segment"));
  EXPECT_EQ(refusal("A-B\n1;2\n***\n"),
            QStringLiteral("line 2: \"1;2\" is no \"longitude,latitude\" in degrees nor \"***\""));
  EXPECT_EQ(refusal("A-B\n1,95\n***\n"),
            QStringLiteral("line 2: \"1,95\" is no \"longitude,latitude\" in degrees nor \"***\""));
  EXPECT_EQ(refusal("A-B\nnan,5\n***\n"),
            QStringLiteral("line 2: \"nan,5\" is no \"longitude,latitude\" in degrees nor \"***\""));
  EXPECT_EQ(refusal("A-B\n1,2\n***\n"), QStringLiteral("line 3: the end of a segment without a name and two points"));
  EXPECT_EQ(refusal("***\n"), QStringLiteral("line 1: the end of a segment without a name and two points"));
  EXPECT_EQ(refusal("A-B\n1,2\n3,4\n"), QStringLiteral("line 3: the text ends within the segment \"A-B\""));
  EXPECT_EQ(refusal(QByteArray("\x7f"
                               "ELF\1\0\n",
                               7)),
            QStringLiteral("line 1: \"?ELF??\" is no name of a segment"));
}
