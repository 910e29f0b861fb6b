#include "XOV_Graphics/seismic/prepare/CommonAxis.h"

#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

TEST(CommonAxis, countsOverlappingRecordsFromTheFirstOnesReferenceTime) {
  // Ten seconds from 05:00:00, and ten from 05:00:04.5, of which the reference time is 05:00:03.
  const SeismogramArray records =
      onCommonAxis({makeRecord(), makeRecord({.station = "B", .reference = onTheDay(5, 0, 3), .begin = 1.5F})});
  EXPECT_EQ(records[0]->b(), 0);
  EXPECT_EQ(records[1]->b(), 4.5F);
  EXPECT_EQ(records[1]->mySeisReferenceTime()->nsDate(), onTheDay(5, 0));
}

TEST(CommonAxis, leavesRecordsOfDifferentTimesOnTheirOwn) {
  const SeismogramArray records =
      onCommonAxis({makeRecord(), makeRecord({.reference = onTheDay(6, 0), .begin = -2})});
  EXPECT_EQ(records[1]->b(), -2);
}

TEST(CommonAxis, leavesAllAloneWhenATimeIsNotKnown) {
  const SeismogramArray records = onCommonAxis(
      {makeRecord(), makeRecord({.reference = onTheDay(5, 0, 3)}), makeRecord({.reference = QDateTime()})});
  EXPECT_EQ(records[1]->b(), 0);
  EXPECT_EQ(records[2]->b(), 0);
}

TEST(CommonAxis, takesNoRecords) { EXPECT_TRUE(onCommonAxis({}).empty()); }

} // namespace
} // namespace xov
