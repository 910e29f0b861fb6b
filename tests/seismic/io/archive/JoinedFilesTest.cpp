#include "XOV_Graphics/seismic/io/archive/JoinedFiles.h"

#include "XOV_Graphics/base/PagedSamples.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/archive/Archive.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace xov;
using test::TemporaryFiles;

namespace {

constexpr int kHalf = 200000; // samples of a file, together more than a megabyte when they are packed
constexpr float kInterval = 0.01F;

float sampleNumber(int i) { return float(std::int32_t(std::uint32_t(i) * 2654435761U) >> 14); }

QString halfFile(const TemporaryFiles& files, const char* name, int first, int count = kHalf) {
  SacHeader header = headerOf(*makeRecord({.begin = float(first) * kInterval, .interval = kInterval}));
  std::vector<float> samples;
  for (int i = first; i < first + count; ++i)
    samples.push_back(sampleNumber(i));
  const SeismogramArray records = {std::make_shared<SacSeismogram>(header, std::move(samples))};
  const QString path = files.path(name);
  EXPECT_TRUE(bool(writeMiniSeed(records, path)));
  return path;
}

void expectNumbers(const SeismogramRecord& record, int count) {
  ASSERT_EQ(record.npts(), count);
  const std::span<const float> samples = samplesOf(record);
  for (const int i : {0, 1, 255, kHalf - 1, kHalf, kHalf + 1, count - 1}) {
    if (i < count) {
      EXPECT_EQ(samples[std::size_t(i)], sampleNumber(i)) << i;
    }
  }
}

} // namespace

TEST(JoinedFiles, readsAcrossItsFilesFromAnyPlace) {
  const TemporaryFiles files;
  std::vector<JoinedFile> parts;
  for (const auto& [name, bytes] : {std::pair("a", "012"), {"b", ""}, {"c", "3456"}})
    parts.push_back(joinedFile(files.write(name, bytes)).value());
  JoinedFiles all(parts);
  ASSERT_TRUE(all.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
  EXPECT_EQ(all.size(), 7);
  EXPECT_EQ(all.peek(5), QByteArray("01234"));
  EXPECT_EQ(all.read(100), QByteArray("0123456"));
  ASSERT_TRUE(all.seek(2));
  EXPECT_EQ(all.read(2), QByteArray("23"));
  EXPECT_EQ(all.read(2), QByteArray("45"));
}

TEST(JoinedFiles, stopsInFrontOfAFileThatHasChanged) {
  const TemporaryFiles files;
  std::vector<JoinedFile> parts;
  for (const char* const name : {"a", "b"})
    parts.push_back(joinedFile(files.write(name, "1234")).value());
  files.write("b", "12345");
  JoinedFiles all(parts);
  ASSERT_TRUE(all.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
  EXPECT_EQ(all.read(8), QByteArray("1234"));
  EXPECT_TRUE(all.errorString().endsWith(QStringLiteral("b: has changed while it was read")));
}

TEST(JoinedFiles, areOneRecordWhereTheyGoOn) {
  const TemporaryFiles files;
  const QStringList paths = {halfFile(files, "day1", 0), halfFile(files, "day2", kHalf)};
  for (int time = 0; time < 2; ++time) {
    const Result<SeismogramFile> opened = openJoinedFiles(paths, {}, IndexCache{files.path("kept")});
    ASSERT_TRUE(bool(opened)) << opened.error().toStdString();
    EXPECT_TRUE(opened->notes.isEmpty());
    ASSERT_EQ(opened->records.size(), 1U);
    EXPECT_NE(opened->records[0]->borrowedSamples().source, nullptr) << "samples come as they are needed";
    EXPECT_EQ(opened->records[0]->path(), paths[0]);
    expectNumbers(*opened->records[0], 2 * kHalf);
  }
  EXPECT_EQ(QDir(files.path("kept")).entryList(QDir::Files).size(), 1) << "one index of them together";
}

TEST(JoinedFiles, ofWhichOneHasGrownAreIndexedAnew) {
  const TemporaryFiles files;
  const QStringList paths = {halfFile(files, "day1", 0), halfFile(files, "day2", kHalf)};
  const IndexCache cache{files.path("kept")};
  ASSERT_TRUE(bool(openJoinedFiles(paths, {}, cache)));
  halfFile(files, "day2", kHalf, kHalf + 5000);
  const Result<SeismogramFile> opened = openJoinedFiles(paths, {}, cache);
  ASSERT_TRUE(bool(opened));
  ASSERT_EQ(opened->records.size(), 1U);
  expectNumbers(*opened->records[0], 2 * kHalf + 5000);
}

TEST(JoinedFiles, holdOnceWhatSeveralOfThemHold) {
  const TemporaryFiles files;
  const QString path = halfFile(files, "day1", 0);
  ASSERT_TRUE(QFile::copy(path, files.path("again")));
  const Result<SeismogramFile> opened = openJoinedFiles({path, files.path("again")});
  ASSERT_TRUE(bool(opened));
  ASSERT_EQ(opened->records.size(), 1U);
  expectNumbers(*opened->records[0], kHalf);
  ASSERT_EQ(opened->notes.size(), 1);
  EXPECT_TRUE(opened->notes[0].startsWith(path + QStringLiteral(" and 1 more: ")));
  EXPECT_TRUE(opened->notes[0].endsWith(QStringLiteral("left out that the file holds twice")));
}

TEST(JoinedFiles, withoutOneThatVanishedAreTheOthers) {
  const TemporaryFiles files;
  const QString path = halfFile(files, "day1", 0, 100), gone = files.path("gone");
  const Result<SeismogramFile> opened = openJoinedFiles({gone, path});
  ASSERT_TRUE(bool(opened)) << opened.error().toStdString();
  ASSERT_EQ(opened->records.size(), 1U);
  expectNumbers(*opened->records[0], 100);
  ASSERT_EQ(opened->notes.size(), 1);
  EXPECT_TRUE(opened->notes[0].startsWith(gone));
  EXPECT_TRUE(openJoinedFiles({gone}).error().startsWith(gone));
  EXPECT_FALSE(openJoinedFiles({}).error().isEmpty());
}

TEST(JoinedFiles, ofAnotherFormatAreRefused) {
  const TemporaryFiles files;
  const QString odd = files.write("odd", "no seismogram");
  EXPECT_EQ(
      openJoinedFiles({odd, odd}).error(),
      odd + QStringLiteral(" and 1 more: unknown format, expected miniSEED, of which several files are read as one"));
}

TEST(JoinedFiles, thatAreRemovedLeaveGapsForWhatWasNotRead) {
  const TemporaryFiles files;
  const QStringList paths = {halfFile(files, "day1", 0), halfFile(files, "day2", kHalf)};
  const IndexCache cache{files.path("kept")};
  ASSERT_TRUE(bool(openJoinedFiles(paths, {}, cache)));
  const Result<SeismogramFile> opened = openJoinedFiles(paths, {}, cache);
  ASSERT_TRUE(bool(opened));
  ASSERT_TRUE(QFile::remove(paths[1]));
  const std::span<const float> samples = samplesOf(*opened->records[0]);
  EXPECT_EQ(samples[0], sampleNumber(0));
  EXPECT_TRUE(std::isnan(samples[kHalf + 5000]));
}
