#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"
#include "tests/seismic/MiniSeed3Bytes.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using test::copiedSamples;
using test::MiniSeed3Bytes;
using test::MiniSeedBytes;
using test::preciseOf;
using test::referenceText;

namespace {

using Floats = std::vector<float>;

Result<SeismogramFile> parsed(const QByteArray& bytes, const QStringList& channels = {}) {
  return parseMiniSeed(bytes, QStringLiteral("in"), {channels});
}

std::shared_ptr<SeismogramRecord> onlyRecord(const MiniSeed3Bytes& record) {
  return test::onlyRecord(parsed(record.bytes()));
}

Floats decoded(const MiniSeed3Bytes& record) { return copiedSamples(*onlyRecord(record)); }

/// The record at half second `index`: 20 samples at 40 Hz, all of that value.
MiniSeed3Bytes halfSecond(int index, int value) {
  return MiniSeed3Bytes()
      .integers(std::vector<std::int32_t>(20, value))
      .time(2012, 133, 0, 0, index / 2, std::uint32_t(index % 2 * 500000000));
}

QByteArray changed(QByteArray bytes, int at, int value) {
  bytes[at] = char(value);
  return bytes;
}

/// Reads the record between two sound ones, which must come through, and gives the note.
QString noteOf(const MiniSeed3Bytes& damaged) {
  const auto file = parsed(halfSecond(0, 1).bytes() + damaged.bytes() + halfSecond(2, 3).bytes());
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_EQ(file->records.size(), 2U);
  return file->notes.join(u'\n');
}

// A header of 40 bytes, an identifier of 21 and 20 samples of four.
constexpr int kHalfSecondBytes = 40 + 21 + 80;

QString leftOut(const char* problem) {
  return QStringLiteral("in: 1 of 3 records left out, the first at byte 141: ") + QLatin1String(problem);
}

} // namespace

TEST(MiniSeed3, holdsLittleEndianIntegersAndFloats) {
  EXPECT_EQ(decoded(MiniSeed3Bytes().samples<std::int16_t>(MiniSeed3Bytes::kInt16, {1, -2, 32767, -32768})),
            (Floats{1, -2, 32767, -32768}));
  EXPECT_EQ(decoded(MiniSeed3Bytes().integers({70000, -8388608})), (Floats{70000, -8388608}));
  EXPECT_EQ(decoded(MiniSeed3Bytes().samples<float>(MiniSeed3Bytes::kFloat32, {0.5F, -1.25e-7F, 3e30F})),
            (Floats{0.5F, -1.25e-7F, 3e30F}));
  EXPECT_EQ(decoded(MiniSeed3Bytes().samples<double>(MiniSeed3Bytes::kFloat64, {0.1, -2.5})), (Floats{0.1F, -2.5F}));
}

TEST(MiniSeed3, holdsSteimsFramesBigEndian) {
  // Four differences of 8 bits: the first is passed over, then +1, +2, -3; two of 16 bits: +100, -200.
  const std::uint32_t marks1 = 1U << 24 | 2U << 22;
  EXPECT_EQ(decoded(MiniSeed3Bytes()
                        .encoding(MiniSeed3Bytes::kSteim1)
                        .sampleCount(6)
                        .frame({marks1, 10, std::uint32_t(-90), 0x630102FD, 100U << 16 | (0x10000U - 200)})),
            (Floats{10, 11, 13, 10, 110, -90}));
  // Three differences of 10 bits (2, then 3 in the word): the first is passed over, then +511 and -512.
  const std::uint32_t word = 3U << 30 | 7U << 20 | 511U << 10 | 512U;
  EXPECT_EQ(decoded(MiniSeed3Bytes().encoding(MiniSeed3Bytes::kSteim2).sampleCount(3).frame({2U << 24, 5, 4, word})),
            (Floats{5, 516, 4}));
}

TEST(MiniSeed3, namesItsSourceByAnIdentifier) {
  const auto labelOf = [](const QByteArray& identifier) {
    return onlyRecord(MiniSeed3Bytes().integers({1}).source(identifier))->labelString();
  };
  EXPECT_EQ(labelOf("FDSN:IU_COLA_00_B_H_Z"), "IU.COLA.00.BHZ");
  EXPECT_EQ(labelOf("FDSN:DK_COP__L_H_N"), "DK.COP..LHN");
  EXPECT_EQ(labelOf("FDSN:XX2024_STATION8_LOC45678_H_N_1"), "XX2024.STATION8.LOC45678.HN1");
  EXPECT_EQ(labelOf("FDSN:XX_TEST__B_RST_Z"), "XX.TEST..B_RST_Z") << "codes of several letters stay apart";
  EXPECT_EQ(onlyRecord(MiniSeed3Bytes().integers({1}).source("OTHER:17"))->kstnm(), "OTHER:17");
  EXPECT_EQ(onlyRecord(MiniSeed3Bytes().integers({1}).source(""))->npts(), 1);
}

