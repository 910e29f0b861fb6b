#include "XOV_Graphics/views/timeline/ReferenceTexts.h"

#include "TimelineDrawing.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace xov::testing {
namespace {

const QDateTime kTohoku = utc(2011, 3, 11, 5, 46, 23);
const QTimeZone kTokyo("Asia/Tokyo");

TEST(ReferenceTexts, areLongInTheFirstDisplay) {
  EXPECT_EQ(longReferenceTexts(kTohoku, kTokyo),
            (ReferenceTexts{QStringLiteral("11 March, 2011"), QStringLiteral("05:46:23 UTC"),
                            QStringLiteral("02:46:23 PM")}));
}

TEST(ReferenceTexts, areShortInTheSecondDisplay) {
  EXPECT_EQ(shortReferenceTexts(kTohoku, kTokyo),
            (ReferenceTexts{QStringLiteral("11 Mar, 2011"), QStringLiteral("05:46:23 UTC"),
                            QStringLiteral("14:46:23 JST")}));
}

TEST(ReferenceTexts, padDaysAndHours) {
  const QDateTime early = utc(2009, 2, 3, 0, 5, 9);
  const QTimeZone zone("Etc/UTC");
  EXPECT_EQ(longReferenceTexts(early, zone).date, QStringLiteral("03 February, 2009"));
  EXPECT_EQ(longReferenceTexts(early, zone).utcTime, QStringLiteral("00:05:09 UTC"));
  EXPECT_EQ(longReferenceTexts(early, zone).localTime, QStringLiteral("12:05:09 AM")); // after midnight
  EXPECT_EQ(longReferenceTexts(early.addSecs(12 * 3600), zone).localTime, QStringLiteral("12:05:09 PM"));
  EXPECT_EQ(longReferenceTexts(early.addSecs(13 * 3600), zone).localTime, QStringLiteral("01:05:09 PM"));
  EXPECT_EQ(shortReferenceTexts(early, zone).date, QStringLiteral("03 Feb, 2009"));
  EXPECT_EQ(shortReferenceTexts(early, zone).localTime, QStringLiteral("00:05:09 UTC"));
}

TEST(ReferenceTexts, convertDatesOfOtherZonesToUtc) {
  // 08:46:23 in Tokyo is the evening before in UTC.
  const QDateTime morning(QDate(2011, 3, 11), QTime(8, 46, 23), kTokyo);
  EXPECT_EQ(longReferenceTexts(morning, kTokyo).utcTime, QStringLiteral("23:46:23 UTC"));
  EXPECT_EQ(longReferenceTexts(morning, kTokyo).date, QStringLiteral("10 March, 2011"));
  EXPECT_EQ(shortReferenceTexts(morning, kTokyo).date, QStringLiteral("10 Mar, 2011"));
  EXPECT_EQ(longReferenceTexts(morning, kTokyo).localTime, QStringLiteral("08:46:23 AM"));
}

TEST(ReferenceTexts, nameSummerTime) {
  const QTimeZone newYork("America/New_York");
  EXPECT_EQ(shortReferenceTexts(utc(2011, 7, 1, 12), newYork).localTime, QStringLiteral("08:00:00 EDT"));
  EXPECT_EQ(shortReferenceTexts(utc(2011, 1, 1, 12), newYork).localTime, QStringLiteral("07:00:00 EST"));
}

TEST(ReferenceTexts, areEnglishInEveryLocale) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::Greek, QLocale::Greece));
  EXPECT_EQ(longReferenceTexts(kTohoku, kTokyo).date, QStringLiteral("11 March, 2011"));
  EXPECT_EQ(longReferenceTexts(kTohoku, kTokyo).localTime, QStringLiteral("02:46:23 PM"));
  QLocale::setDefault(before);
}

TEST(ReferenceTexts, areEmptyWithoutAnInstant) {
  EXPECT_EQ(longReferenceTexts({}, kTokyo), ReferenceTexts());
  EXPECT_EQ(shortReferenceTexts({}, kTokyo), ReferenceTexts());
}

TEST(ReferenceTexts, takeTheLocalTimeWhereAZoneIsNotKnown) {
  const QTimeZone unknown("Nowhere/AtAll");
  EXPECT_EQ(longReferenceTexts(kTohoku, unknown).localTime,
            QLocale::c().toString(kTohoku.toLocalTime(), QStringLiteral("hh:mm:ss AP")));
}

} // namespace
} // namespace xov::testing
