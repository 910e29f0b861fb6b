#include "XOV_Graphics/seismic/array/ArrayOffsets.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

std::vector<StationOffset> offsetsOf(std::initializer_list<StationPlace> places) {
  return stationOffsets(std::vector<StationPlace>(places));
}

// At the equator one degree east is 6378.137 km · π/180 = 111.3195 km. The radius in the meridian is
// 6378.137 · (1 − 0.00669438) = 6335.439 km: one degree north is 110.5743 km.
TEST(ArrayOffsets, followTheEllipsoidAtTheEquator) {
  const auto east = offsetsOf({{0, 10}, {0, 11}});
  EXPECT_NEAR(east[0].eastKm, -111.3195 / 2, 1e-3);
  EXPECT_NEAR(east[1].eastKm, 111.3195 / 2, 1e-3);
  const auto north = offsetsOf({{-0.5, 10}, {0.5, 10}});
  EXPECT_NEAR(north[0].northKm, -110.5743 / 2, 1e-3);
  EXPECT_NEAR(north[1].northKm, 110.5743 / 2, 1e-3);
}

// At 60° sin² is 3/4: the root of 1 − 0.00669438 · 3/4 is 0.9974865, so the radius in the prime vertical is
// 6394.209 km and half of it, cos 60°, gives 55.7998 km a degree. The radius in the meridian is
// 6394.209 · 0.9933056 / 0.9949792 = 6383.454 km: 111.4123 km a degree.
TEST(ArrayOffsets, followTheEllipsoidAtHighLatitude) {
  const auto east = offsetsOf({{60, -1}, {60, 1}});
  EXPECT_NEAR(east[1].eastKm - east[0].eastKm, 2 * 55.7998, 2e-3);
  const auto north = offsetsOf({{59.95, 0}, {60.05, 0}});
  EXPECT_NEAR(north[1].northKm - north[0].northKm, 11.14123, 1e-4);
}

TEST(ArrayOffsets, areCountedFromTheMiddle) {
  const auto offsets = offsetsOf({{10, 20}, {10.2, 20.4}, {10.1, 20.6}});
  double east = 0;
  double north = 0;
  for (const StationOffset& offset : offsets) {
    east += offset.eastKm;
    north += offset.northKm;
  }
  EXPECT_NEAR(east, 0, 1e-9);
  EXPECT_NEAR(north, 0, 1e-9);
}

TEST(ArrayOffsets, crossTheDateLineTheShortWay) {
  const auto offsets = offsetsOf({{0, 179.9}, {0, -179.9}, {0, 180.1}});
  EXPECT_NEAR(offsets[1].eastKm - offsets[0].eastKm, 0.2 * 111.3195, 1e-3);
  EXPECT_NEAR(offsets[2].eastKm, offsets[1].eastKm, 1e-9);
}

TEST(ArrayOffsets, ofNoStationsAreNone) { EXPECT_TRUE(offsetsOf({}).empty()); }

} // namespace
} // namespace xov
