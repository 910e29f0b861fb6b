#include "apps/desk/files/FileLoader.h"

#include "XOV_Graphics/base/FileName.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "tests/support/SdsFiles.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace xov::desk {
namespace {

constexpr int kLoaderPatienceMs = 20000;

/// Files in a folder, and what a loader hands over of them.
class FileLoaderTest : public testing::Test {
protected:
  FileLoaderTest() {
    QObject::connect(&loader_, &FileLoader::found, &loader_, [this](const FileEntries& entries) {
      entries_.insert(entries_.end(), entries.begin(), entries.end());
    });
    QObject::connect(&loader_, &FileLoader::leftOut, &loader_, [this](const QString& path, const QString& reason) {
      leftOut_.push_back({path, reason});
    });
    QObject::connect(&loader_, &FileLoader::advanced, &loader_, [this](qint64 done, qint64) { done_ = done; });
  }

  // Also files whose names Qt does not know how to call.
  ~FileLoaderTest() override { std::filesystem::remove_all(folder_.path().toStdString()); }

  std::string at(const std::string& name) const { return folder_.path().toStdString() + '/' + name; }
  QString path(const std::string& name) const { return fileNameFromBytes(at(name)); }

  void write(const std::string& name, const std::string& contents) const {
    std::filesystem::create_directories(std::filesystem::path(at(name)).parent_path());
    std::ofstream file(at(name), std::ios::binary);
    file << contents;
    ASSERT_TRUE(file.good()) << name;
  }

