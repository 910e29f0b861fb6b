#include "XOV_Graphics/seismic/realtime/Replayer.h"

#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace xov;
using test::copiedSamples;

namespace {

QDateTime utc(int hour, int minute, int second) {
  return QDateTime(QDate(2012, 5, 12), QTime(hour, minute, second), Qt::UTC);
}

/// A piece at 10 Hz with samples `first`, `first` + 1, ...
std::shared_ptr<SacSeismogram> piece(const char* station, const QDateTime& start, int count, int first = 0) {
  SacHeader header;
  header.knetwk = "XX";
  header.kstnm = station;
  header.delta = 0.1F;
  SacFooter precise;
  precise.delta = 0.1;
  precise.b = 0;
  setReferenceTime(header, start);
  std::vector<float> samples;
  for (int i = 0; i < count; ++i)
    samples.push_back(float(first + i));
  return std::make_shared<SacSeismogram>(header, std::move(samples), QString(), precise);
}

/// Packets of two seconds that arrive as soon as they are complete.
ReplayOptions prompt() {
  ReplayOptions options;
  options.shortestPacketSeconds = 2;
  options.longestPacketSeconds = 2;
  options.longestLatencySeconds = 0;
  return options;
}

} // namespace

TEST(Replayer, deliversPacketsWhenTheyAreComplete) {
  Replayer replayer({piece("A", utc(10, 0, 0), 50)}, prompt());
  RealTimeFeed feed(60);
  replayer.advanceTo(0, feed);
  ASSERT_EQ(feed.records()->size(), 1U) << "the channel has its place from the start";
  EXPECT_EQ(feed.records()->at(0)->npts(), 0);
  replayer.advanceTo(1.9, feed);
  EXPECT_EQ(feed.records()->at(0)->npts(), 0);
  replayer.advanceTo(2.1, feed);
  EXPECT_EQ(feed.records()->at(0)->npts(), 20);
  replayer.advanceTo(4.1, feed);
  EXPECT_EQ(feed.records()->at(0)->npts(), 40);
  EXPECT_FALSE(replayer.isAtEnd());
  replayer.advanceTo(5.1, feed);
  EXPECT_EQ(feed.records()->at(0)->npts(), 50) << "the last packet is shorter";
  EXPECT_TRUE(replayer.isAtEnd());
  EXPECT_NEAR(replayer.durationSeconds(), 5, 1e-6);
}

TEST(Replayer, deliversEverySampleAtItsTime) {
  const auto recorded = piece("A", utc(10, 0, 0), 345, 7);
  Replayer replayer({recorded});
  RealTimeFeed feed(600);
  for (double clock = 0; !replayer.isAtEnd(); clock += 0.37)
    replayer.advanceTo(clock, feed);
  EXPECT_EQ(copiedSamples(*feed.records()->at(0)), copiedSamples(*recorded));
  feed.show(utc(10, 0, 30), 60, Edge::Right);
  EXPECT_NEAR(*startSeconds(*feed.records()->at(0)), *startSeconds(*recorded), 1e-4);
}

TEST(Replayer, runsAtItsSpeed) {
  ReplayOptions options = prompt();
  options.speed = 60;
  Replayer replayer({piece("A", utc(10, 0, 0), 600)}, options);
  RealTimeFeed feed(600);
  replayer.advanceTo(0.5, feed);
  EXPECT_EQ(replayer.now(), utc(10, 0, 30));
  EXPECT_EQ(feed.records()->at(0)->npts(), 300);
  EXPECT_NEAR(replayer.durationSeconds(), 1, 1e-6);
  for (const double speed : {0.0, -3.0, std::nan("")}) {
    options.speed = speed;
    Replayer other({piece("A", utc(10, 0, 0), 10)}, options);
    other.advanceTo(7, feed);
    EXPECT_EQ(other.now(), utc(10, 0, 7)) << speed;
  }
}

TEST(Replayer, doesNotGoBack) {
  Replayer replayer({piece("A", utc(10, 0, 0), 50)}, prompt());
  RealTimeFeed feed(60);
  replayer.advanceTo(3, feed);
  replayer.advanceTo(1, feed);
  replayer.advanceTo(std::nan(""), feed);
  EXPECT_EQ(replayer.now(), utc(10, 0, 3));
  EXPECT_EQ(feed.records()->at(0)->npts(), 20);
}

TEST(Replayer, beginsWhereItIsTold) {
  ReplayOptions options = prompt();
  options.start = utc(10, 0, 30);
  Replayer replayer({piece("A", utc(10, 0, 0), 600)}, options);
  RealTimeFeed feed(600);
  replayer.advanceTo(0, feed);
  EXPECT_EQ(replayer.now(), utc(10, 0, 30));
  EXPECT_EQ(feed.records()->at(0)->npts(), 300) << "what came before has arrived";
}

