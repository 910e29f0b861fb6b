#include "XOV_Graphics/views/map/geoMapView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/map/MapPrinting.h"
#include "tests/support/LogCatcher.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using namespace testing;
using test::LogCatcher;
using test::polygonOf;

const QRectF kFrame(0, 0, 600, 400);
// Of the whole globe in this frame: 504 by 252 points at (64, 84), 1.4 points a degree.
const QRectF kMap(64, 84, 504, 252);

std::shared_ptr<geoMapPoint> pointAt(float lon, float lat, int colorIndex, float size = 0.5F) {
  auto point = std::make_shared<geoMapPoint>();
  point->setLatLonDepth(lat, lon, 0);
  point->setColorIndex(colorIndex);
  point->setSymbolSize(size);
  return point;
}

std::shared_ptr<geoMapVector> vectorAt(float lon, float lat, float east, float north, float scale) {
  auto vector = std::make_shared<geoMapVector>();
  vector->setLatLonDepth(lat, lon, 0);
  vector->setEastValue(east);
  vector->setNorthValue(north);
  vector->setScaleFactor(scale);
  return vector;
}

std::shared_ptr<XOVPolygonArray> setOf(const std::vector<test::Points>& lines) {
  auto set = std::make_shared<XOVPolygonArray>();
  for (const test::Points& points : lines)
    set->push_back(std::make_shared<XOVPolygon>(polygonOf(points)));
  return set;
}

class GeoMap : public ::testing::Test {
protected:
  // One step of the drawing of a map that has been laid out.
  template <typename Step>
  std::unique_ptr<RecordingContext> step(Step draw) {
    view.computeRects();
    return recordedStep([&] { (view.*draw)(); });
  }

  geoMapView view{kFrame};
};

TEST_F(GeoMap, startsWithTheWholeGlobeAndNothingOnIt) {
  EXPECT_EQ(view.xyRect(), QRectF(0, -90, 360, 180));
  for (const std::size_t size :
       {view.thePoints()->size(), view.theVectors()->size(), view.theColors()->size(), view.thePolygonSets().size()})
    EXPECT_EQ(size, 0U);
  EXPECT_EQ(view.palette(), 0);
  EXPECT_EQ(view.nShades(), 64);
  EXPECT_TRUE(view.useTopoValues());
  EXPECT_EQ(view.vAlignPlot(), 0);
  EXPECT_FALSE(view.hideImage());
  EXPECT_TRUE(view.anImage().isNull());
  EXPECT_FALSE(view.showPlates());
  EXPECT_TRUE(view.outlinePointsWithNoData());
  EXPECT_EQ(view.plateBoundaryColor(), QColor::fromRgbF(0, 0, 0, 0.5F));
}

TEST_F(GeoMap, keepsWhatItIsGiven) {
  const auto points = std::make_shared<GeoMapPointArray>();
  const auto vectors = std::make_shared<GeoMapVectorArray>();
  const auto colorsOfHost = std::make_shared<MapColorArray>();
  view.setThePoints(points);
  view.setTheVectors(vectors);
  view.setTheColors(colorsOfHost);
  EXPECT_EQ(view.thePoints(), points);
  EXPECT_EQ(view.theVectors(), vectors);
  EXPECT_EQ(view.theColors(), colorsOfHost);
  view.setShowPlates(true);
  view.setOutlinePointsWithNoData(false);
  view.setVAlignPlot(2);
  view.setPlateBoundaryColor(colors::red);
  EXPECT_TRUE(view.showPlates());
  EXPECT_FALSE(view.outlinePointsWithNoData());
  EXPECT_EQ(view.vAlignPlot(), 2);
  EXPECT_EQ(view.plateBoundaryColor(), colors::red);
}

TEST_F(GeoMap, takesNullForAnEmptyArray) {
  view.setThePoints(nullptr);
  view.setTheVectors(nullptr);
  view.setTheColors(nullptr);
  ASSERT_NE(view.thePoints(), nullptr);
  ASSERT_NE(view.theVectors(), nullptr);
  ASSERT_NE(view.theColors(), nullptr);
  view.addTheVector(nullptr);
  view.addAPolygonSet(nullptr);
  EXPECT_TRUE(view.theVectors()->empty());
  EXPECT_TRUE(view.thePolygonSets().empty());
}

