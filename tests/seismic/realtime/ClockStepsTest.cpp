#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"
#include "XOV_Graphics/seismic/realtime/seedlink/LiveRecord.h"
#include "tests/seismic/MiniSeedBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

// What a display shows where clocks jump: leap seconds, and clocks of stations that are set.

using namespace xov;
using test::MiniSeedBytes;

namespace {

constexpr int kRateHz = 4;
constexpr double kNewYear = 1483228800; // 2017-01-01T00:00:00Z, before which a leap second was put in
constexpr int kPositiveLeap = 0x10;     // of the activity flags of a record

/// Samples at 4 Hz with the values first, first + 1, ... of a record that begins in the last minute of 2016 or in the
/// first one of 2017.
MiniSeedBytes aroundNewYear(bool isOver, double second, int first, int count) {
  std::vector<std::int32_t> values(std::size_t(count), 0);
  std::iota(values.begin(), values.end(), first);
  const int whole = int(second);
  const int fraction = int(std::lround((second - whole) * 10000));
  MiniSeedBytes record;
  if (isOver) {
    record.time(2017, 1, 0, 0, whole, fraction);
  } else {
    record.time(2016, 366, 23, 59, whole, fraction);
  }
  return record.rate(kRateHz, 1).integers(values);
}

/// A ring of a minute, and what it has at a time.
class Ring {
public:
  void take(const MiniSeedBytes& record) {
    const Result<LiveRecord> read = reader_.read(record.bytes());
    ASSERT_TRUE(read) << read.error().toStdString();
    append(read->startSeconds(), read->samples);
  }
  void append(double startSeconds, const std::vector<float>& samples) {
    feed_.append(SacHeader(), startSeconds, 1.0 / kRateHz, samples);
  }
  /// The sample at that time after New Year, to a hundredth of the interval; NaN in a gap and outside.
  float at(double seconds) const {
    const SampleBuffer& buffer = this->buffer();
    const double place = (kNewYear + seconds - buffer.startSeconds()) * kRateHz;
    EXPECT_NEAR(place, std::round(place), 0.01);
    const auto index = std::size_t(std::lround(place));
    return place > -0.5 && index < buffer.samples().size() ? buffer.samples()[index] : NAN;
  }
  double endSeconds() const {
    return buffer().startSeconds() + double(buffer().samples().size()) / kRateHz - kNewYear;
  }
  RealTimeFeed& feed() { return feed_; }

private:
  const SampleBuffer& buffer() const {
    return static_cast<const RealTimeSeismogram&>(*feed_.records()->front()).buffer();
  }

  RealTimeFeed feed_{60};
  LiveRecordReader reader_;
};

std::vector<float> counting(int first, int count) {
  std::vector<float> samples(std::size_t(count), 0);
  std::iota(samples.begin(), samples.end(), float(first));
  return samples;
}

} // namespace

TEST(LeapSecond, countsAsTheFirstSecondOfTheNextMinute) {
  LiveRecordReader reader;
  EXPECT_EQ(reader.read(aroundNewYear(false, 60.5, 0, 1).bytes())->startSeconds(), kNewYear + 0.5);
  EXPECT_EQ(reader.read(aroundNewYear(true, 0.5, 0, 1).bytes())->startSeconds(), kNewYear + 0.5);
}

// Second 60 and the one behind it have one place on an axis of days of 86400 seconds: the later one stays.
TEST(LeapSecond, movesNoSampleBehindIt) {
  Ring ring;
  ring.take(aroundNewYear(false, 58, 0, 4));
  ring.take(aroundNewYear(false, 59, 4, 4));
  ring.take(aroundNewYear(false, 60, 8, 4));
  EXPECT_EQ(ring.at(0.25), 9) << "before more is there, its own samples show";
  ring.take(aroundNewYear(true, 0, 12, 4));
  ring.take(aroundNewYear(true, 1, 16, 4));
  for (int i = 0; i < 8; ++i)
    EXPECT_EQ(ring.at(-2 + i * 0.25), i);
  for (int i = 0; i < 8; ++i)
    EXPECT_EQ(ring.at(i * 0.25), 12 + i);
  EXPECT_EQ(ring.endSeconds(), 2);
}

