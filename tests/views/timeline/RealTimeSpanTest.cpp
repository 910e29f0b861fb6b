#include "TimelineDrawing.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

#include <gtest/gtest.h>

namespace xov::testing {
namespace {

const QDateTime kPresent(QDate(2026, 11, 22), QTime(12, 0), Qt::UTC);

/// Ten minutes on an axis that counts from their begin; 600 points wide, from 60 to 660.
class RealTimeSpan : public ::testing::Test {
protected:
  RealTimeSpan() { view_.showSpan(0, 600, kPresent); }
  void look(double lower, double upper) { view_.showPart(PlotPart{{lower, upper}, {}, 1}); }

  realTimeDisplayView01 view_{QRectF(0, 0, 740, 444)};
};

TEST_F(RealTimeSpan, setsLimitsAndReference) {
  EXPECT_EQ(view_.xmin(), 0);
  EXPECT_EQ(view_.xmax(), 600);
  EXPECT_EQ(view_.xyRect().width(), 600);
  EXPECT_EQ(view_.refDate(), kPresent);
  view_.showSpan(1, 601, QDateTime());
  EXPECT_EQ(view_.xmax(), 600) << "an invalid reference changes nothing";
}

TEST_F(RealTimeSpan, isTheHostsWhereItSetsLimits) {
  realTimeDisplayView01 other{QRectF(0, 0, 740, 444)};
  other.setXLimitsMinMax(0, 600);
  other.setRefDate(kPresent);
  EXPECT_EQ(other.reach().x, PlotReach::Motion::None);
  EXPECT_TRUE(other.reach().gain);
}

TEST_F(RealTimeSpan, keepsTheMomentsOfAPart) {
  look(-300, -100);
  EXPECT_EQ(view_.xmin(), 300);
  EXPECT_EQ(view_.xmax(), 500);
  EXPECT_EQ(view_.refDate(), kPresent.addSecs(-100)) << "of the edge that minutes count from";
  view_.showSpan(60, 660, kPresent.addSecs(60));
  EXPECT_EQ(view_.xmin(), 300);
  EXPECT_EQ(view_.xmax(), 500);
  EXPECT_EQ(view_.refDate(), kPresent.addSecs(-100));
  view_.showSpan(-540, 60, kPresent.addSecs(60)); // the same on an axis that counts from 10 minutes later
  EXPECT_EQ(view_.xmin(), -300);
  EXPECT_EQ(view_.xmax(), -100);
}

TEST_F(RealTimeSpan, goesOnWithThePresentWhereAPartReachesIt) {
  look(-100, 0);
  view_.showSpan(60, 660, kPresent.addSecs(60));
  EXPECT_EQ(view_.xmin(), 560);
  EXPECT_EQ(view_.xmax(), 660);
  EXPECT_EQ(view_.refDate(), kPresent.addSecs(60));
}

TEST_F(RealTimeSpan, holdsAPartThatItLeavesBehind) {
  look(-590, -490);
  view_.showSpan(60, 660, kPresent.addSecs(60));
  EXPECT_EQ(view_.xmin(), 60);
  EXPECT_EQ(view_.xmax(), 160);
}

TEST_F(RealTimeSpan, keepsTheSecondsOfAPartWhenTheTimeIsSet) {
  look(-300, -100);
  view_.showSpan(0, 600, kPresent.addYears(-14));
  EXPECT_EQ(view_.xmin(), 300);
  EXPECT_EQ(view_.refDate(), kPresent.addYears(-14).addSecs(-100));
}

TEST_F(RealTimeSpan, showsAllAgain) {
  look(-300, -100);
  view_.showPart({});
  EXPECT_EQ(view_.xmin(), 0);
  EXPECT_EQ(view_.xmax(), 600);
  EXPECT_EQ(view_.refDate(), kPresent);
}

TEST_F(RealTimeSpan, keepsAGain) {
  view_.showPart(PlotPart{view_.reach().whole.x, {}, 4});
  view_.showSpan(60, 660, kPresent.addSecs(60));
  ASSERT_TRUE(view_.shownPart());
  EXPECT_EQ(view_.shownPart()->gain, 4);
  EXPECT_EQ(view_.xmax(), 660);
}

TEST_F(RealTimeSpan, countsFromTheLeftWhereTheReferenceIsThere) {
  view_.setOriginOnRight(false);
  view_.showSpan(0, 600, kPresent);
  look(500, 600);
  EXPECT_EQ(view_.refDate(), kPresent.addSecs(500));
  view_.showSpan(60, 660, kPresent.addSecs(60));
  EXPECT_EQ(view_.xmin(), 560) << "the newest samples";
  look(100, 200);
  view_.showSpan(120, 720, kPresent.addSecs(120));
  EXPECT_EQ(view_.xmin(), 160) << "100 s behind 60";
}

// Three quarters of 600 points are 150 s before the end.
TEST_F(RealTimeSpan, tellsPlacesFromTheReference) {
  view_.computeRects();
  const auto place = view_.partPosition({60 + 450, 200});
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->x(), -150, 1e-3);
  const std::vector<QLineF> lines = view_.linesAt(-150);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NEAR(lines[0].x1(), 510, 1e-3);
}

TEST_F(RealTimeSpan, countsLatenciesFromThePresent) {
  const Records records = recordsOf({fakeRecord({1, 2, 3}, 1, 495)}); // until 497
  view_.setWvfrmsArray(records);
  view_.setShowLatency(true);
  look(-300, -100);
  RecordingContext recording;
  view_.drawInto(recording);
  EXPECT_TRUE(recording.toText().contains("103 s")) << qPrintable(recording.toText());
}

} // namespace
} // namespace xov::testing
