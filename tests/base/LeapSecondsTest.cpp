#include "XOV_Graphics/base/LeapSeconds.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTimeZone>

#include <limits>

namespace xov {
namespace {

qint64 utc(const char* text) {
  QDateTime time = QDateTime::fromString(QLatin1String(text), Qt::ISODateWithMs);
  time.setTimeZone(QTimeZone::utc());
  return time.toMSecsSinceEpoch();
}

TEST(LeapSeconds, tenSecondsLayBetweenTheScalesWhenLeapsBegan) {
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("1972-01-01T00:00:00")), 10);
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("1972-06-30T23:59:59.999")), 10);
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("1972-07-01T00:00:00")), 11);
}

TEST(LeapSeconds, knownOffsetsHold) {
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("1980-01-06T00:00:00")), 19); // where the time of GPS begins
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("2000-01-01T12:00:00")), 32);
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("2011-03-11T05:46:24")), 34);
  EXPECT_EQ(secondsOfTaiAheadOfUtc(utc("2026-01-01T00:00:00")), 37);
}

TEST(LeapSeconds, aDayWithALeapSecondIsASecondLonger) {
  EXPECT_EQ(secondsBetween(utc("2016-12-31T00:00:00"), utc("2017-01-01T00:00:00")), 86401);
  EXPECT_EQ(secondsBetween(utc("2017-01-01T00:00:00"), utc("2016-12-31T00:00:00")), -86401);
  EXPECT_EQ(secondsBetween(utc("2016-12-30T00:00:00"), utc("2016-12-31T00:00:00")), 86400);
  EXPECT_DOUBLE_EQ(secondsBetween(utc("2015-06-30T23:59:59.250"), utc("2015-07-01T00:00:00.500")), 2.25);
}

TEST(LeapSeconds, theLastLeapIsTheMidnightAfterIt) {
  EXPECT_EQ(lastLeapUpTo(utc("2011-03-11T00:00:00")), utc("2009-01-01T00:00:00"));
  EXPECT_EQ(lastLeapUpTo(utc("2009-01-01T00:00:00")), utc("2009-01-01T00:00:00"));
  EXPECT_EQ(lastLeapUpTo(utc("2008-12-31T23:59:59")), utc("2006-01-01T00:00:00"));
  EXPECT_EQ(lastLeapUpTo(utc("1970-01-01T00:00:00")), std::numeric_limits<qint64>::min());
}

} // namespace
} // namespace xov
