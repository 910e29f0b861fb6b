#include "XOV_Graphics/graphics/UtcTicks.h"

#include <gtest/gtest.h>

#include <QTimeZone>

#include <cmath>
#include <limits>

namespace xov {
namespace {

QDateTime utc(const char* text) {
  QDateTime time = QDateTime::fromString(QLatin1String(text), Qt::ISODateWithMs);
  time.setTimeZone(QTimeZone::utc());
  return time;
}

// Six points a character: "00:00" is 30 wide, "2011-03-11" 60.
double sixPointsEach(const QString& text) { return 6.0 * double(text.size()); }

UtcTickRequest request(const char* reference, double lower, double upper, double length) {
  return {.reference = utc(reference),
          .lower = lower,
          .upper = upper,
          .length = length,
          .gap = 10,
          .textWidth = sixPointsEach};
}

std::vector<UtcTick> majorTicks(const UtcTickRequest& of) { return utcTicks(of).major; }

QStringList labels(const UtcTickRequest& of) {
  QStringList texts;
  for (const UtcTick& tick : majorTicks(of))
    texts << tick.label;
  return texts;
}

using Ticks = std::vector<UtcTick>;

// A label of 8 characters takes 48 + 10 points, less than the 60 of one second.
TEST(UtcTicks, lieAtWholeSecondsOfUtcWhateverTheReference) {
  const Ticks expected = {{0.75, "05:46:25"}, {1.75, "05:46:26"}, {2.75, "05:46:27"}};
  EXPECT_EQ(majorTicks(request("2011-03-11T05:46:24.250", 0, 3, 180)), expected);
}

TEST(UtcTicks, theShortestIntervalIsTakenWhoseLabelsDoNotTouch) {
  // 48 + 10 = 58 points a label: one second has 57 of 570, so two are taken.
  EXPECT_EQ(labels(request("2011-03-11T05:46:20", 0, 10, 570)),
            (QStringList{"05:46:20", "05:46:22", "05:46:24", "05:46:26", "05:46:28", "05:46:30"}));
  EXPECT_EQ(labels(request("2011-03-11T05:46:20", 0, 2, 116)), (QStringList{"05:46:20", "05:46:21", "05:46:22"}));
}

TEST(UtcTicks, fractionsHaveTheDigitsOfTheInterval) {
  // A label of 12 characters takes 82 points, of 11 76, of 10 70.
  EXPECT_EQ(labels(request("2011-03-11T05:46:24.119", 0, 0.003, 300)),
            (QStringList{"05:46:24.119", "05:46:24.120", "05:46:24.121", "05:46:24.122"}));
  EXPECT_EQ(labels(request("2011-03-11T05:46:24.11", 0, 0.02, 160)),
            (QStringList{"05:46:24.11", "05:46:24.12", "05:46:24.13"}));
  EXPECT_EQ(labels(request("2011-03-11T05:46:24.15", 0, 0.2, 150)), (QStringList{"05:46:24.2", "05:46:24.3"}));
}

TEST(UtcTicks, midnightShowsTheDay) {
  // Six hours have 60 points: the full date is 60 wide, a time 30, so half of both and the gap take 55.
  EXPECT_EQ(labels(request("2011-12-31T12:00:00", 0, 86400, 240)),
            (QStringList{"12:00", "18:00", "2012-01-01", "06:00", "12:00"}));
}

TEST(UtcTicks, midnightShowsMonthAndDayWhereTheYearHasNoRoom) {
  // Six hours have 50 points: 55 of the full date do not fit beside a time, 40 of the short one do.
  EXPECT_EQ(labels(request("2011-12-31T12:00:00", 0, 86400, 200)),
            (QStringList{"12:00", "18:00", "01-01", "06:00", "12:00"}));
}

TEST(UtcTicks, midnightAtTheLowerLimitShowsItsTime) {
  // Its day is that of the lower limit, which stands at the same end of the axis.
  EXPECT_EQ(labels(request("2011-12-31T00:00:00", 0, 86400, 240)),
            (QStringList{"00:00", "06:00", "12:00", "18:00", "2012-01-01"}));
}

TEST(UtcTicks, daysCountFromTheFirstOfEachMonth) {
  // 40 days of 10 points: a day of the form 03-11 takes 40 points, so five days do.
  EXPECT_EQ(labels(request("2011-02-20T00:00:00", 0, 40 * 86400.0, 400)),
            (QStringList{"02-21", "02-26", "03-01", "03-06", "03-11", "03-16", "03-21", "03-26", "04-01"}));
}

TEST(UtcTicks, newYearShowsItsYearAmongDays) {
  // A day has 60 points and takes 30 + 10; half of the full date, half of a day and the gap are 55.
  EXPECT_EQ(labels(request("2011-12-30T00:00:00", 0, 4 * 86400.0, 240)),
            (QStringList{"12-30", "12-31", "2012-01-01", "01-02", "01-03"}));
}

TEST(UtcTicks, monthsAndYearsFollowTheCalendar) {
  // A month "2011-03" takes 52 points.
  EXPECT_EQ(labels(request("2011-01-15T00:00:00", 0, 120 * 86400.0, 240)),
            (QStringList{"2011-02", "2011-03", "2011-04", "2011-05"}));
  // From 2000 to 2020, with 5 leap days and 5 leap seconds, in 150 points: a year takes 34, so five years do,
  // with 37.
  EXPECT_EQ(labels(request("2000-01-01T00:00:00", 0, 20 * 365.25 * 86400 + 5, 150)),
            (QStringList{"2000", "2005", "2010", "2015", "2020"}));
}

TEST(UtcTicks, leapYearsHaveTheirDay) {
  const Ticks expected = {{0, "02-28"}, {86400, "02-29"}, {2 * 86400.0, "03-01"}};
  EXPECT_EQ(majorTicks(request("2012-02-28T00:00:00", 0, 2 * 86400.0, 100)), expected);
}

TEST(UtcTicks, aLeapSecondHasRoomAndALabel) {
  const Ticks expected = {{0, "23:59:58"}, {1, "23:59:59"}, {2, "23:59:60"}, {3, "01-01"}, {4, "00:00:01"}};
  EXPECT_EQ(majorTicks(request("2016-12-31T23:59:58", 0, 4, 240)), expected);
}

TEST(UtcTicks, aReferenceAfterALeapSecondLooksBackAcrossIt) {
  const Ticks expected = {{-2, "23:59:59"}, {-1, "23:59:60"}, {0, "01-01"}, {1, "00:00:01"}};
  EXPECT_EQ(majorTicks(request("2017-01-01T00:00:00", -2, 1, 180)), expected);
}

TEST(UtcTicks, ticksAfterALeapSecondStayAtRoundMoments) {
  // Ten-second ticks around the leap second: 11 s lie between 23:59:50 and midnight.
  const Ticks expected = {{0, "23:59:40"}, {10, "23:59:50"}, {21, "2017-01-01"}, {31, "00:00:10"}};
  EXPECT_EQ(majorTicks(request("2016-12-31T23:59:40", 0, 31, 31 * 6.5)), expected);
}

TEST(UtcTicks, manyLeapSecondsAfterTheReferenceDoNotMoveTheTicks) {
  // 27 leap seconds lie between 1972 and 2020.
  const double seconds = 1577836800.0 - 63072000.0 + 27; // 2020-01-01 and 1972-01-01 in seconds since 1970
  const Ticks expected = {{seconds, "2020-01-01"}};
  EXPECT_EQ(majorTicks(request("1972-01-01T00:00:00", seconds - 0.5, seconds + 0.5, 75)), expected);
}

TEST(UtcTicks, datesOfBothEndsAreTold) {
  const UtcTicks ticks = utcTicks(request("2011-03-11T23:00:00", 0, 7200, 300));
  EXPECT_EQ(ticks.firstDate, "2011-03-11");
  EXPECT_EQ(ticks.lastDate, "2011-03-12");
}

TEST(UtcTicks, theDateOfALeapSecondIsThatOfTheDayThatItEnds) {
  const UtcTicks ticks = utcTicks(request("2016-12-31T23:59:58", 0, 2.5, 300));
  EXPECT_EQ(ticks.lastDate, "2016-12-31");
  EXPECT_EQ(utcTicks(request("2016-12-31T23:59:58", 2.5, 4, 300)).firstDate, "2016-12-31");
  EXPECT_EQ(utcTicks(request("2016-12-31T23:59:58", 3, 4, 300)).firstDate, "2017-01-01");
}

TEST(UtcTicks, minorTicksLieBetweenMajorOnes) {
  const UtcTicks ticks = utcTicks(request("2011-03-11T05:46:20", 0, 2, 116));
  EXPECT_EQ(ticks.minor, (std::vector<double>{0.2, 0.4, 0.6, 0.8, 1.2, 1.4, 1.6, 1.8}));
}

TEST(UtcTicks, negativeTimesAndTimesBefore1970AreRound) {
  const Ticks expected = {{-1.5, "23:59:59"}, {-0.5, "01-01"}, {0.5, "00:00:01"}};
  EXPECT_EQ(majorTicks(request("1960-01-01T00:00:00.500", -2, 1, 180)), expected);
}

TEST(UtcTicks, whatHasNoPlaceOnACalendarHasNoTicks) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(majorTicks(request("2011-03-11T00:00:00", 1, 1, 100)).empty());
  EXPECT_TRUE(majorTicks(request("2011-03-11T00:00:00", 2, 1, 100)).empty());
  EXPECT_TRUE(majorTicks(request("2011-03-11T00:00:00", 0, infinity, 100)).empty());
  EXPECT_TRUE(majorTicks(request("2011-03-11T00:00:00", std::nan(""), 1, 100)).empty());
  EXPECT_TRUE(majorTicks(request("2011-03-11T00:00:00", 0, 1e13, 100)).empty());
  EXPECT_TRUE(majorTicks(request("2011-03-11T00:00:00", 0, 1, 0)).empty());
  EXPECT_TRUE(majorTicks(request("", 0, 1, 100)).empty());
}

TEST(UtcTicks, anAxisWithoutRoomForALabelHasFewTicks) {
  EXPECT_LE(majorTicks(request("2011-03-11T00:00:00", 0, 1e9, 1)).size(), 2u);
  EXPECT_LE(majorTicks(request("2000-01-01T00:00:00", 0, 2.4e11, 10)).size(), 9u);
}

TEST(UtcTicks, aSpanShorterThanAMillisecondHasNoneOrOne) {
  EXPECT_LE(majorTicks(request("2011-03-11T00:00:00", 0.0001, 0.0002, 600)).size(), 1u);
}

} // namespace
} // namespace xov
