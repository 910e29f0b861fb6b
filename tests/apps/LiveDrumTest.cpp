#include "apps/xov/live/LiveDrum.h"

#include "XOV_Graphics/platform/Colors.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

const QDateTime kNoon(QDate(2026, 11, 22), QTime(12, 0), Qt::UTC);

/// Drums at which nobody serves, with a clock that the test sets.
class LiveDrumTest : public ::testing::Test {
protected:
  LiveDrumTest() {
    drum_.live().setClock([this] { return now_; });
  }
  /// A minute at 1 Hz that begins so many seconds after kNoon.
  void take(qint64 seconds, const char* channel = "BHZ") {
    LiveRecord record{{"GE", "WLF", "", channel}, 0, 1, std::vector<float>(60, 1), 0};
    for (std::size_t i = 0; i < record.samples.size(); i += 2)
      record.samples[i] = -1;
    record.startUs = (kNoon.toSecsSinceEpoch() + seconds) * 1000000;
    drum_.live().take(record);
  }
  QString shownChannel() const { return view_.wvfrmArray()->front()->kcmpnm(); }

  QDateTime now_ = kNoon.addSecs(61);
  int kept_ = 0;
  helicorderView view_{QRectF(0, 0, 300, 300)};
  LiveDrum drum_{SeedLinkSettings(),
                 {.title = "UTC", .gain = {}, .rowColors = {colors::blue}, .late = {.isShown = true, .seconds = 10}},
                 [this](const DrumSheet&) { ++kept_; }};
};

TEST_F(LiveDrumTest, isAnEmptyPageUntilSomethingArrives) {
  drum_.show(view_);
  EXPECT_EQ(view_.wvfrmArray(), nullptr);
  EXPECT_EQ(view_.plotTitle(), "");
}

TEST_F(LiveDrumTest, showsTheDayOfTheClock) {
  take(0);
  drum_.show(view_);
  EXPECT_EQ(view_.pageStart(), kNoon.addSecs(-12 * 3600));
  EXPECT_EQ(view_.plotTitle(), "UTC");
  EXPECT_EQ(view_.wvfrmArray()->front()->npts(), 60);
  EXPECT_FLOAT_EQ(view_.gainFactor(), 0.6F) << "every minute is as loud as the loudest";
  now_ = kNoon.addDays(1);
  drum_.show(view_);
  EXPECT_EQ(view_.pageStart(), kNoon.addSecs(12 * 3600));
  EXPECT_EQ(view_.wvfrmArray()->front()->npts(), 0);
  EXPECT_EQ(kept_, 1);
}

// Zoomed to an hour and a half around noon: the same while the day goes on, and the whole page of the next day.
TEST_F(LiveDrumTest, keepsThePartThatIsShownUntilMidnight) {
  take(0);
  drum_.show(view_);
  const PlotReach reach = view_.reach();
  ASSERT_EQ(reach.x, PlotReach::Motion::Linear);
  const double noon = reach.whole.x.center(); // of the page from midnight to midnight
  view_.showPart(PlotPart{{noon, noon + 5400}, {}, 1});
  ASSERT_TRUE(view_.shownPart());
  const PlotSpan shown = view_.shownPart()->x;
  take(60);
  now_ = kNoon.addSecs(120);
  drum_.show(view_);
  ASSERT_TRUE(view_.shownPart());
  EXPECT_EQ(view_.shownPart()->x, shown);
  EXPECT_EQ(view_.wvfrmArray()->front()->npts(), 120);
  now_ = kNoon.addDays(1);
  drum_.show(view_);
  EXPECT_FALSE(view_.shownPart());
  EXPECT_EQ(view_.pageStart(), kNoon.addSecs(12 * 3600));
}

TEST_F(LiveDrumTest, turnsGreyWhileItIsLate) {
  take(0); // its last sample is of 12:00:59
  drum_.show(view_);
  EXPECT_EQ(view_.subtitle(), "latency 2.0 s");
  EXPECT_EQ(view_.rowColors(), std::vector<QColor>{colors::blue});
  now_ = kNoon.addSecs(70);
  drum_.show(view_);
  EXPECT_EQ(view_.subtitle(), "latency 11 s");
  EXPECT_EQ(view_.rowColors(), std::vector<QColor>{colors::lightGray});
  take(60);
  now_ = kNoon.addSecs(120);
  drum_.show(view_);
  EXPECT_EQ(view_.rowColors(), std::vector<QColor>{colors::blue});
}

TEST_F(LiveDrumTest, turnsToOtherChannelsAsFarAsThereAreAny) {
  drum_.turn(1); // none yet
  take(0);
  drum_.show(view_);
  EXPECT_EQ(view_.windowTitle(), "xov drum");
  take(0, "BHN");
  const auto shownAfter = [this](int step) {
    drum_.turn(step);
    drum_.show(view_);
    return shownChannel();
  };
  EXPECT_EQ(shownAfter(0), "BHZ");
  EXPECT_EQ(view_.windowTitle(), "xov drum, page 1 of 2");
  EXPECT_EQ(shownAfter(1), "BHN");
  EXPECT_EQ(shownAfter(1), "BHN");
  EXPECT_EQ(view_.windowTitle(), "xov drum, page 2 of 2");
  EXPECT_EQ(shownAfter(-1), "BHZ");
  EXPECT_EQ(shownAfter(-1), "BHZ");
}

TEST_F(LiveDrumTest, keepsTheDaysThatAreOverWhenItIsLeft) {
  take(12 * 3600 - 60);
  take(12 * 3600);
  now_ = kNoon.addSecs(12 * 3600 + 60);
  drum_.leave();
  EXPECT_EQ(kept_, 1);
}

} // namespace
} // namespace xov::cli
