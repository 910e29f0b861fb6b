#include "XOV_Graphics/views/timeline/HourLabels.h"

#include "TimelineDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

QStringList texts(const HelicorderPage& page, const QDateTime& reference) {
  const QDateTime hour(reference.date(), QTime(reference.time().hour(), 0), Qt::UTC);
  QStringList list;
  for (const HourLabel& label : hourLabels(page, reference, hour))
    list << label.text;
  return list;
}

HelicorderPage pageOf(std::int32_t rows, float rowDuration) { return {{72, 36, 492, 300}, rows, rowDuration}; }

TEST(HourLabels, runThroughTheDay) {
  const QStringList list = texts(pageOf(24, 3600), utc(2009, 2, 19));
  ASSERT_EQ(list.size(), 24);
  EXPECT_EQ(list.front(), QStringLiteral(" 02/19 00"));
  EXPECT_EQ(list[9], QStringLiteral(" 02/19 09"));
  EXPECT_EQ(list.back(), QStringLiteral(" 02/19 23"));
}

TEST(HourLabels, passMidnight) {
  EXPECT_EQ(texts(pageOf(4, 3600), utc(2011, 12, 31, 22, 10)),
            (QStringList{" 12/31 22", " 12/31 23", " 01/01 00", " 01/01 01"}));
}

TEST(HourLabels, stepByTwoHoursForRowsOfTwoHours) {
  EXPECT_EQ(texts(pageOf(3, 7200), utc(2011, 3, 11, 10)), (QStringList{" 03/11 10", " 03/11 12", " 03/11 14"}));
}

TEST(HourLabels, giveTheBeginOfRowsThatHoldNoWholeHours) {
  // Four rows an hour; the last of a day begins at 23:45.
  const QStringList quarters = texts(pageOf(96, 900), utc(2011, 3, 11));
  ASSERT_EQ(quarters.size(), 96);
  EXPECT_EQ(quarters.mid(0, 5),
            (QStringList{" 03/11 00:00", " 03/11 00:15", " 03/11 00:30", " 03/11 00:45", " 03/11 01:00"}));
  EXPECT_EQ(quarters.back(), QStringLiteral(" 03/11 23:45"));
  EXPECT_EQ(texts(pageOf(3, 5400), utc(2011, 3, 11, 22)),
            (QStringList{" 03/11 22:00", " 03/11 23:30", " 03/12 01:00"}));
  // A row and a half a minute: whole minutes are told.
  EXPECT_EQ(texts(pageOf(3, 90), utc(2011, 3, 11, 22)),
            (QStringList{" 03/11 22:00", " 03/11 22:01", " 03/11 22:03"}));
}

TEST(HourLabels, areThinnedOutToRoundTimes) {
  const auto page = [](std::int32_t rows, float rowDuration) {
    return HelicorderPage{{72, 36, 492, 36 + 10 * (double(rows) + 1)}, rows, rowDuration}; // rows of 10 points
  };
  EXPECT_EQ(rowsOfLabel(page(96, 900), 10), 1);
  EXPECT_EQ(rowsOfLabel(page(96, 900), 13), 2);    // half hours
  EXPECT_EQ(rowsOfLabel(page(96, 900), 21), 4);    // three rows are 45 minutes; the hour is next
  EXPECT_EQ(rowsOfLabel(page(96, 900), 45), 8);    // five rows are more than an hour: two hours
  EXPECT_EQ(rowsOfLabel(page(40, 5400), 13), 2);   // no part of an hour: as few as there is room for
  EXPECT_EQ(rowsOfLabel(page(24, 3600), 13), 2);   // whole hours: two of them
  EXPECT_EQ(rowsOfLabel(page(24, 3600), 43), 6);   // five are no part of a day; six are
  EXPECT_EQ(rowsOfLabel(page(96, 3600), 135), 24); // 14 are more than half a day: a day
  EXPECT_EQ(rowsOfLabel(page(96, 3600), 245), 48); // 25 are more than a day: two days
  EXPECT_EQ(rowsOfLabel(page(24, 18000), 13), 2);  // five hours divide no day
  EXPECT_EQ(rowsOfLabel(page(3, 900), 1000), 3);
  EXPECT_EQ(rowsOfLabel(pageOf(0, 900), 13), 1);
  EXPECT_EQ(rowsOfLabel({{72, 36, 492, 0}, 24, 900}, 13), 1); // without room for rows
  EXPECT_EQ(rowsOfLabel(page(96, 1e-30F), 13), 2);            // rows of no time have no round ones
  for (const std::int32_t rows : {0, -5})
    EXPECT_EQ(rowsOfLabel({{72, 36, 492, 37}, rows, 900}, 1000), 1) << rows;
  QStringList list;
  for (const HourLabel& label : hourLabels(page(9, 900), utc(2011, 3, 11), utc(2011, 3, 11), 4))
    list << label.text;
  EXPECT_EQ(list, (QStringList{" 03/11 00:00", " 03/11 01:00", " 03/11 02:00"}));
}

TEST(HourLabels, ofPartsOfAnHourCountFromTheHourThatThePageBeginsWith) {
  // The first sample was taken at 22:50; the page begins at 22:00.
  EXPECT_EQ(texts(pageOf(5, 1800), utc(2011, 3, 11, 22, 50)),
            (QStringList{" 03/11 22:00", " 03/11 22:30", " 03/11 23:00", " 03/11 23:30", " 03/12 00:00"}));
}

