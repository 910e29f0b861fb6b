#include "examples/synthetic/ArrayWave.h"

#include "XOV_Graphics/grid/XyzGrid.h"
#include "XOV_Graphics/seismic/array/RecordArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov::synthetic {
namespace {

// A wave of 8.3 km/s from 57°: (sin 57°, cos 57°) / 8.3 = (0.10105, 0.06562) s/km.
constexpr double kEast = 0.10105;
constexpr double kNorth = 0.06562;

TEST(ArrayWave, isFoundInItsRecordingsDespiteTheNoise) {
  PlaneWave wave;
  wave.noise = 0.4;
  const auto traces = arrayTraces(wave);
  ASSERT_EQ(traces.size(), 9u);
  const auto array = arrayOfRecords(SeismogramArray(traces.begin(), traces.end()), {});
  ASSERT_TRUE(array) << qPrintable(array.error());
  BeamSearch search;
  search.intervalSeconds = array->intervalSeconds;
  search.windowFrom = 12;
  search.windowTo = 24;
  search.lowestHz = 1;
  search.highestHz = 3;
  const auto beam = beamPower(array->traces, search);
  ASSERT_TRUE(beam) << qPrintable(beam.error());
  const auto index = int(std::max_element(beam->power.begin(), beam->power.end()) - beam->power.begin());
  EXPECT_NEAR(beam->slowness(index % 101), kEast, 0.015);
  EXPECT_NEAR(beam->slowness(100 - index / 101), kNorth, 0.015);
}

TEST(ArrayWave, isTheSameAtEveryCall) {
  PlaneWave wave;
  wave.noise = 1;
  const auto one = arrayTraces(wave);
  const auto two = arrayTraces(wave);
  for (std::size_t i = 0; i < one.size(); ++i)
    EXPECT_TRUE(std::equal(one[i]->samples().begin(), one[i]->samples().end(), two[i]->samples().begin()));
}

TEST(ArrayWave, hasABeamOfFullPowerAtItsSlowness) {
  const auto grid = parseXyzGrid(beamPowerTable({}), QStringLiteral("table"));
  ASSERT_TRUE(grid) << qPrintable(grid.error());
  EXPECT_EQ(grid->rows, 101);
  EXPECT_EQ(grid->columns, 101);
  EXPECT_EQ(grid->xmax, 0.5);
  const auto peak = std::max_element(grid->values.begin(), grid->values.end());
  const auto index = int(peak - grid->values.begin());
  EXPECT_NEAR(-0.5 + 0.01 * (index % 101), kEast, 0.01);
  EXPECT_NEAR(0.5 - 0.01 * (index / 101), kNorth, 0.01);
  EXPECT_GT(*peak, 0.98);
}

TEST(ExampleGrids, areWhole) {
  const auto residuals = parseXyzGrid(residualTable(), QStringLiteral("table"));
  ASSERT_TRUE(residuals) << qPrintable(residuals.error());
  EXPECT_EQ(residuals->rows, 61);    // 30 to 45 by a quarter
  EXPECT_EQ(residuals->columns, 81); // -125 to -105
  EXPECT_EQ(reliefGrid().size(), 2 * kReliefRows * kReliefColumns);
}

} // namespace
} // namespace xov::synthetic
