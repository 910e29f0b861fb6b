#include "XOV_Graphics/seismic/prepare/RecordWindow.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/realtime/RealTimeSeismogram.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/support/FakeRecord.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov {
namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();

using Floats = std::vector<float>;

TEST(RecordWindow, borrowsTheSamplesFromBorderToBorder) {
  // Samples 0 ... 9 at 5 ... 14 s.
  const auto record = makeRecord({.begin = 5});
  const RecordWindow window(record, 7, 10);
  EXPECT_EQ(window.GetSacSeis(), record->GetSacSeis() + 2) << "no copy";
  EXPECT_EQ(test::copiedSamples(window), (Floats{2, 3, 4, 5}));
  EXPECT_EQ(window.firstIndex(), 2U);
  EXPECT_EQ(window.b(), 7);
  EXPECT_EQ(window.e(), 10);
  EXPECT_EQ(test::copiedSamples(RecordWindow(record, 6.99, 10.01)), (Floats{2, 3, 4, 5}));
  EXPECT_EQ(test::copiedSamples(RecordWindow(record, 7.01, 9.99)), (Floats{3, 4}));
}

TEST(RecordWindow, isDrawnWithTheIndexOfTheRecord) {
  const auto record = makeRecord({.count = 2000});
  const RecordWindow window(record, 100, 1500);
  ASSERT_NE(window.sampleIndex(), nullptr);
  EXPECT_TRUE(window.sampleIndex()->covers(window.GetSacSeis(), 0, window.npts()));
  EXPECT_EQ(window.smin(), 100);
  EXPECT_EQ(window.smax(), 1500);
}

TEST(RecordWindow, reachesAsFarAsTheRecordWhereABorderIsOpenOrOutside) {
  const auto record = makeRecord({.count = 4});
  EXPECT_EQ(RecordWindow(record, -kOpen, kOpen).npts(), 4);
  EXPECT_EQ(RecordWindow(record, -1e300, 1e300).npts(), 4);
  EXPECT_EQ(test::copiedSamples(RecordWindow(record, 2, kOpen)), (Floats{2, 3}));
  EXPECT_EQ(test::copiedSamples(RecordWindow(record, -kOpen, 1)), (Floats{0, 1}));
  EXPECT_EQ(RecordWindow(record, QDateTime(), QDateTime()).npts(), 4);
}

TEST(RecordWindow, findsSamplesThatSinglePrecisionMovesOffTheBorder) {
  // 0.01 in single precision is 0.00999999977648: sample 100000 lies 22 microseconds, 0.0022 intervals, before 1000
  // s.
  const auto record = makeRecord({.interval = 0.01F, .count = 100002});
  EXPECT_EQ(RecordWindow(record, 1000, kOpen).firstIndex(), 100000U);
  EXPECT_EQ(RecordWindow(record, 1000, 1000).npts(), 1);
  EXPECT_EQ(RecordWindow(record, 1000.0001, 1000.0001).npts(), 0) << "0.01 intervals beside it";
}

TEST(RecordWindow, keepsToTheBordersWhereTimesAreInDoublePrecision) {
  SacFooter precise;
  precise.b = 0.1;
  precise.delta = 0.01;
  const auto record = copyOfRecord(*makeRecord({.count = 100002}), {.precise = precise});
  EXPECT_EQ(RecordWindow(record, 1000.1, kOpen).firstIndex(), 100000U);
  EXPECT_EQ(RecordWindow(record, 1000.10002, kOpen).firstIndex(), 100001U);
  const RecordWindow window(record, 10.1, 20.1);
  EXPECT_DOUBLE_EQ(preciseValuesOf(window).b, 10.1);
  EXPECT_DOUBLE_EQ(preciseValuesOf(window).e, 20.1);
  EXPECT_EQ(preciseValuesOf(window).delta, 0.01);
}

TEST(RecordWindow, takesTimesInUtc) {
  // From 5:00:02 on.
  const auto record = makeRecord({.begin = 2});
  const RecordWindow window(record, onTheDay(5, 0, 4), onTheDay(5, 0, 6, 999));
  EXPECT_EQ(test::copiedSamples(window), (Floats{2, 3, 4}));
  const QDateTime elsewhere = onTheDay(5, 0, 9).toOffsetFromUtc(2 * 3600);
  EXPECT_EQ(test::copiedSamples(RecordWindow(record, elsewhere, QDateTime())), (Floats{7, 8, 9}));
  EXPECT_EQ(RecordWindow(makeRecord({.reference = {}}), onTheDay(5, 0), QDateTime()).npts(), 0)
      << "without a reference time";
}

