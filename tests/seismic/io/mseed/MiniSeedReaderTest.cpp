#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"

#include "XOV_Graphics/seismic/io/Readers.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/SeismogramTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace xov;
using test::copiedSamples;
using test::joined;
using test::MiniSeedBytes;
using test::onlyRecord;
using test::Order;
using test::preciseOf;
using test::referenceText;
using test::TemporaryFiles;

namespace {

using Floats = std::vector<float>;

Result<SeismogramFile> parsed(const QByteArray& bytes, const QStringList& channels = {}) {
  return parseMiniSeed(bytes, QStringLiteral("in"), {channels});
}

std::shared_ptr<SeismogramRecord> onlyRecord(const MiniSeedBytes& record) {
  return test::onlyRecord(parsed(record.bytes()));
}

Floats decoded(const MiniSeedBytes& record) { return copiedSamples(*onlyRecord(record)); }

QStringList labels(const Result<SeismogramFile>& file) {
  QStringList all;
  for (const auto& record : file->records)
    all.append(record->labelString());
  return all;
}

} // namespace

TEST(MiniSeedReader, readsIntegersAndFloatsInAnyByteOrderOfHeaderAndSamples) {
  for (const Order header : {Order::Little, Order::Big}) {
    for (const Order data : {Order::Little, Order::Big}) {
      const MiniSeedBytes record(header, data);
      EXPECT_EQ(decoded(MiniSeedBytes(record).samples<std::int16_t>(MiniSeedBytes::kInt16, {1, -2, 32767, -32768})),
                (Floats{1, -2, 32767, -32768}));
      EXPECT_EQ(decoded(MiniSeedBytes(record).samples<std::int32_t>(MiniSeedBytes::kInt32, {70000, -8388608})),
                (Floats{70000, -8388608}));
      EXPECT_EQ(decoded(MiniSeedBytes(record).samples<float>(MiniSeedBytes::kFloat32, {0.5F, -1.25e-7F, 3e30F})),
                (Floats{0.5F, -1.25e-7F, 3e30F}));
      EXPECT_EQ(decoded(MiniSeedBytes(record).samples<double>(MiniSeedBytes::kFloat64, {0.1, -2.5})),
                (Floats{0.1F, -2.5F}));
    }
  }
}

TEST(MiniSeedReader, makesDoublesBeyondSinglePrecisionInfinite) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Floats samples =
      decoded(MiniSeedBytes().samples<double>(MiniSeedBytes::kFloat64, {1e300, -1e300, nan, 3e38}));
  const float infinity = std::numeric_limits<float>::infinity();
  ASSERT_EQ(samples.size(), 4U);
  EXPECT_EQ(samples[0], infinity);
  EXPECT_EQ(samples[1], -infinity);
  EXPECT_TRUE(std::isnan(samples[2]));
  EXPECT_EQ(samples[3], 3e38F);
}

// A Steim frame is 16 words. Two bits a word in the first one say what the word holds; the next two of the first
// frame are the first and the last sample; the differences start with one that leads to the first sample and is
// ignored.
TEST(MiniSeedReader, readsSteim1) {
  // Word 3 holds four 8-bit differences (1), word 4 two of 16 bits (2), word 5 one of 32 bits (3); words count from
  // the highest bits.
  const std::uint32_t control = (1U << 24) | (2U << 22) | (3U << 20);
  // 99, +1, +2, -3, +100, -200, +100000 after the first sample 10.
  const std::uint32_t bytes = 0x630102FD;
  const std::uint32_t halves = (100U << 16) | (0x10000U - 200);
  for (const Order order : {Order::Little, Order::Big}) {
    MiniSeedBytes record(Order::Big, order);
    record.encoding(MiniSeedBytes::kSteim1).sampleCount(7);
    // Differences within a word are numbers of their own, each in the byte order of the samples: in little-endian
    // words the first one stands lowest.
    const std::uint32_t word3 = order == Order::Big ? bytes : 0xFD020163;
    const std::uint32_t word4 = order == Order::Big ? halves : ((0x10000U - 200) << 16) | 100U;
    record.frame(0, {control, 10, 99910, word3, word4, 100000});
    EXPECT_EQ(decoded(record), (Floats{10, 11, 13, 10, 110, -90, 99910}));
  }
}

