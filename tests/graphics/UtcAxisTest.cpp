#include "XOV_Graphics/graphics/UtcAxis.h"

#include "XOV_Graphics/graphics/LinearAxis.h"

#include <gtest/gtest.h>

#include <QTimeZone>

namespace xov {
namespace {

double sixPointsEach(const QString& text) { return 6.0 * double(text.size()); }

UtcAxisRequest request() {
  UtcAxisRequest request;
  request.frame = {.top = 300, .left = 100, .bottom = 60, .right = 220};
  request.fontSize = 12;
  request.reference = QDateTime(QDate(2011, 3, 11), QTime(5, 46, 24), QTimeZone::utc());
  request.lower = 0;
  request.upper = 2;
  request.title = QStringLiteral("UTC");
  request.textWidth = sixPointsEach;
  return request;
}

// Two seconds on 120 points: a label takes 48 + 0.75 · 12 = 57 of the 60 points of a second.
TEST(UtcAxis, ticksGrowInwardsFromBothEdges) {
  const UtcAxis axis = layoutUtcAxis(request());
  ASSERT_GE(axis.ticks.size(), 6u);
  EXPECT_EQ(axis.ticks[2], (AxisSegment{160, 60, 160, 69}));   // 0.75 · 12 points high
  EXPECT_EQ(axis.ticks[3], (AxisSegment{160, 300, 160, 291})); // at the upper edge
}

TEST(UtcAxis, minorTicksAreHalfAsLong) {
  const UtcAxis axis = layoutUtcAxis(request());
  ASSERT_EQ(axis.ticks.size(), 6u + 16u); // three major ticks and four fifths of each second, at both edges
  EXPECT_EQ(axis.ticks[6], (AxisSegment{112, 60, 112, 64.5f}));
}

TEST(UtcAxis, minorTicksAreLeftOutOnRequest) {
  UtcAxisRequest without = request();
  without.minorTicks = false;
  EXPECT_EQ(layoutUtcAxis(without).ticks.size(), 6u);
}

TEST(UtcAxis, labelsTitleAndDateStandBelow) {
  const std::vector<UtcAxisText> expected = {
      {{"05:46:24", 100, 45}, AJustify::Center}, // 60 - 1.25 · 12
      {{"05:46:25", 160, 45}, AJustify::Center}, {{"05:46:26", 220, 45}, AJustify::Center},
      {{"UTC", 220, 30}, AJustify::Right}, // 60 - 2.5 · 12; in the middle it would touch the date
      {{"2011-03-11", 100, 30}, AJustify::Left},
  };
  EXPECT_EQ(layoutUtcAxis(request()).texts, expected);
}

// Labels are 48 points wide, and the view ends 20 points beyond either end of the axis; 2 points stay free there.
TEST(UtcAxis, labelsAtTheEndsStayWithinTheView) {
  UtcAxisRequest narrow = request();
  narrow.frame.left = 20;
  narrow.frame.right = 140;
  const std::vector<UtcAxisText> texts = layoutUtcAxis(narrow).texts;
  ASSERT_GE(texts.size(), 3u);
  EXPECT_EQ(texts[0].label.x, 26);
  EXPECT_EQ(texts[1].label.x, 80);
  EXPECT_EQ(texts[2].label.x, 140 + 20 - 26);
}

TEST(UtcAxis, labelsMoveNoFurtherThanTheyAreApart) {
  UtcAxisRequest wide = request();
  wide.frame.left = 20;
  wide.frame.right = 420;
  wide.textWidth = [](const QString& text) { return 10.0 * double(text.size()); }; // 80 points, 40 to either side
  EXPECT_EQ(layoutUtcAxis(wide).texts.front().label.x, 29);                        // 20 + 0.75 · 12
}

TEST(UtcAxis, anotherDayAtTheRightEndIsNamedThere) {
  UtcAxisRequest overMidnight = request();
  overMidnight.frame.right = 400;
  overMidnight.upper = 86400;
  EXPECT_EQ(layoutUtcAxis(overMidnight).texts.back(), (UtcAxisText{{"2011-03-12", 400, 30}, AJustify::Right}));
}

TEST(UtcAxis, aTitleThatWouldTouchTheDateStandsAtTheRightEnd) {
  UtcAxisRequest tight = request();
  tight.title = QStringLiteral("Time, UTC");
  tight.frame.right = 100 + 192; // 2 · (60 + 9) + 54
  EXPECT_EQ(layoutUtcAxis(tight).texts[3], (UtcAxisText{{"Time, UTC", 196, 30}, AJustify::Center}));
  tight.frame.right = 100 + 191;
  EXPECT_EQ(layoutUtcAxis(tight).texts[3], (UtcAxisText{{"Time, UTC", 291, 30}, AJustify::Right}));
}

TEST(UtcAxis, aDateWithoutRoomAtTheRightEndIsLeftOut) {
  UtcAxisRequest overMidnight = request(); // 2 · 60 + 18 + 18 points of 120
  overMidnight.upper = 86400;
  EXPECT_EQ(layoutUtcAxis(overMidnight).texts.back(), (UtcAxisText{{"2011-03-11", 100, 30}, AJustify::Left}));
}

TEST(UtcAxis, anUnknownReferenceLeavesFrameAndTitle) {
  UtcAxisRequest unknown = request();
  unknown.reference = {};
  const UtcAxis axis = layoutUtcAxis(unknown);
  const std::vector<AxisSegment> frame = {{100, 60, 220, 60}, {100, 300, 220, 300}};
  EXPECT_EQ(axis.frame, frame);
  EXPECT_TRUE(axis.ticks.empty());
  EXPECT_EQ(axis.texts, (std::vector<UtcAxisText>{{{"UTC", 160, 30}, AJustify::Center}}));
}

// A line of 60,000 points: labels of six points and gaps of nine leave room for 4,000.
TEST(UtcAxis, theLongestLineHasABoundedNumberOfLabels) {
  UtcAxisRequest longest = request();
  longest.frame.left = -30000;
  longest.frame.right = 30000;
  longest.textWidth = [](const QString&) { return 6.0; };
  for (const double seconds : {1.0, 59.0, 3.1e3, 8.9e4, 2.7e6, 4.0e7, 5.9e8, 3.1e10}) {
    longest.upper = longest.lower + seconds;
    const std::size_t texts = layoutUtcAxis(longest).texts.size();
    EXPECT_LE(texts, std::size_t(kMostTickLabels)) << seconds;
    EXPECT_GE(texts, 100u) << seconds;
  }
}

} // namespace
} // namespace xov
