#include "TimelineDrawing.h"
#include "XOV_Graphics/views/timeline/RealTimeLayout.h"
#include "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {
namespace {

const QDateTime kNow = utc(2011, 3, 11, 5, 46, 23);

QColor halfOf(QColor color) {
  color.setAlphaF(0.5f);
  return color;
}

template <typename ViewType>
class RealTimeEvents : public ::testing::Test {
protected:
  RealTimeEvents() {
    view_.setWvfrmsArray(records_);
    view_.setXLimitsMinMax(0, 3600);
    view_.setYLimitsMinMax(-1, 1);
    view_.setRefDate(kNow);
    view_.setDrawOriginTimes(true);
  }
  std::vector<RecordedItem> markers(const Events& events) {
    view_.setEventOrigins(events);
    recording_.clear();
    view_.drawInto(recording_);
    std::vector<RecordedItem> found;
    for (const RecordedItem& item : lineStrokes(recording_))
      if (item.path.lineWidth() == 2) found.push_back(item);
    return found;
  }

  const Records records_ = recordsOf({fakeRecord({0, 0})});
  // A rectangle of 600 × 300 at (60, 84): 1/6 point a second.
  ViewType view_{QRectF(0, 0, 740, 444)};
  RecordingContext recording_;
};

std::shared_ptr<FakeEvent> eventAt(double secondsFromNow, float magnitude = 6) {
  auto event = std::make_shared<FakeEvent>(kNow.addMSecs(qint64(std::lround(secondsFromNow * 1000))));
  event->size = magnitude;
  return event;
}

using Displays = ::testing::Types<realTimeDisplayView01, XOVRealTimeDisplayView02>;
TYPED_TEST_SUITE(RealTimeEvents, Displays);

TYPED_TEST(RealTimeEvents, areRoundEndedLinesAtTheirOriginTimes) {
  const Events events = eventsOf({eventAt(-600)});
  const auto markers = this->markers(events);
  ASSERT_EQ(markers.size(), 1u);
  expectNear(markers[0].segments()[0], QLineF(560, 378, 560, 116)); // top 384 - 6, bottom 84 + 32
  EXPECT_EQ(markers[0].path.lineCap(), Path::Cap::Round);
  EXPECT_EQ(markers[0].color, halfOf(colors::red));
}

TYPED_TEST(RealTimeEvents, lieRightOfTheReferenceWhereThatIsOnTheLeft) {
  this->view_.setOriginOnRight(false);
  const Events events = eventsOf({eventAt(600)});
  const auto markers = this->markers(events);
  ASSERT_EQ(markers.size(), 1u);
  EXPECT_NEAR(markers[0].segments()[0].x1(), 160, 1e-6);
}

TYPED_TEST(RealTimeEvents, areMarkedAtBothEndsOfTheSpanButNotASecondBeyond) {
  const Events events = eventsOf({eventAt(-3601), eventAt(-3600), eventAt(0), eventAt(1)});
  const auto right = this->markers(events);
  ASSERT_EQ(right.size(), 2u);
  EXPECT_NEAR(right[0].segments()[0].x1(), 60, 1e-6);
  EXPECT_NEAR(right[1].segments()[0].x1(), 660, 1e-6);
  this->view_.setOriginOnRight(false);
  const Events later = eventsOf({eventAt(-1), eventAt(0), eventAt(3600), eventAt(3601)});
  const auto left = this->markers(later);
  ASSERT_EQ(left.size(), 2u);
  EXPECT_NEAR(left[0].segments()[0].x1(), 60, 1e-6);
  EXPECT_NEAR(left[1].segments()[0].x1(), 660, 1e-6);
}

TYPED_TEST(RealTimeEvents, areColouredByMagnitude) {
  const auto& view = this->view_;
  EXPECT_EQ(view.colorForMagnitude(-12345), halfOf(colors::yellow));
  EXPECT_EQ(view.colorForMagnitude(4.99f), halfOf(colors::yellow));
  EXPECT_EQ(view.colorForMagnitude(5), halfOf(colors::orange));
  EXPECT_EQ(view.colorForMagnitude(5.99f), halfOf(colors::orange));
  EXPECT_EQ(view.colorForMagnitude(6), halfOf(colors::red));
  EXPECT_EQ(view.colorForMagnitude(9.1f), halfOf(colors::red));
  EXPECT_EQ(view.colorForMagnitude(std::nanf("")), halfOf(colors::red));
  const Events events = eventsOf({eventAt(-10, 4.99f), eventAt(-20, 5), eventAt(-30, 6)});
  const auto markers = this->markers(events);
  ASSERT_EQ(markers.size(), 3u);
  EXPECT_EQ(markers[0].color, halfOf(colors::yellow));
  EXPECT_EQ(markers[1].color, halfOf(colors::orange));
  EXPECT_EQ(markers[2].color, halfOf(colors::red));
}

TYPED_TEST(RealTimeEvents, lieWhereAnIndependentReckoningPutsThem) {
  std::mt19937 random(31);
  int drawn = 0;
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    this->view_.resize(uniformInt(random, 200, 1600), uniformInt(random, 200, 1000));
    const float xmin = uniform(random, -5000, 5000), xmax = xmin + uniform(random, 60, 20000);
    this->view_.setXLimitsMinMax(xmin, xmax);
    const bool onRight = uniformInt(random, 0, 1) == 1;
    this->view_.setOriginOnRight(onRight);
    const double span = double(xmax - xmin);
    const double away = std::round(double(uniform(random, -1.3f, 1.3f)) * span * 1000) / 1000;
    const Events events = eventsOf({eventAt(away)});
    const auto markers = this->markers(events);
    const double fromLeft = onRight ? away + span : away; // seconds
    if (std::abs(fromLeft) < 1e-3 || std::abs(fromLeft - span) < 1e-3) continue;
    ASSERT_EQ(markers.size(), fromLeft > 0 && fromLeft < span ? 1u : 0u);
    if (markers.empty()) continue;
    ++drawn;
    const double x = 60 + fromLeft / span * (this->view_.width() - 140);
    const double top = this->view_.height() - 60;
    expectNear(markers[0].segments()[0], QLineF(x, top - 6, x, 116));
  }
  EXPECT_GT(drawn, 80);
}