TEST(MiniSeed3, tellsTheStartToTheMicrosecondAndTheRateAsRateOrPeriod) {
  const auto record = onlyRecord(MiniSeed3Bytes().integers({1, 2}).time(2009, 50, 1, 2, 3, 25130400).rate(-0.05));
  EXPECT_EQ(referenceText(*record), "2009-02-19T01:02:03.025Z");
  EXPECT_NEAR(preciseOf(*record).b, 0.000130, 1e-12) << "130.4 microseconds past the millisecond";
  EXPECT_DOUBLE_EQ(preciseOf(*record).delta, 0.05);
  EXPECT_DOUBLE_EQ(preciseOf(*onlyRecord(MiniSeed3Bytes().integers({1, 2}).rate(0.1))).delta, 10);
  EXPECT_EQ(referenceText(*onlyRecord(MiniSeed3Bytes().integers({1}).time(2016, 366, 23, 59, 60, 500000000))),
            "2017-01-01T00:00:00.500Z");
}

TEST(MiniSeed3, passesOverExtraHeadersTextAndBytesThatAreNoSamples) {
  const QByteArray json = R"({"FDSN":{"Time":{"Quality":100}}})";
  EXPECT_EQ(decoded(halfSecond(0, 4).extra(json)), Floats(20, 4));
  const QByteArray text =
      MiniSeed3Bytes().encoding(MiniSeed3Bytes::kText).sampleCount(5).rate(0).data("hello").bytes();
  const QByteArray opaque = MiniSeed3Bytes().encoding(MiniSeed3Bytes::kOpaque).sampleCount(3).data("xyz").bytes();
  EXPECT_EQ(copiedSamples(*test::onlyRecord(parsed(text + halfSecond(0, 4).bytes() + opaque))), Floats(20, 4));
  EXPECT_EQ(parsed(text + opaque).error(), "in: found no samples in 2 records");
}

TEST(MiniSeed3, joinsRecordsOfAnyLengthAndEndsPiecesAtGaps) {
  const QByteArray bytes = halfSecond(0, 1).bytes() + halfSecond(1, 2).extra("{\"a\":1}").bytes() +
                           MiniSeed3Bytes().integers({3, 4}).time(2012, 133, 0, 0, 1, 0).bytes() +
                           halfSecond(9, 5).bytes();
  const auto file = parsed(bytes);
  ASSERT_EQ(file->records.size(), 2U);
  EXPECT_EQ(file->notes, QStringList());
  EXPECT_EQ(file->records[0]->npts(), 42);
  EXPECT_EQ(copiedSamples(*file->records[0])[41], 4);
  EXPECT_EQ(file->records[1]->b(), 4.5F);
}

TEST(MiniSeed3, goesOnWithAChannelThatBeginsInVersion2) {
  const MiniSeedBytes second = MiniSeedBytes().integers(std::vector<std::int32_t>(20, 7));
  const QByteArray bytes = MiniSeedBytes(second).bytes() + halfSecond(1, 8).bytes() +
                           MiniSeedBytes(second).time(2012, 133, 0, 0, 1, 0).bytes();
  Floats expected(20, 7);
  expected.resize(40, 8);
  expected.resize(60, 7);
  EXPECT_EQ(copiedSamples(*test::onlyRecord(parsed(bytes))), expected);
}

TEST(MiniSeed3, isSelectedByChannel) {
  const QByteArray bytes = halfSecond(0, 1).bytes() + halfSecond(0, 2).source("FDSN:YY_B__L_H_Z").bytes();
  EXPECT_EQ(copiedSamples(*test::onlyRecord(parsed(bytes, {"YY.*.--.LHZ"}))), Floats(20, 2));
  EXPECT_EQ(parsed(bytes, {"HHZ"})->notes, QStringList("in: no channel is selected of XX.TEST.00.BHZ, YY.B..LHZ"));
}

TEST(MiniSeed3, isOneOfTheFormatsOfReadSeismograms) {
  const test::TemporaryFiles files;
  const QString path = files.write("any.name", halfSecond(0, 6).bytes());
  EXPECT_EQ(copiedSamples(*test::onlyRecord(readSeismogramFile(path))), Floats(20, 6));
  const Result<SeismogramFileSummary> summary = summarizeSeismogramFile(path);
  ASSERT_TRUE(summary) << summary.error().toStdString();
  EXPECT_EQ(summary->records.at(0).samples.mean(), 6);
}

TEST(MiniSeed3Damage, keepsSamplesWhoseCheckValueIsWrongAndSaysSo) {
  // The lowest byte of the second record's first sample.
  const QByteArray sound = halfSecond(1, 2).bytes();
  const QByteArray damaged = changed(sound, 61, 3);
  QByteArray zeroed = damaged;
  zeroed.replace(MiniSeed3Bytes::kCheckValueAt, 4, QByteArray(4, '\0'));
  const auto file = parsed(halfSecond(0, 1).bytes() + damaged + halfSecond(2, 3).bytes());
  const auto record = file->records.at(0);
  EXPECT_EQ(record->npts(), 60);
  EXPECT_EQ(copiedSamples(*record)[20], 3);
  const auto hex = [](std::uint32_t value) { return QStringLiteral("0x%1").arg(value, 8, 16, QLatin1Char('0')); };
  QByteArray cleared = sound;
  cleared.replace(MiniSeed3Bytes::kCheckValueAt, 4, QByteArray(4, '\0'));
  EXPECT_EQ(file->notes,
            QStringList("in: 1 of 3 records kept that may be damaged, the first at byte 141: check value at byte 28: "
                        "found " +
                        hex(test::bitwiseCrc32c(cleared)) + ", but its bytes give " +
                        hex(test::bitwiseCrc32c(zeroed))));
}

