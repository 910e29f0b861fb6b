#include "XOV_Graphics/base/TimeText.h"

#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace xov;

namespace {

/// The time that a text stands for, written in one way; empty when it stands for none.
QString read(const char* text) {
  const std::optional<QDateTime> time = parseUtcTime(QString::fromLatin1(text));
  return time ? time->toString(Qt::ISODateWithMs) : QString();
}

} // namespace

TEST(TimeText, isReadInTheFormsOfCatalogues) {
  const QString expected = QStringLiteral("2011-03-11T05:46:24.120Z");
  for (const char* text :
       {"2011-03-11T05:46:24.12Z", "2011-03-11T05:46:24.120", "2011-03-11 05:46:24.12", "2011/03/11 05:46:24.12",
        "20110311T05:46:24.120000Z", " 2011-03-11T5:46:24.12 UTC ", "2011-03-11t05:46:24.12gmt"})
    EXPECT_EQ(read(text), expected) << text;
}

TEST(TimeText, countsWhatIsMissingAsZero) {
  EXPECT_EQ(read("2011-03-11T05:46Z"), QStringLiteral("2011-03-11T05:46:00.000Z"));
  EXPECT_EQ(read("2011-03-11T05:46:24."), QStringLiteral("2011-03-11T05:46:24.000Z"));
  EXPECT_EQ(read("2011-03-11"), QStringLiteral("2011-03-11T00:00:00.000Z"));
}

TEST(TimeText, isRoundedToTheMillisecond) {
  EXPECT_EQ(read("2011-12-31T23:59:59.9994"), QStringLiteral("2011-12-31T23:59:59.999Z"));
  EXPECT_EQ(read("2011-12-31T23:59:59.9995"), QStringLiteral("2012-01-01T00:00:00.000Z"));
  EXPECT_EQ(read("2011-01-01T00:00:00.000499999999"), QStringLiteral("2011-01-01T00:00:00.000Z"));
}

TEST(TimeText, turnsOffsetsIntoUtc) {
  EXPECT_EQ(read("2011-03-11T14:46:24+09:00"), QStringLiteral("2011-03-11T05:46:24.000Z"));
  EXPECT_EQ(read("2011-03-10T23:16:24-0630"), QStringLiteral("2011-03-11T05:46:24.000Z"));
  EXPECT_EQ(read("2011-03-11T14:46:24+09"), QStringLiteral("2011-03-11T05:46:24.000Z"));
}

TEST(TimeText, countsALeapSecondAsTheNextMinute) {
  EXPECT_EQ(read("2016-12-31T23:59:60.5Z"), QStringLiteral("2017-01-01T00:00:00.500Z"));
}

TEST(TimeText, isWrittenInUtcToTheMillisecond) {
  const QDateTime time(QDate(2011, 3, 11), QTime(14, 46, 24, 120), Qt::OffsetFromUTC, 9 * 3600);
  EXPECT_EQ(utcText(time), QStringLiteral("2011-03-11T05:46:24.120Z"));
  EXPECT_EQ(*parseUtcTime(utcText(time)), time);
  EXPECT_EQ(utcText(QDateTime()), QString());
}

TEST(TimeText, isReadWithWhatMayStandAroundItsNumbers) {
  for (const char* text : {"2011-03-11T05:46:24", "20110311T5:46:24", "2011/03/11  05:46:24.", "2011-03-11t05:46:24z",
                           " 2011-03-11 05:46:24 utc ", "2011-03-11T05:46:24\tGMT", "2011-03-11T07:16:24+01:30",
                           "2011-03-11T04:46:24-01:", "2011-03-11T04:46:24 -0100"})
    EXPECT_EQ(read(text), QStringLiteral("2011-03-11T05:46:24.000Z")) << text;
  EXPECT_EQ(read("2011-03-11 Z"), QStringLiteral("2011-03-11T00:00:00.000Z"));
}

