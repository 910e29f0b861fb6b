#include "XOV_Graphics/seismic/prepare/SpectrumPieces.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "tests/support/FakeRecord.h"
#include "tests/support/GuardedSamples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov {
namespace {

std::shared_ptr<SeismogramRecord> record(float begin, float interval, std::int32_t kind = kSacUndefinedInteger) {
  SacHeader header;
  header.b = begin;
  header.delta = interval;
  header.idep = kind;
  return std::make_shared<SacSeismogram>(header, std::vector<float>{1, 2, 3});
}

TEST(SpectrumPieces, areInTimeOrderAndHaveSamples) {
  const SeismogramArray records = {record(100, 0.5F), nullptr, std::make_shared<SacSeismogram>(), record(20, 0.5F)};
  const auto pieces = spectrogramPieces(records);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(pieces[0].startSeconds, 20);
  EXPECT_EQ(pieces[0].intervalSeconds, 0.5);
  EXPECT_EQ(pieces[1].samples.data(), records[0]->GetSacSeis());
}

// Whoever asks such a record for all of its samples brings them into memory.
class RecordOfASource : public testing::FakeRecord {
public:
  using FakeRecord::FakeRecord;
  BorrowedSamples borrowedSamples() const override { return {guarded.data(), nullptr, &guarded}; }
  const float* GetSacSeis() const override {
    ADD_FAILURE() << "asked for all samples";
    return nullptr;
  }
  mutable testing::GuardedSamples guarded{samples};
};

TEST(SpectrumPieces, areReadThroughTheSourceOfTheirSamples) {
  const auto record = std::make_shared<RecordOfASource>(std::vector<float>{1, 2, 3});
  const auto pieces = spectrogramPieces({record});
  ASSERT_EQ(pieces.size(), 1u);
  EXPECT_EQ(pieces[0].source, &record->guarded);
  EXPECT_EQ(joinedSamples(pieces), (std::vector<float>{1, 2, 3}));
  EXPECT_TRUE(record->guarded.isEverythingLetGo());
}

TEST(SpectrumPieces, areJoinedWithAGapWhereTheirIntervalsAgree) {
  const SeismogramArray records = {record(0, 0.5F), record(10, 0.25F), record(20, 0.5F)};
  const std::vector<float> joined = joinedSamples(spectrogramPieces(records));
  ASSERT_EQ(joined.size(), 7u);
  EXPECT_EQ(joined[2], 3);
  EXPECT_TRUE(std::isnan(joined[3]));
  EXPECT_EQ(joined[4], 1);
  EXPECT_TRUE(joinedSamples({}).empty());
}

TEST(SpectrumPieces, haveTheUnitOfAllRecords) {
  const SpectralUnit velocity = spectralUnitOf({record(0, 1, kSacVelocity), record(9, 1, kSacVelocity)});
  EXPECT_EQ(velocity.motion, GroundMotion::Velocity);
  EXPECT_EQ(velocity.density, QStringLiteral("(nm/s)²/Hz"));
  EXPECT_EQ(velocity.decibels, QStringLiteral("dB rel. 1 (m/s)²/Hz"));
  EXPECT_EQ(velocity.decibelOffset, -180); // 1 nm is 1e-9 m, squared 1e-18
  for (const SeismogramArray& records :
       {SeismogramArray{}, {record(0, 1)}, {record(0, 1, kSacVelocity), record(0, 1, kSacAcceleration)}}) {
    EXPECT_EQ(spectralUnitOf(records).density, QStringLiteral("counts²/Hz"));
    EXPECT_FALSE(spectralUnitOf(records).motion);
  }
}

// 2πf is 1 at 1/2π Hz and 10 at ten times that: 20 dB a derivative.
TEST(SpectrumPieces, accelerationIsTheSecondDerivative) {
  const double one = 1 / (2 * std::numbers::pi);
  EXPECT_EQ(decibelsToAcceleration(GroundMotion::Acceleration, 0), 0.0);
  EXPECT_NEAR(*decibelsToAcceleration(GroundMotion::Velocity, one), 0, 1e-12);
  EXPECT_NEAR(*decibelsToAcceleration(GroundMotion::Velocity, 10 * one), 20, 1e-12);
  EXPECT_NEAR(*decibelsToAcceleration(GroundMotion::Displacement, 10 * one), 40, 1e-12);
  EXPECT_FALSE(decibelsToAcceleration(GroundMotion::Velocity, 0));
}

} // namespace
} // namespace xov
