#include "XOV_Graphics/views/map/MapProjection.h"

#include "tests/map/MapPrinting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace xov {
namespace {

using test::polygonOf;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr QRectF kFrame(64, 84, 504, 252);
constexpr PlotLimits kFromGreenwich = {0, 360, -90, 90};
constexpr PlotLimits kFromTheDateLine = {-180, 180, -90, 90};

// The lines of a map that is one point a degree, its zero longitude and latitude at (0, 0); what is left of a line of
// a single point draws nothing and does not count.
std::vector<QPolygonF> lines(const PlotLimits& limits, const test::Points& points) {
  const QRectF frame(limits.xmin, limits.ymin, limits.xmax - limits.xmin, limits.ymax - limits.ymin);
  return MapProjection(frame, limits).line(polygonOf(points)).polylines();
}

TEST(MapProjection, placesDegreesEvenlyInTheFrame) {
  const MapProjection projection(kFrame, kFromGreenwich);
  // 504 / 360 = 252 / 180 = 1.4 points a degree.
  EXPECT_EQ(projection.place(0, -90), QPointF(64, 84));
  EXPECT_EQ(projection.place(360, 90), QPointF(568, 336));
  EXPECT_NEAR(projection.place(100, 45).x(), 64 + 140, 1e-9);
  EXPECT_NEAR(projection.place(100, 45).y(), 84 + 189, 1e-9);
}

TEST(MapProjection, showsWesternLongitudesOnTheRightOfAMapBeyond180) {
  const MapProjection projection(kFrame, kFromGreenwich);
  EXPECT_EQ(projection.symbolLongitude(-10), 350);
  EXPECT_EQ(projection.symbolLongitude(-0.5F), 359.5F);
  EXPECT_EQ(projection.symbolLongitude(0), 0);
  EXPECT_EQ(projection.symbolLongitude(200), 200);
}

TEST(MapProjection, leavesWesternLongitudesAloneUpTo180) {
  EXPECT_EQ(MapProjection(kFrame, kFromTheDateLine).symbolLongitude(-10), -10);
  EXPECT_EQ(MapProjection(kFrame, kFromTheDateLine).symbolLongitude(200), 200);
  EXPECT_EQ(MapProjection(kFrame, {0, 180.5F, 0, 1}).symbolLongitude(-10), 350);
}

TEST(MapProjection, turnsSymbolsEastwardsEvenOnAMapThatBeginsInTheWest) {
  EXPECT_EQ(MapProjection(kFrame, {-180, 360, -90, 90}).symbolLongitude(-10), 350);
}

TEST(MapProjection, showsEasternLongitudesOfLinesOnTheLeftOfAMapThatBeginsInTheWest) {
  const MapProjection projection(kFrame, kFromTheDateLine);
  EXPECT_EQ(projection.lineLongitude(200), -160);
  EXPECT_EQ(projection.lineLongitude(359.5F), -0.5F);
  EXPECT_EQ(projection.lineLongitude(180), 180);
  EXPECT_EQ(projection.lineLongitude(-10), -10);
}

TEST(MapProjection, turnsLinesEastwardsAndBackOnAMapThatBeginsInTheWestAndReachesBeyond180) {
  const MapProjection projection(kFrame, {-180, 360, -90, 90});
  EXPECT_EQ(projection.lineLongitude(-10), -10);
  EXPECT_EQ(projection.lineLongitude(200), -160);
  // -200 + 360 = 160 is not beyond 180.
  EXPECT_EQ(projection.lineLongitude(-200), 160);
}

TEST(MapProjection, turnsLinesEastwardsOnlyOnAMapFromGreenwich) {
  const MapProjection projection(kFrame, kFromGreenwich);
  EXPECT_EQ(projection.lineLongitude(-10), 350);
  EXPECT_EQ(projection.lineLongitude(200), 200);
}

TEST(MapLine, joinsThePointsInTheirOrder) {
  EXPECT_EQ(lines(kFromGreenwich, {{10, 5}, {20, 15}, {15, 25}}),
            std::vector<QPolygonF>{QPolygonF(QList<QPointF>{{10, 5}, {20, 15}, {15, 25}})});
}

TEST(MapLine, thatCrossesFrom359To1IsBroken) {
  EXPECT_EQ(lines(kFromGreenwich, {{358, 0}, {359, 1}, {1, 2}, {2, 3}}),
            (std::vector<QPolygonF>{QPolygonF(QList<QPointF>{{358, 0}, {359, 1}}),
                                    QPolygonF(QList<QPointF>{{1, 2}, {2, 3}})}));
}

TEST(MapLine, goesOnAcrossAJumpOf350AndBreaksBeyond) {
  EXPECT_EQ(lines(kFromGreenwich, {{355, 0}, {5, 0}}).size(), 1U);
  EXPECT_EQ(lines(kFromGreenwich, {{5, 0}, {355, 0}}).size(), 1U);
  EXPECT_EQ(lines(kFromGreenwich, {{std::nextafter(355.0F, 360.0F), 0}, {5, 0}}).size(), 0U);
  EXPECT_EQ(lines(kFromGreenwich, {{5, 0}, {std::nextafter(355.0F, 360.0F), 0}}).size(), 0U);
}

TEST(MapLine, isBrokenAtTheDateLineOfAMapThatEndsThere) {
  // 181 is drawn at -179: a jump of 358.
  EXPECT_EQ(lines(kFromTheDateLine, {{178, 0}, {179, 0}, {181, 0}, {182, 0}}),
            (std::vector<QPolygonF>{QPolygonF(QList<QPointF>{{178, 0}, {179, 0}}),
                                    QPolygonF(QList<QPointF>{{-179, 0}, {-178, 0}})}));
}

TEST(MapLine, goesOnAcrossGreenwichOnAMapThatShowsItInTheMiddle) {
  // 359 is drawn at -1: a jump of 2.
  EXPECT_EQ(lines(kFromTheDateLine, {{359, 0}, {1, 0}}),
            std::vector<QPolygonF>{QPolygonF(QList<QPointF>{QPointF(-1, 0), QPointF(1, 0)})});
}

TEST(MapLine, ofOnePointOrNoneDrawsNothing) {
  EXPECT_TRUE(lines(kFromGreenwich, {{10, 5}}).empty());
  EXPECT_TRUE(MapProjection(kFrame, kFromGreenwich).line(XOVPolygon()).isEmpty());
}

TEST(MapLine, isBrokenByPointsThatAreNotFinite) {
  EXPECT_EQ(
      lines(kFromGreenwich, {{1, 1}, {2, 2}, {kNan, 3}, {4, 4}, {5, 5}, {6, kNan}, {7, 7}}),
      (std::vector<QPolygonF>{QPolygonF(QList<QPointF>{{1, 1}, {2, 2}}), QPolygonF(QList<QPointF>{{4, 4}, {5, 5}})}));
}

TEST(MapLine, takesNoMorePointsThanThereAre) {
  XOVPolygon polygon = polygonOf({{1, 1}, {2, 2}});
  polygon.setNpts(1000);
  EXPECT_EQ(MapProjection(kFrame, kFromGreenwich).line(polygon).polylines().front().size(), 2);
  polygon.setNpts(-1);
  EXPECT_TRUE(MapProjection(kFrame, kFromGreenwich).line(polygon).isEmpty());
}

// Another way to the same: the adjusted longitudes in double precision first, then each point's own pen.
TEST(MapLine, agreesWithAPlainReckoningOverRandomMapsAndLines) {
  std::mt19937 random(73);
  const auto between = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
  int breaks = 0;
  for (int i = 0; i < 600; ++i) {
    // Quarters of degrees, which every precision holds.
    const PlotLimits limits = {float(between(-720, 800)) / 4, float(between(801, 1440)) / 4, -90, 90};
    const QRectF frame(between(0, 100), between(0, 100), between(1, 1000), between(1, 1000));
    test::Points points;
    for (int n = between(1, 40); n > 0; --n) {
      // Half of them near a meridian where maps and longitudes end.
      const int lon = between(0, 1) == 0 ? between(-720, 1440) : 720 * between(-1, 2) + between(-15, 15);
      points.emplace_back(float(lon) / 4, float(between(-360, 360)) / 4);
    }

    std::vector<QPolygonF> expected;
    double before = 0;
    for (const auto& [givenLon, lat] : points) {
      double lon = givenLon;
      if (double(limits.xmax) > 180 && lon < 0) lon += 360;
      if (double(limits.xmin) < 0 && lon > 180) lon -= 360;
      const QPointF at(frame.left() + frame.width() * (lon - double(limits.xmin)) / double(limits.xmax - limits.xmin),
                       frame.top() + frame.height() * (double(lat) + 90) / 180);
      const bool joined = !expected.empty() && before - lon <= 350 && lon - before <= 350;
      breaks += joined || expected.empty() ? 0 : 1;
      if (!joined) expected.emplace_back();
      expected.back() << at;
      before = lon;
    }
    std::erase_if(expected, [](const QPolygonF& line) { return line.size() < 2; });
    const std::vector<QPolygonF> found = MapProjection(frame, limits).line(polygonOf(points)).polylines();
    ASSERT_EQ(found.size(), expected.size()) << i;
    for (std::size_t line = 0; line < found.size(); ++line) {
      ASSERT_EQ(found[line].size(), expected[line].size()) << i;
      for (qsizetype k = 0; k < found[line].size(); ++k) {
        ASSERT_NEAR(found[line][k].x(), expected[line][k].x(), 1e-8) << i;
        ASSERT_NEAR(found[line][k].y(), expected[line][k].y(), 1e-8) << i;
      }
    }
  }
  EXPECT_GT(breaks, 200);
}

TEST(MapProjection, givesSymbolsThePlacesOfSinglePoints) {
  const MapProjection projection({3.5, -7, 333, 111}, {120, 290, -60.5F, 33});
  const std::vector<float> lons = {120, 133.7F, 289.99F, 400};
  const std::vector<float> lats = {-60.5F, 0.1F, 32, -89};
  const Symbols symbols = projection.symbols(lons, lats);
  ASSERT_EQ(symbols.last, 4);
  for (std::size_t i = 0; i < lons.size(); ++i)
    EXPECT_EQ(*symbols.center(std::int64_t(i)), projection.place(lons[i], lats[i]));
}

} // namespace
} // namespace xov
