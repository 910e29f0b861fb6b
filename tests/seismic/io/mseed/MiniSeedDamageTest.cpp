#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

using namespace xov;
using test::copiedSamples;
using test::joined;
using test::MiniSeedBytes;
using test::Order;

namespace {

constexpr int kRecordBytes = 512;

Result<SeismogramFile> parsed(const QByteArray& bytes) { return parseMiniSeed(bytes, QStringLiteral("in")); }

/// The record at half second `index`: 20 samples at 40 Hz, all of that value.
MiniSeedBytes halfSecond(int index, int value) {
  return MiniSeedBytes()
      .integers(std::vector<std::int32_t>(20, value))
      .time(2012, 133, 0, 0, index / 2, index % 2 * 5000);
}

/// Reads the record between two sound ones and gives the note. The sound ones must come through, as two pieces with
/// the gap between them.
QString noteOf(const MiniSeedBytes& damaged) {
  const auto file = parsed(joined({halfSecond(0, 1), damaged, halfSecond(2, 3)}));
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_EQ(file->records.size(), 2U);
  for (const auto& record : file->records)
    EXPECT_EQ(record->npts(), 20);
  EXPECT_EQ(file->notes.size(), 1);
  return file->notes.join(u'\n');
}

QString leftOut(const char* problem) {
  return QStringLiteral("in: 1 of 3 records left out, the first at byte 512: ") + QLatin1String(problem);
}

} // namespace

TEST(MiniSeedDamage, leavesOutARecordWithMoreSamplesThanItHasRoomFor) {
  // 512 - 128 bytes have room for 96 numbers of four bytes, and for six frames of 64 bytes.
  EXPECT_EQ(noteOf(halfSecond(1, 2).sampleCount(97)),
            leftOut("number of samples: found 97, but 512 bytes have room for 96 as 32-bit integers"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).encoding(MiniSeedBytes::kFloat64).sampleCount(49)),
            leftOut("number of samples: found 49, but 512 bytes have room for 48 as 64-bit floats"));
  // 6 · 15 - 2 words of at most seven samples.
  EXPECT_EQ(noteOf(halfSecond(1, 2).encoding(MiniSeedBytes::kSteim2).sampleCount(617)),
            leftOut("number of samples: found 617, but 512 bytes have room for 616 as Steim2"));
}

TEST(MiniSeedDamage, isSaidInTheOrderOfTheFileWithAnyNumberOfThreads) {
  // 1 MB; the marks 2 and then 0 stand for nothing in Steim2.
  QByteArray bytes;
  for (int k = 0; k < 2000; ++k) {
    MiniSeedBytes record = halfSecond(k, k);
    record.time(2012, 133, k / 7200, k / 120 % 60, k / 2 % 60, k % 2 * 5000);
    if (k == 700 || k == 1300) record.encoding(MiniSeedBytes::kSteim2).sampleCount(1).frame(0, {2U << 24, 10, 10, 0});
    bytes += record.bytes();
  }
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    const auto file = parsed(bytes);
    ASSERT_EQ(file->records.size(), 3U) << threads << " threads";
    EXPECT_EQ(file->records[0]->npts(), 700 * 20);
    EXPECT_EQ(file->records[1]->npts(), 599 * 20);
    EXPECT_EQ(file->records[2]->npts(), 699 * 20);
    for (int k = 0; k < 699 * 20; ++k)
      ASSERT_EQ(file->records[2]->GetSacSeis()[k], float(1301 + k / 20));
    EXPECT_EQ(file->notes.size(), 1);
    EXPECT_TRUE(file->notes.join(u' ').startsWith("in: 2 of 2000 records left out, the first at byte 358400: "))
        << file->notes.join(u' ').toStdString();
  }
}

