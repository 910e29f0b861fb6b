#include "XOV_Graphics/map/geoMapPoint.h"
#include "XOV_Graphics/map/geoMapVector.h"

#include <gtest/gtest.h>

using namespace xov;

namespace {

/// What points and vectors share, each set to a number of its own.
template <class Feature>
void expectSharedFieldsToBeKeptApart() {
  Feature feature;
  feature.setLat(1);
  feature.setLon(2);
  feature.setDepth(3);
  feature.setSymbolType(4);
  feature.setColorIndex(5);
  feature.setAlpha(0.5F);
  EXPECT_EQ(feature.lat(), 1);
  EXPECT_EQ(feature.lon(), 2);
  EXPECT_EQ(feature.depth(), 3);
  EXPECT_EQ(feature.symbolType(), 4);
  EXPECT_EQ(feature.colorIndex(), 5);
  EXPECT_EQ(feature.alpha(), 0.5F);
}

template <class Feature>
void expectSharedDefaults() {
  const Feature feature;
  EXPECT_EQ(feature.lat(), 0);
  EXPECT_EQ(feature.lon(), 0);
  EXPECT_EQ(feature.depth(), 0);
  EXPECT_EQ(feature.symbolType(), 0);
  EXPECT_EQ(feature.colorIndex(), 0);
  EXPECT_EQ(feature.alpha(), 1);
}

template <class Feature>
void expectPlaceToBeSetAtOnce() {
  Feature feature;
  feature.setLatLonDepth(-35.5F, 174.25F, 33);
  EXPECT_EQ(feature.lat(), -35.5F);
  EXPECT_EQ(feature.lon(), 174.25F);
  EXPECT_EQ(feature.depth(), 33);
}

} // namespace

TEST(GeoMapPoint, isAnOpaqueDotOfNoSizeAtFirst) {
  expectSharedDefaults<geoMapPoint>();
  EXPECT_EQ(geoMapPoint().symbolSize(), 0);
}

TEST(GeoMapPoint, keepsItsFieldsApart) {
  expectSharedFieldsToBeKeptApart<geoMapPoint>();
  geoMapPoint point;
  point.setSymbolSize(0.25F);
  EXPECT_EQ(point.symbolSize(), 0.25F);
}

TEST(GeoMapPoint, takesItsPlaceAtOnce) { expectPlaceToBeSetAtOnce<geoMapPoint>(); }

TEST(GeoMapVector, isZeroAtFirst) {
  expectSharedDefaults<geoMapVector>();
  const geoMapVector vector;
  EXPECT_EQ(vector.scaleFactor(), 0);
  EXPECT_EQ(vector.northValue(), 0);
  EXPECT_EQ(vector.eastValue(), 0);
  EXPECT_EQ(vector.downValue(), 0);
}

TEST(GeoMapVector, keepsItsFieldsApart) {
  expectSharedFieldsToBeKeptApart<geoMapVector>();
  geoMapVector vector;
  vector.setScaleFactor(6);
  vector.setNorthValue(7);
  vector.setEastValue(8);
  vector.setDownValue(9);
  EXPECT_EQ(vector.scaleFactor(), 6);
  EXPECT_EQ(vector.northValue(), 7);
  EXPECT_EQ(vector.eastValue(), 8);
  EXPECT_EQ(vector.downValue(), 9);
}

TEST(GeoMapVector, takesItsPlaceAtOnce) { expectPlaceToBeSetAtOnce<geoMapVector>(); }