TEST(RecordWindow, hasItsOwnExtremesAndNumbersInTheHeader) {
  const auto record = makeRecord();
  record->samples()[4] = -7;
  record->samples()[5] = std::nanf("");
  RecordWindow window(record, 3, 6);
  EXPECT_EQ(window.smin(), -7);
  EXPECT_EQ(window.smax(), 6);
  EXPECT_EQ(window.absMax(), 7);
  const SacHeader& header = *window.GetSacHeader();
  EXPECT_EQ(header.npts, 4);
  EXPECT_EQ(header.b, 3);
  EXPECT_EQ(header.e, 6);
  EXPECT_EQ(header.depmin, -7);
  EXPECT_EQ(header.depmax, 6);
  EXPECT_EQ(header.nzhour, 5);
  record->samples()[3] = 50;
  EXPECT_EQ(window.smax(), 6);
  window.ComputeExtrema();
  EXPECT_EQ(window.smax(), 50);
}

TEST(RecordWindow, tellsWhatTheRecordTells) {
  SacHeader header = *makeRecord({.path = "/a/file"})->GetSacHeader();
  header.a = 4;
  header.ka = "P";
  header.t0 = 8;
  header.gcarc = 30;
  const auto record = std::make_shared<SacSeismogram>(header, Floats(10), QStringLiteral("/a/file"));
  const RecordWindow window(record, 3, 6);
  EXPECT_EQ(window.kstnm(), QStringLiteral("TLY"));
  EXPECT_EQ(window.labelString(), record->labelString());
  EXPECT_EQ(window.path(), QStringLiteral("/a/file"));
  EXPECT_EQ(window.pTime(), 4);
  EXPECT_EQ(window.pickLabelWithKey(10), QStringLiteral("P"));
  EXPECT_EQ(window.timePickKey(0), 8) << "outside of the window, but set";
  EXPECT_EQ(window.gcarc(), 30);
  EXPECT_EQ(window.delta(), 1);
  EXPECT_EQ(window.mySeisReferenceTime(), record->mySeisReferenceTime());
  EXPECT_EQ(window.unsetNumbers(), UnsetNumbers::LeftOut);
}

TEST(RecordWindow, zoomsBySettingItsSpan) {
  RecordWindow window(makeRecord(), 0, 9);
  window.setSpan(4, 5);
  EXPECT_EQ(test::copiedSamples(window), (Floats{4, 5}));
  window.setSpan(onTheDay(5, 0, 8), QDateTime());
  EXPECT_EQ(test::copiedSamples(window), (Floats{8, 9}));
}

TEST(RecordWindow, isEmptyWhereNoSampleLies) {
  const auto record = makeRecord();
  for (const auto& [start, end] :
       {std::pair{10.5, 20.0}, {-5.0, -1.0}, {2.2, 2.8}, {5.0, 3.0}, {std::nan(""), 3.0}}) {
    const RecordWindow window(record, start, end);
    EXPECT_EQ(window.npts(), 0) << start;
    EXPECT_EQ(window.GetSacSeis(), nullptr) << start;
    EXPECT_EQ(window.absMax(), 0) << start;
  }
  EXPECT_EQ(RecordWindow(record, 10.5, 20).b(), 10.5F);
  EXPECT_EQ(RecordWindow(record, 10.5, 20).e(), 10.5F);
  EXPECT_EQ(RecordWindow(nullptr, 0, 9).npts(), 0);
  EXPECT_EQ(RecordWindow(makeRecord({.interval = 0}), 0, 9).npts(), 0);
  EXPECT_EQ(RecordWindow(makeRecord({.count = 0}), 0, 9).npts(), 0);
}

TEST(RecordWindow, canBeCopiedIntoARecordOfItsOwn) {
  const auto copy = copyOfRecord(RecordWindow(makeRecord({.begin = 5}), 7, 9));
  EXPECT_EQ(test::copiedSamples(*copy), (Floats{2, 3, 4}));
  EXPECT_EQ(copy->b(), 7);
  EXPECT_EQ(copy->e(), 9);
  EXPECT_EQ(copy->smax(), 4);
}

TEST(RecordWindow, isAWindowOfAWindow) {
  const auto outer = std::make_shared<RecordWindow>(makeRecord(), 2, 8);
  const RecordWindow inner(outer, 0, 4);
  EXPECT_EQ(test::copiedSamples(inner), (Floats{2, 3, 4}));
  EXPECT_EQ(inner.b(), 2);
}