TEST(MiniSeedDamage, keepsARecordWhoseCompressedSamplesDoNotEndAsItSaysAndSaysSo) {
  // One 32-bit difference, for the first sample 10; the last is said to be 11.
  MiniSeedBytes record = halfSecond(1, 0);
  record.encoding(MiniSeedBytes::kSteim1).sampleCount(1).frame(0, {3U << 24, 10, 11, 0});
  const auto file = parsed(joined({halfSecond(0, 1), record, halfSecond(2, 3)}));
  ASSERT_EQ(file->records.size(), 2U) << "the second record is short, so the third begins after a gap";
  EXPECT_EQ(file->records[0]->npts(), 21);
  EXPECT_EQ(copiedSamples(*file->records[0])[20], 10);
  EXPECT_EQ(file->notes, QStringList("in: 1 of 3 records kept that may be damaged, the first at byte 512: the last "
                                     "sample is 10, but the record says 11"));
}

TEST(MiniSeedDamage, leavesOutARecordWithDifferencesThatDoNotExist) {
  // The marks 2 and then 0 stand for nothing in Steim2.
  MiniSeedBytes record = halfSecond(1, 0);
  record.encoding(MiniSeedBytes::kSteim2).sampleCount(1).frame(0, {2U << 24, 10, 10, 0});
  EXPECT_TRUE(noteOf(record).startsWith(leftOut("Impossible Steim2")));
}

TEST(MiniSeedDamage, leavesOutARecordWithFewerSamplesThanItSays) {
  // A frame without a difference.
  EXPECT_TRUE(noteOf(halfSecond(1, 0).encoding(MiniSeedBytes::kSteim1).sampleCount(20))
                  .startsWith(leftOut("only decoded 0 samples of 20")));
}

TEST(MiniSeedDamage, leavesOutARecordInAnUnknownEncoding) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).encoding(19)), leftOut("encoding: found 19, which is not known"));
}

TEST(MiniSeedDamage, leavesOutARecordAtATimeThatCannotBeAndNamesTheField) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2012, 133, 25, 0, 0, 0)),
            leftOut("hour at byte 24: found 25, expected 0 to 23"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2012, 133, 0, 60, 0, 0)),
            leftOut("minute at byte 25: found 60, expected 0 to 59"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2012, 133, 0, 0, 61, 0)),
            leftOut("second at byte 26: found 61, expected 0 to 60"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2012, 400, 0, 0, 0, 0)),
            leftOut("day of the year at byte 22: found 400, expected 1 to 366"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(12, 133, 0, 0, 0, 0)),
            leftOut("year at byte 20: found 12, expected 1900 to 2100"));
}

TEST(MiniSeedDamage, leavesOutARecordWithoutASampleRate) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).rate(0, 1)), leftOut("sample rate: found 0 Hz, expected a number above 0"));
  EXPECT_TRUE(noteOf(halfSecond(1, 2).exactRate(1e30F)).startsWith(leftOut("sample rate: found 1")));
}

TEST(MiniSeedDamage, leavesOutARecordWhoseSamplesLieOutside) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).number(MiniSeedBytes::kDataOffsetAt, std::uint16_t(600))),
            leftOut("samples: begin at byte 600 of 512"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).number(MiniSeedBytes::kDataOffsetAt, std::uint16_t(0))),
            leftOut("samples: begin at byte 0 of 512"));
}

TEST(MiniSeedDamage, leavesOutARecordOfADayThatItsYearDoesNotHave) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2011, 366, 0, 0, 0, 0)),
            leftOut("day at byte 22: found 366, but 2011 has 365"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2011, 1, 0, 0, 0, 10000)),
            leftOut("fraction of a second at byte 28: found 10000, expected less than 10000"));
}

/// A record without blockette 1000, of two samples, 10 and 12, as Steim1: their differences are 32 bits each.
MiniSeedBytes withoutFormat(int index, Order order = Order::Big, int exponent = 9) {
  MiniSeedBytes record(order, order, exponent);
  record.sampleCount(2).frame(0, {3U << 24 | 3U << 22, 10, 12, 10, 2});
  record.number(MiniSeedBytes::kChainAt, std::uint16_t(0)).byte(39, 0);
  return record.time(2012, 133, 0, 0, index / 2, index % 2 * 5000);
}