  static std::string sacBytes(const char* station, std::size_t samples = 3) {
    SacHeader header;
    header.kstnm = station;
    header.kcmpnm = "BHZ";
    header.delta = 1;
    header.b = 0;
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("f"));
    EXPECT_TRUE(bool(writeSac(SacSeismogram(header, std::vector<float>(samples, 1.0F)), file)));
    std::ifstream stream(file.toStdString(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  }

  bool waits() {
    return QTest::qWaitFor([this] { return !loader_.isBusy(); }, kLoaderPatienceMs);
  }

  QStringList stations() const {
    QStringList all;
    for (const FileEntry& entry : entries_)
      all.append(entry.channel.codes[1]);
    return all;
  }

  QTemporaryDir folder_;
  FileLoader loader_;
  FileEntries entries_;
  std::vector<LeftOutFile> leftOut_;
  qint64 done_ = 0;
};

TEST_F(FileLoaderTest, listsFoldersInTheOrderOfNamesFilesBeforeFolders) {
  const std::string sac = sacBytes("ONE");
  for (const char* const name : {"b/2", "b/1", "z", "a/deep/er", ".hidden", ".git/x"})
    write(name, sac);
  loader_.load({folder_.path()});
  ASSERT_TRUE(waits());
  QStringList names;
  for (const FileEntry& entry : entries_)
    names.append(entry.path.mid(folder_.path().size() + 1));
  EXPECT_EQ(names, (QStringList{"z", "a/deep/er", "b/1", "b/2"}));
  EXPECT_TRUE(leftOut_.empty());
  EXPECT_EQ(done_, 4);
}

TEST_F(FileLoaderTest, knowsWhatFilesHold) {
  write("a.sac", sacBytes("ONE"));
  write("b.csv", "time,latitude,longitude,depth,magnitude\n2011-03-11T05:46:24,38.3,142.4,29,9.1\n"
                 "2011-03-11T06:15:40,36.3,141.1,43,7.9\n");
  write("c.txt", "#Network | Station | Latitude | Longitude | Elevation | SiteName | StartTime | EndTime\n"
                 "II|TLY|51.68|103.64|579|Talaya|1990-10-01T00:00:00|\n");
  write("d.xyz", "0 0 1\n1 0 2\n0 1 3\n1 1 4\n2 0 5\n2 1 6\n");
  write("e.dat", "rate;count\n1.5;2\n3;4\n5;6\n");
  write("f.nxy", "2\n0 0\n1 1\n");
  loader_.load({folder_.path()});
  ASSERT_TRUE(waits());
  std::vector<FileKind> kinds;
  for (const FileEntry& entry : entries_)
    kinds.push_back(entry.kind);
  EXPECT_EQ(kinds, (std::vector{FileKind::Seismograms, FileKind::Events, FileKind::Stations, FileKind::Grid,
                                FileKind::Columns, FileKind::Lines}))
      << (leftOut_.empty() ? "" : leftOut_.front().reason.toStdString());
  ASSERT_EQ(entries_.size(), 6U);
  EXPECT_EQ(entries_[1].channel.start, QDateTime(QDate(2011, 3, 11), QTime(5, 46, 24), Qt::UTC));
  EXPECT_EQ(entries_[1].channel.end, QDateTime(QDate(2011, 3, 11), QTime(6, 15, 40), Qt::UTC));
  EXPECT_EQ(entries_[3].what, QStringLiteral("3 × 2 cells"));
}

TEST_F(FileLoaderTest, leavesOutWhatCannotBeReadWithALineThatNamesIt) {
  write("good.sac", sacBytes("ONE"));
  write("lies.sac", sacBytes("TWO").substr(0, 640)); // three samples by its header, two are there
  write("garbage.bin", std::string(500, '\x01'));
  write("empty", "");
  loader_.load({path("good.sac"), path("lies.sac"), path("garbage.bin"), path("empty"), path("gone.sac")});
  ASSERT_TRUE(waits());
  EXPECT_EQ(stations(), QStringList{"ONE"});
  ASSERT_EQ(leftOut_.size(), 4U);
  for (const LeftOutFile& file : leftOut_) {
    EXPECT_TRUE(file.reason.startsWith(file.path + ':')) << file.reason.toStdString();
    EXPECT_FALSE(file.reason.contains('\n'));
  }
}

TEST_F(FileLoaderTest, listsAnArchiveByItsChannels) {
  const test::SdsFiles sds;
  for (int day = 0; day < 3; ++day)
    sds.addDay("II", "TLY", "00", "BHZ", QDate(2011, 12, 30).addDays(day), 0);
  sds.addDay("II", "TLY", "00", "BHN", QDate(2011, 12, 30), 0);
  loader_.load({sds.root()});
  ASSERT_TRUE(waits());
  ASSERT_EQ(entries_.size(), 2U);
  EXPECT_EQ(entries_[1].kind, FileKind::Archive);
  EXPECT_EQ(entries_[1].path, sds.root());
  EXPECT_EQ(entries_[1].channel.codes[3], QStringLiteral("BHZ"));
  EXPECT_EQ(entries_[1].channel.start, QDateTime(QDate(2011, 12, 30), QTime(0, 0), Qt::UTC));
  const QDateTime last = QDateTime(QDate(2012, 1, 1), QTime(0, 0), Qt::UTC).addSecs(99 * 864);
  EXPECT_LE(std::abs(entries_[1].channel.end.msecsTo(last)), 10) << "the rate is in single precision";
}

TEST_F(FileLoaderTest, readsNamesThatAreNoText) {
  write("caf\xe9.sac", sacBytes("ONE"));
  loader_.load({folder_.path()});
  ASSERT_TRUE(waits());
  EXPECT_EQ(stations(), QStringList{"ONE"});
  EXPECT_TRUE(leftOut_.empty());
}

TEST_F(FileLoaderTest, saysThatAFolderIsEmptyOrGone) {
  loader_.load({folder_.path(), path("none")});
  ASSERT_TRUE(waits());
  ASSERT_EQ(leftOut_.size(), 2U);
  EXPECT_EQ(leftOut_[0].reason, folder_.path() + QStringLiteral(": the folder holds no files"));
}

TEST_F(FileLoaderTest, listsAFileThatHasGrownAsItIsNow) {
  write("a", sacBytes("ONE"));
  loader_.load({path("a")});
  ASSERT_TRUE(waits());
  write("a", sacBytes("ONE", 7));
  loader_.load({path("a")});
  ASSERT_TRUE(waits());
  ASSERT_EQ(entries_.size(), 2U);
  EXPECT_EQ(entries_[0].channel.sampleCount, 3);
  EXPECT_EQ(entries_[1].channel.sampleCount, 7);
}

TEST_F(FileLoaderTest, leavesOutAFolderThatMayNotBeLookedInto) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may look into every folder";
  write("open/a", sacBytes("ONE"));
  write("shut/b", sacBytes("TWO"));
  std::filesystem::permissions(at("shut"), std::filesystem::perms::none);
  loader_.load({folder_.path()});
  ASSERT_TRUE(waits());
  std::filesystem::permissions(at("shut"), std::filesystem::perms::owner_all);
  EXPECT_EQ(stations(), QStringList{"ONE"});
  ASSERT_EQ(leftOut_.size(), 1U);
  EXPECT_TRUE(leftOut_[0].reason.startsWith(path("shut") + QStringLiteral(": cannot be read: ")));
}

TEST_F(FileLoaderTest, doesNotFollowLinksToFoldersInCircles) {
  write("a/one", sacBytes("ONE"));
  std::filesystem::create_directory_symlink(at("a"), at("a/again"));
  loader_.load({folder_.path()});
  ASSERT_TRUE(waits());
  EXPECT_EQ(stations(), QStringList{"ONE"});
}

TEST_F(FileLoaderTest, listsTwoThousandFilesInTheirOrder) {
  const std::string sac = sacBytes("ONE");
  QStringList names;
  write("100000", sac);
  for (int i = 0; i < 2000; ++i) {
    names.append(path(std::to_string(100000 + i)));
    if (i > 0) std::filesystem::create_hard_link(at("100000"), at(std::to_string(100000 + i)));
  }
  loader_.load({folder_.path()});
  ASSERT_TRUE(waits());
  QStringList listed;
  for (const FileEntry& entry : entries_)
    listed.append(entry.path);
  EXPECT_EQ(listed, names);
}

TEST_F(FileLoaderTest, givesUpInTheMiddleAndHandsNothingOverAfterwards) {
  const std::string sac = sacBytes("ONE");
  for (int i = 0; i < 500; ++i)
    write(std::to_string(100000 + i), sac);
  QSignalSpy ends(&loader_, &FileLoader::finished);
  QObject::connect(&loader_, &FileLoader::found, &loader_, [this] { loader_.cancel(); });
  loader_.load({folder_.path()});
  loader_.load({folder_.path()}); // this one does not begin
  ASSERT_TRUE(waits());
  ASSERT_EQ(ends.size(), 1);
  EXPECT_TRUE(ends[0][0].toBool());
  const std::size_t listed = entries_.size();
  EXPECT_LT(listed, 500U);
  QTest::qWait(1);
  EXPECT_EQ(entries_.size(), listed);
}

TEST_F(FileLoaderTest, goesOnAfterItWasGivenUp) {
  write("a", sacBytes("ONE"));
  loader_.load({folder_.path()});
  loader_.cancel();
  EXPECT_FALSE(loader_.isBusy());
  loader_.load({path("a")});
  ASSERT_TRUE(waits());
  EXPECT_EQ(stations(), QStringList{"ONE"});
}

TEST_F(FileLoaderTest, mayGoWhileFilesAreLookedInto) {
  const std::string sac = sacBytes("ONE");
  for (int i = 0; i < 200; ++i)
    write(std::to_string(100000 + i), sac);
  int handed = 0;
  {
    FileLoader loader;
    QObject::connect(&loader, &FileLoader::found, &loader, [&] { ++handed; });
    loader.load({folder_.path()});
    EXPECT_TRUE(QTest::qWaitFor([&] { return handed > 0; }, kLoaderPatienceMs));
  }
  const int before = handed;
  QTest::qWait(1);
  EXPECT_EQ(handed, before);
}

} // namespace
} // namespace xov::desk
