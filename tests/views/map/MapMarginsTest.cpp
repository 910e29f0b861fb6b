#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/map/DegreeLabels.h"
#include "XOV_Graphics/views/map/DiscPlaces.h"
#include "XOV_Graphics/views/map/LabelPlaces.h"
#include "XOV_Graphics/views/map/MapLegendLayout.h"
#include "XOV_Graphics/views/map/MapScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>

using namespace xov;

namespace {

QStringList texts(const std::vector<DegreeLabel>& labels) {
  QStringList found;
  for (const DegreeLabel& label : labels)
    found.append(label.text);
  return found;
}

double distance(QPointF a, QPointF b) { return std::hypot(a.x() - b.x(), a.y() - b.y()); }

// As wide as six points a character.
double sixPoints(const QString& text) { return 6.0 * double(text.size()); }

} // namespace

TEST(DegreeText, hasTheLetterOfItsHalf) {
  const QString degree(QChar(0x00b0));
  EXPECT_EQ(degreeText(Qt::XAxis, 120, 0), "120" + degree + "E");
  EXPECT_EQ(degreeText(Qt::XAxis, 270, 0), "90" + degree + "W");
  EXPECT_EQ(degreeText(Qt::XAxis, -12.25, 2), "12.25" + degree + "W");
  EXPECT_EQ(degreeText(Qt::YAxis, -45.5, 1), "45.5" + degree + "S");
  EXPECT_EQ(degreeText(Qt::YAxis, 60, 0), "60" + degree + "N");
  for (const double deg : {0.0, 360.0, -360.0, -0.0, 1e-9})
    EXPECT_EQ(degreeText(Qt::XAxis, deg, 0), "0" + degree) << deg;
  for (const double deg : {180.0, -180.0, 540.0})
    EXPECT_EQ(degreeText(Qt::XAxis, deg, 0), "180" + degree) << deg;
}

TEST(DegreeLabels, standAtEveryMultipleOfTheStepWithItsDecimals) {
  EXPECT_EQ(texts(degreeLabels(Qt::XAxis, 120, 290, 45)), QStringList({"135°E", "180°", "135°W", "90°W"}));
  EXPECT_EQ(texts(degreeLabels(Qt::YAxis, 0, 1, 0.5F)), QStringList({"0.0°", "0.5°N", "1.0°N"}));
  EXPECT_EQ(texts(degreeLabels(Qt::YAxis, 52.0F, 52.001F, 0.0005F)),
            QStringList({"52.0000°N", "52.0005°N", "52.0010°N"}));
  EXPECT_EQ(degreeLabels(Qt::YAxis, -90, 90, 45).front().deg, -90);
}

TEST(DegreeLabels, areAThousandAtMost) {
  EXPECT_EQ(degreeLabels(Qt::XAxis, 0, 999, 1).size(), 1000u);
  EXPECT_TRUE(degreeLabels(Qt::XAxis, 0, 1000, 1).empty());
}

TEST(DegreeLabels, areNoneForLimitsThatMakeNoAxis) {
  EXPECT_TRUE(degreeLabels(Qt::XAxis, 0, 10, 0).empty());
  EXPECT_TRUE(degreeLabels(Qt::XAxis, 0, 10, -1).empty());
  EXPECT_TRUE(degreeLabels(Qt::XAxis, 10, 0, 1).empty());
  EXPECT_TRUE(degreeLabels(Qt::XAxis, std::nanf(""), 10, 1).empty());
  EXPECT_TRUE(degreeLabels(Qt::XAxis, -HUGE_VALF, HUGE_VALF, 1).empty());
  EXPECT_TRUE(degreeLabels(Qt::XAxis, 0, 1e30F, 1).empty());
}

// A degree of the equator is 2π · 6378.137 / 360 = 111.3195 km. At 45 degrees the normal is 6378.137 / √(1 −
// 0.00669438 / 2) = 6388.838 km long: 111.5063 · cos 45° = 78.8468 km.
TEST(KilometresOfLongitudeDegree, shrinkTowardsThePoles) {
  EXPECT_NEAR(kilometresOfLongitudeDegree(0), 111.3195, 1e-4);
  EXPECT_NEAR(kilometresOfLongitudeDegree(45), 78.8468, 1e-3);
  EXPECT_NEAR(kilometresOfLongitudeDegree(-45), 78.8468, 1e-3);
  EXPECT_NEAR(kilometresOfLongitudeDegree(90), 0, 1e-12);
}

// 10 degrees at the equator are 1113.195 km on 500 points; a quarter is 278 km: 200 km are 89.83 points.
TEST(MapScaleBar, isTheLongestRoundLengthOfAQuarter) {
  const auto bar = mapScaleBar({0, 0, 500, 500}, {10, 20, -5, 5});
  ASSERT_TRUE(bar);
  EXPECT_EQ(bar->kilometres, 200);
  EXPECT_NEAR(bar->length, 89.83, 0.01);
  EXPECT_EQ(bar->text, "200 km");
}

