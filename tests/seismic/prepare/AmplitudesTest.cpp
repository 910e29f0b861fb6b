#include "XOV_Graphics/seismic/prepare/Amplitudes.h"

#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

TEST(WithoutMeans, takesTheMeanOfAllPiecesOfAChannelAway) {
  // 0 ... 9 and 0 ... 4: 45 and 10 by 15 samples.
  const SeismogramArray centered = withoutMeans(
      {makeRecord(), makeRecord({.count = 5}), makeRecord({.component = "BHN", .count = 3})}, MeanOf::Channel);
  EXPECT_FLOAT_EQ(centered[0]->GetSacSeis()[0], -55.0F / 15);
  EXPECT_FLOAT_EQ(centered[1]->GetSacSeis()[4], 4 - 55.0F / 15);
  EXPECT_FLOAT_EQ(centered[2]->GetSacSeis()[0], -1);
}

TEST(WithoutMeans, takesEachRecordsOwnMeanAway) {
  // 0 ... 9 and 0 ... 4 have the means 4.5 and 2.
  const SeismogramArray centered = withoutMeans({makeRecord(), makeRecord({.count = 5})}, MeanOf::Record);
  EXPECT_EQ(centered[0]->smin(), -4.5F);
  EXPECT_EQ(centered[1]->smin(), -2);
  EXPECT_EQ(centered[1]->smax(), 2);
}

TEST(WithoutMeans, takesItFromTheMeanInTheHeaderToo) {
  const auto record = makeRecord({.count = 3}); // 0, 1, 2
  SacHeader header = *record->GetSacHeader();
  header.depmen = 1;
  const auto told = std::make_shared<SacSeismogram>(header, std::vector<float>{0, 1, 2});
  EXPECT_EQ(withoutMeans({told}, MeanOf::Record)[0]->GetSacHeader()->depmen, 0);
  EXPECT_EQ(withoutMeans({record}, MeanOf::Record)[0]->GetSacHeader()->depmen, record->GetSacHeader()->depmen)
      << "one that is not set stays so";
}

TEST(WithoutMeans, takesMeansOfFiniteSamplesOnly) {
  const auto record = makeRecord({.count = 3});
  record->samples()[1] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FLOAT_EQ(withoutMeans({record}, MeanOf::Record)[0]->GetSacSeis()[2], 1) << "the mean of 0 and 2 is 1";
}

TEST(LargestAmplitude, isThatOfAllRecordsAndNever0) {
  const auto low = makeRecord({.count = 3});
  low->samples()[1] = -25;
  low->ComputeExtrema();
  EXPECT_EQ(largestAmplitude({makeRecord(), low}), 25);
  EXPECT_EQ(largestAmplitude({makeRecord({.count = 1})}), 1) << "its only sample is 0";
  EXPECT_EQ(largestAmplitude({}), 1);
}

std::shared_ptr<SacSeismogram> atDistance(float degrees, std::vector<float> samples) {
  SacHeader header = *makeRecord({.quantity = kSacVelocity})->GetSacHeader();
  header.gcarc = degrees;
  header.depmen = 1;
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

TEST(Normalized, dividesByTheLargestOfEachRecordOrOfAll) {
  const float missing = std::numeric_limits<float>::quiet_NaN();
  const SeismogramArray records{atDistance(10, {1, -4, missing}), atDistance(20, {0, 8}), atDistance(30, {0, 0})};
  const SeismogramArray each = normalized(records, NormalizeBy::Record);
  EXPECT_EQ(each[0]->GetSacSeis()[0], 0.25F);
  EXPECT_EQ(each[0]->smin(), -1);
  EXPECT_EQ(each[1]->smax(), 1);
  EXPECT_EQ(each[0]->GetSacHeader()->depmen, 0.25F);
  EXPECT_EQ(each[0]->GetSacHeader()->idep, kSacUnknownKind) << "no velocity any more";
  EXPECT_EQ(each[2], records[2]) << "nothing to divide by";
  const SeismogramArray all = normalized(records, NormalizeBy::Section);
  EXPECT_EQ(all[0]->smin(), -0.5F);
  EXPECT_EQ(all[1]->smax(), 1);
  EXPECT_EQ(all[2]->smax(), 0);
  EXPECT_EQ(records[0]->smin(), -4) << "stays as it is";
}

TEST(ScaledByDistance, undoesTheFallOfAmplitudesFromTheNearestOn) {
  const SeismogramArray records{atDistance(40, {1}), atDistance(10, {4}), atDistance(kUndefinedValue, {7})};
  QStringList notes;
  const SeismogramArray scaled = scaledByDistance(records, 1, notes);
  EXPECT_EQ(scaled[0]->smax(), 4) << "four times as far as the nearest";
  EXPECT_EQ(scaled[1]->smax(), 4);
  EXPECT_EQ(scaled[2], records[2]);
  EXPECT_EQ(scaled[0]->GetSacHeader()->idep, kSacVelocity);
  EXPECT_EQ(notes.join(u'\n').toStdString(),
            "found no distance of 1 of 3 records: their amplitudes stay as they are");
  EXPECT_EQ(scaledByDistance(records, 0.5, notes)[0]->smax(), 2);
}

} // namespace
} // namespace xov
