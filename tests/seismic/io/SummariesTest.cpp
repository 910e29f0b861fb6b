#include "XOV_Graphics/seismic/io/Readers.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/SacBytes.h"
#include "tests/seismic/SacTextLines.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <limits>

using namespace xov;
using test::joined;
using test::MiniSeedBytes;
using test::Order;
using test::SacBytes;
using test::SacTextLines;
using test::TemporaryFiles;

namespace {

constexpr int kYearWord = 70;
constexpr int kDayWord = 71;
constexpr int kHourWord = 72;

// A summary says what the records that are read would.
void expectSameAsRead(const QByteArray& bytes) {
  const TemporaryFiles files;
  const QString path = files.write("f", bytes);
  const Result<SeismogramFile> read = readSeismogramFile(path);
  const Result<SeismogramFileSummary> summary = summarizeSeismogramFile(path);
  ASSERT_EQ(bool(read), bool(summary));
  if (!read) {
    EXPECT_EQ(read.error(), summary.error());
    return;
  }
  EXPECT_EQ(read->notes, summary->notes);
  ASSERT_EQ(read->records.size(), summary->records.size());
  for (std::size_t i = 0; i < read->records.size(); ++i) {
    const SeismogramRecord& record = *read->records[i];
    const SeismogramSummary& sum = summary->records[i];
    EXPECT_EQ(sum.samples.count(), record.npts());
    EXPECT_EQ(sum.samples.min(), record.smin());
    EXPECT_EQ(sum.samples.max(), record.smax());
    EXPECT_EQ(sum.record->npts(), 0) << "no samples are kept";
    EXPECT_EQ(sum.record->labelString(), record.labelString());
    EXPECT_EQ(sum.record->b(), record.b());
    EXPECT_EQ(sum.record->delta(), record.delta());
    EXPECT_EQ(sum.record->path(), record.path());
  }
}

QString onlyNote(const QByteArray& bytes) {
  QByteArray contents = bytes;
  QBuffer buffer(&contents);
  buffer.open(QIODevice::ReadOnly);
  const Result<SeismogramFile> file = readSeismogramDevice(buffer, QStringLiteral("in"), QString());
  if (!file) return file.error();
  return file->notes.join('\n');
}

} // namespace

TEST(Summaries, addSamplesUpInPieces) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const std::vector<float> first = {nan, -3, 1};
  const std::vector<float> second = {std::numeric_limits<float>::infinity(), 8};
  SampleTally tally;
  EXPECT_FALSE(tally.hasFinite());
  tally.add(first);
  SampleTally rest;
  rest.add(second);
  tally.add(rest);
  tally.add(SampleTally());
  EXPECT_EQ(tally.count(), 5);
  EXPECT_EQ(tally.notFiniteCount(), 2);
  EXPECT_EQ(tally.min(), -3);
  EXPECT_EQ(tally.max(), 8);
  EXPECT_EQ(tally.mean(), 2) << "of -3, 1 and 8";
}

TEST(Summaries, addBlocksOfSamplesUpAsSingleOnes) {
  // Whole numbers, whose sums are exact in any order. One block has a NaN, and the last one is not full.
  std::vector<float> samples(1000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i) - 100;
  samples[500] = std::numeric_limits<float>::quiet_NaN();
  SampleTally tally;
  tally.add(samples);
  EXPECT_EQ(tally.count(), 1000);
  EXPECT_EQ(tally.notFiniteCount(), 1);
  EXPECT_EQ(tally.min(), -100);
  EXPECT_EQ(tally.max(), 899);
  EXPECT_DOUBLE_EQ(tally.mean(), (899.0 * 900 / 2 - 100.0 * 101 / 2 - 400) / 999)
      << "without the 400 that is missing";
}

TEST(Summaries, sayOfSacFilesWhatTheirRecordsWould) {
  expectSameAsRead(SacBytes(Order::Little).samples({1, -2, 5}).bytes());
  expectSameAsRead(SacBytes(Order::Big, 7).samples({1, 4}).footerWith(0, 0.5).bytes());
  expectSameAsRead(SacBytes(Order::Big).samples({7}).bytes() + QByteArray(10, 'x'));
  expectSameAsRead(SacTextLines().npts(1).add("5").bytes());
  expectSameAsRead(SacBytes().samples({1, 2}).bytes().chopped(4));
  // More than one stretch of a summary's reading, 2^18 samples.
  std::vector<float> many(600001);
  for (std::size_t i = 0; i < many.size(); ++i)
    many[i] = float(i % 1000);
  many.back() = -1;
  expectSameAsRead(SacBytes(Order::Big).samples(many).bytes());
}

