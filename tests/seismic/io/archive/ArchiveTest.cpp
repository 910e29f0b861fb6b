#include "XOV_Graphics/seismic/io/archive/Archive.h"

#include "XOV_Graphics/base/PagedSamples.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "XOV_Graphics/seismic/prepare/Amplitudes.h"
#include "XOV_Graphics/seismic/prepare/DrumPage.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordWindow.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include <bit>
#include <cmath>
#include <limits>

using namespace xov;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kSamples = 300000; // more than a megabyte, also compressed

// Whole numbers that do not compress well.
std::vector<float> noise(int count, std::uint32_t state) {
  std::vector<float> samples;
  for (int i = 0; i < count; ++i) {
    state = state * 1664525U + 1013904223U;
    samples.push_back(float(std::int32_t(state) >> 15));
  }
  return samples;
}

std::shared_ptr<SacSeismogram> record(const char* component, std::uint32_t seed, std::vector<float> samples = {}) {
  SacHeader header = headerOf(*makeRecord({.component = component, .interval = 0.01F}));
  return std::make_shared<SacSeismogram>(header, samples.empty() ? noise(kSamples, seed) : std::move(samples));
}

// A channel with a gap in it, and another one.
QString miniSeedFile(const test::TemporaryFiles& files) {
  std::vector<float> broken = noise(kSamples, 3);
  std::fill_n(broken.begin() + 100000, 777, kNan);
  const QString path = files.path("month.mseed");
  EXPECT_TRUE(bool(writeMiniSeed({record("BHZ", 1, broken), record("BHN", 2)}, path)));
  return path;
}

QString sacFile(const test::TemporaryFiles& files, QSysInfo::Endian order = QSysInfo::BigEndian,
                int count = kSamples) {
  std::vector<float> samples = noise(count, 5);
  for (float& sample : samples)
    sample *= 0.001F;
  samples[1000] = kNan;
  const QString path = files.path("day.sac");
  EXPECT_TRUE(bool(writeSac(*record("BHZ", 0, samples), path, {SacWriteOptions::Form::BinaryVersion7, order})));
  return path;
}

bool sameBits(std::span<const float> left, std::span<const float> right) {
  return std::ranges::equal(left, right, [](float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
  });
}

void expectSame(const SeismogramArray& opened, const SeismogramArray& read) {
  ASSERT_EQ(opened.size(), read.size());
  for (std::size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(opened[i]->npts(), read[i]->npts());
    EXPECT_EQ(opened[i]->labelString(), read[i]->labelString());
    EXPECT_EQ(opened[i]->path(), read[i]->path());
    EXPECT_EQ(opened[i]->smin(), read[i]->smin());
    EXPECT_EQ(opened[i]->smax(), read[i]->smax());
    EXPECT_EQ(opened[i]->b(), read[i]->b());
    EXPECT_EQ(opened[i]->e(), read[i]->e());
    EXPECT_EQ(preciseValuesOf(*opened[i]).b, preciseValuesOf(*read[i]).b);
    EXPECT_EQ(preciseValuesOf(*opened[i]).e, preciseValuesOf(*read[i]).e);
    EXPECT_EQ(opened[i]->GetSacHeader()->nzjday, read[i]->GetSacHeader()->nzjday);
    EXPECT_TRUE(sameBits(samplesOf(*opened[i]), samplesOf(*read[i])));
  }
}

SeismogramArray opened(const QString& path, const std::optional<IndexCache>& cache = {}) {
  const Result<SeismogramFile> file = openSeismogramFile(path, {}, cache);
  EXPECT_TRUE(bool(file)) << file.error().toStdString();
  return file ? file->records : SeismogramArray();
}

SeismogramArray read(const QString& path) { return readSeismograms(path).value(); }

bool comesAsNeeded(const SeismogramRecord& record) { return record.borrowedSamples().source != nullptr; }

// Other bytes in the midst of a file that looks the same from outside.
void changeInside(const QString& path) {
  const QDateTime modified = QFileInfo(path).lastModified();
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.seek(file.size() / 2));
  file.write(QByteArray(4096, '\x7e')); // 8e37 in SAC files
  file.flush();
  ASSERT_TRUE(file.setFileTime(modified, QFileDevice::FileModificationTime));
}

QByteArray contents(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

} // namespace

TEST(Archive, opensSacFilesWithWhatReadingThemGives) {
  for (const QSysInfo::Endian order : {QSysInfo::BigEndian, QSysInfo::LittleEndian}) {
    const test::TemporaryFiles files;
    const QString path = sacFile(files, order);
    const SeismogramArray records = opened(path);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_TRUE(comesAsNeeded(*records[0]));
    expectSame(records, read(path));
  }
}