// The five seconds 58, 59, 60, 0 and 1; the record behind begins at second 2.
TEST(LeapSecond, withinARecordIsMadeUpForByTheNextOne) {
  Ring ring;
  MiniSeedBytes across = aroundNewYear(false, 58, 0, 20);
  ring.take(across.byte(36, kPositiveLeap));
  EXPECT_EQ(ring.endSeconds(), 3) << "the record's samples follow each other";
  ring.take(aroundNewYear(true, 2, 20, 8));
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(ring.at(-2 + i * 0.25), i);
    EXPECT_EQ(ring.at(2 + i * 0.25), 20 + i);
  }
  EXPECT_EQ(ring.endSeconds(), 4);
}

TEST(LeapSecond, doesNotMoveADisplayBack) {
  Ring ring;
  ring.take(aroundNewYear(false, 59, 0, 4));
  double before = 0;
  for (const QDateTime& now : {QDateTime(QDate(2016, 12, 31), QTime(23, 59, 59, 900), Qt::UTC),
                               QDateTime(QDate(2017, 1, 1), QTime(0, 0, 0), Qt::UTC),
                               QDateTime(QDate(2017, 1, 1), QTime(0, 0, 1), Qt::UTC)}) {
    const RealTimeSpan span = ring.feed().show(now, 10, Edge::Right);
    const double end = double(span.base.toMSecsSinceEpoch()) / 1000 + double(span.xmax);
    EXPECT_GT(end, before);
    before = end;
    const auto& record = *ring.feed().records()->front();
    EXPECT_NEAR(double(span.base.toMSecsSinceEpoch()) / 1000 + double(record.b()), kNewYear - 1, 1e-4);
  }
}

TEST(ClockStep, forwardsLeavesAGap) {
  Ring ring;
  ring.append(kNewYear, counting(0, 8)); // to second 2
  ring.append(kNewYear + 7.25, counting(8, 4));
  for (int i = 0; i < 8; ++i)
    EXPECT_EQ(ring.at(i * 0.25), i);
  for (int i = 0; i < 21; ++i)
    EXPECT_TRUE(std::isnan(ring.at(2 + i * 0.25))) << i;
  for (int i = 0; i < 4; ++i)
    EXPECT_EQ(ring.at(7.25 + i * 0.25), 8 + i);
}

TEST(ClockStep, backwardsReplacesWhatItComesToAndMovesNothingElse) {
  Ring ring;
  ring.append(kNewYear, counting(0, 40)); // to second 10
  ring.append(kNewYear + 4, counting(100, 8));
  for (int i = 0; i < 40; ++i)
    EXPECT_EQ(ring.at(i * 0.25), i >= 16 && i < 24 ? 100 + i - 16 : i) << i;
  EXPECT_EQ(ring.endSeconds(), 10);
}

// A third of an interval is no gap: the spacing follows the clock, and what was shown keeps its samples.
TEST(ClockStep, byLessThanHalfASampleOpensNoGap) {
  Ring ring;
  ring.append(kNewYear, counting(0, 8));
  ring.append(kNewYear + 2 + 0.08, counting(8, 8));
  for (int i = 0; i < 16; ++i)
    EXPECT_EQ(ring.at(0.08 + i * 0.25), i) << i;
}

TEST(ClockStep, byMoreThanTheRingHoldsBeginsAnew) {
  Ring ring;
  ring.append(kNewYear, counting(0, 8));
  ring.append(kNewYear + 3600, counting(100, 4));
  EXPECT_EQ(ring.at(3600), 100);
  EXPECT_TRUE(std::isnan(ring.at(3599.75)));
  EXPECT_EQ(ring.endSeconds(), 3601);
  ring.append(kNewYear + 2, counting(8, 4)); // the clock is set back: what is older than the ring is not shown
  EXPECT_EQ(ring.endSeconds(), 3601);
  EXPECT_EQ(ring.at(3600.75), 103);
}