TEST(Summaries, sayOfMiniSeedFilesWhatTheirRecordsWould) {
  // Two records of one channel that follow each other at 40 Hz, one after a gap, and one of another channel.
  const MiniSeedBytes first = MiniSeedBytes().integers({1, -2, 3, 40});
  const MiniSeedBytes next = MiniSeedBytes().time(2012, 133, 0, 0, 0, 1000).integers({-50, 6});
  const MiniSeedBytes late = MiniSeedBytes().time(2012, 133, 1, 0, 0, 0).integers({7});
  const MiniSeedBytes other = MiniSeedBytes().codes("XX", "TEST", "00", "BHN").integers({9, 10});
  expectSameAsRead(joined({first, other, late, next}));
  // Runs of records that lie apart in time, in another order: the first goes on where the last ends.
  const MiniSeedBytes between = MiniSeedBytes().time(2012, 133, 0, 0, 30, 0).integers({8});
  expectSameAsRead(joined({next, late, first}));
  expectSameAsRead(joined({late, first, next, between}));
  expectSameAsRead(joined({next, between, late, first, other}));
  expectSameAsRead(joined({next, first, next})); // a record that is there twice
  // A damaged record amid a piece breaks it.
  MiniSeedBytes damaged = MiniSeedBytes().time(2012, 133, 0, 0, 0, 1000).sampleCount(7);
  damaged.encoding(MiniSeedBytes::kSteim1);
  const MiniSeedBytes behind = MiniSeedBytes().time(2012, 133, 0, 0, 0, 2750).integers({5, 5});
  expectSameAsRead(joined({first, damaged, behind}));
}

TEST(Summaries, knowWhatSinglePrecisionRounds) {
  const auto isRounded = [](const MiniSeedBytes& record) {
    const TemporaryFiles files;
    const auto summary = summarizeSeismogramFile(files.write("f", record.bytes()));
    EXPECT_TRUE(summary) << summary.error().toStdString();
    return summary->records.at(0).samples.isRounded();
  };
  EXPECT_FALSE(isRounded(MiniSeedBytes().integers({1, 16777216})));
  EXPECT_TRUE(isRounded(MiniSeedBytes().integers({1, -16777300})));
  EXPECT_FALSE(isRounded(MiniSeedBytes().samples<float>(MiniSeedBytes::kFloat32, {1e9F})));
  EXPECT_TRUE(isRounded(MiniSeedBytes().samples<double>(MiniSeedBytes::kFloat64, {1e9})));
}

TEST(SeismogramNotes, nameFilesWithMoreSamplesThanTheirHeaderSays) {
  EXPECT_EQ(onlyNote(SacBytes().samples({1, 2}).bytes() + QByteArray(12, '\0')),
            "in: npts at byte 316: found 2, but the file holds 5 samples; the rest is left out");
  EXPECT_EQ(onlyNote(SacBytes().samples({1, 2}).bytes() + QByteArray(3, '\0')), "");
  EXPECT_EQ(onlyNote(SacBytes(Order::Little, 7).samples({1, 2}).footerWith(0, 1).bytes()), "");
}

TEST(SeismogramNotes, nameTheFieldOfABadTime) {
  const auto noteOf = [](int year, int day, int hour) {
    return onlyNote(
        SacBytes().integer(kYearWord, year).integer(kDayWord, day).integer(kHourWord, hour).samples({1, 2}).bytes());
  };
  EXPECT_EQ(noteOf(2011, 400, 5), "in: nzjday at byte 284: found 400, expected 1 to 365; the record has no time");
  EXPECT_EQ(noteOf(2012, 367, 5), "in: nzjday at byte 284: found 367, expected 1 to 366; the record has no time");
  EXPECT_EQ(noteOf(2011, 70, 24), "in: nzhour at byte 288: found 24, expected 0 to 23; the record has no time");
  EXPECT_EQ(noteOf(-12345, 70, 5),
            "in: nzyear at byte 280: found -12345, expected 1 to 9999; the record has no time");
  EXPECT_EQ(noteOf(2012, 366, -12345), "");
  EXPECT_EQ(noteOf(-12345, -12345, -12345), "");
}