TEST_F(GeoMap, addsAndRemovesVectors) {
  const auto first = vectorAt(1, 1, 1, 1, 1);
  const auto second = vectorAt(1, 1, 1, 1, 1);
  for (const auto& vector : {first, second, first})
    view.addTheVector(vector);
  EXPECT_EQ(view.theVectors()->size(), 3U);
  view.removeTheVector(first);
  EXPECT_EQ(*view.theVectors(), GeoMapVectorArray{second}) << "every entry of it, but not its equal";
  view.removeTheVector(first);
  EXPECT_EQ(view.theVectors()->size(), 1U);
}

TEST_F(GeoMap, sharesAPolygonSetWithTheHost) {
  const auto set = setOf({{{1, 1}}});
  view.addAPolygonSet(set);
  view.addAPolygonSet(set);
  ASSERT_EQ(view.thePolygonSets().size(), 2U);
  EXPECT_EQ(view.thePolygonSets()[0], set);
}

// --- layout

TEST_F(GeoMap, ofTheGlobeIn600By400PointsIs504By252AtTheMiddle) {
  view.computeRects();
  EXPECT_EQ(view.pRect(), QRectF(20, 20, 560, 360));
  EXPECT_EQ(view.mapRect(), kMap);
  EXPECT_EQ(view.iRect(), kMap);
}

TEST_F(GeoMap, standsAtTheTopWithAlignment1AndAtTheBottomWith2) {
  view.setVAlignPlot(1);
  view.computeRects();
  EXPECT_EQ(view.mapRect(), QRectF(64, 118, 504, 252)); // 50 + 320 - 252
  view.setVAlignPlot(2);
  view.computeRects();
  EXPECT_EQ(view.mapRect(), QRectF(64, 50, 504, 252));
  view.setVAlignPlot(7);
  view.computeRects();
  EXPECT_EQ(view.mapRect(), kMap) << "any other value stands for the middle";
}

TEST_F(GeoMap, ofMiddleLatitudesIsFittedToTheHeight) {
  view.setXLimitsMinMax(0, 40);
  view.setYLimitsMinMax(30, 60);
  view.computeRects();
  // cos 45 · 40 = 28.284271 degrees wide, 30 high: 320 / 30 · 28.284271 = 301.69889 points.
  EXPECT_NEAR(view.mapRect().width(), 301.69889, 1e-4);
  EXPECT_EQ(view.mapRect().height(), 320);
  EXPECT_NEAR(view.mapRect().x(), 64 + (504 - 301.69889) / 2, 1e-4);
  EXPECT_EQ(view.mapRect().y(), 50);
}

TEST_F(GeoMap, withoutAxesIsLaidOutInTheWholePlottingRectangle) {
  view.setShowAxes(false);
  view.computeRects();
  // 560 points wide, 280 high, in the middle of 360.
  EXPECT_EQ(view.mapRect(), QRectF(20, 60, 560, 280));
}

// --- the order of drawing

TEST_F(GeoMap, isDrawnFromTheBackgroundToTheTitle) {
  view.setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(2, 100.0F), 1, 2);
  view.addAPolygonSet(setOf({{{10, 0}, {20, 0}}}));
  view.setShowPlates(true);
  view.setTheColors(std::make_shared<MapColorArray>(MapColorArray{colors::red}));
  view.thePoints()->push_back(pointAt(10, 10, 0));
  view.addTheVector(vectorAt(50, 0, 1, 1, 10));
  view.setTitle(QStringLiteral("The Earth"));
  view.set_timeStamp(true);
  const auto recording = recorded(view);
  const auto& items = recording->items();
  ASSERT_GT(items.size(), 8U);
  using Kind = RecordedItem::Kind;

  EXPECT_EQ(items[0].kind, Kind::Fill);
  EXPECT_EQ(items[0].color, colors::white);
  EXPECT_EQ(boxOf(items[0]), kFrame);
  EXPECT_EQ(items[1].kind, Kind::Fill); // the picture's own paper
  EXPECT_EQ(boxOf(items[1]), kMap);
  EXPECT_EQ(items[2].kind, Kind::Image);
  EXPECT_EQ(items[2].target, kMap);
  EXPECT_EQ(items[3].kind, Kind::Stroke); // the frame of the axes
  EXPECT_EQ(boxOf(items[3]), kMap);
  EXPECT_EQ(items[3].path.lineWidth(), 2);

  const std::size_t last = items.size() - 1;
  EXPECT_EQ(items[last].kind, Kind::Text);
  EXPECT_EQ(items[last].attributes.pointSize(), 9); // the time stamp
  EXPECT_EQ(items[last - 1].text, QStringLiteral("The Earth"));
  EXPECT_EQ(items[last - 2].kind, Kind::Stroke); // the vector
  EXPECT_EQ(items[last - 3].kind, Kind::Symbols);
  EXPECT_EQ(items[last - 4].kind, Kind::Stroke); // the polygon
  EXPECT_EQ(items[last - 4].color, QColor::fromRgbF(0, 0, 0, 0.5F));
  EXPECT_EQ(items[last - 5].kind, Kind::Stroke); // the ticks
  EXPECT_EQ(items[last - 5].path.lineWidth(), 0.75);
}