TEST(MiniSeedReader, readsSteim2) {
  // Differences of `width` bits in the lowest bits of a word, the last one lowest, and a mark in the two highest.
  const auto word = [](std::uint32_t mark, int width, std::initializer_list<int> values) {
    std::uint32_t all = 0;
    for (const int value : values)
      all = (all << width) | (std::uint32_t(value) & ((1U << width) - 1));
    return all | (mark << 30);
  };
  std::vector<std::uint32_t> words(16, 0);
  words[1] = 5;                                    // the first sample
  words[3] = word(2, 4, {0, 1, -1, 2, -2, 7, -8}); // seven of 4 bits: 3, 10
  words[4] = word(1, 5, {15, -16, 1, 1, 1, 1});    // six of 5 bits: 3, 01
  words[5] = word(0, 6, {31, -32, 1, 1, 1});       // five of 6 bits: 3, 00
  words[6] = word(0, 8, {127, -128, 1, 1});        // four of 8 bits: 1
  words[7] = word(3, 10, {511, -512, 1});          // three of 10 bits: 2, 11
  words[8] = word(2, 15, {16383, -16384});         // two of 15 bits: 2, 10
  words[9] = word(1, 30, {-100000});               // one of 30 bits: 2, 01
  words[0] = (3U << 24) | (3U << 22) | (3U << 20) | (1U << 18) | (2U << 16) | (2U << 14) | (2U << 12);

  Floats expected{5};
  for (const int difference : {1, -1, 2, -2,  7,    -8, 15, -16, 1,    1, 1,     1,      31,     -32,
                               1, 1,  1, 127, -128, 1,  1,  511, -512, 1, 16383, -16384, -100000})
    expected.push_back(expected.back() + float(difference));
  ASSERT_EQ(expected.back(), -99991);
  words[2] = std::uint32_t(-99991);
  MiniSeedBytes record;
  record.encoding(MiniSeedBytes::kSteim2).sampleCount(int(expected.size())).frame(0, words);
  EXPECT_EQ(decoded(record), expected);
}

TEST(MiniSeedReader, readsGainRangedEncodings) {
  using Words = std::vector<std::uint16_t>;
  // GEOSCOPE: the mantissa less 2048, divided by two to the power of the gain in the bits above the lowest twelve.
  EXPECT_EQ(decoded(MiniSeedBytes().samples<std::uint16_t>(MiniSeedBytes::kGeoscope163, Words{2048 + 100, 0x3000})),
            (Floats{100, -2048 / 8.0F}));
  EXPECT_EQ(
      decoded(MiniSeedBytes().samples<std::uint16_t>(MiniSeedBytes::kGeoscope164, Words{0x1000, 0x9000 + 2560})),
      (Floats{-1024, 512 / 512.0F}));
  // CDSN: the lowest fourteen bits less 8191, times 1, 4, 16 or 128 by the two bits above.
  EXPECT_EQ(decoded(MiniSeedBytes().samples<std::uint16_t>(MiniSeedBytes::kCdsn,
                                                           Words{8191, 8291, 0x4000 + 8192, 0x8000, 0xC000 + 8194})),
            (Floats{0, 100, 4, -8191 * 16.0F, 3 * 128.0F}));
  // SRO: a signed mantissa of twelve bits, times two to the power of ten less the four bits above.
  EXPECT_EQ(decoded(MiniSeedBytes().samples<std::uint16_t>(MiniSeedBytes::kSro, Words{0xA005, 0x9FFF, 0x0001})),
            (Floats{5, -2, 1024}));
  EXPECT_EQ(decoded(MiniSeedBytes().samples<std::uint16_t>(MiniSeedBytes::kDwwssn, Words{7, 0xFFFF})),
            (Floats{7, -1}));
}

