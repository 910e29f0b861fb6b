#include "apps/xov/live/LiveFeed.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

// The last seconds of 2026-11-22; everything of about that time.
const QDateTime kEvening(QDate(2026, 11, 22), QTime(23, 59, 50), Qt::UTC);

/// A feed at which nobody serves, with a clock that the test sets.
class LiveFeedTest : public ::testing::Test {
protected:
  LiveFeedTest() {
    live_.setClock([this] { return now_; });
  }
  /// Records of 1 Hz that begin so many seconds after kEvening.
  void take(double seconds, std::vector<float> samples, const char* channel = "BHZ") {
    LiveRecord record{{"GE", "WLF", "", channel}, 0, 1, std::move(samples), 0};
    record.startUs = kEvening.toMSecsSinceEpoch() * 1000 + std::int64_t(seconds * 1e6);
    live_.take(record);
  }

  QDateTime now_ = kEvening.addSecs(5);
  RealTimeFeed feed_{600};
  LiveFeed live_{SeedLinkSettings(), feed_, 3};
};

TEST_F(LiveFeedTest, endsNowWhereRecordsAreOfAboutNow) {
  EXPECT_FALSE(live_.hasSamples());
  EXPECT_EQ(live_.present(), now_);
  take(0, {1, 2, 3});
  EXPECT_TRUE(live_.hasSamples());
  EXPECT_EQ(live_.present(), now_);
  // However long nothing comes: what is shown is not moved back to where it came last.
  now_ = kEvening.addDays(3);
  EXPECT_EQ(live_.present(), now_);
}

TEST_F(LiveFeedTest, endsAtTheNewestSampleOfARecordingThatIsPlayed) {
  take(-1e6, {1, 2, 3});
  EXPECT_EQ(live_.present(), kEvening.addSecs(-1000000 + 2));
  take(-1e6 - 30, {1, 2, 3}); // late
  EXPECT_EQ(live_.present(), kEvening.addSecs(-1000000 + 2));
  take(-1e6 + 3, {1});
  EXPECT_EQ(live_.present(), kEvening.addSecs(-1000000 + 3));
  take(0, {1}); // has caught up
  EXPECT_EQ(live_.present(), now_);
}

TEST_F(LiveFeedTest, isNotMovedBackByAClockThatIsPutRight) {
  take(0, {1, 2, 3});
  EXPECT_EQ(live_.present(), kEvening.addSecs(5));
  now_ = kEvening.addSecs(4);
  EXPECT_EQ(live_.present(), kEvening.addSecs(5));
  now_ = kEvening.addSecs(6);
  EXPECT_EQ(live_.present(), kEvening.addSecs(6));
  // One that was off by hours would keep the display at a stand.
  now_ = kEvening.addSecs(6 - 7200);
  EXPECT_EQ(live_.present(), now_);
}

TEST_F(LiveFeedTest, leavesOutWhatAWrongClockPutsIntoTheFuture) {
  take(0, {1, 2, 3});
  ::testing::internal::CaptureStderr();
  take(1e9, {1, 2, 3});
  take(2e9, {1, 2, 3});
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "xov: GE.WLF..BHZ: a record of 2058-08-01T01:46:30.000Z is more than an hour ahead; left out\n")
      << "1e9 s are 11574 days, 1 h 46 min 40 s; and once is enough";
  EXPECT_EQ(feed_.records()->at(0)->npts(), 3);
  take(3600 + 5, {1}); // an hour ahead, no more
  EXPECT_EQ(feed_.records()->at(0)->npts(), 600);
}

TEST_F(LiveFeedTest, takesTheMeanOfTheFirstRecordOfADayAway) {
  take(0, {10, 12, 14}); // mean 12
  take(3, {12, 12});     // the same day
  take(12, {100, 102});  // 2 s after midnight: mean 101
  take(5, {12, 13});     // late, of the day before
  take(14, {101});
  take(0, {7, 9}, "BHN"); // mean 8
  const std::span<const float> first = samplesOf(*feed_.records()->at(0));
  ASSERT_EQ(first.size(), 15u);
  const std::vector<float> evening(first.begin(), first.begin() + 7);
  EXPECT_EQ(evening, (std::vector<float>{-2, 0, 2, 0, 0, 0, 1}));
  const std::vector<float> morning(first.end() - 3, first.end());
  EXPECT_EQ(morning, (std::vector<float>{-1, 1, 0}));
  EXPECT_EQ(feed_.records()->at(1)->absMax(), 1);
}

TEST_F(LiveFeedTest, takesNoMoreChannelsThanItHasRoomFor) {
  ::testing::internal::CaptureStderr();
  for (const char* channel : {"BHZ", "BHN", "BHE", "LHZ", "LHN", "BHN"})
    take(0, {1, 2}, channel);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "xov: more than 3 channels; the others are left out\n");
  EXPECT_EQ(feed_.records()->size(), 3u);
}

TEST_F(LiveFeedTest, showsRecordsBeforeTheyAreInTheFeed) {
  int seen = 0;
  live_.beforeEach([&](const LiveRecord& record) {
    ++seen;
    EXPECT_EQ(record.codes[1], "WLF");
    EXPECT_TRUE(feed_.records()->empty());
  });
  take(0, {1, 2});
  EXPECT_EQ(seen, 1);
  take(0, {});
  EXPECT_EQ(seen, 1) << "one without samples is none";
}

} // namespace
} // namespace xov::cli
