#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"

#include "tests/seismic/SeismogramTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace xov;
using test::copiedSamples;
using test::referenceText;

namespace {

using Floats = std::vector<float>;

QDateTime utc(int hour, int minute, int second, int millisecond = 0) {
  return QDateTime(QDate(2012, 5, 12), QTime(hour, minute, second, millisecond), Qt::UTC);
}

double seconds(const QDateTime& time) { return double(time.toMSecsSinceEpoch()) / 1000; }

SacHeader channel(const char* station, const char* component = "BHZ") {
  SacHeader header;
  header.knetwk = "XX";
  header.kstnm = station;
  header.khole = "00";
  header.kcmpnm = component;
  return header;
}

} // namespace

TEST(RealTimeSeismogram, hasNoSamplesAtFirst) {
  RealTimeSeismogram record(channel("A"), 60);
  EXPECT_EQ(record.npts(), 0);
  EXPECT_EQ(record.labelString(), QStringLiteral("XX.A.00.BHZ"));
  record.ComputeExtrema();
  EXPECT_EQ(record.absMax(), 0);
  EXPECT_EQ(record.pTime(), kUndefinedValue);
  EXPECT_EQ(record.pickLabelWithKey(3), QStringLiteral("-12345"));
}

TEST(RealTimeSeismogram, knowsItsStationAndPlaceButNoEventsTimesAndPicks) {
  SacHeader header = channel("A");
  header.kuser0 = "raw";
  header.gcarc = 30;
  header.az = 45;
  header.baz = 220;
  header.evdp = 24;
  header.o = -60;
  header.a = 12;
  header.t0 = 17;
  const RealTimeSeismogram record(header, 60);
  EXPECT_EQ(record.kuser0(), "raw");
  EXPECT_EQ(record.gcarc(), 30);
  EXPECT_EQ(record.azimuth(), 45);
  EXPECT_EQ(record.backazimuth(), 220);
  EXPECT_EQ(record.evdp(), 24);
  // Their axis is another one than that of the header's times.
  EXPECT_EQ(record.originTimeOffset(), kUndefinedValue);
  EXPECT_EQ(record.a(), kUndefinedValue);
  for (int key = 0; key <= 11; ++key)
    EXPECT_EQ(record.timePickKey(key), kUndefinedValue) << key;
  EXPECT_EQ(record.oTimeString(), "");
  EXPECT_EQ(record.path(), "");
}

TEST(RealTimeSeismogram, indexesWhatArrivesAndAnswersWithItsExtremes) {
  RealTimeSeismogram record(channel("A"), 6);
  record.append(seconds(utc(10, 0, 0)), 0.01, Floats(400, 1));
  record.append(seconds(utc(10, 0, 6)), 0.01, Floats(400, 7)); // behind a gap of 2 s, and 400 samples too many
  ASSERT_EQ(record.npts(), 600);
  ASSERT_NE(record.sampleIndex(), nullptr);
  ASSERT_TRUE(record.sampleIndex()->covers(record.GetSacSeis(), 0, 600));
  record.append(seconds(utc(10, 0, 5)), 0.01, Floats{-3}); // late, into the gap
  record.ComputeExtrema();
  EXPECT_EQ(record.smin(), -3);
  EXPECT_EQ(record.smax(), 7);
}

TEST(RealTimeSeismogram, countsTimesFromItsBase) {
  RealTimeSeismogram record(channel("A"), 60);
  record.setBaseTime(utc(10, 0, 0));
  record.append(seconds(utc(10, 0, 7, 500)), 0.5, Floats{1, 2, 3});
  EXPECT_EQ(record.b(), 7.5F);
  EXPECT_EQ(record.e(), 8.5F);
  EXPECT_EQ(record.delta(), 0.5F);
  EXPECT_EQ(copiedSamples(record), (Floats{1, 2, 3}));
  EXPECT_EQ(referenceText(record), QStringLiteral("2012-05-12T10:00:00.000Z"));
  EXPECT_EQ(record.GetSacHeader()->nzhour, 10);
  EXPECT_EQ(record.GetSacHeader()->npts, 3);

  record.setBaseTime(utc(10, 1, 0));
  EXPECT_EQ(record.b(), -52.5F);
  EXPECT_EQ(record.e(), -51.5F);
  record.setBaseTime({});
  EXPECT_EQ(record.b(), -52.5F) << "an unknown base changes nothing";
}

