#include "XOV_Graphics/seismic/array/RecordBeam.h"

#include "XOV_Graphics/seismic/ApparentVelocity.h"
#include "tests/support/FakeRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace xov {
namespace {

constexpr float kStep = 0.05F; // s

// A pulse of 1 Hz.
double pulseAt(double seconds) {
  const double x = std::numbers::pi * seconds;
  return (1 - 2 * x * x) * std::exp(-x * x);
}

// Nine stations around (0, 0), 0.02 degrees apart, in 20 s from `begin` on: at 5 s a wave from the east with 0.2
// s/km, which reaches those further east earlier, at 15 s one from the west.
SeismogramArray twoWaves(float begin) {
  SeismogramArray records;
  for (int i = 0; i < 9; ++i) {
    const double eastDeg = 0.02 * (i % 3 - 1);
    const double eastKm = eastDeg * 111.3195;
    std::vector<float> samples;
    for (int k = 0; k < 400; ++k) {
      const double t = k * double(kStep);
      samples.push_back(float(pulseAt(t - 5 + 0.2 * eastKm) + pulseAt(t - 15 - 0.2 * eastKm)));
    }
    auto record = std::make_shared<testing::FakeRecord>(samples, kStep, begin);
    record->station = QStringLiteral("S%1").arg(i);
    record->header.stla = float(0.02 * (i / 3 - 1));
    record->header.stlo = float(eastDeg);
    records.push_back(record);
  }
  return records;
}

BeamSearch coarse() {
  BeamSearch search;
  search.lowestHz = 0.5;
  search.highestHz = 2;
  search.slownessLimit = 0.4;
  search.steps = 41;
  return search;
}

double eastOfPeak(const BeamPower& beam) {
  const auto largest = std::ranges::max_element(beam.power);
  return beam.slowness(std::int32_t(largest - beam.power.begin()) % beam.steps);
}

TEST(RecordBeam, formsBeamsOfTheTimesThatAreAskedFor) {
  const SeismogramArray records = twoWaves(100);
  const auto first = beamOfRecords(records, 100, 110, coarse());
  ASSERT_TRUE(first) << qPrintable(first.error());
  EXPECT_NEAR(eastOfPeak(*first), 0.2, 0.021);
  const auto second = beamOfRecords(records, 110, 120, coarse());
  ASSERT_TRUE(second) << qPrintable(second.error());
  EXPECT_NEAR(eastOfPeak(*second), -0.2, 0.021);
}

TEST(RecordBeam, takesOfTheTimesWhatAllRecordsHave) {
  const SeismogramArray records = twoWaves(0);
  const auto whole = beamOfRecords(records, -1e30, 10, coarse());
  ASSERT_TRUE(whole) << qPrintable(whole.error());
  EXPECT_EQ(whole->power, beamOfRecords(records, 0, 10, coarse())->power);
  EXPECT_TRUE(beamOfRecords(records, 12, std::numeric_limits<double>::infinity(), coarse()));
}

TEST(RecordBeam, refusesTimesThatNoRecordHasAndRecordsThatAreNone) {
  SeismogramArray records = twoWaves(0);
  EXPECT_TRUE(beamOfRecords(records, 30, 40, coarse()).error().contains(QStringLiteral("0 to ")));
  EXPECT_FALSE(beamOfRecords(records, 10, 5, coarse()));
  EXPECT_FALSE(beamOfRecords(records, std::numeric_limits<double>::quiet_NaN(), 5, coarse()));
  EXPECT_FALSE(beamOfRecords({}, 0, 5, coarse()));
  records.push_back(nullptr);
  EXPECT_FALSE(beamOfRecords(records, 0, 5, coarse()));
}

// 10 s over 2 degrees: 5 s a degree, 22.239 km/s.
TEST(ApparentVelocities, haveTheSignOfTheDirectionThatTheWaveGoes) {
  EXPECT_NEAR(apparentVelocityOf(10, 2)->kmPerSecond, 22.239, 1e-3);
  EXPECT_EQ(apparentVelocityOf(10, 2)->secondsPerDegree, 5);
  EXPECT_EQ(apparentVelocityOf(-10, -2)->secondsPerDegree, 5);
  EXPECT_EQ(apparentVelocityOf(-10, 2)->secondsPerDegree, -5);
  EXPECT_TRUE(std::isinf(apparentVelocityOf(0, 2)->kmPerSecond));
  EXPECT_FALSE(apparentVelocityOf(10, 0));
  EXPECT_FALSE(apparentVelocityOf(std::numeric_limits<double>::quiet_NaN(), 2));
  EXPECT_FALSE(apparentVelocityOf(1e300, 1e-300));
}

} // namespace
} // namespace xov