TEST(RecordWindow, staysAtItsTimeWhileALiveRecordMovesOn) {
  SacHeader header;
  header.kstnm = "LIVE";
  const auto live = std::make_shared<RealTimeSeismogram>(header, 10); // ten samples of a second
  const double start = double(onTheDay(5, 0).toMSecsSinceEpoch()) / 1000;
  live->setBaseTime(onTheDay(5, 0));
  const RecordWindow window(live, onTheDay(5, 0, 4), onTheDay(5, 0, 6));
  EXPECT_EQ(window.npts(), 0) << "nothing has arrived";
  live->append(start, 1, Floats{0, 1, 2, 3, 4});
  EXPECT_EQ(test::copiedSamples(window), (Floats{4}));
  live->append(start + 5, 1, Floats{5, 6, 7});
  EXPECT_EQ(test::copiedSamples(window), (Floats{4, 5, 6}));
  EXPECT_EQ(window.smax(), 6);
  live->setBaseTime(onTheDay(4, 59));
  EXPECT_EQ(test::copiedSamples(window), (Floats{4, 5, 6}));
  EXPECT_EQ(window.b(), 64) << "on the record's axis of now";
  EXPECT_EQ(window.GetSacHeader()->nzmin, 59);
  live->append(start + 8, 1, Floats{8, 9, 10, 11, 12, 13, 14});
  EXPECT_EQ(test::copiedSamples(window), (Floats{5, 6})) << "the ring holds 5 ... 14";
  EXPECT_EQ(window.smin(), 5);
  live->append(start + 15, 1, Floats(10, 1));
  EXPECT_EQ(window.npts(), 0);
}

TEST(RecordWindow, inSecondsMovesWithTheBaseOfALiveRecord) {
  const auto live = std::make_shared<RealTimeSeismogram>(SacHeader(), 100);
  live->setBaseTime(onTheDay(5, 0));
  live->append(double(onTheDay(5, 0).toMSecsSinceEpoch()) / 1000, 1, Floats{0, 1, 2, 3, 4, 5});
  const RecordWindow window(live, 1, 2);
  EXPECT_EQ(test::copiedSamples(window), (Floats{1, 2}));
  live->setBaseTime(onTheDay(5, 0, 3));
  EXPECT_EQ(test::copiedSamples(window), (Floats{4, 5}));
}

TEST(WindowOf, tellsInOneLineWhatTheRecordHas) {
  const auto record = makeRecord();
  ASSERT_TRUE(windowOf(record, 3, 6));
  EXPECT_EQ((*windowOf(record, 3, 6))->npts(), 4);
  EXPECT_EQ(windowOf(record, 20, 30).error().toStdString(),
            "II.TLY..BHZ: found samples from 0 s to 9 s, expected some from 20 s to 30 s");
  EXPECT_EQ(
      windowOf(record, onTheDay(6, 0), QDateTime()).error().toStdString(),
      "II.TLY..BHZ: found samples from 2011-03-11T05:00:00.000Z to 2011-03-11T05:00:09.000Z, expected some from "
      "2011-03-11T06:00:00.000Z to the end");
  EXPECT_EQ(windowOf(makeRecord({.reference = {}}), onTheDay(6, 0), QDateTime()).error().toStdString(),
            "II.TLY..BHZ: found no reference time, expected one for times in UTC");
  EXPECT_EQ(windowOf(makeRecord({.count = 0}), -kOpen, 5).error().toStdString(),
            "II.TLY..BHZ: found a record without samples, expected some from the begin to 5 s");
}

TEST(RecordWindow, isOfTheStationAndEventOfTheRecord) {
  auto record = std::make_shared<testing::FakeRecord>(Floats{0, 1, 2, 3});
  record->station = QStringLiteral("TLY");
  record->user = QStringLiteral("raw");
  record->distanceDeg = 30;
  record->azimuthDeg = 45;
  record->backAzimuthDeg = 220;
  record->depthKm = 24;
  record->region = QStringLiteral("HONSHU");
  record->geographicRegion = QStringLiteral("JAPAN");
  record->originTime = QStringLiteral("2011/03/11 05:46:23.7");
  const RecordWindow window(record, 1, 2);
  EXPECT_EQ(window.npts(), 2);
  EXPECT_EQ(window.kstnm(), "TLY");
  EXPECT_EQ(window.kuser0(), "raw");
  EXPECT_EQ(window.gcarc(), 30);
  EXPECT_EQ(window.azimuth(), 45);
  EXPECT_EQ(window.backazimuth(), 220);
  EXPECT_EQ(window.evdp(), 24);
  EXPECT_EQ(window.flinnEngdahlString(), "HONSHU");
  EXPECT_EQ(window.flinnEngdahlGeographicRegion(), "JAPAN");
  EXPECT_EQ(window.oTimeString(), "2011/03/11 05:46:23.7");
}

} // namespace
} // namespace xov