TEST(MiniSeedRecords, withoutBlockette1000AreSteim1AndEndWhereTheNextOneBegins) {
  for (const Order order : {Order::Big, Order::Little}) {
    for (const int exponent : {8, 9, 12}) {
      const auto file =
          parsed(joined({withoutFormat(0, order, exponent), withoutFormat(1, order, exponent), halfSecond(2, 3)}));
      ASSERT_TRUE(file) << file.error().toStdString();
      EXPECT_EQ(file->notes, QStringList());
      ASSERT_EQ(file->records.size(), 3U);
      EXPECT_EQ(copiedSamples(*file->records[0]), (std::vector<float>{10, 12}));
      EXPECT_EQ(copiedSamples(*file->records[1]), (std::vector<float>{10, 12}));
      EXPECT_EQ(file->records[1]->b(), 0.5F);
    }
  }
}

TEST(MiniSeedRecords, withoutBlockette1000MayBeTheOnlyOne) {
  EXPECT_EQ(copiedSamples(*test::onlyRecord(parsed(withoutFormat(0).bytes()))), (std::vector<float>{10, 12}));
}

TEST(MiniSeedDamage, leavesOutARecordWithoutBlockette1000ThatIsNoSteim1) {
  // Twenty integers, of which the third word would be the last sample.
  EXPECT_TRUE(noteOf(halfSecond(1, 2).number(MiniSeedBytes::kChainAt, std::uint16_t(MiniSeedBytes::kTimingAt)))
                  .startsWith("in: 1 of 3 records left out, the first at byte 512: "));
}

TEST(MiniSeedDamage, leavesOutARecordWithoutBlockette1000OfUnknownLength) {
  const auto file = parsed(halfSecond(0, 1).bytes() + withoutFormat(1).bytes().first(400));
  EXPECT_EQ(file->notes,
            QStringList("in: 1 of 2 records left out, the first at byte 512: no blockette 1000, which says how its "
                        "samples are stored, and no record behind it"));
}

TEST(MiniSeedDamage, leavesOutARecordWithTwoBlockettes1000) {
  // The second one could claim another length than the bytes that are there.
  EXPECT_EQ(noteOf(halfSecond(1, 2).number(MiniSeedBytes::kTimingAt, std::uint16_t(1000))),
            leftOut("blockette at byte 56: a second blockette 1000"));
}

/// The samples of a record that is sound but for its blockettes.
std::vector<float> samplesOfOnly(const MiniSeedBytes& record) {
  return copiedSamples(*test::onlyRecord(parsed(record.bytes())));
}

TEST(MiniSeedRecords, mayHaveBlockettesThatGoRound) {
  // 1000, 1001, and 1000 again.
  MiniSeedBytes record = halfSecond(1, 2);
  record.number(MiniSeedBytes::kTimingAt + 2, std::uint16_t(MiniSeedBytes::kFormatAt));
  EXPECT_EQ(samplesOfOnly(record), std::vector<float>(20, 2));
  // Blockette 1000 points to itself.
  record.number(MiniSeedBytes::kFormatAt + 2, std::uint16_t(MiniSeedBytes::kFormatAt));
  EXPECT_EQ(samplesOfOnly(record), std::vector<float>(20, 2));
}

TEST(MiniSeedRecords, mayHaveBlockettesThatGoOut) {
  for (const int place : {20, 40000, 65535}) {
    MiniSeedBytes record = halfSecond(1, 2);
    record.number(MiniSeedBytes::kTimingAt + 2, std::uint16_t(place));
    EXPECT_EQ(samplesOfOnly(record), std::vector<float>(20, 2)) << place;
  }
}