TEST(RealTimeSeismogram, advancesAsOldSamplesLeave) {
  RealTimeSeismogram record(channel("A"), 2); // four samples
  record.setBaseTime(utc(10, 0, 0));
  record.append(seconds(utc(10, 0, 0)), 0.5, Floats{1, 2, 3, 4});
  record.append(seconds(utc(10, 0, 2)), 0.5, Floats{5, 6});
  EXPECT_EQ(copiedSamples(record), (Floats{3, 4, 5, 6}));
  EXPECT_EQ(record.b(), 1);
  EXPECT_EQ(record.e(), 2.5F);
}

TEST(RealTimeSeismogram, keepsItsExtremesUntilTheyAreAskedFor) {
  RealTimeSeismogram record(channel("A"), 1);
  record.append(0, 0.5, Floats{-8, 1});
  record.append(1, 0.5, Floats{2, 3});
  EXPECT_EQ(record.smin(), -8);
  EXPECT_EQ(record.smax(), 3);
  EXPECT_EQ(record.absMax(), 8);
  record.ComputeExtrema();
  EXPECT_EQ(record.smin(), 2);
  EXPECT_EQ(record.absMax(), 3);
}

TEST(RealTimeSeismogram, leavesGapsOutOfItsExtremes) {
  RealTimeSeismogram record(channel("A"), 60);
  record.append(0, 0.5, Floats{5, 6});
  record.append(4, 0.5, Floats{7});
  record.append(5, 0.5, Floats{std::nanf("")});
  EXPECT_EQ(record.smin(), 5);
  record.ComputeExtrema();
  EXPECT_EQ(record.smin(), 5);
  EXPECT_EQ(record.smax(), 7);
}

TEST(RealTimeSeismogram, startsAnewWhenTheRateChanges) {
  RealTimeSeismogram record(channel("A"), 60);
  record.append(1000, 0.5, Floats{5, 6});
  record.append(1001, 0.25, Floats{7, 8, 9});
  EXPECT_EQ(copiedSamples(record), (Floats{7, 8, 9}));
  EXPECT_EQ(record.delta(), 0.25F);
  EXPECT_EQ(record.smin(), 7);
  record.append(1001.75, 0.25 * (1 + 5e-5), Floats{10});
  EXPECT_EQ(record.npts(), 4) << "a ten-thousandth is the same rate";
  record.append(1002, 0, Floats{1});
  record.append(1002, std::nan(""), Floats{1});
  EXPECT_EQ(record.npts(), 4);
}

TEST(RealTimeSeismogram, boundsItsMemoryWhateverTheInterval) {
  RealTimeSeismogram record(channel("A"), 1e12);
  record.append(0, 1e-9, Floats{1});
  EXPECT_LE(record.buffer().capacity(), 1 << 25);
  RealTimeSeismogram none(channel("A"), std::nan(""));
  none.append(0, 1, Floats{1, 2});
  EXPECT_EQ(none.npts(), 1);
}

TEST(RealTimeSpan, endsAtTheReferenceOnTheRight) {
  // An hour that ends at 10:00:45.5 has its middle at 09:30:45.5.
  const RealTimeSpan span = realTimeSpan(utc(10, 0, 45, 500), 3600, Edge::Right);
  EXPECT_EQ(span.base, utc(9, 30, 0));
  EXPECT_EQ(span.xmin, -1754.5F);
  EXPECT_EQ(span.xmax, 1845.5F);
}

TEST(RealTimeSpan, beginsAtTheReferenceOnTheLeft) {
  const RealTimeSpan span = realTimeSpan(utc(10, 0, 45, 500), 3600, Edge::Left);
  EXPECT_EQ(span.base, utc(10, 30, 0));
  EXPECT_EQ(span.xmin, -1754.5F);
  EXPECT_EQ(span.xmax, 1845.5F);
}

