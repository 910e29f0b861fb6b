#include "XOV_Graphics/seismic/prepare/PicksOfRecords.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/prepare/RecordPicks.h"
#include "tests/seismic/PickSamples.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <limits>

using namespace xov;
using test::moment;
using test::tlyPick;

namespace {

/// A record of II.TLY.00 that counts from 05:50, with a pick in T3.
std::shared_ptr<SeismogramRecord> tlyRecord(const char* channel, bool hasTime = true) {
  SacHeader header = test::tlyHeader(channel, hasTime ? "2011-03-11T05:50:00.250Z" : nullptr);
  header.t3 = 400;
  header.kt3 = "S";
  return std::make_shared<SacSeismogram>(header, std::vector<float>{1, -2, 3});
}

} // namespace

TEST(PicksOfRecords, countFromTheReferenceTime) {
  const auto record = tlyRecord("BHZ");
  EXPECT_EQ(secondsOnAxis(*record, moment("2011-03-11T05:52:00Z")), 119.75);
  EXPECT_EQ(momentOnAxis(*record, 119.75), moment("2011-03-11T05:52:00Z"));
  EXPECT_EQ(momentOnAxis(*record, -0.000000001), moment("2011-03-11T05:50:00.249999999Z"));
  for (const double none : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300,
                            -1e300, 1e10, -1.1e10})
    EXPECT_FALSE(momentOnAxis(*record, none)) << none;
  EXPECT_FALSE(momentOnAxis(*tlyRecord("BHZ", false), 0));
  EXPECT_FALSE(secondsOnAxis(*tlyRecord("BHZ", false), {}));
}

TEST(PicksOfRecords, areThoseOfTheHeader) {
  const PickArray picks = picksOf(*tlyRecord("BHZ"));
  ASSERT_EQ(picks.size(), 1U);
  EXPECT_EQ(picks[0].phase, QStringLiteral("S"));
  EXPECT_EQ(picks[0].time, moment("2011-03-11T05:56:40.25Z")); // 400 s are 6 min 40 s
  EXPECT_EQ(picks[0].channel, (ChannelCodes{"II", "TLY", "00", "BHZ"}));
  EXPECT_EQ(picks[0].id, picksOf(*tlyRecord("BHZ"))[0].id);
  EXPECT_NE(picks[0].id, picksOf(*tlyRecord("BHN"))[0].id);
  EXPECT_TRUE(picksOf(*tlyRecord("BHZ", false)).empty());
}

TEST(PicksOfRecords, takeThePlaceOfThoseInTheHeader) {
  const PreparedRecords picked =
      withPicks({tlyRecord("BHZ"), tlyRecord("BHN"), tlyRecord("BHE", false)},
                {tlyPick("P", "2011-03-11T05:52:00.25Z"), tlyPick("sP", "2011-03-11T05:53:00.25Z"),
                 tlyPick("P", "2011-03-11T05:52:00Z", "BHE"), tlyPick("P", "2011-03-11T05:52:00Z", "LHZ")});
  ASSERT_EQ(picked.records.size(), 3U);
  EXPECT_EQ(pickTime(*picked.records[0], QStringLiteral("P")), 120);
  EXPECT_EQ(picked.records[0]->pTime(), 120);
  EXPECT_EQ(pickTime(*picked.records[0], QStringLiteral("sP")), 180);
  EXPECT_FALSE(pickTime(*picked.records[0], QStringLiteral("S")));
  EXPECT_EQ(pickTime(*picked.records[1], QStringLiteral("S")), 400) << "a record without new picks keeps its own";
  EXPECT_EQ(picked.notes, (QStringList{"1 of 4 picks: no record is of that channel",
                                       "no reference time of II.TLY: picks have no place there"}));
}

TEST(PicksOfRecords, thatHaveNoRoomAreToldOf) {
  PickArray picks;
  for (int i = 0; i < 13; ++i)
    picks.push_back(tlyPick("S", "2011-03-11T05:52:00Z"));
  const PreparedRecords picked = withPicks({tlyRecord("BHZ")}, picks); // ten places are for names of any kind
  EXPECT_EQ(picked.notes, QStringList{"no room for more picks than A, F and T0 to T9 in records of II.TLY"});
}