TEST_F(GeoMap, isWhitePaperAndAxesWithoutAnythingElse) {
  const auto recording = recorded(view);
  EXPECT_EQ(recording->fills().size(), 1U);
  EXPECT_EQ(recording->strokes().size(), 2U); // frame and ticks
  EXPECT_TRUE(recording->images().empty());
}

TEST_F(GeoMap, leavesOutAHiddenImage) {
  view.setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(2, 100.0F), 1, 2);
  view.setHideImage(true);
  EXPECT_TRUE(recorded(view)->images().empty());
}

TEST_F(GeoMap, leavesOutPolygonsUnlessPlatesAreShown) {
  view.addAPolygonSet(setOf({{{10, 0}, {20, 0}}}));
  EXPECT_EQ(recorded(view)->strokes().size(), 2U);
  view.setShowPlates(true);
  EXPECT_EQ(recorded(view)->strokes().size(), 3U);
}

TEST_F(GeoMap, putsTheTitleOverTheMap) {
  view.setTitle(QStringLiteral("Title"));
  const auto title = recorded(view)->textReading(QStringLiteral("Title"));
  ASSERT_TRUE(title);
  EXPECT_EQ(title->position.y(), 84 + 252 + 4);
}

TEST_F(GeoMap, givesAPictureOfItself) {
  const QImage picture = view.getImageOfView();
  EXPECT_EQ(picture.size(), QSize(600, 400));
  EXPECT_EQ(picture.pixelColor(300, 200), QColor(255, 255, 255));
  EXPECT_EQ(picture.pixelColor(64, 200), QColor(0, 0, 0)) << "the left edge of the map";
}

// --- axes

TEST_F(GeoMap, hasTicksEvery45DegreesOnTheGlobe) {
  const QStringList labels = recorded(view)->strings();
  for (const char* label : {"0", "45", "90", "135", "180", "225", "270", "315", "360", "-90", "-45"})
    EXPECT_TRUE(labels.contains(QString::fromLatin1(label))) << label << " in " << labels.join(u' ').toStdString();
}

TEST_F(GeoMap, usesTheLongitudesIntervalForTheLatitudesToo) {
  view.setXLimitsMinMax(0, 60);
  view.setYLimitsMinMax(-30, 30);
  // 60 degrees: every 15.
  const QStringList labels = recorded(view)->strings();
  EXPECT_EQ(labels.filter(QStringLiteral("15")).size(), 3) << "-15 and 15 at the left, 15 below";
  EXPECT_TRUE(labels.contains(QStringLiteral("-30")));
}

TEST_F(GeoMap, leavesTheIntervalToTheAxesUpToTenDegrees) {
  view.setXLimitsMinMax(0, 10);
  view.setYLimitsMinMax(0, 5);
  // 504 points by a font of 18: the least of 5 ticks, 10 / 5 = 2 degrees apart.
  EXPECT_TRUE(recorded(view)->strings().contains(QStringLiteral("8")));
}

TEST_F(GeoMap, labelsTicksInDarkGrayHelvetica18) {
  for (const RecordedItem& text : recorded(view)->texts()) {
    EXPECT_EQ(text.attributes.pointSize(), 18);
    EXPECT_EQ(text.color, colors::darkGray);
  }
}

TEST_F(GeoMap, strokesTheFrameInBlackAndHasNoAxisTitles) {
  view.setXLabelString(QStringLiteral("Longitude"));
  view.setYLabelString(QStringLiteral("Latitude"));
  const auto recording = step(&geoMapView::drawAxes);
  EXPECT_EQ(recording->strokes().at(0).color, colors::black);
  EXPECT_EQ(recording->strokes().at(1).color, colors::black);
  EXPECT_FALSE(recording->textReading(QStringLiteral("Longitude")));
  EXPECT_FALSE(recording->textReading(QStringLiteral("Latitude")));
}

