#include "XOV_Graphics/seismic/MonthDate.h"

#include <climits>
#include <gtest/gtest.h>

#include <utility>

namespace {

using Date = std::pair<int, int>;

Date monthAndDay(int year, int dayOfYear) {
  Date date{-1, -1};
  xov::monthdate(year, dayOfYear, date.first, date.second);
  return date;
}

constexpr Date kNoDate{0, 0};

} // namespace

TEST(MonthDate, countsThroughTheMonthsOfAnOrdinaryYear) {
  EXPECT_EQ(monthAndDay(2011, 1), Date(1, 1));
  EXPECT_EQ(monthAndDay(2011, 31), Date(1, 31));
  EXPECT_EQ(monthAndDay(2011, 32), Date(2, 1));
  EXPECT_EQ(monthAndDay(2011, 59), Date(2, 28)); // 31 + 28
  EXPECT_EQ(monthAndDay(2011, 60), Date(3, 1));
  EXPECT_EQ(monthAndDay(2011, 70), Date(3, 11)); // 59 + 11
  EXPECT_EQ(monthAndDay(2011, 365), Date(12, 31));
}

TEST(MonthDate, givesALeapYearItsTwentyNinthOfFebruary) {
  EXPECT_EQ(monthAndDay(2012, 60), Date(2, 29)); // 31 + 29
  EXPECT_EQ(monthAndDay(2012, 61), Date(3, 1));
  EXPECT_EQ(monthAndDay(2012, 366), Date(12, 31));
}

TEST(MonthDate, takesCenturiesAsLeapYearsOnlyEveryFourth) {
  EXPECT_EQ(monthAndDay(2000, 60), Date(2, 29));
  EXPECT_EQ(monthAndDay(2000, 366), Date(12, 31));
  EXPECT_EQ(monthAndDay(1900, 60), Date(3, 1));
  EXPECT_EQ(monthAndDay(1900, 366), kNoDate);
}

TEST(MonthDate, givesNoDateForADayOutsideTheYear) {
  EXPECT_EQ(monthAndDay(2011, 0), kNoDate);
  EXPECT_EQ(monthAndDay(2011, -1), kNoDate);
  EXPECT_EQ(monthAndDay(2011, 366), kNoDate);
  EXPECT_EQ(monthAndDay(2012, 367), kNoDate);
  EXPECT_EQ(monthAndDay(2012, INT_MAX), kNoDate);
}

TEST(MonthDate, givesNoDateForAYearThatIsNotSet) {
  EXPECT_EQ(monthAndDay(-12345, 70), kNoDate);
  EXPECT_EQ(monthAndDay(0, 70), kNoDate);
  EXPECT_EQ(monthAndDay(INT_MIN, 1), kNoDate);
}
