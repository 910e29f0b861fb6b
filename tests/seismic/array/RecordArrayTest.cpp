#include "XOV_Graphics/seismic/array/RecordArray.h"

#include "XOV_Graphics/seismic/UtcTime.h"
#include "tests/support/FakeRecord.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace xov {
namespace {

const QDateTime kNoon(QDate(2020, 3, 4), QTime(12, 0), Qt::UTC);

std::shared_ptr<testing::FakeRecord> station(const char* code, float latitude, float longitude) {
  auto record = std::make_shared<testing::FakeRecord>(std::vector<float>{1, 2, 3}, 0.01F, 5.0F);
  record->network = QStringLiteral("XX");
  record->station = QString::fromLatin1(code);
  record->header.stla = latitude;
  record->header.stlo = longitude;
  record->reference = std::make_shared<UtcTime>(kNoon);
  return record;
}

class RecordArrays : public ::testing::Test {
protected:
  std::shared_ptr<testing::FakeRecord> one = station("AA1", 0, 10);
  std::shared_ptr<testing::FakeRecord> two = station("AA2", 0, 11);
  Result<RecordArray> make(const StationTable& places = {}) {
    return arrayOfRecords({one, two}, {QStringLiteral("one"), QStringLiteral("two")}, places);
  }
};

// A degree of longitude at the equator is 111.3195 km.
TEST_F(RecordArrays, takePlacesFromTheHeaders) {
  const auto array = make();
  ASSERT_TRUE(array) << qPrintable(array.error());
  EXPECT_FLOAT_EQ(float(array->intervalSeconds), 0.01F);
  ASSERT_EQ(array->traces.size(), 2u);
  EXPECT_EQ(array->traces[0].name, QStringLiteral("one"));
  EXPECT_NEAR(array->traces[0].offset.eastKm, -55.65975, 1e-4);
  EXPECT_NEAR(array->traces[1].offset.eastKm, 55.65975, 1e-4);
  EXPECT_EQ(array->traces[1].samples.data(), two->samples.data());
  EXPECT_EQ(array->traces[1].samples.size(), 3u);
}

TEST_F(RecordArrays, takePlacesFromTheTableFirst) {
  const StationTable places = {{QStringLiteral("AA1"), {0, 20}}, {QStringLiteral("XX.AA2"), {0, 22}}};
  EXPECT_NEAR(make(places)->traces[1].offset.eastKm, 111.3195, 1e-3);
}

// The second trace's reference is two seconds later, and its first sample 3 s after that, not 5 s.
TEST_F(RecordArrays, areLinedUpByTheirDates) {
  two->reference = std::make_shared<UtcTime>(kNoon.addMSecs(2000));
  two->beginSeconds = 3;
  const auto array = make();
  EXPECT_EQ(array->traces[0].startSeconds, 5);
  EXPECT_EQ(array->traces[1].startSeconds, 5);
}

TEST_F(RecordArrays, withoutDatesAreLinedUpByTheirAxes) {
  one->reference = nullptr;
  two->reference = nullptr;
  two->beginSeconds = 7;
  const auto array = make();
  EXPECT_EQ(array->traces[1].startSeconds - array->traces[0].startSeconds, 2);
}

TEST_F(RecordArrays, refuseDatesThatOnlySomeHave) {
  two->reference = nullptr;
  EXPECT_EQ(make().error(), QStringLiteral("two: only some of the records have a reference time"));
}

TEST_F(RecordArrays, refuseDifferentSampleIntervals) {
  two->deltaSeconds = 0.02F;
  EXPECT_EQ(make().error(), QStringLiteral("two: a sample interval of 0.02 s, expected 0.01 s as in one"));
}

TEST_F(RecordArrays, refuseTwoRecordsOfAStation) {
  two->station = QStringLiteral("AA1");
  EXPECT_EQ(make().error(), QStringLiteral("two: a second record of station XX.AA1, expected one for each"));
}

TEST_F(RecordArrays, refuseAStationWithoutCoordinates) {
  two->header.stlo = kUndefinedValue;
  EXPECT_EQ(make().error(), QStringLiteral("two: station XX.AA2 has no coordinates"));
  two->header.stlo = 500;
  EXPECT_EQ(make().error(), QStringLiteral("two: station XX.AA2 has no coordinates"));
}

TEST_F(RecordArrays, refuseARecordThatIsNotThere) {
  two = nullptr;
  EXPECT_EQ(make().error(), QStringLiteral("two: there is no record"));
}

TEST_F(RecordArrays, ofRecordsWithoutSamplesHaveEmptyTraces) {
  two->samples.clear();
  EXPECT_TRUE(make()->traces[1].samples.empty());
}

} // namespace
} // namespace xov