// From 30 to 60 degrees a kilometre has cos 45° / cos 60° = 1.41 lengths.
TEST(MapScaleBar, namesItsLatitudeWhereOthersDiffer) {
  const auto bar = mapScaleBar({0, 0, 500, 500}, {0, 40, 30, 60});
  ASSERT_TRUE(bar);
  EXPECT_EQ(bar->latitudeDeg, 45);
  EXPECT_EQ(bar->text, "500 km at 45°N");
  EXPECT_NEAR(bar->length, 500 * 500 / (40 * 78.8468), 0.01);
}

// A thousandth of a degree at 52 is 68.68 m; a quarter 17 m.
TEST(MapScaleBar, isInMetresOnTheSmallestMaps) {
  const auto bar = mapScaleBar({0, 0, 400, 600}, {13, 13.001F, 52, 52.001F});
  ASSERT_TRUE(bar);
  EXPECT_EQ(bar->text, "10 m");
}

TEST(MapScaleBar, isNoneWithoutAMap) {
  EXPECT_FALSE(mapScaleBar({0, 0, 0, 500}, {10, 20, -5, 5}));
  EXPECT_FALSE(mapScaleBar({0, 0, 500, 500}, {10, 10, -5, 5}));
  EXPECT_FALSE(mapScaleBar({0, 0, 500, 500}, {10, 20, 90, 90}));
  EXPECT_FALSE(mapScaleBar({0, 0, 500, 500}, {std::nanf(""), 20, 0, 10}));
}

TEST(MoveApart, leavesDiscsThatHaveRoomAndMovesTheOthersNextToTheirPlace) {
  std::vector<PlacedDisc> discs = {
      {{100, 100}, {100, 100}, 20}, {{110, 100}, {110, 100}, 10}, {{200, 200}, {200, 200}, 10}};
  moveApart(discs, {0, 0, 300, 300});
  EXPECT_FALSE(discs[0].isMoved());
  EXPECT_FALSE(discs[2].isMoved());
  EXPECT_TRUE(discs[1].isMoved());
  EXPECT_GE(distance(discs[1].center, discs[0].center), 30);
  EXPECT_LE(distance(discs[1].center, discs[1].anchor), 60);
  EXPECT_GT(discs[1].center.x(), 110) << "away from the one in its way";
}

TEST(MoveApart, leavesTwoPointsBetweenDiscs) {
  for (const auto& [x, isMoved] : {std::pair(132.0, false), std::pair(131.9, true)}) {
    std::vector<PlacedDisc> discs = {{{100, 100}, {100, 100}, 20}, {{x, 100}, {x, 100}, 10}};
    moveApart(discs, {0, 0, 300, 300});
    EXPECT_EQ(discs[1].isMoved(), isMoved) << x;
  }
}

TEST(MoveApart, leavesNoneOverAnotherWhereThereIsRoom) {
  std::mt19937 random(8);
  std::uniform_real_distribution<double> place(200, 260);
  std::vector<PlacedDisc> discs;
  for (int i = 0; i < 40; ++i) {
    const QPointF at(place(random), place(random));
    discs.push_back({at, at, 10});
  }
  const QRectF frame(0, 0, 500, 500);
  moveApart(discs, frame);
  for (std::size_t i = 0; i < discs.size(); ++i) {
    EXPECT_TRUE(frame.contains(discs[i].center));
    for (std::size_t k = 0; k < i; ++k)
      EXPECT_GE(distance(discs[i].center, discs[k].center), 20) << i << ' ' << k;
  }
}

TEST(MoveApart, leavesWhatHasNoRoomAndWhatIsTooMuch) {
  std::vector<PlacedDisc> tight = {{{10, 10}, {10, 10}, 9}, {{12, 10}, {12, 10}, 9}};
  moveApart(tight, {0, 0, 20, 20});
  EXPECT_FALSE(tight[1].isMoved());
  std::vector<PlacedDisc> many(kMostMovedDiscs + 1, PlacedDisc{{10, 10}, {10, 10}, 1});
  moveApart(many, {0, 0, 500, 500});
  EXPECT_FALSE(many[1].isMoved());
}

TEST(PlaceLabels, standToTheRightElseWhereTheyCoverNothing) {
  // The second text would begin inside the first one; to its left stands the first place.
  const LabelledPlace places[] = {{{100, 100}, {40, 12}, 4}, {{110, 100}, {40, 12}, 4}};
  const auto standings = placeLabels(places, {}, {0, 0, 300, 300});
  ASSERT_TRUE(standings[0] && standings[1]);
  EXPECT_FALSE(standings[0]->intersects(*standings[1]));
  // To the right of its place the first text would cover the second place.
  EXPECT_EQ(*standings[0], QRectF(56, 94, 40, 12));
  EXPECT_EQ(*standings[1], QRectF(114, 94, 40, 12));
}