TEST(TimeText, thatIsNoMomentIsRefused) {
  for (const char* text : {"2011-03-11T",
                           "2011-03-11T05",
                           "2011-03-11T05:4",
                           "2011-03-11T05:46:2",
                           "20110-311",
                           "2011-03-11T005:46",
                           "2011-03-11T05:46:24ZZ",
                           "2011-03-11T05:46:24+",
                           "2011-03-11T05:46:24+01:3",
                           "",
                           "yesterday",
                           "2011-03",
                           "2011-13-01",
                           "2011-02-29",
                           "2011-03-11T24:00",
                           "2011-03-11T05:60",
                           "2011-03-11T05:46:61",
                           "2011-03-11T05:46:24 7",
                           "11-03-2011",
                           "2011-03/11",
                           "0000-01-01",
                           "2011-03-11T05:46:24+1",
                           "9999-12-31T23:59:59.9999",
                           "2011-03-11T05:46:24.0000000000001"})
    EXPECT_EQ(read(text), QString()) << text;
}

TEST(TimeText, isMadeOfNumbersWithinTheirRanges) {
  EXPECT_EQ(utcText(*utcTime({2011, 3, 11, 5, 46, 24, 0.12})), QStringLiteral("2011-03-11T05:46:24.120Z"));
  EXPECT_EQ(utcText(*utcTime({2016, 12, 31, 23, 59, 60, 0.5})), QStringLiteral("2017-01-01T00:00:00.500Z"));
  for (const DateAndClock& none :
       {DateAndClock{2011, 2, 29}, DateAndClock{0, 1, 1}, DateAndClock{2011, 1, 1, -1}, DateAndClock{2011, 1, 1, 24},
        DateAndClock{2011, 1, 1, 0, 60}, DateAndClock{2011, 1, 1, 0, 0, 61}, DateAndClock{2011, 1, 1, 0, 0, 0, -0.1}})
    EXPECT_FALSE(utcTime(none)) << none.year << ' ' << none.hour;
}

TEST(TimeText, isReadAndWrittenToTheNanosecond) {
  for (const char* text : {"2011-03-11T05:46:24.123456789Z", "1969-12-31T23:59:59.999999999Z",
                           "1678-01-01T00:00:00.000000000Z", "2261-12-31T23:59:59.999999999Z"}) {
    const auto time = parseUtcNanoseconds(QString::fromLatin1(text));
    ASSERT_TRUE(time) << text;
    EXPECT_EQ(utcText(*time), QString::fromLatin1(text));
  }
  EXPECT_EQ(parseUtcNanoseconds(u"1970-01-01T00:00:01.5+00:00")->time_since_epoch().count(), 1'500'000'000);
  EXPECT_EQ(parseUtcNanoseconds(u"1969-12-31T23:59:59Z")->time_since_epoch().count(), -1'000'000'000);
  for (const char* none : {"1677-12-31T23:59:59.999999999Z", "2262-01-01T00:00:00Z",
                           "2261-12-31T23:59:59.9999999999Z", "0001-01-01", "soon"})
    EXPECT_FALSE(parseUtcNanoseconds(QString::fromLatin1(none))) << none;
}

TEST(TimeText, countsSecondsFromAMoment) {
  const QDateTime start = *parseUtcTime(u"2011-03-11T05:46:24.120Z");
  EXPECT_EQ(utcText(*utcAfter(start, 0.000000001)), QStringLiteral("2011-03-11T05:46:24.120000001Z"));
  EXPECT_EQ(utcText(*utcAfter(start, -86400.5)), QStringLiteral("2011-03-10T05:46:23.620000000Z"));
  EXPECT_EQ(secondsFrom(start, *utcAfter(start, -86400.5)), -86400.5);
  EXPECT_EQ(secondsFrom(start, *utcAfter(start, 3600.25)), 3600.25);
  for (const double none : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, 1e10, -1.1e10})
    EXPECT_FALSE(utcAfter(start, none)) << none;
  EXPECT_FALSE(utcAfter(QDateTime(), 0));
}
