#include "apps/xov/live/Replay.h"

#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

const auto kNoEvents = std::make_shared<const EventOriginArray>();

// 600 s at 1 Hz from 05:00, and from 05:10 after a gap of 100 s another 100.
SeismogramArray recording() {
  return {makeRecord({.count = 600}), makeRecord({.reference = onTheDay(5, 11, 40), .count = 100})};
}

TEST(Replay, endsTheSpanAtTheMomentThatItHasReached) {
  realTimeDisplayView01 view(QRectF(0, 0, 600, 400));
  Replay replay(recording(), kNoEvents, {.speed = 10, .spanSeconds = 300});
  replay.attachTo(view);
  replay.showAt(40, view);
  EXPECT_TRUE(view.originOnRight());
  EXPECT_EQ(view.refDate(), onTheDay(5, 6, 40)) << "400 recorded seconds";
  EXPECT_FLOAT_EQ(view.xmax() - view.xmin(), 300);
  ASSERT_EQ(view.wvfrmsArray()->size(), 1U);
  const QDateTime base = view.wvfrmsArray()->front()->mySeisReferenceTime()->nsDate();
  EXPECT_EQ(base.addMSecs(std::lround(1000 * view.xmax())), view.refDate())
      << "xmax is the reference on the traces' axis";
}

TEST(Replay, beginsTheSpanAtAReferenceOnTheLeft) {
  realTimeDisplayView01 view(QRectF(0, 0, 600, 400));
  Replay replay(recording(), kNoEvents, {.speed = 10, .spanSeconds = 300, .edge = Edge::Left});
  replay.attachTo(view);
  replay.showAt(40, view);
  EXPECT_FALSE(view.originOnRight());
  EXPECT_EQ(view.refDate(), onTheDay(5, 1, 40)) << "300 s before 400 recorded seconds";
  const QDateTime base = view.wvfrmsArray()->front()->mySeisReferenceTime()->nsDate();
  EXPECT_EQ(base.addMSecs(std::lround(1000 * view.xmin())), view.refDate());
}

TEST(Replay, showsAllSamplesAtItsEnd) {
  realTimeDisplayView01 view(QRectF(0, 0, 600, 400));
  Replay replay(recording(), kNoEvents, {.speed = 100, .spanSeconds = 3600});
  replay.attachTo(view);
  EXPECT_FALSE(replay.isAtEnd());
  replay.showAt(replay.durationSeconds(), view);
  EXPECT_TRUE(replay.isAtEnd());
  EXPECT_EQ(view.wvfrmsArray()->front()->npts(), 800) << "600, a gap of 100, and 100";
}

TEST(Replay, beginsWhereItIsTold) {
  realTimeDisplayView01 view(QRectF(0, 0, 600, 400));
  Replay replay(recording(), kNoEvents, {.spanSeconds = 100, .start = onTheDay(5, 5)});
  replay.attachTo(view);
  EXPECT_EQ(view.refDate(), onTheDay(5, 5));
  const int arrived = view.wvfrmsArray()->front()->npts();
  EXPECT_GE(arrived, 87) << "300 s, of which at most a packet of 10 s and 3 s of latency are missing";
  EXPECT_LE(arrived, 100) << "the buffer holds the span";
}

TEST(Replay, scalesToTheLargestSampleOfAllChannels) {
  realTimeDisplayView01 view(QRectF(0, 0, 600, 400));
  Replay replay({makeRecord({.count = 5}), makeRecord({.component = "BHN", .count = 11})}, kNoEvents, {});
  replay.attachTo(view);
  EXPECT_FLOAT_EQ(view.ymax(), 5) << "0 ... 10 less 5";
  EXPECT_FLOAT_EQ(view.ymin(), -5);
  Replay silent({makeRecord({.count = 1})}, kNoEvents, {});
  silent.attachTo(view);
  EXPECT_FLOAT_EQ(view.ymax(), 1) << "silence has a range, too";
}

TEST(Replay, marksEvents) {
  realTimeDisplayView01 view(QRectF(0, 0, 600, 400));
  const auto events = std::make_shared<const EventOriginArray>();
  Replay replay(recording(), events, {});
  replay.attachTo(view);
  EXPECT_TRUE(view.drawOriginTimes());
  EXPECT_EQ(view.eventOrigins(), events);
}

TEST(Replay, cannotPlayRecordsWithoutTimes) {
  EXPECT_FALSE(Replay({makeRecord({.reference = QDateTime()})}, kNoEvents, {}).canPlay());
  EXPECT_TRUE(Replay(recording(), kNoEvents, {}).canPlay());
}

} // namespace
} // namespace xov::cli
