#include "XOV_Graphics/views/timeline/MinuteScale.h"

#include "TimelineDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

const QRectF kRect(60, 84, 600, 300);

MinuteSpan spanOf(float seconds, Edge origin = Edge::Left, MinuteSpan::Unit unit = MinuteSpan::Unit::Minutes) {
  return {kRect, seconds, 0, origin, unit};
}

QStringList texts(const MinuteScale& scale) {
  QStringList list;
  for (const MinuteScale::Label& label : scale.labels)
    list << label.text;
  return list;
}

TEST(PageMinutes, widenTheirStepsFromEachSpanOn) {
  const std::vector<std::pair<float, MinuteSteps>> expected = {
      {60, {1, 5}},       {179.9f, {1, 5}}, {180, {5, 15}},      {359.9f, {5, 15}}, {360, {10, 30}},
      {719.9f, {10, 30}}, {720, {30, 60}},  {1439.9f, {30, 60}}, {1440, {60, 120}}, {100000, {60, 120}},
  };
  for (const auto& [span, steps] : expected)
    EXPECT_EQ(minuteSteps(pageMinutes(), span), steps) << span << " minutes";
}

TEST(RealTimeMinutes, widenTheirStepsPastThreeHoursOnly) {
  EXPECT_EQ(minuteSteps(realTimeMinutes(), 60), (MinuteSteps{1, 5}));
  EXPECT_EQ(minuteSteps(realTimeMinutes(), 180), (MinuteSteps{1, 5}));
  EXPECT_EQ(minuteSteps(realTimeMinutes(), 181), (MinuteSteps{5, 15}));
  EXPECT_EQ(minuteSteps(realTimeMinutes(), 5000), (MinuteSteps{5, 15}));
}

TEST(RealTimeMinutes, ofExactlyThreeHoursHaveATickAMinuteAndOfAMinuteMoreOneInFive) {
  // 180 min on 600 points: 3 1/3 points a tick.
  const MinuteScale three = layOutMinuteScale(realTimeMinutes(), spanOf(180 * 60));
  ASSERT_GE(three.marks.size(), 2u);
  EXPECT_NEAR(three.marks[1].x1() - three.marks[0].x1(), 600.0 / 180, 1e-9);
  EXPECT_EQ(texts(three).mid(0, 3), (QStringList{"0", "5", "10"}));
  const MinuteScale more = layOutMinuteScale(realTimeMinutes(), spanOf(181 * 60));
  ASSERT_GE(more.marks.size(), 2u);
  EXPECT_NEAR(more.marks[1].x1() - more.marks[0].x1(), 5 * 600.0 / 181, 1e-9);
  EXPECT_EQ(texts(more).mid(0, 3), (QStringList{"0", "15", "30"}));
}

TEST(RealTimeMinutes, countLeftwardsFromAnOriginOnTheRight) {
  const MinuteScale scale = layOutMinuteScale(realTimeMinutes(), spanOf(3600, Edge::Right));
  ASSERT_EQ(scale.labels.size(), 13u);
  EXPECT_EQ(scale.labels[0].text, QStringLiteral("0"));
  EXPECT_EQ(scale.labels[0].place, QPointF(660, 80));
  EXPECT_EQ(scale.labels[1].text, QStringLiteral("5"));
  EXPECT_NEAR(scale.labels[1].place.x(), 610, 1e-9); // five of 60 minutes on 600 points
}

TEST(RealTimeMinutes, standOnTheLowerEdgeOfTheRectangle) {
  const MinuteScale scale = layOutMinuteScale(realTimeMinutes(), spanOf(3600));
  EXPECT_EQ(scale.baseline, QLineF(60, 84, 660, 84));
  ASSERT_EQ(scale.marks.size(), 61u);
  EXPECT_EQ(scale.marks[0], QLineF(60, 84, 60, 108)); // labelled
  EXPECT_EQ(scale.marks[1], QLineF(70, 84, 70, 96));
  EXPECT_EQ(scale.titlePlace, QPointF(360, 36));
}

TEST(PageMinutes, standUnderTheRows) {
  const MinuteScale scale = layOutMinuteScale(pageMinutes(), spanOf(3600));
  EXPECT_EQ(scale.baseline, QLineF(60, 120, 660, 120));
  ASSERT_EQ(scale.marks.size(), 61u);
  EXPECT_EQ(scale.marks[0], QLineF(60, 120, 60, 144));
  EXPECT_EQ(scale.marks[1], QLineF(70, 120, 70, 132));
  EXPECT_EQ(scale.labels[0].place, QPointF(60, 116));
  EXPECT_EQ(scale.titlePlace, QPointF(360, 12));
  EXPECT_EQ(scale.title, QStringLiteral("Time (Minutes)"));
}