TEST(PlaceLabels, keepOffHalfTheClearanceOfOtherPlacesOnAllSides) {
  // To the right of the first place the text would lie from 94 to 106; the second place has 8 points to either side.
  for (const auto& [y, isInTheWay] : {std::pair(93.0, true), {107.0, true}, {85.0, false}, {115.0, false}}) {
    const LabelledPlace places[] = {{{100, 100}, {40, 12}, 4}, {{120, y}, {4, 4}, 16}};
    const auto standings = placeLabels(places, {}, {0, 0, 300, 300});
    ASSERT_TRUE(standings[0]);
    EXPECT_EQ(standings[0]->left(), isInTheWay ? 56 : 104) << y;
  }
}

TEST(PlaceLabels, leaveOutWhatHasNoRoom) {
  const LabelledPlace places[] = {{{50, 50}, {40, 12}, 4}, {{50, 50}, {400, 12}, 4}, {{500, 50}, {4, 4}, 4}};
  const QRectF obstacle(54, 0, 200, 100);
  const auto standings = placeLabels(places, std::span(&obstacle, 1), {0, 0, 200, 100});
  ASSERT_TRUE(standings[0]);
  EXPECT_EQ(standings[0]->right(), 46) << "the obstacle stands at the right";
  EXPECT_FALSE(standings[1]) << "wider than the map";
  EXPECT_FALSE(standings[2]) << "outside of the map";
}

TEST(PlaceLabels, neverCoverEachOther) {
  std::mt19937 random(21);
  std::uniform_real_distribution<double> place(0, 300);
  std::vector<LabelledPlace> places;
  for (int i = 0; i < 200; ++i)
    places.push_back({{place(random), place(random)}, {30, 12}, 4});
  const auto standings = placeLabels(places, {}, {0, 0, 300, 300});
  int shown = 0;
  for (std::size_t i = 0; i < standings.size(); ++i) {
    if (!standings[i]) continue;
    ++shown;
    for (std::size_t k = 0; k < i; ++k)
      EXPECT_FALSE(standings[k] && standings[k]->intersects(*standings[i])) << i << ' ' << k;
  }
  EXPECT_GT(shown, 40);
}

// "Size" is 24 points wide, then 8, a circle of 10, 4, and "5", 6 points: 52 in all, centred about 100.
TEST(LegendLayout, centresItsRow) {
  const LaidOutLegend legend = layoutLegend({{"Size", {{"5", Qt::red, 5}}, {}, {}}}, 400, 100, 8, sixPoints);
  EXPECT_EQ(legend.height, 24);
  ASSERT_EQ(legend.texts.size(), 2U);
  EXPECT_EQ(legend.texts[0].at, QPointF(74, 20));
  ASSERT_EQ(legend.symbols.size(), 1U);
  EXPECT_EQ(legend.symbols[0].center, QPointF(74 + 24 + 8 + 5, 20));
  EXPECT_EQ(legend.texts[1].at, QPointF(74 + 24 + 8 + 10 + 4, 20));
}

TEST(LegendLayout, beginsARowWhereTheWidthIsSpent) {
  const MapLegendSection line{{}, {{"trenches", Qt::red}}, {}, {}}; // 20 + 4 + 48
  EXPECT_EQ(layoutLegend({line, line}, 72 + 26 + 72, 100, 8, sixPoints).height, 24);
  const LaidOutLegend two = layoutLegend({line, line}, 72 + 26 + 71, 100, 8, sixPoints);
  EXPECT_EQ(two.height, 24 + 4 + 24);
  EXPECT_EQ(two.lines[0].from, QPointF(64, 8 + 28 + 12)) << "the first row stands above";
  EXPECT_EQ(two.lines[1].from, QPointF(64, 8 + 12));
}

TEST(LegendLayout, cutsABarOfColorsIntoCellsWithMarksBelow) {
  const LaidOutLegend legend =
      layoutLegend({{{}, {}, {Qt::red, Qt::green, Qt::blue}, {{0, "0"}, {1, "700"}}}}, 400, 75, 0, sixPoints);
  ASSERT_EQ(legend.cells.size(), 3U);
  EXPECT_EQ(legend.cells[1].rect.x(), 50);
  EXPECT_EQ(legend.cells[1].rect.width(), 50);
  ASSERT_EQ(legend.texts.size(), 2U);
  EXPECT_EQ(legend.texts[1].at.x(), 150);
  EXPECT_LT(legend.texts[1].at.y(), legend.bars[0].top());
}

TEST(LegendLayout, isNothingForAnEmptyLegend) { EXPECT_EQ(layoutLegend({}, 400, 100, 8, sixPoints).height, 0); }