TEST(RealTimeSpan, keepsTimesWithinHalfTheSpanAndAMinute) {
  for (int second = 0; second < 200; ++second) {
    const QDateTime reference = utc(10, 0, 0).addMSecs(second * 1000 + 17 * second);
    for (const double length : {1.0, 600.0, 3600.0, 86400.0}) {
      const RealTimeSpan span = realTimeSpan(reference, length, Edge::Right);
      EXPECT_GE(double(span.xmin), -length / 2);
      EXPECT_LE(double(span.xmax), length / 2 + 60);
      EXPECT_EQ(span.base.time().second(), 0);
      EXPECT_EQ(span.base.time().msec(), 0);
      // Single precision rounds to 2^-24 of the largest time; seconds since 1970 in double precision to 0.24 µs.
      const double rounding = (length / 2 + 60) * std::ldexp(1.0, -24) + 1e-6;
      EXPECT_NEAR(seconds(span.base) + double(span.xmax), seconds(reference), rounding);
    }
  }
}

TEST(RealTimeSpan, ofNothingIsHarmless) {
  EXPECT_FALSE(realTimeSpan({}, 3600, Edge::Right).base.isValid());
  for (const double length : {0.0, -5.0, 1e300, std::nan("")}) {
    const RealTimeSpan span = realTimeSpan(utc(10, 0, 0), length, Edge::Right);
    EXPECT_TRUE(span.base.isValid());
    EXPECT_TRUE(std::isfinite(span.xmin) && std::isfinite(span.xmax));
  }
}

TEST(RealTimeSpan, hasNoBaseAtTheEndsOfTime) {
  using Limits = std::numeric_limits<qint64>;
  for (const qint64 moment : {Limits::max(), Limits::min() + 1}) {
    const QDateTime reference = QDateTime::fromMSecsSinceEpoch(moment, Qt::UTC);
    for (const Edge edge : {Edge::Left, Edge::Right})
      EXPECT_FALSE(realTimeSpan(reference, 1e10, edge).base.isValid());
  }
}

TEST(RealTimeFeed, keepsChannelsInTheOrderOfTheirFirstSamples) {
  RealTimeFeed feed(60);
  feed.append(channel("B"), 0, 1, Floats{1});
  feed.append(channel("A"), 0, 1, Floats{2});
  feed.append(channel("B"), 1, 1, Floats{3});
  feed.append(channel("B", "BHN"), 0, 1, Floats{4});
  ASSERT_EQ(feed.records()->size(), 3U);
  EXPECT_EQ(feed.records()->at(0)->labelString(), QStringLiteral("XX.B.00.BHZ"));
  EXPECT_EQ(feed.records()->at(1)->labelString(), QStringLiteral("XX.A.00.BHZ"));
  EXPECT_EQ(feed.records()->at(2)->labelString(), QStringLiteral("XX.B.00.BHN"));
  EXPECT_EQ(feed.records()->at(0)->npts(), 2);
}

TEST(RealTimeFeed, movesAllChannelsToTheTimeAxisThatItShows) {
  RealTimeFeed feed(7200);
  feed.append(channel("A"), seconds(utc(9, 45, 0)), 1, Floats{1, 2});
  const RealTimeSpan first = feed.show(utc(10, 0, 0), 3600, Edge::Right);
  EXPECT_EQ(first.base, utc(9, 30, 0));
  EXPECT_EQ(feed.records()->at(0)->b(), 900);
  feed.append(channel("B"), seconds(utc(9, 45, 30)), 1, Floats{1, 2});
  EXPECT_EQ(feed.records()->at(1)->b(), 930) << "a channel that comes later is on the same axis";
  // A minute later the base has moved with the reference, and the samples lie a minute further left of it.
  const RealTimeSpan second = feed.show(utc(10, 1, 0), 3600, Edge::Right);
  EXPECT_EQ(second.xmax, first.xmax);
  EXPECT_EQ(feed.records()->at(0)->b(), 840);
  EXPECT_EQ(feed.records()->at(1)->b(), 870);
}