TEST(PageMinutes, ofTwoHoursHaveATickAMinuteAndALabelEveryFive) {
  const MinuteScale scale = layOutMinuteScale(pageMinutes(), spanOf(7200));
  ASSERT_EQ(scale.marks.size(), 121u);
  EXPECT_NEAR(scale.marks[1].x1(), 65, 1e-9); // 600 points / 120 minutes
  EXPECT_EQ(texts(scale).mid(0, 4), (QStringList{"0", "5", "10", "15"}));
  EXPECT_NEAR(scale.labels[3].place.x(), 60 + 15 * 5, 1e-9);
}

MinuteSpan hoursWithLabels(float seconds, double labelWidth) {
  MinuteSpan span = spanOf(seconds, Edge::Left, MinuteSpan::Unit::Hours);
  span.labelWidth = labelWidth;
  return span;
}

TEST(PageMinutes, ofTwoHoursInHoursAreThinnedOutWhereLabelsWouldTouch) {
  // 5 points a minute, 25 between labels that are 35 wide: with a gap of 4, ten minutes are enough.
  const MinuteScale scale = layOutMinuteScale(pageMinutes(), hoursWithLabels(7200, 35));
  EXPECT_EQ(texts(scale).mid(0, 4), (QStringList{"0.00", "0.17", "0.33", "0.50"}));
  ASSERT_EQ(scale.labels.size(), 13u);
  EXPECT_NEAR(scale.labels[3].place.x(), 60 + 30 * 5, 1e-9);
  // Marks stay as they are.
  EXPECT_EQ(scale.marks, layOutMinuteScale(pageMinutes(), spanOf(7200)).marks);
  // 21 wide: exactly room for every one.
  EXPECT_EQ(texts(layOutMinuteScale(pageMinutes(), hoursWithLabels(7200, 21))).size(), 25);
  EXPECT_EQ(texts(layOutMinuteScale(pageMinutes(), hoursWithLabels(7200, 21.1))).size(), 13);
}

TEST(PageMinutes, keepLabelsAtFullPartsOfAnHourWhenTheyAreThinnedOut) {
  const MinuteSteps every5{1, 5};
  EXPECT_EQ(thinnedSteps(every5, 1, 0), every5);
  EXPECT_EQ(thinnedSteps(every5, 1, 4), (MinuteSteps{1, 10}));
  EXPECT_EQ(thinnedSteps(every5, 1, 9), (MinuteSteps{1, 15}));
  EXPECT_EQ(thinnedSteps(every5, 1, 20), (MinuteSteps{1, 30}));
  EXPECT_EQ(thinnedSteps(every5, 1, 30), (MinuteSteps{1, 60}));
  EXPECT_EQ(thinnedSteps({5, 15}, 1, 12), (MinuteSteps{5, 30})); // not 20
  EXPECT_EQ(thinnedSteps({60, 120}, 0.1, 21), (MinuteSteps{60, 360}));
  // Nothing has room: the widest steps there are.
  EXPECT_EQ(thinnedSteps(every5, 0, 35), (MinuteSteps{1, 1440}));
  EXPECT_EQ(thinnedSteps(every5, std::numeric_limits<double>::quiet_NaN(), 35), (MinuteSteps{1, 1440}));
}

TEST(PageMinutes, haveTheirLongestLabelAtTheEnd) {
  EXPECT_EQ(longestMinuteLabel(pageMinutes(), hoursWithLabels(7200, 0)), QStringLiteral("2.00"));
  EXPECT_EQ(longestMinuteLabel(pageMinutes(), hoursWithLabels(24 * 3600, 0)), QStringLiteral("24"));
  EXPECT_EQ(longestMinuteLabel(pageMinutes(), spanOf(7200)), QStringLiteral("120"));
}

TEST(PageMinutes, areWrittenInHoursWithTwoDecimalsWhileLabelsAreCloserThanAnHour) {
  const auto hours = [](float minutes) {
    const MinuteScale scale =
        layOutMinuteScale(pageMinutes(), spanOf(minutes * 60, Edge::Left, MinuteSpan::Unit::Hours));
    EXPECT_EQ(scale.title, QStringLiteral("Time (Hours)"));
    return texts(scale).mid(0, 4);
  };
  EXPECT_EQ(hours(60), (QStringList{"0.00", "0.08", "0.17", "0.25"}));  // 5, 10, 15 minutes
  EXPECT_EQ(hours(180), (QStringList{"0.00", "0.25", "0.50", "0.75"})); // every 15
  EXPECT_EQ(hours(360), (QStringList{"0.00", "0.50", "1.00", "1.50"})); // every 30
  EXPECT_EQ(hours(720), (QStringList{"0", "1", "2", "3"}));
  EXPECT_EQ(hours(1440), (QStringList{"0", "2", "4", "6"}));
}

