#include "apps/xov/map/MapEvents.h"

#include "XOV_Graphics/seismic/Undefined.h"
#include "apps/xov/map/MapKey.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov::cli {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

std::shared_ptr<Hypocentre> event(float lon, float lat, float depthKm, float magnitude) {
  HypocentreValues values;
  values.longitudeDeg = lon;
  values.latitudeDeg = lat;
  values.depthKm = depthKm;
  values.preferredMagnitude = magnitude;
  return std::make_shared<Hypocentre>(values);
}

TEST(DepthColor, runsFromRedAtTheSurfaceToTheOtherEndAt700Km) {
  // Of 21 colours, 20 · sqrt(depth / 700): 20 · sqrt(0.05) = 4.47, 20 · sqrt(0.25) = 10.
  EXPECT_EQ(depthColorIndex(0, 21, true), 0);
  EXPECT_EQ(depthColorIndex(35, 21, true), 4);
  EXPECT_EQ(depthColorIndex(175, 21, true), 10);
  EXPECT_EQ(depthColorIndex(700, 21, true), 20);
  EXPECT_EQ(depthColorIndex(900, 21, true), 20);
  EXPECT_EQ(depthColorIndex(-3, 21, true), 0);
}

TEST(DepthColor, countsFromTheLastColorWhereThatIsRed) {
  EXPECT_EQ(depthColorIndex(0, 16, false), 15);
  EXPECT_EQ(depthColorIndex(700, 16, false), 0);
}

TEST(DepthColor, isNoneForADepthThatIsNotKnown) {
  EXPECT_EQ(depthColorIndex(kUndefinedValue, 21, true), -1);
  EXPECT_EQ(depthColorIndex(kNan, 21, true), -1);
  EXPECT_EQ(depthColorIndex(10, 0, true), -1);
}

TEST(DepthColors, haveRedAtTheEndThatTheySay) {
  for (const std::string& name : depthColorNames()) {
    const DepthColors& table = depthColorsNamed(name);
    EXPECT_EQ(table.name, name);
    geoMapView view;
    table.build(view);
    const QColor& red = table.redFirst ? view.theColors()->front() : view.theColors()->back();
    EXPECT_GT(red.red(), red.blue()) << name;
    EXPECT_GT(red.red(), red.green()) << name;
  }
}

TEST(MagnitudeSize, growsByHalfWithEachUnit) {
  // Radii of 2, 3 and 4.5 points of 12 a size.
  EXPECT_FLOAT_EQ(magnitudeSymbolSize(4), 2.0F / 12);
  EXPECT_FLOAT_EQ(magnitudeSymbolSize(5), 3.0F / 12);
  EXPECT_FLOAT_EQ(magnitudeSymbolSize(6), 4.5F / 12);
}

TEST(MagnitudeSize, staysBetween1And20Points) {
  EXPECT_FLOAT_EQ(magnitudeSymbolSize(-2), 1.0F / 12);
  EXPECT_FLOAT_EQ(magnitudeSymbolSize(12), 20.0F / 12);
}

TEST(MagnitudeSize, isThatOfMagnitude4WhereItIsNotKnown) {
  EXPECT_EQ(magnitudeSymbolSize(kUndefinedValue), magnitudeSymbolSize(4));
  EXPECT_EQ(magnitudeSymbolSize(kNan), magnitudeSymbolSize(4));
}

TEST(EventPoints, haveTheLargestFirst) {
  const GeoMapPointArray points =
      eventPoints({event(1, 1, 0, 4), event(2, 2, 0, 8), event(3, 3, 0, kUndefinedValue)}, MapRegion(), 21, true);
  ASSERT_EQ(points.size(), 3U);
  EXPECT_EQ(points[0]->lon(), 2);
  EXPECT_EQ(points[1]->lon(), 1);
  EXPECT_EQ(points[2]->lon(), 3);
}

TEST(EventPoints, leaveOutEventsWithoutAPlace) {
  EXPECT_TRUE(
      eventPoints({event(kUndefinedValue, 1, 0, 4), event(1, kUndefinedValue, 0, 4)}, MapRegion(), 21, true).empty());
}

TEST(EventPoints, haveColorSizeAndPlaceOfTheirEvent) {
  const GeoMapPointArray points = eventPoints({event(-20, -5, 175, 6)}, MapRegion(), 21, true);
  ASSERT_EQ(points.size(), 1U);
  EXPECT_EQ(points[0]->lat(), -5);
  EXPECT_EQ(points[0]->lon(), 340);
  EXPECT_EQ(points[0]->depth(), 175);
  EXPECT_EQ(points[0]->colorIndex(), 10);
  EXPECT_FLOAT_EQ(points[0]->symbolSize(), 4.5F / 12);
}

TEST(MagnitudeKey, hasACircleForEachWholeMagnitudeThatThereIs) {
  const auto radius = [](float magnitude) { return 2.0 * double(magnitude); };
  const MapLegendSection key =
      magnitudeKey({event(0, 0, 10, 6.6F), event(0, 0, 10, 4.6F), event(0, 0, 10, kUndefinedValue)}, radius);
  ASSERT_EQ(key.items.size(), 3U);
  EXPECT_EQ(key.items[0].text, QStringLiteral("5"));
  EXPECT_EQ(key.items[0].radius, 10);
  EXPECT_EQ(key.items[2].text, QStringLiteral("7"));
  EXPECT_TRUE(magnitudeKey({event(0, 0, 10, kUndefinedValue)}, radius).items.empty());
  const MapLegendSection wide = magnitudeKey({event(0, 0, 10, -2), event(0, 0, 10, 9)}, radius);
  ASSERT_EQ(wide.items.size(), 7U) << "the largest ones";
  EXPECT_EQ(wide.items[0].text, QStringLiteral("3"));
}

TEST(DepthKey, runsFromTheSurfaceToTheRight) {
  const std::vector<QColor> colors = {Qt::red, Qt::green, Qt::blue};
  EXPECT_EQ(depthKey(colors, true).colors.front(), QColor(Qt::red));
  EXPECT_EQ(depthKey(colors, false).colors.front(), QColor(Qt::blue));
  // As the colours: by the square root, 0.2673 of the bar for 50 of 700 km.
  EXPECT_NEAR(depthKey(colors, true).marks[1].share, 0.2673, 1e-4);
  EXPECT_EQ(depthKey(colors, true).marks.back().text, QStringLiteral("700"));
}

} // namespace
} // namespace xov::cli
