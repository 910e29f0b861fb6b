#include "apps/desk/files/FileCatalogue.h"

#include "XOV_Graphics/base/FileName.h"
#include "apps/desk/files/LeftOutFiles.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace xov::desk {
namespace {

FileEntry seismogram(const QString& path, const char* station, std::int64_t samples = 10, double rateHz = 1) {
  FileEntry entry{FileKind::Seismograms, path, {}, QStringLiteral("miniSEED")};
  entry.channel.codes = {"II", station, "00", "BHZ"};
  entry.channel.start = QDateTime(QDate(2011, 3, 11), QTime(5, 46), Qt::UTC);
  entry.channel.end = entry.channel.start.addSecs(60);
  entry.channel.sampleCount = samples;
  entry.channel.pieceCount = 3;
  entry.channel.rateHz = rateHz;
  return entry;
}

FileEntry events(const QString& path) {
  FileEntry entry{FileKind::Events, path, {}, QStringLiteral("2 events")};
  entry.channel.sampleCount = -1;
  return entry;
}

QString cell(const QAbstractItemModel& model, int row, int column) {
  return model.index(row, column).data().toString();
}

QStringList stationsOf(const QAbstractItemModel& model) {
  QStringList all;
  for (int row = 0; row < model.rowCount(); ++row)
    all.append(cell(model, row, FileCatalogue::Station));
  return all;
}

TEST(FileCatalogue, showsWhatHeadersTell) {
  FileCatalogue catalogue;
  FileEntry entry = seismogram("/data/a.mseed", "TLY", 3600, 20);
  entry.channel.distanceDeg = 42.1234;
  catalogue.add({entry, events("/data/b.csv")});
  const std::pair<int, const char*> expected[] = {
      {FileCatalogue::Kind, "Seismogram"},
      {FileCatalogue::Network, "II"},
      {FileCatalogue::Start, "2011-03-11T05:46:00.000Z"},
      {FileCatalogue::End, "2011-03-11T05:47:00.000Z"},
      {FileCatalogue::Rate, "20"},
      {FileCatalogue::Samples, "3600"},
      {FileCatalogue::Gaps, "2"}, // between three pieces
      {FileCatalogue::Distance, "42.12"},
      {FileCatalogue::File, "a.mseed"},
  };
  for (const auto& [column, text] : expected)
    EXPECT_EQ(cell(catalogue, 0, column), QLatin1String(text)) << column;
  for (const int column : {FileCatalogue::Samples, FileCatalogue::Gaps, FileCatalogue::Distance, FileCatalogue::Rate})
    EXPECT_EQ(cell(catalogue, 1, column), QString()) << column;
}

TEST(FileCatalogue, isAModelAsItsTesterWantsIt) {
  FileCatalogue catalogue;
  CatalogueFilter shown(catalogue);
  const QAbstractItemModelTester first(&catalogue, QAbstractItemModelTester::FailureReportingMode::Fatal);
  const QAbstractItemModelTester second(&shown, QAbstractItemModelTester::FailureReportingMode::Fatal);
  catalogue.add({seismogram("/a", "A"), seismogram("/b", "B"), seismogram("/c", "C")});
  shown.sort(FileCatalogue::Station, Qt::DescendingOrder);
  catalogue.add({seismogram("/b", "B2"), seismogram("/b", "B3")});
  shown.setText("B");
  catalogue.remove({0, 2, 7, -1, 2});
  EXPECT_EQ(stationsOf(catalogue), (QStringList{"C", "B3"}));
  catalogue.clear();
  EXPECT_EQ(catalogue.rowCount(), 0);
}

TEST(FileCatalogue, listsAFileOnceAsItIsNow) {
  FileCatalogue catalogue;
  catalogue.add({seismogram("/a", "A", 10), seismogram("/b", "B")});
  catalogue.add({seismogram("/a", "A", 99)});
  EXPECT_EQ(stationsOf(catalogue), (QStringList{"B", "A"}));
  EXPECT_EQ(cell(catalogue, 1, FileCatalogue::Samples), QStringLiteral("99"));
  EXPECT_EQ(catalogue.rowsOf("/a"), 1);
  catalogue.remove({1});
  EXPECT_EQ(catalogue.rowsOf("/a"), 0);
}

TEST(FileCatalogue, sortsByValueWithThoseThatHaveNoneLast) {
  FileCatalogue catalogue;
  catalogue.add({seismogram("/a", "A", 1000), events("/e"), seismogram("/b", "B", 90), seismogram("/c", "C", 200)});
  CatalogueFilter shown(catalogue);
  shown.sort(FileCatalogue::Samples, Qt::AscendingOrder);
  EXPECT_EQ(stationsOf(shown), (QStringList{"B", "C", "A", ""})) << "90, 200, 1000 as numbers";
  shown.sort(FileCatalogue::Samples, Qt::DescendingOrder);
  EXPECT_EQ(stationsOf(shown), (QStringList{"A", "C", "B", ""}));
  EXPECT_EQ(shown.entryAt(shown.index(0, 0)).path, QStringLiteral("/a"));
}

TEST(FileCatalogue, isFilteredByWordsPatternsAndKind) {
  FileCatalogue catalogue;
  catalogue.add({seismogram("/data/one.sac", "TLY"), seismogram("/other/two.sac", "TATO"), events("/data/[b].csv")});
  CatalogueFilter shown(catalogue);
  const auto stations = [&](const char* text) {
    shown.setText(QString::fromUtf8(text));
    return stationsOf(shown);
  };
  EXPECT_EQ(stations("tly"), QStringList{"TLY"}) << "whatever its case";
  EXPECT_EQ(stations("data sac"), QStringList{"TLY"}) << "each of the words";
  EXPECT_EQ(stations("II.T?TO.*.BHZ"), QStringList{"TATO"});
  EXPECT_EQ(stations("T*"), (QStringList{"TLY", "TATO"})) << "whole cells: not those of events";
  EXPECT_EQ(stations("[b]"), QStringList{""}) << "brackets are letters like others";
  EXPECT_EQ(stations("nothing"), QStringList());
  shown.setText({});
  shown.setKind(FileKind::Events);
  EXPECT_EQ(shown.rowCount(), 1);
  shown.setKind({});
  EXPECT_EQ(shown.rowCount(), 3);
}

TEST(FileCatalogue, showsNamesThatAreNoTextAsSuch) {
  FileCatalogue catalogue;
  catalogue.add({seismogram(fileNameFromBytes("/data/caf\xe9.sac"), "A")});
  EXPECT_EQ(cell(catalogue, 0, FileCatalogue::File), QString::fromUtf8("caf\xef\xbf\xbd.sac"));
}

TEST(LeftOutFiles, sayTheReasonWithoutTheNameOnceMore) {
  LeftOutFiles files;
  files.add("/data/a.sac", "/data/a.sac: is empty");
  files.add("/data/b.sac", "there is no memory");
  EXPECT_EQ(cell(files, 0, 0), QStringLiteral("a.sac"));
  EXPECT_EQ(cell(files, 0, 1), QStringLiteral("is empty"));
  EXPECT_EQ(cell(files, 1, 1), QStringLiteral("there is no memory"));
  files.clear();
  EXPECT_EQ(files.rowCount(), 0);
}

} // namespace
} // namespace xov::desk
