#include "XOV_Graphics/seismic/io/archive/SdsArchive.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/SdsFiles.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace xov;
using test::SdsFiles;

namespace {

QDateTime utcOf(int year, int month, int day, int hour = 0) {
  return QDateTime(QDate(year, month, day), QTime(hour, 0), Qt::UTC);
}

QStringList namesOf(const QStringList& paths) {
  QStringList names;
  for (const QString& path : paths)
    names.append(path.section(QLatin1Char('/'), -1));
  return names;
}

} // namespace

TEST(SdsArchive, findsChannelsByTheNamesOfTheirFiles) {
  const SdsFiles sds;
  for (const QDate day : {QDate(2011, 12, 30), QDate(2011, 12, 31), QDate(2012, 1, 2)})
    sds.addEmpty("II", "TLY", "00", "BHZ", day);
  sds.addEmpty("GE", "WLF", "", "HHN", QDate(2012, 12, 31));
  const Result<std::vector<SdsChannel>> channels = SdsArchive(sds.root()).channels();
  ASSERT_TRUE(bool(channels)) << channels.error().toStdString();
  ASSERT_EQ(channels->size(), 2U);
  EXPECT_EQ(channelName((*channels)[0].codes), QStringLiteral("GE.WLF..HHN"));
  EXPECT_EQ((*channels)[0].firstDay, QDate(2012, 12, 31)) << "day 366";
  EXPECT_EQ(channelName((*channels)[1].codes), QStringLiteral("II.TLY.00.BHZ"));
  EXPECT_EQ((*channels)[1].firstDay, QDate(2011, 12, 30));
  EXPECT_EQ((*channels)[1].lastDay, QDate(2012, 1, 2));
  EXPECT_EQ((*channels)[1].dayCount, 3);
  const auto selected = SdsArchive(sds.root()).channels({QStringLiteral("HH?")});
  ASSERT_EQ(selected->size(), 1U);
  EXPECT_EQ((*selected)[0].codes[0], QStringLiteral("GE"));
  EXPECT_FALSE(SdsArchive(sds.root()).channels({QStringLiteral("a.b.c.d.e")}));
}

TEST(SdsArchive, passesOverWhatIsNotAtItsPlace) {
  const SdsFiles sds;
  sds.addEmpty("II", "TLY", "00", "BHZ", QDate(2011, 1, 1));
  for (const char* const name :
       {"README", "2011/note", "2011/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2011.366",
        "2011/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2012.001", "2011/II/TLY/BHZ.D/XX.TLY.00.BHZ.D.2011.002",
        "2011/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2011.2", "2011/II/TLY/BHZ.L/II.TLY.00.BHZ.L.2011.002",
        "20x1/II/TLY/BHZ.D/II.TLY.00.BHZ.D.20x1.002", "2011/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2011.00\xff"})
    sds.write(name, "x");
  const auto channels = SdsArchive(sds.root()).channels();
  ASSERT_EQ(channels->size(), 1U);
  EXPECT_EQ((*channels)[0].dayCount, 1);
}

TEST(SdsArchive, isKnownByAFileAtItsPlace) {
  const SdsFiles sds;
  EXPECT_FALSE(SdsArchive::isArchive(sds.root())) << "an empty folder";
  sds.write("2011/II/TLY/BHZ.D/other", "x");
  EXPECT_FALSE(SdsArchive::isArchive(sds.root()));
  sds.addEmpty("II", "TLY", "00", "BHZ", QDate(2011, 1, 1));
  EXPECT_TRUE(SdsArchive::isArchive(sds.root()));
  EXPECT_FALSE(SdsArchive::isArchive(sds.root() + QStringLiteral("/2011")));
  EXPECT_FALSE(SdsArchive::isArchive(sds.root() + QStringLiteral("/none")));
  EXPECT_FALSE(SdsArchive(sds.root() + QStringLiteral("/none")).channels());
}

TEST(SdsArchive, stopsWhenItIsAsked) {
  const SdsFiles sds;
  sds.addEmpty("II", "AAA", "00", "BHZ", QDate(2011, 1, 1));
  sds.addEmpty("II", "BBB", "00", "BHZ", QDate(2011, 1, 1));
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(SdsArchive(sds.root()).channels({}, stop.get_token())->size(), 1U);
}

// 100 samples a day, one each 864 s; sample i of an archive has the value i.
TEST(SdsArchive, makesOneRecordOfDaysThatFollowEachOther) {
  const SdsFiles sds;
  const QDate first(2011, 12, 30);
  for (int day = 0; day < 3; ++day)
    sds.addDay("II", "TLY", "00", "BHZ", first.addDays(day), 100 * day);
  const Result<SeismogramFile> all = SdsArchive(sds.root()).records({}, {}, {});
  ASSERT_TRUE(bool(all)) << all.error().toStdString();
  ASSERT_EQ(all->records.size(), 1U);
  EXPECT_EQ(all->records[0]->npts(), 300);
  EXPECT_EQ(samplesOf(*all->records[0])[299], 299.0F);
  EXPECT_EQ(referenceTimeOf(*all->records[0]), utcOf(2011, 12, 30));
}

