#include "XOV_Graphics/seismic/prepare/Conditioning.h"

#include "XOV_Graphics/seismic/prepare/RecordWindow.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov {
namespace {

using Floats = std::vector<float>;

TEST(Detrended, hasNewSamplesExtremesAndMeanInANewRecord) {
  // 0 ... 9.
  const auto record = makeRecord({.begin = 5, .path = "/a/file"});
  const auto level = detrended(*record, 0);
  EXPECT_EQ(level->smin(), -4.5F);
  EXPECT_EQ(level->smax(), 4.5F);
  EXPECT_EQ(level->GetSacHeader()->depmin, -4.5F);
  EXPECT_EQ(level->GetSacHeader()->depmax, 4.5F);
  EXPECT_EQ(level->GetSacHeader()->depmen, 0);
  EXPECT_EQ(level->b(), 5);
  EXPECT_EQ(level->e(), 14);
  EXPECT_EQ(level->path(), QStringLiteral("/a/file"));
  EXPECT_EQ(test::referenceText(*level), test::referenceText(*record));
  EXPECT_NEAR(detrended(*record)->absMax(), 0, 1e-6) << "a line";
  EXPECT_EQ(record->smax(), 9) << "stays as it is";
}

TEST(Tapered, goesByShareOrSeconds) {
  SacHeader header;
  header.delta = 0.5F;
  const SacSeismogram record(header, Floats(9, 2));
  const Floats expected{0, 1, 2, 2, 2, 2, 2, 1, 0};
  EXPECT_EQ(test::copiedSamples(**taperedByShare(record, 0.25)), expected);
  EXPECT_EQ(test::copiedSamples(**taperedBySeconds(record, 1)), expected);
  EXPECT_EQ((*taperedBySeconds(record, 1))->GetSacHeader()->depmen, 12.0F / 9);
}

TEST(Tapered, refusesImpossibleLengths) {
  EXPECT_EQ(taperedByShare(*makeRecord(), 0.6).error().toStdString(),
            "II.TLY..BHZ: found a taper of 0.6 of the record, expected 0 to 0.5");
  EXPECT_EQ(taperedBySeconds(*makeRecord(), -1).error().toStdString(),
            "II.TLY..BHZ: found a taper of -1 s, expected 0 or more");
  EXPECT_EQ(taperedBySeconds(*makeRecord({.interval = 0}), 1).error().toStdString(),
            "II.TLY..BHZ: found a sample interval of 0 s, expected more than 0");
}

TEST(Filtered, takesTheRecordsOwnInterval) {
  // A sine of 8 samples, which a high-pass at 1/80 Hz leaves and a low-pass takes away, both to a ten-thousandth.
  SacHeader header;
  header.delta = 1;
  Floats sine;
  for (int i = 0; i < 800; ++i)
    sine.push_back(std::sin(float(i) * 0.78539816F));
  const SacSeismogram record(header, sine);
  const auto high = filtered(record, ButterworthFilter::highPass(1.0 / 80), FilterPhase::Zero);
  const auto low = filtered(record, ButterworthFilter::lowPass(1.0 / 80), FilterPhase::Zero);
  ASSERT_TRUE(high && low);
  for (std::size_t i = 300; i < 500; ++i) {
    EXPECT_NEAR((*high)->GetSacSeis()[i], sine[i], 2e-4F) << i;
    EXPECT_NEAR((*low)->GetSacSeis()[i], 0, 2e-4F) << i;
  }
}

TEST(Filtered, filtersWindows) {
  const auto record = makeRecord({.count = 50});
  const auto part = filtered(RecordWindow(record, 10, 19), ButterworthFilter::lowPass(0.2), FilterPhase::Zero);
  ASSERT_TRUE(part);
  EXPECT_EQ((*part)->npts(), 10);
  EXPECT_EQ((*part)->b(), 10);
  EXPECT_EQ((*part)->e(), 19);
}

TEST(Filtered, refusesImpossibleFilters) {
  EXPECT_EQ(filtered(*makeRecord(), ButterworthFilter::bandPass(0.1, 0.5), FilterPhase::Causal).error().toStdString(),
            "II.TLY..BHZ: found a corner of 0.5 Hz, expected one above 0 and below 0.5 Hz, half the sampling rate");
}

} // namespace
} // namespace xov
