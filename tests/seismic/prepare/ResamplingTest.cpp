#include "XOV_Graphics/seismic/prepare/Resampling.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

/// A slow sine over UTC, from that many seconds behind 5:00 on.
std::shared_ptr<SacSeismogram> sine(double begin, double interval, int count) {
  std::vector<float> samples;
  for (int i = 0; i < count; ++i)
    samples.push_back(float(std::sin((begin + i * interval) / 3)));
  SacFooter precise;
  precise.b = begin;
  precise.delta = interval;
  return copyOfRecord(*makeRecord(), {.samples = samples, .precise = precise});
}

TEST(Decimated, hasTheIntervalAndTheEndOfItsSamples) {
  const auto record = sine(5, 0.01, 1002);
  const auto slow = decimated(*record, 10);
  ASSERT_TRUE(slow);
  EXPECT_EQ((*slow)->npts(), 101);
  EXPECT_DOUBLE_EQ((*slow)->preciseValues().delta, 0.1);
  EXPECT_EQ((*slow)->delta(), 0.1F);
  EXPECT_EQ((*slow)->b(), 5);
  EXPECT_DOUBLE_EQ((*slow)->preciseValues().e, 15);
  EXPECT_NEAR((*slow)->samples()[50], std::sin(10.0 / 3), 1e-5);
}

TEST(Decimated, refusesImpossibleFactors) {
  EXPECT_EQ(decimated(*makeRecord(), 0).error().toStdString(),
            "II.TLY..BHZ: found a decimation by 0, expected one by 1 to 10000");
  EXPECT_EQ(decimated(*makeRecord({.interval = -1}), 2).error().toStdString(),
            "II.TLY..BHZ: found a sample interval of -1 s, expected more than 0");
}

TEST(Resampled, keepsTheSamplesThatFallOnTheNewTimes) {
  // 0.05 in single precision is not five times 0.01.
  const auto record = makeRecord({.begin = 2, .interval = 0.05F, .count = 100});
  const auto fine = resampled(*record, 0.01);
  ASSERT_TRUE(fine);
  EXPECT_EQ((*fine)->npts(), 496);
  EXPECT_EQ((*fine)->delta(), 0.01F);
  EXPECT_EQ((*fine)->b(), 2);
  for (std::size_t i = 0; i < 100; ++i)
    ASSERT_EQ((*fine)->samples()[5 * i], float(i));
}

TEST(Resampled, takesTimesThroughAGivenOne) {
  const auto record = sine(0.03, 0.1, 300);
  const auto moved = resampled(*record, 0.25, 100.0);
  ASSERT_TRUE(moved);
  EXPECT_NEAR((*moved)->preciseValues().b, 0.25, 1e-12);
  EXPECT_EQ((*moved)->npts(), 119) << "from 0.25 s to 29.75 s; the record ends at 29.93 s";
  EXPECT_NEAR((*moved)->samples()[59], std::sin(15.0 / 3), 1e-4) << "at 15 s";
}

TEST(Resampled, refusesImpossibleIntervals) {
  EXPECT_EQ(resampled(*makeRecord(), 0).error().toStdString(),
            "II.TLY..BHZ: found a new sample interval of 0 s, expected more than 0");
  EXPECT_EQ(resampled(*makeRecord(), 1e-12).error().toStdString(),
            "II.TLY..BHZ: found a new sample interval of 1e-12 s, expected at most 268435456 samples of it");
  EXPECT_EQ(resampled(*makeRecord(), 10001).error().toStdString(),
            "II.TLY..BHZ: found a new sample interval of 10001 s, expected at most 10000 of the record's");
  EXPECT_EQ(resampled(*makeRecord(), 100, 50.0).error().toStdString(),
            "II.TLY..BHZ: found 10 samples, expected some at intervals of 100 s");
}

TEST(OnCommonSamples, putsAllRecordsOnTheSamplesOfTheFirst) {
  const auto first = sine(10, 0.1, 300);
  const auto same = sine(12.3, 0.1, 300);
  const auto between = sine(11.04, 0.1, 300);
  const auto coarse = sine(9.5, 0.25, 200);
  const auto common = onCommonSamples({first, same, between, coarse});
  ASSERT_TRUE(common) << common.error().toStdString();
  EXPECT_EQ((*common)[0], first);
  EXPECT_EQ((*common)[1], same) << "23 intervals later";
  for (const auto& record : *common) {
    const SacFooter precise = preciseValuesOf(*record);
    EXPECT_DOUBLE_EQ(precise.delta, 0.1);
    EXPECT_NEAR(std::remainder(precise.b - 10, 0.1), 0, 1e-6);
    const std::size_t middle = std::size_t(record->npts()) / 2;
    EXPECT_NEAR(record->GetSacSeis()[middle], std::sin((precise.b + double(middle) * 0.1) / 3), 1e-4);
  }
  EXPECT_NEAR(preciseValuesOf(*(*common)[2]).b, 11.1, 1e-6);
  EXPECT_NEAR(preciseValuesOf(*(*common)[3]).b, 9.5, 1e-6);
}

TEST(OnCommonSamples, takesAGivenInterval) {
  const auto common = onCommonSamples({sine(10, 0.1, 300), sine(10, 0.2, 150)}, 0.5);
  ASSERT_TRUE(common);
  EXPECT_EQ((*common)[0]->npts(), 60);
  EXPECT_EQ((*common)[1]->npts(), 60);
  EXPECT_TRUE(onCommonSamples({})->empty());
  EXPECT_EQ(onCommonSamples({makeRecord({.interval = 0})}).error().toStdString(),
            "II.TLY..BHZ: found a sample interval of 0 s, expected more than 0");
}

} // namespace
} // namespace xov