// --- polygons

TEST_F(GeoMap, strokesEachPolygonInTheirColorInsideTheMap) {
  view.addAPolygonSet(setOf({{{0, -90}, {100, 0}}, {{10, 10}, {20, 20}, {30, 10}}}));
  view.addAPolygonSet(setOf({{{350, 0}, {-5, 0}}}));
  view.setPlateBoundaryColor(colors::blue);
  const auto strokes = step(&geoMapView::drawPolygons)->strokes();
  ASSERT_EQ(strokes.size(), 3U);
  for (const RecordedItem& stroke : strokes) {
    EXPECT_EQ(stroke.color, colors::blue);
    EXPECT_EQ(stroke.path.lineWidth(), 1);
    EXPECT_EQ(stroke.clip, kMap);
  }
  // 1.4 points a degree.
  ASSERT_EQ(strokes[0].segments().size(), 1U);
  EXPECT_EQ(strokes[0].segments()[0].p1(), QPointF(64, 84));
  EXPECT_NEAR(strokes[0].segments()[0].x2(), 64 + 140, 1e-9);
  EXPECT_NEAR(strokes[0].segments()[0].y2(), 84 + 126, 1e-9);
  EXPECT_EQ(strokes[1].segments().size(), 2U);
  // -5 is drawn at 355.
  EXPECT_NEAR(strokes[2].segments().at(0).dx(), 5 * 1.4, 1e-9);
}

TEST_F(GeoMap, breaksABoundaryThatCrossesFrom359To1) {
  view.addAPolygonSet(setOf({{{358, 0}, {359, 0}, {1, 0}, {2, 0}}}));
  const auto strokes = step(&geoMapView::drawPolygons)->strokes();
  ASSERT_EQ(strokes.size(), 1U);
  for (const QLineF& segment : strokes[0].segments())
    EXPECT_NEAR(segment.length(), 1.4, 1e-9);
}

TEST_F(GeoMap, leavesOutPolygonsThatAreNoneOrEmpty) {
  const auto set = setOf({{}, {{1, 1}, {2, 2}}});
  set->push_back(nullptr);
  view.addAPolygonSet(set);
  EXPECT_EQ(step(&geoMapView::drawPolygons)->strokes().size(), 1U);
}

// --- points

TEST_F(GeoMap, drawsAPointAsAFilledCircleOutlinedTwice) {
  view.setTheColors(std::make_shared<MapColorArray>(MapColorArray{colors::red, colors::green}));
  view.thePoints()->push_back(pointAt(100, 0, 1));
  view.thePoints()->back()->setAlpha(0.5F);
  const auto recording = step(&geoMapView::drawPoints);
  ASSERT_EQ(recording->fills().size(), 1U);
  ASSERT_EQ(recording->strokes().size(), 2U);
  const RecordedItem fill = recording->fills()[0];
  EXPECT_EQ(fill.color, QColor::fromRgbF(0, 1, 0, 0.5F));
  // The centre at 64 + 100 · 1.4 = 204 and 84 + 90 · 1.4 = 210, 12 · 0.5 = 6 points around it.
  EXPECT_NEAR(boxOf(fill).left(), 198, 1e-4);
  EXPECT_NEAR(boxOf(fill).top(), 204, 1e-4);
  EXPECT_NEAR(boxOf(fill).width(), 12, 1e-4);
  for (const RecordedItem& stroke : recording->strokes()) {
    EXPECT_EQ(stroke.color, QColor::fromRgbF(0, 0, 0, 0.5F));
    EXPECT_EQ(stroke.path.lineWidth(), 1);
    EXPECT_EQ(stroke.clip, kMap);
    EXPECT_EQ(boxOf(stroke), boxOf(fill));
  }
}

