#include "apps/resources/BoundarySegments.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace xov::maker;

/// Lets a failing comparison show a point.
void PrintTo(const QPointF& point, std::ostream* out) { *out << '(' << point.x() << ", " << point.y() << ')'; }

TEST(BoundarySegments, areCutAtGreenwichOnTheirWay) {
  // Longitude 0 is half way, at latitude (10 + 20) / 2.
  EXPECT_EQ(cutAtMeridians({{-1, 10}, {1, 20}}), (Segments{{{-1, 10}, {-0.0001, 15}}, {{0, 15}, {1, 20}}}));
  EXPECT_EQ(cutAtMeridians({{1, 20}, {-3, 24}}), (Segments{{{1, 20}, {0, 21}}, {{-0.0001, 21}, {-3, 24}}}));
}

TEST(BoundarySegments, areCutAtTheDateLineWhereThatIsTheShorterWay) {
  // From 179 to -179 the date line is half way, at latitude 2.
  EXPECT_EQ(cutAtMeridians({{179, 0}, {-179, 4}}), (Segments{{{179, 0}, {180, 2}}, {{-179.9999, 2}, {-179, 4}}}));
  EXPECT_EQ(cutAtMeridians({{-179, 4}, {177, 0}}), (Segments{{{-179, 4}, {-179.9999, 3}}, {{180, 3}, {177, 0}}}));
}

TEST(BoundarySegments, keepAPointOnTheMeridianOnce) {
  EXPECT_EQ(cutAtMeridians({{-1, 1}, {0, 2}, {1, 3}}), (Segments{{{-1, 1}, {-0.0001, 2}}, {{0, 2}, {1, 3}}}));
}

TEST(BoundarySegments, ofASinglePointAreLeftOut) {
  EXPECT_TRUE(cutAtMeridians({{5, 5}}).empty());
  EXPECT_TRUE(cutAtMeridians({}).empty());
}

TEST(BoundarySegments, onOneSideStayAsTheyAre) {
  const Segment segment{{10, 0}, {12, 1}, {11, 2}};
  EXPECT_EQ(cutAtMeridians(segment), (Segments{segment}));
}

TEST(BoundarySegments, loseThePointsThatAreNearTheLine) {
  // (1, 0.05) is 0.05 off the line to (2, 0), (3, 1) is off it by more.
  const Segment segment{{0, 0}, {1, 0.05}, {2, 0}, {3, 1}, {4, 0}};
  EXPECT_EQ(thinned(segment, 0.1), (Segment{{0, 0}, {2, 0}, {3, 1}, {4, 0}}));
  EXPECT_EQ(thinned(segment, 0.01), segment);
  EXPECT_EQ(thinned(segment, 10), (Segment{{0, 0}, {4, 0}}));
}

TEST(BoundarySegments, thatReturnToTheirStartKeepTheirTurn) {
  const Segment loop{{0, 0}, {3, 4}, {0, 0}};
  EXPECT_EQ(thinned(loop, 1), loop);
}

TEST(BoundarySegments, comeInPiecesThatShareTheirEnds) {
  EXPECT_EQ(inPieces({{1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}}, 3),
            (Segments{{{1, 0}, {2, 0}, {3, 0}}, {{3, 0}, {4, 0}, {5, 0}}}));
  EXPECT_EQ(inPieces({{1, 0}, {2, 0}, {3, 0}, {4, 0}}, 3), (Segments{{{1, 0}, {2, 0}, {3, 0}}, {{3, 0}, {4, 0}}}));
  EXPECT_EQ(inPieces({{1, 0}, {2, 0}}, 3), (Segments{{{1, 0}, {2, 0}}}));
}