TEST(MiniSeedRecords, mayHaveGapsBetweenBlockettes) {
  // Blockette 1000 sixteen bytes after the header, the microseconds 24 bytes after it.
  MiniSeedBytes record = halfSecond(1, 2);
  record.number(MiniSeedBytes::kChainAt, std::uint16_t(64)).byte(68, MiniSeedBytes::kInt32).byte(69, 1).byte(70, 9);
  record.number(64, std::uint16_t(1000)).number(66, std::uint16_t(96));
  record.number(96, std::uint16_t(1001)).number(98, std::uint16_t(0)).byte(101, 50);
  record.number(MiniSeedBytes::kFormatAt, std::uint32_t(0)).number(MiniSeedBytes::kTimingAt, std::uint32_t(0));
  const auto read = test::onlyRecord(parsed(record.bytes()));
  EXPECT_EQ(copiedSamples(*read), std::vector<float>(20, 2));
  EXPECT_NEAR(test::preciseOf(*read).b, 50e-6, 1e-9) << "after the reference time, which is in milliseconds";
}

TEST(MiniSeedDamage, leavesOutARecordWhoseBlockettesBreakOffBeforeBlockette1000) {
  EXPECT_EQ(noteOf(halfSecond(1, 2)
                       .number(MiniSeedBytes::kChainAt, std::uint16_t(MiniSeedBytes::kTimingAt))
                       .number(MiniSeedBytes::kTimingAt + 2, std::uint16_t(MiniSeedBytes::kFormatAt))),
            leftOut("blockette at byte 56: the next one is not behind it"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).number(MiniSeedBytes::kChainAt, std::uint16_t(20))),
            leftOut("blockette at byte 20: lies outside of the record"));
}

TEST(MiniSeedDamage, leavesOutARecordOfAnImpossibleLength) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).byte(MiniSeedBytes::kFormatAt + 6, 40)),
            leftOut("record length: found 2 to the power of 40, expected 7 to 20"));
}

TEST(MiniSeedDamage, losesNoRecordBehindOneThatClaimsTheirBytes) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).byte(MiniSeedBytes::kFormatAt + 6, 10)),
            leftOut("record length: found 1024, but another record begins 512 bytes on"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).byte(MiniSeedBytes::kFormatAt + 6, 20)),
            leftOut("the file ends after 1024 of 1048576 bytes"));
}

TEST(MiniSeedDamage, refusesAFileWhoseRecordsAllClaimTheNextOnesBytes) {
  // Reading every other record would look like a sound file with gaps.
  const auto twice = [](int index) { return halfSecond(index, index).byte(MiniSeedBytes::kFormatAt + 6, 10); };
  EXPECT_EQ(parsed(joined({twice(0), twice(1), twice(2)})).error(),
            QStringLiteral("in: found nothing to read in 3 records; damaged 3, the first at byte 0: record length: "
                           "found 1024, but another record begins 512 bytes on"));
}

TEST(MiniSeedDamage, leavesOutALastRecordThatIsCutOff) {
  const auto file = parsed(joined({halfSecond(0, 1), halfSecond(1, 2)}).chopped(212));
  EXPECT_EQ(file->records.size(), 1U);
  EXPECT_EQ(file->notes, QStringList("in: 1 of 2 records left out, the first at byte 512: the file ends after 300 of "
                                     "512 bytes"));
}

TEST(MiniSeedDamage, findsRecordsBehindStrayBytes) {
  const QByteArray bytes = "garbage" + halfSecond(0, 1).bytes() + QByteArray(33, '\0') + halfSecond(1, 2).bytes() +
                           halfSecond(2, 3).bytes() + QByteArray(1, '7');
  const auto file = parsed(bytes);
  ASSERT_EQ(file->records.size(), 1U) << file.error().toStdString();
  EXPECT_EQ(file->records.front()->npts(), 60);
  EXPECT_EQ(file->notes, QStringList("in: 41 bytes between records left out, the first at byte 0"));
}