TEST_F(GeoMap, drawsPointsInTheirOrderEachWholeBeforeTheNext) {
  view.setTheColors(std::make_shared<MapColorArray>(MapColorArray{colors::red, colors::green}));
  *view.thePoints() = {pointAt(100, 0, 1), nullptr, pointAt(102, 0, 0)};
  view.setOutlinePointsWithNoData(false);
  const auto recording = step(&geoMapView::drawPoints);
  ASSERT_EQ(recording->items().size(), 1U);
  const auto steps = recording->items()[0].steps();
  ASSERT_EQ(steps.size(), 4U);
  EXPECT_EQ(steps[0].color, colors::green);
  EXPECT_EQ(steps[1].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(steps[2].color, colors::red);
  EXPECT_EQ(steps[3].kind, RecordedItem::Kind::Stroke);
}

TEST_F(GeoMap, drawsAPointAtLongitudeMinus10At350) {
  view.thePoints()->push_back(pointAt(-10, 0, -1));
  const QRectF box = boxOf(step(&geoMapView::drawPoints)->strokes().at(0));
  EXPECT_NEAR(box.center().x(), 64 + 350 * 1.4, 1e-9);
}

TEST_F(GeoMap, outlinesPointsWithoutAColorOnlyWhenAskedTo) {
  view.buildSeisColorTable();
  view.thePoints()->push_back(pointAt(10, 0, -1));
  EXPECT_EQ(step(&geoMapView::drawPoints)->strokes().size(), 1U);
  EXPECT_TRUE(step(&geoMapView::drawPoints)->fills().empty());
  view.setOutlinePointsWithNoData(false);
  EXPECT_TRUE(step(&geoMapView::drawPoints)->strokes().empty());
}

TEST_F(GeoMap, drawsOnlyTheOutlineOfAPointWhoseColorIsBeyondTheTable) {
  view.buildSeisColorTable();
  view.thePoints()->push_back(pointAt(10, 0, 21));
  view.setOutlinePointsWithNoData(false);
  const auto recording = step(&geoMapView::drawPoints);
  EXPECT_TRUE(recording->fills().empty());
  EXPECT_EQ(recording->strokes().size(), 1U);
}

TEST_F(GeoMap, drawsNothingForNoPoints) { EXPECT_TRUE(step(&geoMapView::drawPoints)->items().empty()); }

// --- vectors

TEST_F(GeoMap, drawsAVectorFromItsFootAsLongAsItsScaleSays) {
  view.addTheVector(vectorAt(-100, 30, 3, -4, 2.5F));
  const auto strokes = step(&geoMapView::drawVectors)->strokes();
  ASSERT_EQ(strokes.size(), 1U);
  EXPECT_EQ(strokes[0].color, colors::black);
  EXPECT_EQ(strokes[0].path.lineWidth(), 1);
  EXPECT_EQ(strokes[0].clip, kMap);
  ASSERT_EQ(strokes[0].segments().size(), 1U);
  const QLineF line = strokes[0].segments()[0];
  // Longitude -100 at 260: 64 + 364; latitude 30: 84 + 168; then 7.5 points to the east and 10 to the south.
  EXPECT_NEAR(line.x1(), 428, 1e-9);
  EXPECT_NEAR(line.y1(), 252, 1e-9);
  EXPECT_NEAR(line.dx(), 7.5, 1e-9);
  EXPECT_NEAR(line.dy(), -10, 1e-9);
}

TEST_F(GeoMap, drawsEveryVectorOnItsOwn) {
  view.addTheVector(vectorAt(10, 0, 1, 0, 10));
  view.theVectors()->push_back(nullptr);
  view.addTheVector(vectorAt(20, 0, 0, 1, 10));
  EXPECT_EQ(step(&geoMapView::drawVectors)->strokes().size(), 2U);
}

TEST_F(GeoMap, drawsNothingForNoVectors) { EXPECT_TRUE(step(&geoMapView::drawVectors)->items().empty()); }

// --- colours

TEST_F(GeoMap, buildsItsColorTables) {
  view.buildGrayScaleColorsNLevels(3);
  EXPECT_EQ(view.theColors()->size(), 3U);
  EXPECT_EQ(view.theColors()->at(1), QColor::fromRgbF(1, 0.5F, 0.5F));
  view.buildNoGreenColorTable();
  EXPECT_EQ(view.theColors()->size(), 16U);
  view.buildSeisColorTable();
  EXPECT_EQ(view.theColors()->at(0), QColor::fromRgbF(0.67F, 0, 0));
  view.buildPolarColorTable();
  EXPECT_EQ(view.theColors()->at(0), colors::blue);
}

TEST_F(GeoMap, drawsItsStepsToNowhereOutsideAPass) {
  view.thePoints()->push_back(pointAt(10, 0, -1));
  view.drawPoints();
  view.drawVectors();
  view.drawPolygons();
  view.drawAxes();
}

} // namespace
} // namespace xov