TEST(Replayer, leavesTheGapsOfTheRecording) {
  Replayer replayer({piece("A", utc(10, 0, 0), 20), piece("A", utc(10, 0, 3), 20, 100)}, prompt());
  RealTimeFeed feed(60);
  replayer.advanceTo(10, feed);
  const std::vector<float> samples = copiedSamples(*feed.records()->at(0));
  ASSERT_EQ(samples.size(), 50U);
  EXPECT_EQ(samples[19], 19);
  for (std::size_t i = 20; i < 30; ++i)
    EXPECT_TRUE(std::isnan(samples[i])) << i;
  EXPECT_EQ(samples[30], 100);
}

TEST(Replayer, givesEachChannelALatencyAndPacketsOfItsOwn) {
  ReplayOptions options;
  SeismogramArray recorded;
  for (const char* station : {"A", "B", "C", "D", "E", "F"})
    recorded.push_back(piece(station, utc(10, 0, 0), 1200));
  Replayer replayer(recorded, options);
  RealTimeFeed feed(600);
  std::vector<int> changes(recorded.size());
  std::vector<int> before(recorded.size());
  for (int step = 0; step <= 1300; ++step) {
    replayer.advanceTo(step * 0.1, feed);
    for (std::size_t k = 0; k < recorded.size(); ++k) {
      const int count = feed.records()->at(k)->npts();
      if (count != before[k]) ++changes[k];
      before[k] = count;
      // Packets of up to 10 s come up to 3 s after they are complete.
      EXPECT_LE(count, step + 1);
      EXPECT_GE(count, std::min(step - 131, 1200));
    }
  }
  // 120 s in packets of 1 to 10 s.
  for (const int count : changes) {
    EXPECT_GE(count, 12);
    EXPECT_LE(count, 120);
  }
  EXPECT_GT(*std::max_element(changes.begin(), changes.end()), *std::min_element(changes.begin(), changes.end()));
}

TEST(Replayer, letsSomePacketsComeLateToTheirPlace) {
  ReplayOptions options = prompt();
  options.lateShare = 0.3;
  options.latenessSeconds = 15;
  const auto recorded = piece("A", utc(10, 0, 0), 3000);
  Replayer replayer({recorded}, options);
  RealTimeFeed feed(600);
  replayer.advanceTo(150, feed);
  const std::vector<float> during = copiedSamples(*feed.records()->at(0));
  const auto missing = std::count_if(during.begin(), during.end(), [](float s) { return std::isnan(s); });
  EXPECT_GT(missing, 0);
  EXPECT_LT(missing, 150) << "not more than what is due of the last 15 s";
  replayer.advanceTo(400, feed);
  EXPECT_EQ(copiedSamples(*feed.records()->at(0)), copiedSamples(*recorded));
}

TEST(Replayer, playsTheSameForTheSameSeed) {
  const auto counts = [](std::uint32_t seed) {
    ReplayOptions options;
    options.seed = seed;
    Replayer replayer({piece("A", utc(10, 0, 0), 1000), piece("B", utc(10, 0, 0), 1000)}, options);
    RealTimeFeed feed(600);
    std::vector<int> all;
    for (int step = 0; step < 100; ++step) {
      replayer.advanceTo(step, feed);
      for (const auto& record : *feed.records())
        all.push_back(record->npts());
    }
    return all;
  };
  EXPECT_EQ(counts(5), counts(5));
  EXPECT_NE(counts(5), counts(6));
}

TEST(Replayer, leavesOutWhatHasNoTime) {
  SacHeader header;
  header.delta = 0.1F;
  SacHeader withoutInterval = header;
  setReferenceTime(withoutInterval, utc(10, 0, 0));
  withoutInterval.delta = 0;
  const std::vector<float> samples{1, 2};
  Replayer replayer({nullptr, std::make_shared<SacSeismogram>(header, samples),
                     std::make_shared<SacSeismogram>(withoutInterval, samples), piece("A", utc(10, 0, 0), 0),
                     piece("B", utc(10, 0, 0), 20)});
  EXPECT_EQ(replayer.playedCount(), 1U);
}

TEST(Replayer, ofNothingIsAtItsEnd) {
  Replayer replayer({});
  RealTimeFeed feed(60);
  replayer.advanceTo(5, feed);
  EXPECT_TRUE(replayer.isAtEnd());
  EXPECT_FALSE(replayer.now().isValid());
  EXPECT_EQ(replayer.durationSeconds(), 0);
  EXPECT_TRUE(feed.records()->empty());
}

TEST(Replayer, survivesAnyOption) {
  ReplayOptions options;
  options.speed = 1e300;
  options.shortestPacketSeconds = std::nan("");
  options.longestPacketSeconds = -4;
  options.longestLatencySeconds = -1;
  options.lateShare = 9;
  options.latenessSeconds = std::nan("");
  Replayer replayer({piece("A", utc(10, 0, 0), 100)}, options);
  RealTimeFeed feed(60);
  replayer.advanceTo(1e300, feed);
  EXPECT_TRUE(replayer.now().isValid());
  EXPECT_EQ(feed.records()->at(0)->npts(), 100);
}