TEST(HourLabels, changeTheDateByTheMinutesOfTheReferenceTime) {
  // Data from 22:30 on: the second row's day is that of 00:30.
  EXPECT_EQ(texts(pageOf(2, 7200), utc(2011, 3, 11, 22, 30)), (QStringList{" 03/11 22", " 03/12 00"}));
  EXPECT_EQ(texts(pageOf(2, 3600), utc(2011, 3, 11, 22, 59, 59)), (QStringList{" 03/11 22", " 03/11 23"}));
}

TEST(HourLabels, standBesideTheirRowsBelowAWholeTop) {
  // Row height (300.5 - 36) / 6; the top at 36.75 + 300.5 = 337.25 counts as 337.
  const HelicorderPage page{{72, 36.75, 492, 300.5}, 5, 3600};
  const std::vector<HourLabel> labels = hourLabels(page, utc(2011, 3, 11), utc(2011, 3, 11));
  ASSERT_EQ(labels.size(), 5u);
  for (int r = 0; r < 5; ++r)
    expectNear(labels[std::size_t(r)].place, {64, 337 - (r + 0.5) * 264.5 / 6}, 1e-9);
}

TEST(HourLabels, readAsAnIndependentReckoningWritesThem) {
  std::mt19937 random(3);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const QDateTime reference = utc(1975, 1, 1).addSecs(uniformInt(random, 0, 2000000000));
    const int rows = uniformInt(random, 0, 60);
    const bool whole = round % 2 == 0;
    const float rowDuration = whole ? float(3600 * uniformInt(random, 1, 6))
                                    : float(3600 * uniformInt(random, 0, 5) + uniformInt(random, 1, 3599));
    const QStringList list = texts(pageOf(rows, rowDuration), reference);
    ASSERT_EQ(list.size(), rows);
    int hour = reference.time().hour();
    QDateTime date = reference;
    QDateTime begin(reference.date(), QTime(hour, 0), Qt::UTC);
    for (const QString& text : list) {
      const QString hours = QLocale::c().toString(date.date(), QStringLiteral(" MM/dd ")) +
                            QStringLiteral("%1").arg(hour, 2, 10, QLatin1Char('0'));
      EXPECT_EQ(text, whole ? hours : QLocale::c().toString(begin, QStringLiteral(" MM/dd HH:mm")));
      hour = (hour + int(rowDuration) / 3600) % 24;
      date = date.addSecs(int(rowDuration));
      begin = begin.addSecs(int(rowDuration));
    }
  }
}

TEST(HourLabels, areNoneWithoutADate) { EXPECT_TRUE(hourLabels(pageOf(24, 3600), {}, {}).empty()); }

TEST(HourLabels, endWhereTheCalendarDoes) {
  EXPECT_EQ(texts(pageOf(24, std::numeric_limits<float>::quiet_NaN()), utc(2011, 3, 11)).size(), 0);
  EXPECT_EQ(texts(pageOf(24, 3e38f), utc(2011, 3, 11)).size(), 1);
  EXPECT_EQ(texts(pageOf(24, 2e9f), utc(2011, 3, 11)).size(), 24);
}

TEST(HelicorderPage, thinsTheMarksOfRowsThatNoPageCanTellApart) {
  EXPECT_EQ(pageOf(24, 3600).markedRows().size(), 24u);
  EXPECT_EQ(pageOf(2048, 3600).markedRows().size(), 2048u);
  const std::vector<std::int32_t> rows = pageOf(2000000000, 3600).markedRows();
  EXPECT_LE(rows.size(), 2048u);
  EXPECT_GT(rows.size(), 2000u);
  EXPECT_EQ(rows.front(), 0);
  EXPECT_LT(rows.back(), 2000000000);
  EXPECT_TRUE(pageOf(0, 3600).markedRows().empty());
  EXPECT_TRUE(pageOf(std::numeric_limits<std::int32_t>::min(), 3600).markedRows().empty());
}

TEST(HelicorderPage, showsTheRowsThatReachIntoTheMargins) {
  // Rows of 10 points: 6.4 of them above the page, 7.2 and an empty row below the last one, and one more for the
  // line.
  const HelicorderPage page{{72, 36, 492, 36 + 250}, 24, 3600};
  EXPECT_DOUBLE_EQ(page.rowHeight(), 10);
  EXPECT_DOUBLE_EQ(page.rowsInView(0).first, -7.4);
  EXPECT_DOUBLE_EQ(page.rowsInView(0).last, 24 + 1 + 7.2);
  EXPECT_DOUBLE_EQ(page.rowsInView(4).first, -11.4);
  EXPECT_DOUBLE_EQ(page.rowsInView(4).last, 24 + 1 + 7.2 + 4);
  EXPECT_TRUE(std::isinf(HelicorderPage({{72, 36, 492, 0}, 24, 3600}).rowsInView(0).first));
}

TEST(PageTitle, joinsDateAndCodes) {
  FakeRecord record;
  record.reference = std::make_shared<UtcTime>(utc(2009, 2, 19));
  record.network = QStringLiteral("DK");
  record.station = QStringLiteral("COP");
  record.location = QStringLiteral("00");
  record.component = QStringLiteral("BHZ");
  EXPECT_EQ(pageTitle(record), QStringLiteral("2009-02-19 - DK COP 00 BHZ"));
}

TEST(PageTitle, leavesMissingTextsEmpty) {
  FakeRecord record;
  EXPECT_EQ(pageTitle(record), QStringLiteral(" -    "));
  record.reference = std::make_shared<UtcTime>();
  record.station = QStringLiteral("%1");
  EXPECT_EQ(pageTitle(record), QStringLiteral(" -  %1  "));
}

} // namespace
} // namespace xov::testing
