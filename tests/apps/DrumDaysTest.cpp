#include "apps/xov/live/DrumDays.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::cli {
namespace {

const QDateTime kMidnight(QDate(2026, 11, 23), QTime(0, 0), Qt::UTC);

/// Drums of a sample a second, and the pages that they kept.
class DrumDaysTest : public ::testing::Test {
protected:
  struct Kept {
    QString channel;
    QDateTime day;
    int count; ///< of samples that are there
    float first;
    double firstSeconds; ///< after the page's start
  };
  static int countOf(const SeismogramRecord& record) {
    return int(std::ranges::count_if(samplesOf(record), [](float sample) { return std::isfinite(sample); }));
  }

  /// A record of samples with that value, which begins so many seconds after kMidnight.
  void take(double seconds, int count, float value = 1, const char* channel = "BHZ", double rate = 1) {
    LiveRecord record{{"GE", "WLF", "", channel}, 0, rate, std::vector<float>(std::size_t(count), value), 0};
    record.startUs = kMidnight.toMSecsSinceEpoch() * 1000 + std::llround(seconds * 1e6);
    days_.expect(record);
    days_.feed().append(record.header(), record.startSeconds(), record.deltaSeconds(), record.samples, 0);
  }
  void advance(double seconds) { days_.advanceTo(kMidnight.addMSecs(std::llround(seconds * 1000))); }
  const SeismogramRecord& page(std::size_t channel = 0) {
    pages_.push_back(days_.sheet(channel));
    return *pages_.back().records.front();
  }

  std::vector<Kept> kept_;
  std::vector<DrumSheet> pages_;
  DrumDays days_{[this](const DrumSheet& sheet) {
    const SeismogramRecord& record = *sheet.records.at(0);
    EXPECT_EQ(sheet.start.msecsTo(sheet.end), 86400000);
    EXPECT_EQ(referenceTimeOf(record), sheet.start) << "times count from the page's midnight";
    kept_.push_back({record.labelString(), sheet.start, countOf(record), samplesOf(record)[0], double(record.b())});
  }};
};

TEST_F(DrumDaysTest, fillADayAndBeginThePageOfTheNextAtMidnight) {
  take(-100, 60);
  advance(-40);
  EXPECT_EQ(days_.day(), kMidnight.addDays(-1));
  EXPECT_EQ(page().npts(), 60);
  EXPECT_EQ(page().b(), 86300);
  take(-40, 30);
  EXPECT_EQ(page().npts(), 90);
  take(-10, 20, 5); // over midnight, of which sample 10 is
  EXPECT_EQ(page().npts(), 100);
  EXPECT_EQ(page().e(), 86399);
  advance(11);
  EXPECT_EQ(days_.day(), kMidnight);
  EXPECT_EQ(page().npts(), 10);
  EXPECT_EQ(page().b(), 0);
  EXPECT_EQ(page().smin(), 5);
  EXPECT_TRUE(kept_.empty()) << "late packets may come yet";
}

TEST_F(DrumDaysTest, keepTheDayThatIsOverOnceFiveMinutesLaterWithWhatCameLate) {
  take(-100, 90);
  take(0, 250);
  advance(250);
  take(-10, 10, 7);
  advance(299.999);
  EXPECT_TRUE(kept_.empty());
  advance(300);
  ASSERT_EQ(kept_.size(), 1u);
  EXPECT_EQ(kept_[0].channel, "GE.WLF..BHZ");
  EXPECT_EQ(kept_[0].day, kMidnight.addDays(-1));
  EXPECT_EQ(kept_[0].count, 100);
  EXPECT_EQ(kept_[0].firstSeconds, 86300);
  advance(301);
  days_.keepAllBefore(kMidnight.addSecs(302));
  EXPECT_EQ(kept_.size(), 1u);
  EXPECT_EQ(page().npts(), 250) << "the new page is the one that is shown";
  EXPECT_EQ(page().b(), 0);
}

TEST_F(DrumDaysTest, keepEachDayOfARecordingThatComesFasterThanTheClock) {
  for (int hour = -72; hour < 2; ++hour)
    take(hour * 3600, 3600, float(hour));
  ASSERT_EQ(kept_.size(), 3u);
  for (int k = 0; k < 3; ++k) {
    EXPECT_EQ(kept_[std::size_t(k)].day, kMidnight.addDays(k - 3));
    EXPECT_EQ(kept_[std::size_t(k)].count, 86400);
    EXPECT_EQ(kept_[std::size_t(k)].first, float(k * 24 - 72));
  }
  advance(7200);
  EXPECT_EQ(page().npts(), 7200);
  EXPECT_EQ(days_.feed().records()->at(0)->npts(), 90000) << "a day and an hour, however much came";
}

TEST_F(DrumDaysTest, keepADayEarlierWhenTheyAreLeft) {
  take(-20, 30);
  advance(10);
  days_.keepAllBefore(kMidnight.addSecs(10));
  ASSERT_EQ(kept_.size(), 1u);
  EXPECT_EQ(kept_[0].count, 20);
  days_.keepAllBefore(kMidnight.addSecs(20));
  EXPECT_EQ(kept_.size(), 1u) << "the day at hand is not over";
}

TEST_F(DrumDaysTest, keepNothingOfADayWithoutSamples) {
  take(-4 * 86400, 10);
  advance(-4 * 86400 + 10);
  advance(-2 * 86400); // nothing comes for days
  ASSERT_EQ(kept_.size(), 1u);
  advance(400);
  EXPECT_EQ(kept_.size(), 1u);
  EXPECT_EQ(page().npts(), 0);
  EXPECT_EQ(page().labelString(), "GE.WLF..BHZ");
}

TEST_F(DrumDaysTest, putWhatIsLateTwiceOrOutOfOrderWhereItsTimeSays) {
  take(3600, 10, 1);
  take(3620, 10, 3);
  take(3620, 10, 3);
  advance(3640);
  EXPECT_EQ(countOf(page()), 20);
  EXPECT_EQ(page().npts(), 30) << "with a gap";
  take(3610, 10, 2);
  const std::span<const float> samples = samplesOf(page());
  ASSERT_EQ(samples.size(), 30u);
  for (int k = 0; k < 30; ++k)
    EXPECT_EQ(samples[std::size_t(k)], 1 + k / 10) << k;
  EXPECT_EQ(page().b(), 3600) << "nothing has moved";
}

TEST_F(DrumDaysTest, doNotTurnBackForAnEarlierMoment) {
  take(10, 10);
  advance(20);
  advance(-5);
  EXPECT_EQ(days_.day(), kMidnight);
  EXPECT_EQ(page().npts(), 10);
}

TEST_F(DrumDaysTest, haveAPageOfEachChannelWhateverItsRate) {
  take(0, 20);
  take(0.5, 2000, 1, "HHZ", 100);
  take(0, 5, 1, "LHZ", 0.1);
  advance(60);
  ASSERT_EQ(days_.channelCount(), 3u);
  EXPECT_EQ(page(0).labelString(), "GE.WLF..BHZ");
  EXPECT_EQ(page(1).npts(), 2000);
  EXPECT_NEAR(double(page(1).e()), 0.5 + 19.99, 1e-5);
  EXPECT_EQ(page(2).e(), 40);
  days_.keepAllBefore(kMidnight.addDays(1));
  EXPECT_EQ(kept_.size(), 3u);
}

} // namespace
} // namespace xov::cli