TEST(MiniSeedReader, reads24BitIntegers) {
  MiniSeedBytes record;
  record.encoding(MiniSeedBytes::kGeoscope24).sampleCount(2);
  const std::uint8_t bytes[] = {0x01, 0x00, 0x02, 0xFF, 0xFF, 0xFE};
  for (int i = 0; i < 6; ++i)
    record.byte(MiniSeedBytes::kDataAt + i, bytes[i]);
  EXPECT_EQ(decoded(record), (Floats{65538, -2}));
}

TEST(MiniSeedReader, readsSamplesThatLieAtAnyByte) {
  // Samples right after blockette 1000 and at odd places.
  for (const int at : {56, 57, 59, 62}) {
    MiniSeedBytes record;
    record.number(MiniSeedBytes::kFormatAt + 2, std::uint16_t(0));
    record.number(MiniSeedBytes::kDataOffsetAt, std::uint16_t(at)).encoding(MiniSeedBytes::kFloat64).sampleCount(2);
    record.number(at, 2.5).number(at + 8, -7.0);
    EXPECT_EQ(decoded(record), (Floats{2.5F, -7}));
  }
}

TEST(MiniSeedReader, takesTheRateFromFactorAndMultiplier) {
  struct Case {
    int factor;
    int multiplier;
    double delta;
  };
  // A positive number multiplies the rate, a negative one divides it.
  for (const Case& c : {Case{20, 1, 0.05}, Case{200, -10, 0.05}, Case{-10, 1, 10}, Case{-10, -3, 30},
                        Case{5, 4, 0.05}, Case{1, 0, 1}}) {
    const auto record = onlyRecord(MiniSeedBytes().integers({1, 2}).rate(c.factor, c.multiplier));
    EXPECT_DOUBLE_EQ(preciseOf(*record).delta, c.delta) << c.factor << ' ' << c.multiplier;
    EXPECT_EQ(record->delta(), float(c.delta));
  }
}

TEST(MiniSeedReader, prefersTheRateOfBlockette100) {
  const auto record = onlyRecord(MiniSeedBytes().integers({1, 2}).rate(40, 1).exactRate(39.5F));
  EXPECT_DOUBLE_EQ(preciseOf(*record).delta, 1 / 39.5);
  EXPECT_DOUBLE_EQ(preciseOf(*onlyRecord(MiniSeedBytes().integers({1, 2}).rate(40, 1).exactRate(0))).delta, 1 / 40.0);
}

TEST(MiniSeedReader, putsTheReferenceTimeOnTheMillisecondAndTheRestIntoB) {
  // 0.0251 s after midnight of day 50, and 30 µs more.
  const auto record = onlyRecord(MiniSeedBytes().integers({1, 2}).time(2009, 50, 0, 0, 0, 251).microseconds(30));
  EXPECT_EQ(referenceText(*record), QStringLiteral("2009-02-19T00:00:00.025Z"));
  EXPECT_DOUBLE_EQ(preciseOf(*record).b, 0.000130);
  EXPECT_EQ(record->b(), 0.00013F);
  EXPECT_EQ(record->GetSacHeader()->nzjday, 50);
  EXPECT_EQ(record->GetSacHeader()->nzmsec, 25);
}

TEST(MiniSeedReader, putsTheReferenceTimeBeforeTheStartAlsoBefore1970) {
  // One microsecond before 1969-12-31T23:59:59.0001 is 99 µs after the second.
  const auto record = onlyRecord(MiniSeedBytes().integers({1}).time(1969, 365, 23, 59, 59, 1).microseconds(-1));
  EXPECT_EQ(referenceText(*record), QStringLiteral("1969-12-31T23:59:59.000Z"));
  EXPECT_NEAR(preciseOf(*record).b, 0.000099, 1e-12);
}

