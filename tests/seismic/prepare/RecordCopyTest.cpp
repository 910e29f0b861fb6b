#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include "tests/support/FakeRecord.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace xov {
namespace {

using testing::FakeRecord;

// Ten samples from 0.1 s on, which single precision has as 0.100000001490116; t1 does not fit it either.
SacSeismogram preciseRecord() {
  SacFooter precise;
  precise.b = 0.1;
  precise.delta = 0.01;
  precise.t1 = 86400.0001;
  return SacSeismogram(headerOf(*makeRecord()), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, "/a/path", precise);
}

TEST(RecordCopy, keepsHeaderSamplesAndPathInDoublePrecision) {
  const SacSeismogram record = preciseRecord();
  const auto copy = copyOfRecord(record);
  EXPECT_EQ(copy->preciseValues().b, 0.1);
  EXPECT_EQ(copy->preciseValues().delta, 0.01);
  EXPECT_EQ(copy->preciseValues().t1, 86400.0001);
  EXPECT_EQ(copy->path(), "/a/path");
  EXPECT_EQ(copy->labelString(), "II.TLY..BHZ");
  EXPECT_TRUE(std::ranges::equal(copy->samples(), record.samples()));
  EXPECT_NE(copy->GetSacSeis(), record.GetSacSeis());
}

TEST(RecordCopy, endsWhereItsSamplesDo) {
  const SacSeismogram record = preciseRecord();
  const auto fewer = copyOfRecord(record, {.samples = std::vector<float>{7, -8, 9}});
  EXPECT_EQ(fewer->npts(), 3);
  EXPECT_DOUBLE_EQ(fewer->preciseValues().e, 0.1 + 2 * 0.01);
  EXPECT_EQ(fewer->smin(), -8);
  EXPECT_EQ(fewer->smax(), 9);
  EXPECT_EQ(fewer->preciseValues().t1, 86400.0001);
  const auto others = copyOfRecord(record, {.samples = std::vector<float>(10, 3)});
  EXPECT_EQ(others->preciseValues().e, record.preciseValues().e) << "as many samples";
  EXPECT_EQ(copyOfRecord(record, {.samples = std::vector<float>(9, 3)})->preciseValues().e, 0.1 + 8 * 0.01)
      << "one sample less, which the tolerance of stored end times would forgive";
}

TEST(RecordCopy, takesAnotherPath) {
  const auto copy = copyOfRecord(preciseRecord(), {.path = QStringLiteral("/b")});
  EXPECT_EQ(copy->path(), "/b");
  EXPECT_EQ(copy->preciseValues().t1, 86400.0001);
}

TEST(RecordCopy, takesOtherTimes) {
  SacFooter precise = preciseRecord().preciseValues();
  precise.b = 600.1;
  precise.e = 600.19;
  const auto copy = copyOfRecord(preciseRecord(), {.precise = precise});
  EXPECT_EQ(copy->preciseValues().b, 600.1);
  EXPECT_EQ(copy->b(), 600.1F);
}

// A host's own record: what it tells counts, not what its header happens to hold.
TEST(RecordCopy, takesBeginAndIntervalOfAHostsRecord) {
  FakeRecord record({1, 2, 3}, 0.25F, 40);
  record.header.kstnm = "ABC";
  record.header.b = 7;
  const auto copy = copyOfRecord(record);
  EXPECT_EQ(copy->kstnm(), "ABC");
  EXPECT_EQ(copy->b(), 40);
  EXPECT_EQ(copy->delta(), 0.25F);
  EXPECT_EQ(copy->npts(), 3);
}

TEST(ChangedRecord, takesTheSamplesOfARecordThatNobodyElseHolds) {
  auto record = makeRecord({.path = "a"});
  const float* const samples = record->GetSacSeis();
  const auto changed = changedRecord(std::move(record), {.path = QStringLiteral("b")});
  EXPECT_EQ(changed->GetSacSeis(), samples);
  EXPECT_EQ(changed->npts(), 10);
  EXPECT_EQ(changed->smax(), 9);
  EXPECT_EQ(changed->e(), 9);
  EXPECT_EQ(changed->path(), "b");
}

TEST(ChangedRecord, copiesTheSamplesOfARecordThatOthersHold) {
  const auto record = makeRecord();
  const auto changed = changedRecord(record);
  EXPECT_NE(changed->GetSacSeis(), record->GetSacSeis());
  EXPECT_EQ(record->npts(), 10);
  EXPECT_TRUE(std::ranges::equal(changed->samples(), record->samples()));
  const auto host = std::make_shared<FakeRecord>(std::vector<float>{1, 2});
  EXPECT_EQ(changedRecord(host)->npts(), 2);
}

class WithoutHeader : public FakeRecord {
public:
  const SacHeader* GetSacHeader() const override { return nullptr; }
};

TEST(RecordCopy, takesARecordWithoutHeaderOrSamples) {
  const WithoutHeader record;
  EXPECT_EQ(headerOf(record).nzyear, kSacUndefinedInteger);
  EXPECT_TRUE(samplesOf(record).empty());
  EXPECT_EQ(copyOfRecord(record)->npts(), 0);
}

} // namespace
} // namespace xov