TEST(Archive, opensMiniSeedFilesWithWhatReadingThemGives) {
  const test::TemporaryFiles files;
  const QString path = miniSeedFile(files);
  const SeismogramArray records = opened(path);
  ASSERT_EQ(records.size(), 3U) << "two pieces and another channel";
  EXPECT_TRUE(comesAsNeeded(*records[1]));
  expectSame(records, read(path));
  const Result<SeismogramFile> selected = openSeismogramFile(path, {{QStringLiteral("BHN")}});
  ASSERT_EQ(selected->records.size(), 1U);
  EXPECT_EQ(selected->records[0]->kcmpnm(), QStringLiteral("BHN"));
  const Result<SeismogramFile> none = openSeismogramFile(path, {{QStringLiteral("LHZ")}});
  EXPECT_TRUE(none->records.empty());
  EXPECT_EQ(none->notes, QStringList{path + QStringLiteral(": no channel is selected of II.TLY..BHZ, II.TLY..BHN")});
}

TEST(Archive, notesWhatReadingNotes) {
  const test::TemporaryFiles files;
  const QString path = miniSeedFile(files);
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(QByteArray(300, 'x')); // between records, if there were one behind
  }
  const QStringList notes = readSeismogramFile(path)->notes;
  ASSERT_FALSE(notes.isEmpty());
  EXPECT_EQ(openSeismogramFile(path)->notes, notes);
  const IndexCache cache{files.folder() + QStringLiteral("/kept")};
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(openSeismogramFile(path, {}, cache)->notes, notes) << time;
}

TEST(Archive, keepsAnIndexAndOpensByItWithoutALookAtTheSamples) {
  for (const bool isSac : {true, false}) {
    const test::TemporaryFiles files;
    const QString path = isSac ? sacFile(files) : miniSeedFile(files);
    const QString index = indexPathOf(path, {});
    EXPECT_TRUE(QFileInfo(index).fileName().startsWith(QLatin1Char('.')));
    const SeismogramArray first = opened(path, IndexCache{});
    EXPECT_TRUE(QFileInfo::exists(index));
    expectSame(opened(path, IndexCache{}), read(path));
    const float highest = first[0]->smax();
    changeInside(path);
    EXPECT_EQ(opened(path, IndexCache{})[0]->smax(), highest) << "as the index says";
    if (isSac) {
      EXPECT_NE(read(path)[0]->smax(), highest);
    }
  }
}

TEST(Archive, keepsTheIndexOfSamplesThatEndOneShortOfABlock) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files, QSysInfo::BigEndian, 1172 * 256 - 1); // 1171 blocks and 255 samples
  const float highest = opened(path, IndexCache{})[0]->smax();
  changeInside(path);
  EXPECT_EQ(opened(path, IndexCache{})[0]->smax(), highest) << "as the index says";
}

TEST(Archive, makesADamagedOrForeignIndexAnew) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files);
  const IndexCache cache{files.folder() + QStringLiteral("/a/b")};
  opened(path, cache);
  const QString index = indexPathOf(path, cache);
  const QByteArray right = contents(index);
  EXPECT_GT(right.size(), kSamples / 256 * 8);
  for (QByteArray wrong : {QByteArray(), right.first(right.size() / 2), QByteArray(right).replace(2000, 1, "?"),
                           right + right, QByteArray(right).replace(8, 1, "\x07")}) {
    ASSERT_NE(wrong, right);
    files.write("a/b/x", {}); // the folder is there
    QFile file(index);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(wrong);
    file.close();
    expectSame(opened(path, cache), read(path));
    EXPECT_EQ(contents(index), right);
  }
}

TEST(Archive, makesTheIndexOfAChangedFileAnew) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files);
  opened(path, IndexCache{});
  const QByteArray before = contents(indexPathOf(path, {}));
  ASSERT_TRUE(bool(writeSac(*record("BHZ", 9), path)));
  expectSame(opened(path, IndexCache{}), read(path));
  EXPECT_NE(contents(indexPathOf(path, {})), before);
}

TEST(Archive, opensAFileWhoseIndexCannotBeKept) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files);
  files.write("file", "no folder");
  const Result<SeismogramFile> file = openSeismogramFile(path, {}, IndexCache{files.path("file")});
  ASSERT_TRUE(bool(file));
  EXPECT_EQ(file->records.size(), 1U);
  ASSERT_EQ(file->notes.size(), 1);
  EXPECT_TRUE(file->notes[0].startsWith(path + QStringLiteral(": its index is not kept: ")));
}