TEST(MiniSeedReader, addsATimeCorrectionThatIsNotApplied) {
  MiniSeedBytes record;
  record.integers({1}).time(2012, 1, 12, 0, 0, 0);
  EXPECT_EQ(referenceText(*onlyRecord(MiniSeedBytes(record).correction(-15000, false))),
            QStringLiteral("2012-01-01T11:59:58.500Z"));
  EXPECT_EQ(referenceText(*onlyRecord(MiniSeedBytes(record).correction(-15000, true))),
            QStringLiteral("2012-01-01T12:00:00.000Z"));
}

TEST(MiniSeedReader, countsALeapSecondAsTheNextMinute) {
  EXPECT_EQ(referenceText(*onlyRecord(MiniSeedBytes().integers({1}).time(2016, 366, 23, 59, 60, 5000))),
            QStringLiteral("2017-01-01T00:00:00.500Z"));
}

TEST(MiniSeedReader, readsTheCodes) {
  const auto record = onlyRecord(MiniSeedBytes().integers({1}).codes("IU", "COLA", "10", "LHZ"));
  EXPECT_EQ(record->knetwk(), QStringLiteral("IU"));
  EXPECT_EQ(record->kstnm(), QStringLiteral("COLA"));
  EXPECT_EQ(record->khole(), QStringLiteral("10"));
  EXPECT_EQ(record->kcmpnm(), QStringLiteral("LHZ"));
  EXPECT_EQ(onlyRecord(MiniSeedBytes().integers({1}).codes("DK", "COP", "", "BHZ"))->labelString(),
            QStringLiteral("DK.COP..BHZ"));
}

TEST(MiniSeedReader, takesCodesPaddedWithZerosForThoseWithBlanks) {
  MiniSeedBytes zeros;
  zeros.integers({3, 4}).time(2012, 133, 0, 0, 0, 500).number(13, std::uint16_t(0));
  const auto file = parsed(joined({MiniSeedBytes().codes("XX", "TEST", "", "BHZ").integers({1, 2}), zeros}));
  EXPECT_EQ(copiedSamples(*test::onlyRecord(file)), (Floats{1, 2, 3, 4}));
}

TEST(MiniSeedReader, describesASeriesThatAnyViewCanDraw) {
  const auto record = onlyRecord(MiniSeedBytes().integers({4, -9, 2}));
  EXPECT_EQ(record->smin(), -9);
  EXPECT_EQ(record->smax(), 4);
  EXPECT_EQ(record->e(), 0.05F);
  EXPECT_EQ(record->GetSacHeader()->iftype, kSacTimeSeries);
  EXPECT_EQ(record->GetSacHeader()->leven, 1);
  EXPECT_EQ(record->timePickKey(0), kUndefinedValue);
  EXPECT_EQ(record->originTimeOffset(), kUndefinedValue);
}

TEST(MiniSeedReader, readsRecordsOfAllLengths) {
  for (int exponent = 8; exponent <= 20; ++exponent)
    EXPECT_EQ(decoded(MiniSeedBytes(Order::Big, Order::Big, exponent).integers({6, 7})), (Floats{6, 7})) << exponent;
}

TEST(MiniSeedReader, givesChannelsInTheOrderOfTheFile) {
  const MiniSeedBytes first = MiniSeedBytes().integers({1, 2});
  const MiniSeedBytes second = MiniSeedBytes(first).time(2012, 133, 0, 0, 0, 500);
  const auto vertical = [](MiniSeedBytes record) { return record.codes("XX", "TEST", "00", "BHZ"); };
  const auto north = [](MiniSeedBytes record) { return record.codes("XX", "TEST", "00", "BHN"); };
  const auto other = [](MiniSeedBytes record) { return record.codes("XX", "TEST", "10", "BHN"); };
  const auto file = parsed(joined({vertical(first), other(first), north(first), north(second), vertical(second)}));
  EXPECT_EQ(labels(file), (QStringList{"XX.TEST.00.BHZ", "XX.TEST.10.BHN", "XX.TEST.00.BHN"}));
  EXPECT_EQ(file->records[0]->npts(), 4);
  EXPECT_EQ(file->records[1]->npts(), 2);
  EXPECT_EQ(file->records[2]->npts(), 4);
}

