#include "XOV_Graphics/seismic/prepare/CommonAxis.h"

#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <cmath>

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

// Ten samples, one a second, with the origin time o of an event.
std::shared_ptr<SacSeismogram> ofEvent(const QDateTime& reference, float begin, float origin) {
  SacHeader header = *makeRecord({.reference = reference})->GetSacHeader();
  header.b = begin;
  header.o = origin;
  return std::make_shared<SacSeismogram>(header, std::vector<float>(10));
}

// An event at 05:00:00, written once with the event as the zero of time and once with the begin of the file, which is
// 1880 s later.
TEST(CommonAxis, putsOneEventAtOneTime) {
  const SeismogramArray records = onCommonAxis(
      {ofEvent(onTheDay(5, 0), 300, 0), ofEvent(onTheDay(5, 31, 20), 0, -1880), makeRecord({.begin = 1885})});
  EXPECT_EQ(records[0]->originTimeOffset(), 0);
  EXPECT_EQ(records[1]->originTimeOffset(), 0);
  EXPECT_EQ(records[1]->b(), 1880);
  EXPECT_EQ(countTimeAxes(records), 1U);
}

TEST(CommonAxis, holdsReferenceTimesTenMinutesApart) {
  const SeismogramArray records =
      onCommonAxis({makeRecord({.reference = onTheDay(5, 10)}), makeRecord({.reference = onTheDay(5, 0)})});
  EXPECT_EQ(records[0]->b(), 0) << "the first one's reference time counts";
  EXPECT_EQ(records[1]->b(), -600);
}

TEST(CommonAxis, holdsComponentsThatStartAtDifferentSeconds) {
  const auto component = [](const char* name, int second) {
    return makeRecord({.component = name, .reference = onTheDay(5, 0, second), .count = 100});
  };
  const SeismogramArray records = onCommonAxis({component("BHZ", 34), component("BHN", 38), component("BHE", 51)});
  EXPECT_EQ(records[0]->b(), 0);
  EXPECT_EQ(records[1]->b(), 4);
  EXPECT_EQ(records[2]->b(), 17);
}

TEST(CommonAxis, reachesAsFarAsAWaveTravelsOrTheLongestRecordLasts) {
  const auto laterBegin = [](int gapSeconds, int count) {
    const QDateTime end = onTheDay(5, 0).addSecs(count);
    return onCommonAxis({makeRecord({.count = count}), makeRecord({.reference = end.addSecs(gapSeconds)})})[1]->b();
  };
  EXPECT_EQ(laterBegin(1200, 10), 1210);
  EXPECT_EQ(laterBegin(1201, 10), 0) << "of its own time";
  EXPECT_EQ(laterBegin(3600, 3600), 7200);
  EXPECT_EQ(laterBegin(3601, 3600), 0);
}

TEST(CommonAxis, keepsTwoEventsApartThatFollowEachOther) {
  const SeismogramArray records = onCommonAxis({ofEvent(onTheDay(5, 0), 30, 0), ofEvent(onTheDay(5, 5), 30, 0)});
  EXPECT_EQ(records[1]->b(), 30);
  EXPECT_EQ(countTimeAxes(records), 2U);
  const SeismogramArray overlapping =
      onCommonAxis({ofEvent(onTheDay(5, 0), 30, 0), ofEvent(onTheDay(5, 5), -265, 0)});
  EXPECT_EQ(overlapping[1]->b(), 35) << "the same wave lies at one place";
}

TEST(CommonAxis, carriesOverFromRecordToRecord) {
  // Three of a thousand seconds, each 900 s after the one before, and two of the next day; given out of order.
  const auto at = [](int seconds) {
    return makeRecord({.reference = onTheDay(0, 0).addSecs(seconds), .count = 1000});
  };
  const SeismogramArray records = onCommonAxis({at(1800), at(86400), at(0), at(900), at(86500)});
  EXPECT_EQ(records[0]->b(), 0);
  EXPECT_EQ(records[2]->b(), -1800);
  EXPECT_EQ(records[3]->b(), -900);
  EXPECT_EQ(records[1]->b(), 0);
  EXPECT_EQ(records[4]->b(), 100);
  EXPECT_EQ(countTimeAxes(records), 2U);
}

TEST(CommonAxis, leavesRecordsAloneOfWhichNoTimeIsKnown) {
  const SeismogramArray records = onCommonAxis({makeRecord({.reference = QDateTime(), .begin = 7}), makeRecord(),
                                                makeRecord({.reference = onTheDay(5, 0, 3)}),
                                                makeRecord({.reference = QDateTime(), .begin = 9})});
  EXPECT_EQ(records[0]->b(), 7);
  EXPECT_EQ(records[2]->b(), 3) << "beside those, others share theirs";
  EXPECT_EQ(records[3]->b(), 9);
  EXPECT_EQ(countTimeAxes(records), 2U);
  EXPECT_EQ(countTimeAxes({records[0], records[3]}), 1U);
}

TEST(CommonAxis, holdsManyRecords) {
  SeismogramArray records;
  for (int i = 0; i < 2000; ++i)
    records.push_back(makeRecord({.reference = onTheDay(5, 0).addSecs(i)}));
  EXPECT_EQ(onCommonAxis(records).back()->b(), 1999);
}

TEST(PairsFromOneStart, putWhatIsMissingBeforeTheLaterOne) {
  const SeismogramArray records =
      pairsFromOneStart({makeRecord({.begin = 4}), makeRecord(), makeRecord(), makeRecord()});
  ASSERT_EQ(records[0]->npts(), 14);
  EXPECT_EQ(records[0]->b(), 0);
  EXPECT_TRUE(std::isnan(records[0]->GetSacSeis()[3]));
  EXPECT_EQ(records[0]->GetSacSeis()[4], 0);
  EXPECT_EQ(records[0]->GetSacSeis()[13], 9);
  EXPECT_EQ(records[0]->e(), 13) << "where it ended before";
  EXPECT_EQ(records[1]->npts(), 10);
  EXPECT_EQ(records[2]->npts(), 10) << "these two begin together";
}

TEST(PairsFromOneStart, leaveAloneWhatBeginsTogetherLiesApartOrHasNoTime) {
  const SeismogramArray given = {makeRecord(),
                                 makeRecord({.begin = 0.4F}),
                                 makeRecord(),
                                 makeRecord({.begin = 11}),
                                 makeRecord({.reference = QDateTime()}),
                                 makeRecord({.begin = 4}),
                                 makeRecord()};
  EXPECT_EQ(pairsFromOneStart(given), given);
}

TEST(PairsFromOneStart, leaveAloneWhatWouldBecomeTooLarge) {
  // A day at a microsecond an interval is 8.64e10 samples.
  const SeismogramArray given = {makeRecord({.interval = 10000}), makeRecord({.begin = 86400, .interval = 1e-6F})};
  EXPECT_EQ(pairsFromOneStart(given), given);
}

TEST(CommonAxis, takesNoRecords) { EXPECT_TRUE(onCommonAxis({}).empty()); }

} // namespace
} // namespace xov