TEST(Archive, readsSmallFilesAndTextsWhole) {
  const test::TemporaryFiles files;
  const QString small = files.path("small.sac"), text = files.path("text.sac");
  ASSERT_TRUE(bool(writeSac(*record("BHZ", 0, {1, 2, 3}), small)));
  ASSERT_TRUE(bool(writeSac(*record("BHZ", 1, noise(100000, 1)), text, {SacWriteOptions::Form::Alphanumeric})));
  ASSERT_GT(QFileInfo(text).size(), 1 << 20);
  for (const QString& path : {small, text}) {
    const SeismogramArray records = opened(path, IndexCache{});
    EXPECT_FALSE(comesAsNeeded(*records[0]));
    expectSame(records, read(path));
    EXPECT_FALSE(QFileInfo::exists(indexPathOf(path, {})));
  }
}

TEST(Archive, refusesWhatReadingRefuses) {
  const test::TemporaryFiles files;
  const QString odd = files.write("odd", QByteArray(2 << 20, 'x'));
  QByteArray cut = contents(sacFile(files));
  cut.chop(1 << 20);
  const QString shortened = files.write("short.sac", cut);
  for (const QString& path : {odd, shortened, files.path("none"), files.folder()}) {
    const Result<SeismogramFile> file = openSeismogramFile(path, {}, IndexCache{});
    ASSERT_FALSE(bool(file));
    EXPECT_EQ(file.error(), readSeismogramFile(path).error());
  }
}

TEST(Archive, hasGapsWhereAFileWasCutOffBehindItsBack) {
  for (const bool isSac : {true, false}) {
    const test::TemporaryFiles files;
    const QString path = isSac ? sacFile(files) : miniSeedFile(files);
    opened(path, IndexCache{});
    const SeismogramArray records = opened(path, IndexCache{}); // of which no more than the ends have been read
    const SeismogramArray others = opened(path, IndexCache{});
    const BorrowedSamples samples = records[0]->borrowedSamples(), untouched = others[0]->borrowedSamples();
    const int middle = records[0]->npts() / 2;
    const float* const inside = samples.samples + middle;
    const HeldSamples first(samples.source, samples.samples, samples.samples + 1);
    ASSERT_TRUE(QFile::resize(path, 70000));
    const HeldSamples held(samples.source, inside, inside + 1);
    EXPECT_TRUE(std::isnan(*inside)) << "behind the end of the open file";
    EXPECT_FALSE(std::isnan(*samples.samples));
    const HeldSamples late(untouched.source, untouched.samples + middle, untouched.samples + middle + 1);
    EXPECT_TRUE(std::isnan(untouched.samples[middle])) << "of what is another file by now";
  }
}

TEST(Archive, isPreparedAsRecordsInMemoryAre) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files);
  const auto prepared = [](SeismogramArray records) {
    records = normalized(withoutMeans(std::move(records), MeanOf::Record), NormalizeBy::Record);
    return layOutDrum(std::move(records), 600, 3)->pieces;
  };
  SeismogramArray byAndBy = prepared(opened(path));
  ASSERT_EQ(byAndBy.size(), 1U);
  EXPECT_TRUE(comesAsNeeded(*byAndBy[0])) << "nothing of it asks for all samples";
  expectSame(byAndBy, prepared(read(path)));
}

TEST(Archive, isSeenThroughWindows) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files);
  const RecordWindow window(opened(path)[0], 100, 200.5), plain(read(path)[0], 100, 200.5);
  EXPECT_TRUE(comesAsNeeded(window));
  EXPECT_EQ(window.npts(), plain.npts());
  EXPECT_EQ(window.smin(), plain.smin());
  EXPECT_EQ(window.smax(), plain.smax());
  const BorrowedSamples samples = window.borrowedSamples();
  {
    const HeldSamples held(samples.source, samples.samples, samples.samples + window.npts());
    EXPECT_TRUE(sameBits({samples.samples, std::size_t(window.npts())}, plain.samples()));
  }
  EXPECT_TRUE(sameBits(window.samples(), plain.samples()));
}

TEST(Archive, canBeWrittenToLikeAnyRecord) {
  const test::TemporaryFiles files;
  const QString path = sacFile(files);
  auto trace = std::dynamic_pointer_cast<SacSeismogram>(opened(path)[0]);
  ASSERT_NE(trace, nullptr);
  trace->samples()[5] = 1e6F;
  trace->ComputeExtrema();
  EXPECT_EQ(trace->smax(), 1e6F);
  EXPECT_FALSE(comesAsNeeded(*trace));
  auto other = std::dynamic_pointer_cast<SacSeismogram>(opened(path)[0]);
  EXPECT_TRUE(sameBits(other->takeSamples(), samplesOf(*read(path)[0])));
  EXPECT_EQ(other->npts(), 0);
}