TEST(MiniSeedDamage, findsRecordsBehindMegabytesOfStrayBytes) {
  // The start of a header at the end of every megabyte, where a search in stretches could lose its place.
  QByteArray stray(3 << 20, '\0');
  for (qsizetype at = (1 << 20) - 16; at < stray.size(); at += 1 << 20)
    stray.replace(at, 16, halfSecond(0, 1).bytes().first(16));
  const QByteArray bytes = halfSecond(0, 1).bytes() + stray + halfSecond(1, 2).bytes();
  const auto file = parsed(bytes);
  ASSERT_EQ(file->records.size(), 1U);
  EXPECT_EQ(file->records.front()->npts(), 40);
  EXPECT_EQ(file->notes, QStringList("in: 3145728 bytes between records left out, the first at byte 512"));
}

TEST(MiniSeedDamage, countsEveryLossAndNamesTheFirstInTheFile) {
  // The first is found when samples are decoded, the second when headers are read.
  MiniSeedBytes ending = halfSecond(1, 0);
  ending.encoding(MiniSeedBytes::kSteim1).sampleCount(20);
  const auto file = parsed(joined({halfSecond(0, 1), ending, halfSecond(2, 2).encoding(19), halfSecond(3, 3)}));
  EXPECT_EQ(file->records.size(), 2U);
  ASSERT_EQ(file->notes.size(), 1);
  EXPECT_TRUE(file->notes[0].startsWith("in: 2 of 4 records left out, the first at byte 512: only decoded 0 samples"))
      << file->notes[0].toStdString();
}

TEST(MiniSeedDamage, splitsAPieceAroundARecordThatCannotBeDecoded) {
  MiniSeedBytes damaged = halfSecond(2, 0);
  damaged.encoding(MiniSeedBytes::kSteim1).sampleCount(20);
  const auto file = parsed(joined({halfSecond(0, 1), halfSecond(1, 2), damaged, halfSecond(3, 4), halfSecond(4, 5)}));
  ASSERT_EQ(file->records.size(), 2U);
  EXPECT_EQ(copiedSamples(*file->records[0])[39], 2);
  EXPECT_EQ(file->records[0]->npts(), 40);
  EXPECT_EQ(copiedSamples(*file->records[1])[0], 4);
  EXPECT_EQ(file->records[1]->npts(), 40);
  EXPECT_EQ(file->records[1]->b(), 1.5F);
}

TEST(MiniSeedDamage, refusesAFileWithoutASoundRecordInOneLine) {
  EXPECT_EQ(
      parsed(halfSecond(0, 1).encoding(19).bytes()).error(),
      QStringLiteral("in: found nothing to read in 1 record; damaged 1, the first at byte 0: encoding: found 19, "
                     "which is not known"));
  EXPECT_EQ(parsed(QByteArray(5000, 'x')).error(), QStringLiteral("in: found no record of miniSEED"));
  EXPECT_EQ(parsed(halfSecond(0, 1).bytes().first(47)).error(), QStringLiteral("in: found no record of miniSEED"));
}

TEST(MiniSeedDamage, survivesEveryCutAndEveryChangedByte) {
  const QByteArray whole = joined({halfSecond(0, 1), halfSecond(1, 2)});
  for (qsizetype size = 0; size < whole.size(); size += 7)
    EXPECT_EQ(parsed(whole.first(size)).hasValue(), size >= kRecordBytes) << size;
  for (int at = 0; at < 64; ++at) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      QByteArray changed = whole;
      changed[at] = char(value);
      const auto file = parsed(changed);
      // The second record is sound whatever the first one claims.
      EXPECT_TRUE(file.hasValue()) << at << ' ' << value << ' ' << file.error().toStdString();
    }
  }
}

TEST(MiniSeedDamage, keepsWhatTheDecoderSaysOffTheScreen) {
  ::testing::internal::CaptureStderr();
  ::testing::internal::CaptureStdout();
  EXPECT_FALSE(noteOf(halfSecond(1, 0).encoding(MiniSeedBytes::kSteim1).sampleCount(20)).isEmpty());
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}
