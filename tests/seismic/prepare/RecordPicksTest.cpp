#include "XOV_Graphics/seismic/prepare/RecordPicks.h"

#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace xov {
namespace {

using enum SeismicPhase;

/// A record at 60 degrees from an event 33 km deep, 100 s after the zero of its axis. There P takes 603.23 s and S
/// 1094.13 s.
std::shared_ptr<SacSeismogram> eventRecord(const std::function<void(SacHeader&)>& change = [](SacHeader&) {}) {
  SacHeader header = headerOf(*makeRecord());
  header.gcarc = 60;
  header.evdp = 33;
  header.o = 100;
  change(header);
  return copyOfRecord(*makeRecord(), {.header = header, .precise = footerFromHeader(header)});
}

constexpr double kPSeconds = 603.23;
constexpr double kSSeconds = 1094.13;
constexpr double kTolerance = 0.02;

TEST(RecordPicks, aPickIsCalledByItsLabelOrItsPlace) {
  const auto record = eventRecord([](SacHeader& header) {
    header.a = 1;
    header.t0 = 2;
    header.t3 = 4;
    header.kt3 = "PcP";
  });
  EXPECT_EQ(pickName(*record, kFirstArrivalKey), "A");
  EXPECT_EQ(pickName(*record, 0), "T0");
  EXPECT_EQ(pickName(*record, 3), "PcP");
  EXPECT_EQ(pickName(*record, kEndOfSignalKey), "F");
  EXPECT_EQ(pickName(*record, 12), "");
  EXPECT_EQ(pickTime(*record, "A"), 1);
  EXPECT_EQ(pickTime(*record, "PcP"), 4);
  EXPECT_FALSE(pickTime(*record, "T3")) << "it has another name";
  EXPECT_FALSE(pickTime(*record, "T1")) << "it is not set";
  EXPECT_FALSE(pickTime(*record, "pcp")) << "case counts";
}

TEST(RecordPicks, predictedPicksCountFromTheOriginTime) {
  const PreparedRecords picked = withPredictedPicks({eventRecord()}, std::array{S, P});
  EXPECT_TRUE(picked.notes.isEmpty());
  const SeismogramRecord& record = *picked.records.front();
  EXPECT_NEAR(*pickTime(record, "P"), 100 + kPSeconds, kTolerance);
  EXPECT_NEAR(*pickTime(record, "S"), 100 + kSSeconds, kTolerance);
  EXPECT_EQ(record.pickLabelWithKey(0), "P") << "the earliest first";
  EXPECT_EQ(record.pickLabelWithKey(1), "S");
  EXPECT_EQ(record.timePickKey(kFirstArrivalKey), kUndefinedValue) << "A stays for what has been seen";
  EXPECT_EQ(record.timePickKey(2), kUndefinedValue);
  EXPECT_EQ(record.npts(), 10);
}

TEST(RecordPicks, noPickOfTheRecordIsOverwritten) {
  const auto record = eventRecord([](SacHeader& header) {
    header.a = 700;
    header.ka = "P";
    header.t0 = 5;
    header.t2 = 6;
  });
  const PreparedRecords picked = withPredictedPicks({record}, std::array{P, PcP, S});
  const SeismogramRecord& now = *picked.records.front();
  EXPECT_EQ(pickTime(now, "P"), 700) << "it has been seen";
  EXPECT_EQ(now.timePickKey(0), 5);
  EXPECT_EQ(now.pickLabelWithKey(1), "PcP");
  EXPECT_EQ(now.timePickKey(2), 6);
  EXPECT_EQ(now.pickLabelWithKey(3), "S");
  EXPECT_EQ(now.timePickKey(4), kUndefinedValue);
}

TEST(RecordPicks, aFullRecordTakesTheEarliestAndANoteSaysSo) {
  const auto record = eventRecord([](SacHeader& header) {
    for (float* time :
         {&header.t0, &header.t1, &header.t2, &header.t3, &header.t4, &header.t5, &header.t6, &header.t7, &header.t8})
      *time = 1;
  });
  const PreparedRecords picked = withPredictedPicks({record}, std::array{S, P});
  EXPECT_TRUE(pickTime(*picked.records.front(), "P"));
  EXPECT_FALSE(pickTime(*picked.records.front(), "S"));
  EXPECT_EQ(picked.notes, QStringList("no room for more picks than T0 to T9 in records of II.TLY"));
}

TEST(RecordPicks, withoutDistanceOrOriginTimeNothingIsPredictedAndANoteSaysSo) {
  const auto noDistance = eventRecord([](SacHeader& header) { header.gcarc = kUndefinedValue; });
  const auto noOrigin = eventRecord([](SacHeader& header) {
    header.o = kUndefinedValue;
    header.kstnm = "AAK";
  });
  const PreparedRecords picked = withPredictedPicks({noDistance, eventRecord(), noOrigin}, std::array{P});
  EXPECT_EQ(picked.notes, QStringList("no distance or origin time of II.TLY, II.AAK: arrivals are not known"));
  EXPECT_EQ(picked.records[0], noDistance) << "the record itself";
  EXPECT_TRUE(pickTime(*picked.records[1], "P"));
  EXPECT_EQ(picked.records[2], noOrigin);
}

TEST(RecordPicks, aPhaseThatDoesNotArriveIsNoPick) {
  const auto far = eventRecord([](SacHeader& header) { header.gcarc = 120; });
  const PreparedRecords picked = withPredictedPicks({far}, std::array{P, Pdiff});
  EXPECT_TRUE(picked.notes.isEmpty());
  EXPECT_FALSE(pickTime(*picked.records.front(), "P"));
  EXPECT_TRUE(pickTime(*picked.records.front(), "Pdiff"));
}

TEST(RecordPicks, anUnknownDepthCountsAsTheSurface) {
  const auto shallow = eventRecord([](SacHeader& header) { header.evdp = 0; });
  const auto unknown = eventRecord([](SacHeader& header) { header.evdp = kUndefinedValue; });
  ASSERT_EQ(arrivalsOf(*unknown, std::array{P}).size(), 1U);
  EXPECT_EQ(arrivalsOf(*unknown, std::array{P}).front().seconds, arrivalsOf(*shallow, std::array{P}).front().seconds);
}

TEST(RecordPicks, onlyPicksOfTheNamesStay) {
  const auto record = eventRecord([](SacHeader& header) {
    header.a = 1;
    header.ka = "P";
    header.t1 = 2;
    header.kt1 = "S";
    header.t4 = 3;
    header.f = 9;
  });
  const auto some = withPicksNamed({record}, {"S", "T4"});
  EXPECT_EQ(some.front()->a(), kUndefinedValue);
  EXPECT_EQ(some.front()->pickLabelWithKey(kFirstArrivalKey), kUndefinedLabel);
  EXPECT_EQ(some.front()->timePickKey(1), 2);
  EXPECT_EQ(some.front()->timePickKey(4), 3);
  EXPECT_EQ(some.front()->timePickKey(kEndOfSignalKey), kUndefinedValue);
  const auto none = withPicksNamed({record}, {});
  for (int key = 0; key <= kEndOfSignalKey; ++key)
    EXPECT_EQ(none.front()->timePickKey(key), kUndefinedValue) << key;
  EXPECT_EQ(none.front()->originTimeOffset(), 100) << "the origin time is no pick";
  EXPECT_EQ(record->a(), 1) << "the record that was given stays";
  EXPECT_EQ(withPicksNamed({record}, {"P", "S", "T4", "F"}).front(), record) << "nothing to change";
}

TEST(RecordPicks, namesArePicksOfTheRecordElsePredictions) {
  const auto record = eventRecord([](SacHeader& header) {
    header.a = 777;
    header.ka = "P";
    header.t0 = 5;
    header.kt0 = "Lg";
    for (float* time :
         {&header.t1, &header.t2, &header.t3, &header.t4, &header.t5, &header.t6, &header.t7, &header.t8, &header.t9})
      *time = 1;
  });
  const PreparedRecords picked = withPicksOrPredictions({record}, {"P", "S", "Lg", "S"});
  EXPECT_TRUE(picked.notes.isEmpty());
  const SeismogramRecord& now = *picked.records.front();
  EXPECT_EQ(pickTime(now, "P"), 777);
  EXPECT_NEAR(*pickTime(now, "S"), 100 + kSSeconds, kTolerance) << "at the place of one that has gone";
  EXPECT_EQ(pickTime(now, "Lg"), 5);
  EXPECT_EQ(now.timePickKey(2), kUndefinedValue);
}

TEST(RecordPicks, aNameThatIsNothingIsSaidOnce) {
  const PreparedRecords picked = withPicksOrPredictions({eventRecord(), eventRecord()}, {"P", "Q", "Q"});
  EXPECT_EQ(picked.notes, QStringList("no record has a pick Q, nor is that a phase of the travel times"));
}

TEST(RecordPicks, theOtherNameOfAPhaseKeepsItsPicks) {
  const auto record = eventRecord([](SacHeader& header) {
    header.gcarc = 150;
    header.t6 = 1300;
    header.kt6 = "PKPdf";
  });
  const PreparedRecords picked = withPicksOrPredictions({record}, {"PKIKP"});
  EXPECT_EQ(picked.records.front(), record);
}

} // namespace
} // namespace xov
