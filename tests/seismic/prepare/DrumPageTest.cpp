#include "XOV_Graphics/seismic/prepare/DrumPage.h"

#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace xov {
namespace {

QDateTime referenceOf(const SeismogramRecord& record) { return record.mySeisReferenceTime()->nsDate(); }

TEST(DrumPage, startsAtTheWholeHourOfTheEarliestSample) {
  const Result<DrumPage> page = layOutDrum({makeRecord({.reference = onTheDay(5, 17, 30), .begin = 2})}, 3600);
  ASSERT_TRUE(page);
  EXPECT_EQ(referenceOf(*page->pieces[0]), onTheDay(5, 0));
  EXPECT_EQ(page->pieces[0]->b(), 1052) << "17 min 30 s and 2 s";
}

TEST(DrumPage, startsWithTheHourThatHoldsAMinuteOfData) {
  const auto page = [](const QDateTime& reference, int count) {
    return *layOutDrum({makeRecord({.reference = reference, .interval = 0.005F, .count = count})}, 3600);
  };
  // Three samples, 5 ms each, before midnight, then two minutes.
  const DrumPage night = page(onTheDay(0, 0).addMSecs(-15), 24003);
  EXPECT_EQ(referenceOf(*night.pieces[0]), onTheDay(0, 0));
  EXPECT_NEAR(night.pieces[0]->b(), 0, 1e-6);
  EXPECT_EQ(night.pieces[0]->npts(), 24000);
  EXPECT_EQ(night.rows, 1);
  EXPECT_EQ(night.notes,
            QStringList{"II.TLY..BHZ: less than a minute (0.015 s) before 2011-03-11T00:00:00Z left out"});
  // 59.995 s before the hour, and 60 s.
  EXPECT_EQ(referenceOf(*page(onTheDay(5, 0).addMSecs(-59995), 24003).pieces[0]), onTheDay(5, 0));
  const DrumPage minute = page(onTheDay(4, 59), 24003);
  EXPECT_EQ(referenceOf(*minute.pieces[0]), onTheDay(4, 0));
  EXPECT_EQ(minute.rows, 2);
  EXPECT_EQ(minute.notes, QStringList());
}

TEST(DrumPage, countsTheDataOfAnHourInAllItsPieces) {
  const auto piece = [](int minute) { return makeRecord({.reference = onTheDay(5, minute), .count = 30}); };
  const auto later = makeRecord({.reference = onTheDay(7, 0), .count = 4000});
  EXPECT_EQ(referenceOf(*layOutDrum({piece(10), later}, 3600)->pieces[0]), onTheDay(7, 0));
  EXPECT_EQ(referenceOf(*layOutDrum({piece(10), piece(20), later}, 3600)->pieces[0]), onTheDay(5, 0));
}

TEST(DrumPage, startsWithTheFirstHourWhereNoneHoldsAMinute) {
  const Result<DrumPage> page = layOutDrum({makeRecord({.reference = onTheDay(0, 0), .begin = -5})}, 3600);
  EXPECT_EQ(referenceOf(*page->pieces[0]), onTheDay(0, 0).addSecs(-3600));
  EXPECT_EQ(page->pieces[0]->b(), 3595);
  EXPECT_EQ(page->rows, 2) << "the last five samples lie in the new day";
  EXPECT_EQ(page->notes, QStringList());
}

TEST(DrumPage, startsWhereTheSpanDoes) {
  const auto record = [] { return makeRecord({.reference = onTheDay(5, 17, 30), .count = 7200}); };
  const DrumPage page = *layOutDrum({record()}, 3600, {}, {.start = onTheDay(5, 30), .end = {}});
  EXPECT_EQ(page.start, onTheDay(5, 30));
  EXPECT_EQ(referenceOf(*page.pieces[0]), onTheDay(5, 30));
  EXPECT_NEAR(page.pieces[0]->b(), 0, 1e-6) << "12.5 minutes are cut off";
  EXPECT_EQ(page.pieces[0]->npts(), 7200 - 750);
  EXPECT_EQ(page.rows, 2) << "107.5 minutes";
  EXPECT_EQ(page.notes, QStringList());
  EXPECT_EQ(layOutDrum({record()}, 3600)->start, onTheDay(5, 0)) << "else with the hour";
}

TEST(DrumPage, hasTheRowsOfItsSpan) {
  const auto rows = [](const QDateTime& end, std::optional<int> wanted = {}) {
    return layOutDrum({makeRecord({.reference = onTheDay(5, 17, 30)})}, 3600, wanted,
                      {.start = onTheDay(4, 30), .end = end})
        ->rows;
  };
  EXPECT_EQ(rows(onTheDay(8, 30)), 4);
  EXPECT_EQ(rows(onTheDay(8, 31)), 5) << "the last row is begun";
  EXPECT_EQ(rows(onTheDay(8, 30), 2), 2);
  EXPECT_EQ(rows(onTheDay(8, 30).addYears(9)), kMostDrumRows);
}

TEST(DrumPage, refusesASpanThatEndsBeforeItStarts) {
  const auto page = layOutDrum({makeRecord({.reference = onTheDay(5, 17, 30)})}, 3600, {},
                               {.start = onTheDay(6, 0), .end = onTheDay(6, 0)});
  ASSERT_FALSE(page);
  EXPECT_EQ(page.error(), "found a page from 2011-03-11T06:00:00Z to 2011-03-11T06:00:00Z, expected an end after the "
                          "start");
}

TEST(DrumPage, drawsCopiesOfARecordOnce) {
  const auto other = makeRecord();
  other->samples()[3] = 0;
  const Result<DrumPage> page =
      layOutDrum({makeRecord({.path = "a"}), other, makeRecord({.path = "b"}), makeRecord({.begin = 20})}, 3600);
  ASSERT_EQ(page->pieces.size(), 3U);
  EXPECT_EQ(page->pieces[0]->path(), "a");
  EXPECT_EQ(page->notes, QStringList{"II.TLY..BHZ: 1 of 4 records have the samples of another one; drawn once"});
}

TEST(DrumPage, hasTheRowsThatTheLastSampleNeeds) {
  const auto rows = [](int count, float interval, double rowSeconds) {
    return layOutDrum({makeRecord({.interval = interval, .count = count})}, rowSeconds)->rows;
  };
  EXPECT_EQ(rows(3600, 1, 3600), 1) << "the last sample is at 3599 s";
  EXPECT_EQ(rows(3601, 1, 3600), 2) << "the last sample is at 3600 s";
  EXPECT_EQ(rows(24 * 3600, 1, 3600), 24);
  EXPECT_EQ(rows(1, 1, 3600), 1);
  EXPECT_EQ(rows(100, 10, 60), 17) << "990 s";
  EXPECT_EQ(rows(5000, 1, 1), kMostDrumRows);
}

TEST(DrumPage, leavesOutWhatLiesBelowItsRows) {
  const Result<DrumPage> page = layOutDrum({makeRecord({.interval = 10, .count = 1000})}, 3600, 2);
  EXPECT_EQ(page->rows, 2);
  ASSERT_EQ(page->pieces.size(), 1U);
  EXPECT_EQ(page->pieces[0]->npts(), 720) << "0 to 7190 s";
  EXPECT_FLOAT_EQ(page->pieces[0]->smin(), -499.5F) << "less the mean of 0 ... 999";
  EXPECT_FLOAT_EQ(page->pieces[0]->smax(), 719 - 499.5F);
  const Result<DrumPage> first = layOutDrum({makeRecord(), makeRecord({.reference = onTheDay(8, 0)})}, 3600, 2);
  EXPECT_EQ(first->pieces.size(), 1U) << "the other piece begins below the last row";
}

TEST(DrumPage, putsPiecesIntoTimeOrderOnOneAxis) {
  const Result<DrumPage> page =
      layOutDrum({makeRecord({.reference = onTheDay(6, 10)}), makeRecord({.reference = onTheDay(5, 30)})}, 3600);
  ASSERT_EQ(page->pieces.size(), 2U);
  EXPECT_EQ(page->pieces[0]->b(), 1800);
  EXPECT_EQ(page->pieces[1]->b(), 4200);
  EXPECT_EQ(referenceOf(*page->pieces[1]), onTheDay(5, 0));
}

TEST(DrumPage, leavesPiecesOutThatHaveNoTimeOrNoSamples) {
  const Result<DrumPage> page = layOutDrum(
      {makeRecord({.reference = QDateTime()}), makeRecord(), makeRecord({.count = 0}), makeRecord({.interval = -1})},
      3600);
  EXPECT_EQ(page->pieces.size(), 1U);
}

// Samples of 1 and -1 in turn, a hundred a minute; in some of the minutes the first two are larger.
double gainOf(int minutes, int loudMinutes, float loudness) {
  const auto record = makeRecord({.interval = 0.6F, .count = minutes * 100});
  for (std::size_t i = 0; i < record->samples().size(); ++i) {
    const bool isLoud = i % 100 < 2 && i / 100 < std::size_t(loudMinutes);
    record->samples()[i] = (i % 2 == 0 ? 1.0F : -1.0F) * (isLoud ? loudness : 1);
  }
  return layOutDrum({record}, 3600)->gain;
}

TEST(DrumPage, hasAGainThatKeepsUsualMinutesInTheirRows) {
  EXPECT_NEAR(gainOf(10, 0, 1), 0.6, 1e-6) << "all minutes are alike";
  EXPECT_NEAR(gainOf(10, 4, 5), 3, 1e-6) << "the largest sample is five times the usual one";
  EXPECT_NEAR(gainOf(10, 6, 5), 0.6, 1e-6) << "most minutes are loud";
  EXPECT_NEAR(gainOf(10, 1, 1000), 8, 1e-6);
}

TEST(DrumPage, hasAGainThatGapsDoNotChange) {
  // Two loud minutes and one three times as quiet, without and with ten minutes of nothing behind them.
  const auto record = [](int minutesOfNothing) {
    std::vector<float> samples(60, 3.0F);
    samples.resize(120, -3.0F);
    samples.resize(180, 1.0F);
    samples.resize(std::size_t(180 + 60 * minutesOfNothing), std::nanf(""));
    return std::make_shared<SacSeismogram>(*makeRecord()->GetSacHeader(), samples);
  };
  EXPECT_NEAR(drumGain({record(0)}), 0.6, 1e-6) << "the middle minute of 1, 3, 3 is a largest one";
  EXPECT_NEAR(drumGain({record(10)}), 0.6, 1e-6);
  EXPECT_EQ(drumGain({std::make_shared<SacSeismogram>()}), 1) << "of nothing";
}

TEST(DrumPage, hasAGainForSilence) {
  const auto record = makeRecord();
  std::ranges::fill(record->samples(), 3.0F);
  EXPECT_EQ(layOutDrum({record}, 3600)->gain, 8);
}

TEST(DrumPage, refusesARecordingWithoutAnyTime) {
  EXPECT_EQ(layOutDrum({makeRecord({.reference = QDateTime()})}, 3600).error(),
            "found no record with samples and times, expected a reference time");
}

TEST(DrumPage, refusesSeveralChannels) {
  EXPECT_EQ(layOutDrum({makeRecord(), makeRecord({.component = "BHN"}), makeRecord()}, 3600).error(),
            "found 2 channels, expected one: II.TLY..BHZ, II.TLY..BHN");
  SeismogramArray many;
  for (const char* station : {"A", "B", "C", "D", "E", "F"})
    many.push_back(makeRecord({.station = station}));
  EXPECT_TRUE(layOutDrum(many, 3600).error().endsWith("II.E..BHZ, ..."));
}

TEST(DrumPage, holdsALongRecordingOnce) {
  SeismogramArray records = {makeRecord({.reference = onTheDay(5, 17), .count = 1000})};
  const float* const samples = records[0]->GetSacSeis();
  const Result<DrumPage> page = layOutDrum(std::move(records), 3600);
  EXPECT_EQ(page->pieces[0]->GetSacSeis(), samples) << "on another axis and without its mean";
  EXPECT_EQ(page->pieces[0]->b(), 1020);
}

TEST(DrumPage, cutsALongRecordingWithoutACopy) {
  SeismogramArray records = {makeRecord({.count = 10000})};
  const float* const samples = records[0]->GetSacSeis();
  const Result<DrumPage> page = layOutDrum(std::move(records), 3600, 1);
  EXPECT_EQ(page->pieces[0]->GetSacSeis(), samples);
  EXPECT_LT(page->pieces[0]->npts(), 10000);
}

TEST(DrumPage, refusesRowsWithoutADuration) {
  for (const double seconds : {0.0, -3600.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_TRUE(layOutDrum({makeRecord()}, seconds).error().endsWith("expected more than 0")) << seconds;
}

TEST(DrumPage, hasAtLeastOneRowAndNoMoreThanCanBeToldApart) {
  EXPECT_EQ(layOutDrum({makeRecord()}, 3600, 0)->rows, 1);
  EXPECT_EQ(layOutDrum({makeRecord()}, 3600, 100000)->rows, kMostDrumRows);
}

} // namespace
} // namespace xov