TYPED_TEST(RealTimeEvents, areRightOnTheFirstDrawAfterAResize) {
  const Events events = eventsOf({eventAt(-3600)});
  this->view_.setEventOrigins(events);
  this->markers(events);
  this->view_.resize(1140, 444); // 1000 points wide
  this->view_.setOriginOnRight(true);
  const Events half = eventsOf({eventAt(-1800)});
  EXPECT_NEAR(this->markers(half)[0].segments()[0].x1(), 560, 1e-6);
}

TYPED_TEST(RealTimeEvents, areNotMarkedUnlessAskedFor) {
  this->view_.setDrawOriginTimes(false);
  const Events events = eventsOf({eventAt(-600)});
  EXPECT_TRUE(this->markers(events).empty());
}

TYPED_TEST(RealTimeEvents, areForgottenWhenTheHostLetsGo) {
  Events events = eventsOf({eventAt(-600)});
  EXPECT_EQ(this->markers(events).size(), 1u);
  events.reset();
  this->recording_.clear();
  this->view_.drawInto(this->recording_);
  EXPECT_EQ(this->view_.eventOrigins(), nullptr);
  EXPECT_EQ(lineStrokes(this->recording_).size(), 2u); // the reference line and the scale
}

TYPED_TEST(RealTimeEvents, withoutATimeAreLeftOut) {
  const auto timeless = eventAt(-600);
  timeless->time = nullptr;
  const auto unknown = eventAt(-600);
  unknown->time = std::make_shared<UtcTime>();
  const Events events = eventsOf({timeless, nullptr, unknown, eventAt(-300)});
  EXPECT_EQ(this->markers(events).size(), 1u);
}

TYPED_TEST(RealTimeEvents, areNotMarkedWithoutAReferenceInstant) {
  this->view_.setRefDate({});
  const Events events = eventsOf({eventAt(-600)});
  EXPECT_TRUE(this->markers(events).empty());
}

TEST(RealTimeWindow, endsAtTheReferenceOnTheRightAndBeginsAtItOnTheLeft) {
  const auto now = double(kNow.toSecsSinceEpoch());
  const RealTimeWindow before = realTimeWindow(kNow.addMSecs(250), 3600, Edge::Right);
  EXPECT_EQ(before.start, now + 0.25 - 3600);
  EXPECT_EQ(before.end, now + 0.25);
  const RealTimeWindow after = realTimeWindow(kNow.toOffsetFromUtc(-3600), 3600, Edge::Left);
  EXPECT_EQ(after.start, now);
  EXPECT_EQ(after.end, now + 3600);
}

} // namespace
} // namespace xov::testing
