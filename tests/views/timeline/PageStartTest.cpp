#include "XOV_Graphics/views/timeline/PageStart.h"

#include "TimelineDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov::testing {
namespace {

SacHeader headerAt(const QDateTime& time) {
  FakeRecord record;
  setReference(record, time);
  return record.header;
}

TEST(PageStart, isTheWholeHourOfTheReferenceTime) {
  const SacHeader header = headerAt(utc(2011, 3, 11, 10, 17, 30));
  const PageStart start = pageStart(&header);
  EXPECT_EQ(start.hour, utc(2011, 3, 11, 10));
  EXPECT_EQ(start.hour.timeSpec(), Qt::UTC);
  EXPECT_EQ(start.offset, 1050); // 17 · 60 + 30
  EXPECT_EQ(start.reference, utc(2011, 3, 11, 10, 17, 30));
}

TEST(PageStart, ofARecordIsThatOfItsHeader) {
  FakeRecord record;
  setReference(record, utc(2011, 3, 11, 10, 17, 30));
  EXPECT_EQ(recordedStart(&record).hour, utc(2011, 3, 11, 10));
  EXPECT_EQ(recordedStart(&record).offset, 1050);
  EXPECT_FALSE(recordedStart(nullptr).hour.isValid());
}

TEST(PageStart, countsMillisecondsInTheOffsetOnly) {
  const SacHeader header = headerAt(utc(2011, 3, 11, 10, 0, 0, 250));
  const PageStart start = pageStart(&header);
  EXPECT_EQ(start.offset, 0.25f);
  EXPECT_EQ(start.reference, utc(2011, 3, 11, 10));
}

TEST(PageStart, followsTheCalendarForAnyDay) {
  std::mt19937 random(1);
  for (int round = 0; round < 300; ++round) {
    const QDateTime time = utc(1970, 1, 1).addSecs(std::int64_t(uniformInt(random, 0, 2000000000)));
    const SacHeader header = headerAt(time);
    const PageStart start = pageStart(&header);
    const std::int64_t seconds = time.toSecsSinceEpoch();
    EXPECT_EQ(start.hour.toSecsSinceEpoch(), seconds / 3600 * 3600);
    EXPECT_EQ(start.reference.toSecsSinceEpoch(), seconds);
    EXPECT_EQ(start.offset, float(seconds % 3600));
  }
}

TEST(PageStart, beforeMidnightLiesInTheDayBefore) {
  const SacHeader header = headerAt(utc(2012, 2, 29, 23, 59, 50)); // day 60 of a leap year
  EXPECT_EQ(pageStart(&header).hour, utc(2012, 2, 29, 23));
}

TEST(PageStart, takesUnsetHoursAndSecondsForZero) {
  SacHeader header;
  header.nzyear = 2011;
  header.nzjday = 70;
  const PageStart start = pageStart(&header);
  EXPECT_EQ(start.hour, utc(2011, 3, 11));
  EXPECT_EQ(start.offset, 0);
}

TEST(PageStart, isUnknownWithoutADate) {
  const SacHeader unset;
  EXPECT_FALSE(pageStart(&unset).hour.isValid());
  EXPECT_FALSE(pageStart(&unset).reference.isValid());
  EXPECT_EQ(pageStart(&unset).offset, 0);
  EXPECT_FALSE(pageStart(nullptr).hour.isValid());
  SacHeader wrong = headerAt(utc(2011, 3, 11));
  wrong.nzjday = 400;
  EXPECT_FALSE(pageStart(&wrong).hour.isValid());
}

TEST(PageStart, carriesHoursAndSecondsBeyondTheirRangeOver) {
  SacHeader header = headerAt(utc(2011, 3, 11));
  header.nzhour = 24;
  header.nzsec = 60; // a leap second
  EXPECT_EQ(pageStart(&header).hour, utc(2011, 3, 12));
  EXPECT_EQ(pageStart(&header).reference, utc(2011, 3, 12, 0, 1));
  header.nzhour = header.nzmin = header.nzsec = header.nzmsec = std::numeric_limits<std::int32_t>::max();
  EXPECT_TRUE(pageStart(&header).hour.isValid());
}

} // namespace
} // namespace xov::testing