TEST(MiniSeed3Damage, countsARecordOnceThatIsDoubtfulTwice) {
  // One difference, for the first sample 10; the last is said to be 11, and a byte behind the difference is changed.
  const QByteArray bytes =
      MiniSeed3Bytes().encoding(MiniSeed3Bytes::kSteim1).sampleCount(1).frame({3U << 24, 10, 11, 0}).bytes();
  const auto file = parsed(changed(bytes, int(bytes.size()) - 1, 1));
  EXPECT_EQ(copiedSamples(*file->records.at(0)), Floats{10});
  ASSERT_EQ(file->notes.size(), 1);
  EXPECT_TRUE(file->notes[0].startsWith("in: 1 of 1 record kept that may be damaged"))
      << file->notes[0].toStdString();
}

TEST(MiniSeed3Damage, leavesOutARecordThatCannotBe) {
  EXPECT_EQ(noteOf(halfSecond(1, 2).sampleCount(21)),
            leftOut("number of samples: found 21, but 141 bytes have room for 20 as 32-bit integers"));
  EXPECT_TRUE(
      noteOf(halfSecond(1, 2).sampleCount(0xFFFFFFFF)).startsWith(leftOut("number of samples: found 2147483647")));
  EXPECT_EQ(noteOf(halfSecond(1, 2).encoding(19)), leftOut("encoding: found 19, which is not known"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).encoding(30)), leftOut("encoding: found 30, which is not known"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).rate(0)), leftOut("sample rate: found 0 Hz, expected a number above 0"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).time(2011, 366, 0, 0, 0, 0)),
            leftOut("day at byte 10: found 366, but 2011 has 365"));
  EXPECT_EQ(noteOf(halfSecond(1, 2).source("FDSN:XX_T\nST_00_B_H_Z")),
            leftOut("source identifier at byte 40: found a character that is no letter, digit or mark"));
}

TEST(MiniSeed3Damage, leavesOutARecordThatTheFileDoesNotHoldWhole) {
  const auto file = parsed(halfSecond(0, 1).bytes() + halfSecond(1, 2).bytes().chopped(1));
  EXPECT_EQ(file->records.at(0)->npts(), 20);
  EXPECT_EQ(file->notes,
            QStringList("in: 1 of 2 records left out, the first at byte 141: the file ends after 140 of 141 bytes"));
}

TEST(MiniSeed3Damage, losesNoRecordBehindOneThatClaimsTheirBytes) {
  // The length of the samples, 80 bytes, becomes 80 + 141.
  const QByteArray longer = changed(halfSecond(1, 2).bytes(), MiniSeed3Bytes::kDataLengthAt, 80 + kHalfSecondBytes);
  const auto file = parsed(halfSecond(0, 1).bytes() + longer + halfSecond(2, 3).bytes());
  ASSERT_EQ(file->records.size(), 2U);
  EXPECT_EQ(copiedSamples(*file->records[1]), Floats(20, 3));
  EXPECT_EQ(file->notes, QStringList(leftOut("record length: found 282, but another record begins 141 bytes on")));
}

TEST(MiniSeed3Damage, findsTheNextRecordBehindBytesThatBelongToNone) {
  const auto file = parsed(halfSecond(0, 1).bytes() + "MS\x03 and so on" + halfSecond(1, 2).bytes());
  EXPECT_EQ(file->records.at(0)->npts(), 40);
  EXPECT_EQ(file->notes, QStringList("in: 13 bytes between records left out, the first at byte 141"));
}

TEST(MiniSeed3Damage, survivesEveryCutAndEveryChangedByte) {
  const QByteArray whole = halfSecond(0, 1).bytes() + halfSecond(1, 2).bytes();
  for (qsizetype size = 0; size < whole.size(); size += 7)
    EXPECT_EQ(parsed(whole.first(size)).hasValue(), size >= kHalfSecondBytes) << size;
  for (int at = 0; at < 62; ++at) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      const auto file = parsed(changed(whole, at, value));
      EXPECT_TRUE(file.hasValue()) << at << ' ' << value << ' ' << file.error().toStdString();
    }
  }
}

TEST(MiniSeed3Damage, saysOfAFileThatOnlyBeginsSoThatItHoldsNoRecord) {
  EXPECT_EQ(parsed(QByteArray("MS\x03") + QByteArray(200, '\0')).error(), "in: found no record of miniSEED");
}