TEST(MiniSeedReader, readsOnlySelectedChannels) {
  const MiniSeedBytes record = MiniSeedBytes().integers({1, 2});
  const QByteArray bytes = joined({MiniSeedBytes(record).codes("XX", "AAA", "00", "BHZ"),
                                   MiniSeedBytes(record).codes("XX", "AAA", "00", "BHN"),
                                   MiniSeedBytes(record).codes("YY", "BBB", "", "LHZ")});
  EXPECT_EQ(labels(parsed(bytes, {"BH?"})), (QStringList{"XX.AAA.00.BHZ", "XX.AAA.00.BHN"}));
  EXPECT_EQ(labels(parsed(bytes, {"XX.*.*.*Z", "YY.*.--.*"})), (QStringList{"XX.AAA.00.BHZ", "YY.BBB..LHZ"}));
  EXPECT_TRUE(parsed(bytes, {"BH?"})->notes.isEmpty());
}

TEST(MiniSeedReader, namesTheChannelsWhenNoneIsSelected) {
  const QByteArray bytes =
      joined({MiniSeedBytes().integers({1}), MiniSeedBytes().integers({1}).codes("A", "B", "", "C")});
  const auto file = parsed(bytes, {"LHZ"});
  ASSERT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->records.empty());
  EXPECT_EQ(file->notes, QStringList("in: no channel is selected of XX.TEST.00.BHZ, A.B..C"));
}

TEST(MiniSeedReader, refusesAPatternOfFiveParts) {
  EXPECT_EQ(
      parsed(MiniSeedBytes().integers({1}).bytes(), {"A.B.C.D.E"}).error(),
      QStringLiteral("channel pattern \"A.B.C.D.E\": found 5 parts, expected NETWORK.STATION.LOCATION.CHANNEL"));
}

TEST(MiniSeedReader, passesOverTextAndRecordsWithoutSamples) {
  MiniSeedBytes text;
  text.codes("XX", "TEST", "", "LOG").encoding(MiniSeedBytes::kText).sampleCount(5).rate(0, 0);
  text.text(MiniSeedBytes::kDataAt, "hello");
  const auto file = parsed(joined({text, MiniSeedBytes().sampleCount(0).rate(0, 0), MiniSeedBytes().integers({8})}));
  EXPECT_EQ(copiedSamples(*test::onlyRecord(file)), Floats{8});
  EXPECT_EQ(parsed(joined({text, text})).error(), QStringLiteral("in: found no samples in 2 records"));
}

TEST(MiniSeedReader, isOneOfTheFormatsOfReadSeismograms) {
  const TemporaryFiles files;
  const QString path = files.write("any.name", MiniSeedBytes().integers({3, 1}).bytes());
  const Result<SeismogramArray> records = readSeismograms(path);
  ASSERT_EQ(records->size(), 1U) << records.error().toStdString();
  EXPECT_EQ(copiedSamples(*records->front()), (Floats{3, 1}));
  EXPECT_EQ(records->front()->path(), path);
  EXPECT_TRUE(readSeismogramFile(path, {{"LHZ"}})->records.empty());
  EXPECT_EQ(copiedSamples(*test::onlyRecord(readMiniSeed(path))), (Floats{3, 1}));
}

TEST(MiniSeedReader, knowsARecordThatLooksLikeSacInPlaces) {
  // The bytes where a binary SAC file has its version hold 6.
  std::vector<std::int32_t> values(50, 0);
  values[(304 - MiniSeedBytes::kDataAt) / 4] = 6;
  const TemporaryFiles files;
  const QString path = files.write("a.mseed", MiniSeedBytes().integers(values).bytes());
  EXPECT_EQ(test::onlyRecord(readSeismogramFile(path))->npts(), 50);
}

TEST(MiniSeedReader, refusesWhatIsNoFile) {
  const TemporaryFiles files;
  EXPECT_EQ(readMiniSeed(files.folder()).error(), files.folder() + ": is a folder, expected a file");
  EXPECT_EQ(readMiniSeed(files.write("empty", {})).error(), files.path("empty") + ": found no record of miniSEED");
}
