#include "XOV_Graphics/seismic/prepare/Derived.h"

#include "tests/seismic/SeismogramTexts.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

using Floats = std::vector<float>;

TEST(Integrated, turnsVelocityIntoDisplacement) {
  // 0 1 2 3 at intervals of half a second.
  const auto record = makeRecord({.begin = 7, .interval = 0.5F, .count = 4, .quantity = kSacVelocity});
  const auto displacement = integrated(*record);
  ASSERT_TRUE(displacement);
  EXPECT_EQ(test::copiedSamples(**displacement), (Floats{0, 0.25F, 1, 2.25F}));
  const SacHeader& header = *(*displacement)->GetSacHeader();
  EXPECT_EQ(header.idep, kSacDisplacement);
  EXPECT_EQ(header.depmax, 2.25F);
  EXPECT_EQ(header.depmen, 0.875F);
  EXPECT_EQ(header.b, 7);
  EXPECT_EQ(record->GetSacHeader()->idep, kSacVelocity) << "stays as it is";
}

TEST(Integrated, knowsTheQuantitiesOfSac) {
  const auto after = [](std::int32_t quantity) {
    return (*integrated(*makeRecord({.quantity = quantity})))->GetSacHeader()->idep;
  };
  EXPECT_EQ(after(kSacAcceleration), kSacVelocity);
  EXPECT_EQ(after(kSacDisplacement), kSacUnknownKind);
  EXPECT_EQ(after(kSacVolts), kSacUnknownKind);
  EXPECT_EQ(after(kSacUndefinedInteger), kSacUnknownKind);
}

TEST(Differentiated, turnsDisplacementIntoVelocity) {
  const auto record = makeRecord({.interval = 0.5F, .count = 3, .quantity = kSacDisplacement});
  const auto velocity = differentiated(*record);
  ASSERT_TRUE(velocity);
  EXPECT_EQ(test::copiedSamples(**velocity), (Floats{2, 2, 2}));
  EXPECT_EQ((*velocity)->GetSacHeader()->idep, kSacVelocity);
  EXPECT_EQ((*differentiated(**velocity))->GetSacHeader()->idep, kSacAcceleration);
}

TEST(Differentiated, refusesRecordsWithoutAnInterval) {
  const std::string line = "II.TLY..BHZ: found a sample interval of 0 s, expected more than 0";
  EXPECT_EQ(differentiated(*makeRecord({.interval = 0})).error().toStdString(), line);
  EXPECT_EQ(integrated(*makeRecord({.interval = 0})).error().toStdString(), line);
}

TEST(EnvelopeOf, keepsQuantityAndTimes) {
  SacHeader header;
  header.delta = 1;
  header.b = 3;
  header.idep = kSacVelocity;
  const SacSeismogram record(header, Floats{2, 0, -2, 0, 2, 0, -2, 0});
  const auto envelope = envelopeOf(record);
  for (const float value : envelope->samples())
    EXPECT_FLOAT_EQ(value, 2);
  EXPECT_EQ(envelope->GetSacHeader()->idep, kSacVelocity);
  EXPECT_EQ(envelope->b(), 3);
}

TEST(StaLtaOf, takesSeconds) {
  SacHeader header;
  header.delta = 0.5F;
  const SacSeismogram record(header, Floats{1, 1, 2, 2, 3});
  const auto ratio = staLtaOf(record, 1, 2);
  ASSERT_TRUE(ratio);
  EXPECT_FLOAT_EQ((*ratio)->samples()[4], 6.5F / 4.5F) << "of the last two and four squares";
  EXPECT_EQ((*ratio)->GetSacHeader()->idep, kSacUnknownKind);
}

TEST(StaLtaOf, refusesImpossibleAverages) {
  const auto refusal = [](double shortSeconds, double longSeconds) {
    return staLtaOf(*makeRecord(), shortSeconds, longSeconds).error().toStdString();
  };
  EXPECT_EQ(refusal(0.2, 5), "II.TLY..BHZ: found averages over 0.2 and 5 s, expected 1 s, a sample, at least");
  EXPECT_EQ(refusal(5, 5), "II.TLY..BHZ: found averages over 5 and 5 s, expected the shorter one first");
  EXPECT_EQ(refusal(1, 11), "II.TLY..BHZ: found 10 samples, expected as many as the long-term average, 11");
}

} // namespace
} // namespace xov
