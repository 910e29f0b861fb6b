#include "apps/xov/output/DrumSheets.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

const QDateTime kNoon(QDate(2024, 2, 28), QTime(12, 0), Qt::UTC); // of a leap year

/// A sample an hour, counted up.
std::shared_ptr<SeismogramRecord> hourly(const char* channel, int count, const QDateTime& start = kNoon) {
  SacHeader header;
  header.delta = 3600;
  header.b = 0;
  header.kstnm = "TLY";
  header.kcmpnm = channel;
  if (start.isValid()) setReferenceTime(header, start);
  std::vector<float> samples(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i);
  return std::make_shared<SacSeismogram>(header, std::move(samples));
}

TEST(DrumSheets, allIsOnOneWithoutPages) {
  const auto sheets = drumSheets({hourly("BHZ", 5), hourly("BHN", 5)}, DrumPaging::None);
  ASSERT_EQ(sheets->size(), 1U);
  EXPECT_EQ(sheets->front().records.size(), 2U);
  EXPECT_FALSE(sheets->front().start.isValid());
}

TEST(DrumSheets, areOneAChannel) {
  const auto sheets = drumSheets({hourly("BHZ", 5), hourly("BHN", 5), hourly("BHZ", 6)}, DrumPaging::Channel);
  ASSERT_EQ(sheets->size(), 2U);
  EXPECT_EQ((*sheets)[0].records.size(), 2U);
  EXPECT_EQ((*sheets)[1].records[0]->kcmpnm(), "BHN");
}

TEST(DrumSheets, areOneADayOfAChannelFromMidnightOn) {
  const auto sheets = drumSheets({hourly("BHZ", 48), hourly("BHN", 2)}, DrumPaging::Day);
  ASSERT_EQ(sheets->size(), 4U); // from noon on the 28th to 11 h on 1 March, over 29 February; and the 28th
  EXPECT_EQ((*sheets)[0].start, QDateTime(QDate(2024, 2, 28), QTime(0, 0), Qt::UTC));
  EXPECT_EQ((*sheets)[1].start, QDateTime(QDate(2024, 2, 29), QTime(0, 0), Qt::UTC));
  EXPECT_EQ((*sheets)[1].end, QDateTime(QDate(2024, 3, 1), QTime(0, 0), Qt::UTC));
  EXPECT_EQ((*sheets)[1].records[0]->GetSacSeis()[0], 12);
  EXPECT_EQ((*sheets)[2].records[0]->GetSacSeis()[0], 36);
  EXPECT_EQ((*sheets)[2].records[0]->npts(), 12);
  EXPECT_EQ((*sheets)[3].records[0]->kcmpnm(), "BHN");
}

TEST(DrumSheets, leaveOutDaysWithoutSamplesAndRecordsWithoutATime) {
  const auto sheets =
      drumSheets({hourly("BHZ", 2), hourly("BHZ", 2, kNoon.addDays(5)), hourly("BHZ", 2, {})}, DrumPaging::Day);
  ASSERT_EQ(sheets->size(), 2U);
  EXPECT_EQ((*sheets)[1].start.date(), QDate(2024, 3, 4));
}

TEST(DrumSheets, refuseTimesThatAreMostLikelyWrong) {
  const auto sheets = drumSheets({hourly("BHZ", 24 * 10001)}, DrumPaging::Day);
  EXPECT_TRUE(sheets.error().endsWith(": found more than 10000 pages")) << qPrintable(sheets.error());
  EXPECT_TRUE(drumSheets({hourly("BHZ", 24, QDateTime(QDate(9999, 1, 1), QTime(), Qt::UTC))}, DrumPaging::Day));
}

} // namespace
} // namespace xov::cli
