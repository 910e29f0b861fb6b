#include "XOV_Graphics/seismic/prepare/RecordOrder.h"

#include "tests/support/FakeRecord.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

using testing::FakeRecord;

class RecordOrdering : public ::testing::Test {
protected:
  FakeRecord& add(const QString& station, float distance, float azimuth) {
    auto record = std::make_shared<FakeRecord>();
    record->station = station;
    record->distanceDeg = distance;
    record->azimuthDeg = azimuth;
    records_.push_back(record);
    return *record;
  }

  QStringList sorted(RecordOrder order) {
    sortRecords(records_, order);
    QStringList stations;
    for (const auto& record : records_)
      stations.append(record->kstnm());
    return stations;
  }

  SeismogramArray records_;
};

TEST_F(RecordOrdering, leavesTheGivenOrderAlone) {
  add("C", 3, 1);
  add("A", 1, 2);
  EXPECT_EQ(sorted(RecordOrder::Given), (QStringList{"C", "A"}));
}

TEST_F(RecordOrdering, sortsByDistanceAndByAzimuth) {
  add("A", 30, 10);
  add("B", 10, 20);
  add("C", 20, 5);
  EXPECT_EQ(sorted(RecordOrder::Distance), (QStringList{"B", "C", "A"}));
  EXPECT_EQ(sorted(RecordOrder::Azimuth), (QStringList{"C", "A", "B"}));
}

TEST_F(RecordOrdering, keepsRecordsWithoutADistanceLastInTheirOrder) {
  add("X", kUndefinedValue, 0);
  add("A", 30, 0);
  add("Y", std::numeric_limits<float>::quiet_NaN(), 0);
  add("B", 10, 0);
  EXPECT_EQ(sorted(RecordOrder::Distance), (QStringList{"B", "A", "X", "Y"}));
}

TEST_F(RecordOrdering, keepsTheOrderOfEqualDistances) {
  add("N", 10, 0);
  add("E", 10, 0);
  add("Z", 10, 0);
  EXPECT_EQ(sorted(RecordOrder::Distance), (QStringList{"N", "E", "Z"}));
}

TEST_F(RecordOrdering, sortsByNetworkBeforeStationBeforeComponent) {
  add("TLY", 0, 0).network = "II";
  FakeRecord& north = add("ULN", 0, 0);
  north.network = "IU";
  north.component = "BHN";
  FakeRecord& east = add("ULN", 0, 0);
  east.network = "IU";
  east.component = "BHE";
  add("ZAK", 0, 0).network = "GE";
  EXPECT_EQ(sorted(RecordOrder::Name), (QStringList{"ZAK", "TLY", "ULN", "ULN"}));
  EXPECT_EQ(records_[2]->kcmpnm(), "BHE");
}

TEST_F(RecordOrdering, sortsNoRecords) {
  for (const RecordOrder order : {RecordOrder::Given, RecordOrder::Distance, RecordOrder::Azimuth, RecordOrder::Name})
    EXPECT_EQ(sorted(order), QStringList{});
}

} // namespace
} // namespace xov