// The scale as a loop over minutes, written for this test.
void expectScale(const MinuteScale& scale, bool page, const MinuteSpan& span) {
  const double minutes = double(span.seconds) / 60;
  int tick = 1, every = 5;
  if (page) {
    if (minutes >= 180) tick = 5, every = 15;
    if (minutes >= 360) tick = 10, every = 30;
    if (minutes >= 720) tick = 30, every = 60;
    if (minutes >= 1440) tick = 60, every = 120;
  } else if (minutes > 180) {
    tick = 5, every = 15;
  }
  const double foot = span.rect.y() + (page ? 36 : 0);
  double step = tick * 60 * span.rect.width() / double(span.seconds);
  double x = span.rect.x();
  if (span.origin == Edge::Right) {
    x += span.rect.width();
    step = -step;
  }
  std::size_t mark = 0, label = 0;
  int value = 0;
  for (int m = 0; x >= span.rect.x() && x <= span.rect.x() + span.rect.width(); x += step, m += tick) {
    double length = 12;
    if (m % every == 0) {
      length = 24;
      QString text = QString::number(value);
      if (span.unit == MinuteSpan::Unit::Hours) {
        text = every < 60 ? QString::number(value / 60.0, 'f', 2) : QString::number(value / 60);
      }
      ASSERT_LT(label, scale.labels.size());
      EXPECT_EQ(scale.labels[label].text, text);
      expectNear(scale.labels[label].place, {x, foot - 4}, 1e-6);
      ++label;
      value += every;
    }
    ASSERT_LT(mark, scale.marks.size());
    expectNear(scale.marks[mark], QLineF(x, foot, x, foot + length), 1e-6);
    ++mark;
  }
  EXPECT_EQ(scale.marks.size(), mark);
  EXPECT_EQ(scale.labels.size(), label);
}

TEST(MinuteScales, lieWhereAnIndependentReckoningPutsThem) {
  std::mt19937 random(11);
  for (int round = 0; round < 600; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    MinuteSpan span;
    span.rect = {uniform(random, 0, 100), uniform(random, 0, 100), uniform(random, 50, 2000), 300};
    const bool wholeMinutes = round % 2 == 0;
    span.seconds = wholeMinutes ? float(60 * uniformInt(random, 1, 3000)) : uniform(random, 1, 200000);
    span.viewBottom = uniform(random, -10, 10);
    span.origin = uniformInt(random, 0, 1) == 1 ? Edge::Right : Edge::Left;
    span.unit = uniformInt(random, 0, 1) == 1 ? MinuteSpan::Unit::Hours : MinuteSpan::Unit::Minutes;
    const bool page = uniformInt(random, 0, 1) == 1;
    const MinuteScale scale = layOutMinuteScale(page ? pageMinutes() : realTimeMinutes(), span);
    expectScale(scale, page, span);
    expectNear(scale.titlePlace, {span.rect.x() + 0.5 * span.rect.width(), span.viewBottom + (page ? 12 : 36)}, 1e-6);
  }
}

TEST(MinuteScales, haveTheFirstMarkAloneWithoutAnExtent) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const float seconds : {0.0f, -0.0f, -3600.0f, nan}) {
    const MinuteScale scale = layOutMinuteScale(pageMinutes(), spanOf(seconds));
    EXPECT_EQ(scale.marks.size(), 1u) << seconds;
    EXPECT_EQ(texts(scale), QStringList{"0"}) << seconds;
  }
  MinuteSpan flat = spanOf(3600);
  flat.rect.setWidth(0);
  EXPECT_EQ(layOutMinuteScale(pageMinutes(), flat).marks.size(), 1u);
}

TEST(MinuteScales, haveNoLabelsWhereTheyWouldAllLieUponEachOther) {
  // 2500 labels of 15 minutes are 2,250,000 s.
  const MinuteScale most = layOutMinuteScale(realTimeMinutes(), spanOf(2249000));
  EXPECT_EQ(most.labels.size(), 2499u); // 2249000 / 900, and the one at 0
  const MinuteScale more = layOutMinuteScale(realTimeMinutes(), spanOf(2251000));
  EXPECT_TRUE(more.labels.empty());
  EXPECT_EQ(more.marks.size(), 7504u); // 2251000 / 300, and the one at 0
}

TEST(MinuteScales, haveNoMarksWhereTheyWouldBeASolidBar) {
  // 2e9 s are 555,555 hours; a year has 8760.
  for (const float seconds : {2e9f, 3e38f, std::numeric_limits<float>::infinity()}) {
    const MinuteScale scale = layOutMinuteScale(pageMinutes(), spanOf(seconds));
    EXPECT_TRUE(scale.marks.empty()) << seconds;
    EXPECT_TRUE(scale.labels.empty()) << seconds;
    EXPECT_EQ(scale.baseline, QLineF(60, 120, 660, 120));
  }
  EXPECT_GE(layOutMinuteScale(pageMinutes(), spanOf(365 * 86400)).marks.size(), 8760u);
}

} // namespace
} // namespace xov::testing