TEST(RealTimeFeed, showsChannelsOfSeveralRatesSideBySide) {
  // A spike at 10:00:30 of every channel, in packets of 10 s of which one comes late.
  RealTimeFeed feed(600);
  const double rates[] = {0.1, 1, 20, 100, 12.5};
  for (const int part : {0, 1, 3, 2}) {
    for (const double rate : rates) {
      const auto name = QByteArray::number(rate, 'f', 1);
      Floats packet(std::size_t(std::max(std::llround(10 * rate), 1LL)), 1);
      if (part == 3) packet.front() = 9;
      feed.append(channel(name.constData()), seconds(utc(10, 0, 10 * part)), 1 / rate, packet);
    }
  }
  const RealTimeSpan span = feed.show(utc(10, 1, 0), 120, Edge::Right);
  ASSERT_EQ(feed.records()->size(), std::size(rates));
  for (const auto& record : *feed.records()) {
    const std::span<const float> samples(record->GetSacSeis(), std::size_t(record->npts()));
    const auto spike = std::ranges::max_element(samples) - samples.begin();
    EXPECT_EQ(samples[std::size_t(spike)], 9);
    const double time = double(record->b()) + double(spike) * double(record->delta());
    EXPECT_NEAR(time, double(span.xmax) - 30, 1e-4) << record->labelString().toStdString();
    EXPECT_NEAR(double(record->b()), double(span.xmax) - 60, 1e-4) << "nothing has moved";
  }
}

TEST(RealTimeFeed, knowsHowFarAChannelHasComeAndWhen) {
  RealTimeFeed feed(60);
  const double ten = seconds(utc(10, 0, 0));
  feed.append(channel("A"), ten, 1, Floats{1, 2});
  const auto arrival = [&] { return feed.channel(channel("A")).arrival(); };
  EXPECT_FALSE(arrival()) << "nobody has said when it came";
  feed.append(channel("A"), ten + 2, 1, Floats{1, 2, 3}, ten + 7);
  EXPECT_EQ(arrival(), (ChannelArrival{ten + 4, ten + 7}));
  EXPECT_EQ(arrival()->dataLatencySeconds(ten + 10), 6);
  EXPECT_EQ(arrival()->feedLatencySeconds(ten + 10), 3);
  // A late packet is one that has come, but takes nothing back; packets of nothing are none.
  feed.append(channel("A"), ten - 5, 1, Floats{1, 2}, ten + 9);
  EXPECT_EQ(arrival(), (ChannelArrival{ten + 4, ten + 9}));
  feed.append(channel("A"), ten + 50, 1, {}, ten + 60);
  feed.append(channel("A"), ten + 50, -1, Floats{1}, ten + 60);
  feed.append(channel("A"), std::nan(""), 1, Floats{1}, ten + 60);
  EXPECT_EQ(arrival(), (ChannelArrival{ten + 4, ten + 9}));
}

TEST(LatencyText, hasOneUnitThatHasPassed) {
  EXPECT_EQ(latencyText(0), "0.0 s");
  EXPECT_EQ(latencyText(4.29), "4.2 s");
  EXPECT_EQ(latencyText(9.99), "9.9 s");
  EXPECT_EQ(latencyText(10), "10 s");
  EXPECT_EQ(latencyText(119.9), "119 s");
  EXPECT_EQ(latencyText(120), "2 min");
  EXPECT_EQ(latencyText(7199), "119 min");
  EXPECT_EQ(latencyText(7200), "2 h");
  EXPECT_EQ(latencyText(172799), "47 h");
  EXPECT_EQ(latencyText(172800), "2 d");
  EXPECT_EQ(latencyText(-3.26), "-3.2 s") << "a clock that is ahead";
  EXPECT_EQ(latencyText(-7200), "-2 h");
  EXPECT_EQ(latencyText(std::nan("")), "-");
  EXPECT_EQ(latencyText(1e300), "99999 d");
  EXPECT_EQ(latencyText(-0.01), "0.0 s");
}

TEST(RealTimeFeed, keepsTimesOfADayExactToAFractionOfASample) {
  // 100 Hz over a day, an hour on the display: b, of the oldest sample in an hour's buffer, against double precision.
  RealTimeFeed feed(3600);
  const Floats tenSeconds(1000, 1);
  const double start = seconds(utc(0, 0, 0)) + 0.0251;
  for (int i = 0; i < 8640; ++i) {
    feed.append(channel("A"), start + i * 10, 0.01, tenSeconds);
    if (i % 97 != 0) continue;
    const QDateTime now = utc(0, 0, 0).addSecs(i * 10 + 12);
    const RealTimeSpan span = feed.show(now, 3600, Edge::Right);
    const double oldest = std::max(start, start + i * 10 + 10 - 3600);
    EXPECT_NEAR(double(feed.records()->at(0)->b()), oldest - seconds(span.base), 0.0002);
  }
  EXPECT_EQ(feed.records()->at(0)->npts(), 360000);
}