TEST(SdsArchive, givesTheRecordsOfATime) {
  const SdsFiles sds;
  const QDate first(2011, 12, 30);
  for (int day = 0; day < 3; ++day) {
    sds.addDay("II", "TLY", "00", "BHZ", first.addDays(day), 100 * day);
    sds.addDay("II", "TLY", "00", "BHN", first.addDays(day), 100 * day);
  }
  const SdsArchive archive(sds.root());
  // Half of the second day: samples 100 to 150, noon included, as 12 h are 50 times 864 s.
  const auto half = archive.records({QStringLiteral("BHZ")}, utcOf(2011, 12, 31), utcOf(2011, 12, 31, 12));
  ASSERT_TRUE(bool(half)) << half.error().toStdString();
  ASSERT_EQ(half->records.size(), 1U);
  ASSERT_EQ(half->records[0]->npts(), 51);
  EXPECT_NE(dynamic_cast<const SacSeismogram*>(half->records[0].get()), nullptr) << "no window of more than that";
  EXPECT_EQ(samplesOf(*half->records[0])[0], 100.0F);
  EXPECT_EQ(archive.records({}, utcOf(2011, 12, 31), utcOf(2011, 12, 31, 12))->records.size(), 2U);
  const QString none = archive.records({}, utcOf(2013, 1, 1), utcOf(2013, 1, 2)).error();
  EXPECT_EQ(none, sds.root() +
                      QStringLiteral(": the archive has no samples of II.TLY.00.BHN from 2013-01-01T00:00:00.000Z to "
                                     "2013-01-02T00:00:00.000Z"));
  EXPECT_EQ(archive.records({QStringLiteral("LHZ")}, {}, {}).error(),
            sds.root() + QStringLiteral(": the archive has no channel that is selected"));
}

TEST(SdsArchive, looksIntoTheDayBeforeWhereItGoesOn) {
  const SdsFiles sds;
  sds.addDay("II", "TLY", "00", "BHZ", QDate(2011, 12, 30), 0, 110); // ten samples of the next day
  sds.addDay("II", "TLY", "00", "BHZ", QDate(2011, 12, 31), 100, 100);
  const SdsArchive archive(sds.root());
  const ChannelCodes codes = {"II", "TLY", "00", "BHZ"};
  EXPECT_EQ(namesOf(archive.files(codes, utcOf(2011, 12, 31), utcOf(2011, 12, 31, 12))),
            (QStringList{"II.TLY.00.BHZ.D.2011.364", "II.TLY.00.BHZ.D.2011.365"}));
  EXPECT_EQ(namesOf(archive.files(codes, utcOf(2011, 12, 31, 3), utcOf(2012, 12, 31))),
            QStringList{"II.TLY.00.BHZ.D.2011.365"})
      << "the last sample of the day before is of 02:09:36";
  EXPECT_EQ(archive.dayFiles(codes, QDate(), QDate()).size(), 2);
  EXPECT_EQ(archive.dayFiles(codes, QDate(2012, 1, 1), QDate()).size(), 0);
}

TEST(SdsArchive, tellsTheSpanOfAChannelByTwoHeaders) {
  const SdsFiles sds;
  sds.addDay("II", "TLY", "00", "BHZ", QDate(2011, 12, 30), 0);
  sds.addDay("II", "TLY", "00", "BHZ", QDate(2012, 1, 2), 0, 50);
  const SdsArchive archive(sds.root());
  const ChannelOutline span = archive.span(archive.channels()->front());
  EXPECT_EQ(span.start, utcOf(2011, 12, 30));
  // The rate is in single precision: some milliseconds in half a day.
  EXPECT_LE(std::abs(span.end.msecsTo(utcOf(2012, 1, 2).addSecs(49 * 864))), 5);
  EXPECT_NEAR(span.rateHz, 1 / 864.0, 1e-9);
  // A file that lies about what it is leaves the days.
  sds.write("2012/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2012.003", "no miniSEED");
  EXPECT_EQ(archive.span(archive.channels()->front()).end,
            QDateTime(QDate(2012, 1, 3), QTime(23, 59, 59, 999), Qt::UTC));
}

TEST(SdsArchive, leavesOutAFileThatLies) {
  const SdsFiles sds;
  sds.addDay("II", "TLY", "00", "BHZ", QDate(2011, 12, 30), 0);
  sds.write("2011/II/TLY/BHN.D/II.TLY.00.BHN.D.2011.364", "no miniSEED");
  const auto all = SdsArchive(sds.root()).records({}, {}, {});
  ASSERT_TRUE(bool(all));
  EXPECT_EQ(all->records.size(), 1U);
  ASSERT_EQ(all->notes.size(), 1);
  EXPECT_TRUE(all->notes[0].contains(QStringLiteral("II.TLY.00.BHN.D.2011.364: unknown format")));
}
