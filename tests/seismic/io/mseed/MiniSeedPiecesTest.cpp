#include "XOV_Graphics/seismic/io/mseed/MiniSeedPieces.h"

#include "XOV_Graphics/seismic/io/mseed/Libmseed.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/SeismogramTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace xov;
using test::copiedSamples;
using test::joined;
using test::MiniSeedBytes;
using test::preciseOf;
using test::referenceText;

namespace {

using Floats = std::vector<float>;

constexpr std::int64_t kSecond = 1000000;

Result<SeismogramFile> parsed(const QByteArray& bytes) { return parseMiniSeed(bytes, QStringLiteral("in")); }

/// Two samples at 40 Hz, `tenthsOfMs` after midnight.
MiniSeedBytes twoSamples(int tenthsOfMs, int first) {
  return MiniSeedBytes().integers({first, first + 1}).time(2012, 133, 0, 0, tenthsOfMs / 10000, tenthsOfMs % 10000);
}

// What libmseed packs; it calls back with each record.
void appendRecord(char* record, int length, void* bytes) { static_cast<QByteArray*>(bytes)->append(record, length); }

/// Records of a channel at 100 Hz with libmseed's own packing.
QByteArray packed(const std::vector<std::int32_t>& values, int encoding, std::int64_t startUs, int length) {
  MSRecord* record = msr_init(nullptr);
  std::strcpy(record->network, "XX");
  std::strcpy(record->station, "PACK");
  std::strcpy(record->channel, "HHZ");
  record->reclen = length;
  record->encoding = std::int8_t(encoding);
  record->byteorder = 1;
  record->starttime = startUs;
  record->samprate = 100;
  std::vector<std::int32_t> copy = values;
  record->datasamples = copy.data();
  record->numsamples = std::int64_t(copy.size());
  record->sampletype = 'i';
  QByteArray bytes;
  EXPECT_GT(msr_pack(record, appendRecord, &bytes, nullptr, 1, 0), 0);
  record->datasamples = nullptr;
  msr_free(&record);
  return bytes;
}

std::vector<std::int32_t> randomWalk(std::size_t count, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::vector<std::int32_t> values{0};
  // Steps of all sizes, so that all widths of differences occur.
  while (values.size() < count)
    values.push_back(values.back() + (int(random() % 2001) - 1000) / int(1 + random() % 200));
  return values;
}

} // namespace

TEST(MiniSeedPieces, joinRecordsThatFollowEachOther) {
  const auto file = parsed(joined({twoSamples(0, 1), twoSamples(500, 3), twoSamples(1000, 5)}));
  EXPECT_EQ(copiedSamples(*test::onlyRecord(file)), (Floats{1, 2, 3, 4, 5, 6}));
}

TEST(MiniSeedPieces, joinRecordsWhateverTheirOrderInTheFile) {
  const auto file = parsed(joined({twoSamples(1000, 5), twoSamples(0, 1), twoSamples(500, 3)}));
  EXPECT_EQ(copiedSamples(*test::onlyRecord(file)), (Floats{1, 2, 3, 4, 5, 6}));
}

TEST(MiniSeedPieces, endAtAGapAndShareOneTimeAxis) {
  // 50 ms of samples from 0.0251 s and from 10.0 s on.
  const auto file = parsed(joined({twoSamples(100000, 8), twoSamples(251, 1)}));
  ASSERT_EQ(file->records.size(), 2U);
  const auto& [before, after] = std::tie(file->records[0], file->records[1]);
  EXPECT_EQ(copiedSamples(*before), (Floats{1, 2}));
  EXPECT_EQ(copiedSamples(*after), (Floats{8, 9}));
  EXPECT_EQ(referenceText(*before), QStringLiteral("2012-05-12T00:00:00.025Z"));
  EXPECT_EQ(referenceText(*after), referenceText(*before));
  EXPECT_NEAR(preciseOf(*before).b, 0.0001, 1e-12);
  EXPECT_NEAR(preciseOf(*after).b, 9.975, 1e-12);
  EXPECT_EQ(after->b(), 9.975F);
}

TEST(MiniSeedPieces, goOnAtHalfASampleOffButNotFarther) {
  // The second record is due at 50 ms; half a sample is 12.5 ms.
  EXPECT_EQ(parsed(joined({twoSamples(0, 1), twoSamples(500 + 125, 3)}))->records.size(), 1U);
  EXPECT_EQ(parsed(joined({twoSamples(0, 1), twoSamples(500 + 126, 3)}))->records.size(), 2U);
  EXPECT_EQ(parsed(joined({twoSamples(0, 1), twoSamples(500 - 125, 3)}))->records.size(), 1U);
  EXPECT_EQ(parsed(joined({twoSamples(0, 1), twoSamples(500 - 126, 3)}))->records.size(), 2U);
}

TEST(MiniSeedPieces, keepOverlapsApart) {
  // Two recorders of the same channel, half a record apart, in one file.
  const auto file = parsed(joined({twoSamples(0, 1), twoSamples(250, 11), twoSamples(500, 3), twoSamples(750, 13)}));
  ASSERT_EQ(file->records.size(), 2U);
  EXPECT_EQ(copiedSamples(*file->records[0]), (Floats{1, 2, 3, 4}));
  EXPECT_EQ(copiedSamples(*file->records[1]), (Floats{11, 12, 13, 14}));
  EXPECT_FLOAT_EQ(file->records[1]->b(), 0.025F);
}

TEST(MiniSeedPieces, takeARecordOnceThatIsThereTwice) {
  // The second copy has another sequence number.
  const auto file = parsed(joined({twoSamples(0, 1), twoSamples(500, 3), twoSamples(0, 1).text(0, "000009")}));
  ASSERT_EQ(file->records.size(), 1U);
  EXPECT_EQ(copiedSamples(*file->records[0]), (Floats{1, 2, 3, 4}));
  EXPECT_EQ(file->notes, QStringList("in: 1 record left out that the file holds twice"));
}

TEST(MiniSeedPieces, endWhereTheRateChanges) {
  const auto file = parsed(joined({twoSamples(0, 1), twoSamples(500, 3).rate(20, 1)}));
  ASSERT_EQ(file->records.size(), 2U);
  EXPECT_EQ(file->records[1]->delta(), 0.05F);
  // 40.003 Hz differs by less than a ten-thousandth of 40 Hz, 40.005 Hz by more.
  EXPECT_EQ(parsed(joined({twoSamples(0, 1), twoSamples(500, 3).exactRate(40.003F)}))->records.size(), 1U);
  EXPECT_EQ(parsed(joined({twoSamples(0, 1), twoSamples(500, 3).exactRate(40.005F)}))->records.size(), 2U);
}

TEST(MiniSeedPieces, followAClockThatDrifts) {
  // Each record comes 1 ms late: after ten of two samples the last one starts 9 ms late, which is within half a
  // sample; after thirty it is 29 ms, and the interval is that of the times: 29 · 51 ms over 58 samples.
  const auto pieceOf = [](int records) {
    QByteArray bytes;
    for (int i = 0; i < records; ++i)
      bytes += twoSamples(i * 510, i).bytes();
    return test::onlyRecord(parsed(bytes));
  };
  EXPECT_DOUBLE_EQ(preciseOf(*pieceOf(10)).delta, 0.025);
  EXPECT_NEAR(preciseOf(*pieceOf(30)).delta, 29 * 0.051 / 58, 1e-12);
}

TEST(MiniSeedPieces, matchTheNearestOfSeveralThatCouldGoOn) {
  // Two pieces end 4 ms apart; a record that is due for the second goes there.
  PieceJoiner joiner;
  EXPECT_EQ(joiner.add(MiniSeedSpan{0, 100, 100}), 0U);
  EXPECT_EQ(joiner.add(MiniSeedSpan{4000, 100, 100}), 1U);
  EXPECT_EQ(joiner.add(MiniSeedSpan{kSecond + 4000, 100, 100}), 1U);
}

TEST(MiniSeedPieces, ofManyThousandOverlapsAreFoundQuickly) {
  // All start together, so that each is open when the next comes.
  PieceJoiner joiner;
  for (std::size_t i = 0; i < 200000; ++i)
    ASSERT_EQ(joiner.add(MiniSeedSpan{0, 1e-3, 100}), i);
}

TEST(MiniSeedPieces, holdWhatLibmseedPacks) {
  const std::vector<std::int32_t> values = randomWalk(20000, 7);
  const Floats expected(values.begin(), values.end());
  for (const int encoding : {DE_INT32, DE_STEIM1, DE_STEIM2}) {
    for (const int length : {256, 512, 4096}) {
      const QByteArray bytes = packed(values, encoding, 1335830400 * kSecond + 123456, length);
      const auto record = test::onlyRecord(parsed(bytes));
      EXPECT_EQ(copiedSamples(*record), expected) << encoding << ' ' << length;
      EXPECT_EQ(referenceText(*record), QStringLiteral("2012-05-01T00:00:00.123Z"));
      // libmseed rounds 0.123456 s to 0.1 ms unless it is given a blockette 1001.
      EXPECT_NEAR(preciseOf(*record).b, 0.0005, 1e-9);
    }
  }
}

TEST(MiniSeedPieces, agreeWithLibmseedsOwnOnRandomGaps) {
  std::mt19937 random(11);
  for (int round = 0; round < 20; ++round) {
    QByteArray bytes;
    std::int64_t start = 1335830400 * kSecond;
    for (int i = 0; i < 12; ++i) {
      const std::vector<std::int32_t> values = randomWalk(500 + random() % 1500, random());
      bytes += packed(values, DE_STEIM2, start, 512);
      const bool isGap = random() % 2 == 0;
      start += std::int64_t(values.size()) * 10000 + (isGap ? std::int64_t(2 + random() % 500) * 10000 : 0);
    }
    MSTraceList* list = mstl_init(nullptr);
    MSRecord* record = nullptr;
    for (qsizetype at = 0; at < bytes.size(); at += 512) {
      ASSERT_EQ(msr_parse(bytes.data() + at, 512, &record, 512, 1, 0), MS_NOERROR);
      ASSERT_NE(mstl_addmsr(list, record, 0, 1, -1, -1), nullptr);
    }
    const auto file = parsed(bytes);
    ASSERT_EQ(list->numtraces, 1);
    ASSERT_EQ(file->records.size(), std::size_t(list->traces->numsegments));
    const MSTraceSeg* segment = list->traces->first;
    for (const auto& piece : file->records) {
      const auto* const values = static_cast<const std::int32_t*>(segment->datasamples);
      EXPECT_EQ(copiedSamples(*piece), Floats(values, values + segment->numsamples));
      const qint64 referenceUs = piece->mySeisReferenceTime()->nsDate().toMSecsSinceEpoch() * 1000;
      EXPECT_NEAR(double(referenceUs - segment->starttime) + preciseOf(*piece).b * 1e6, 0, 1e-3);
      segment = segment->next;
    }
    msr_free(&record);
    mstl_free(&list, 0);
  }
}

// 9,223,000 samples at a millionth of a hertz, which a record of some megabytes may claim, last 9.223e18
// microseconds: counted from any moment after 1981 they would end beyond 2^63.
TEST(MiniSeedPieces, ofAnyLengthKeepTheirSamplesWhenOthersGo) {
  constexpr std::size_t kLengths[] = {1, 100, 4096, 4097, 300, 9000, 2};
  std::vector<std::vector<std::int32_t>> values;
  QByteArray bytes;
  std::int64_t startUs = 1336780800 * kSecond;
  for (const std::size_t length : kLengths) {
    values.push_back(randomWalk(length, std::uint32_t(length)));
    values.back().resize(length);
    bytes += packed(values.back(), DE_STEIM2, startUs, 512);
    startUs += std::int64_t(length + 50) * kSecond / 100;
  }
  for (std::size_t kept = 0; kept < std::size(kLengths); ++kept) {
    auto file = parsed(bytes);
    ASSERT_EQ(file->records.size(), std::size(kLengths));
    const auto record = file->records[kept];
    file = Error{QString()};
    EXPECT_EQ(copiedSamples(*record), Floats(values[kept].begin(), values[kept].end())) << kLengths[kept];
    const auto [low, high] = std::ranges::minmax(values[kept]);
    EXPECT_EQ(record->smin(), float(low));
    EXPECT_EQ(record->smax(), float(high));
  }
}

TEST(MiniSeedPieces, goOnWhateverEndedMeanwhile) {
  PieceJoiner joiner;
  EXPECT_EQ(joiner.add(MiniSeedSpan{0, 40, 4000}), 0U) << "ends at 100 s";
  for (int k = 1; k <= 90; ++k)
    ASSERT_EQ(joiner.add(MiniSeedSpan{k * kSecond, 40, 2}), std::size_t(k));
  EXPECT_EQ(joiner.add(MiniSeedSpan{90 * kSecond + 62000, 40, 2}), 90U) << "12 ms behind its end";
  EXPECT_EQ(joiner.add(MiniSeedSpan{100 * kSecond - 12000, 40, 2}), 0U) << "12 ms before its end";
  EXPECT_EQ(joiner.add(MiniSeedSpan{101 * kSecond, 40, 2}), 91U);
}

TEST(MiniSeedPieces, ofSlowSamplesGoOnUpToHalfASampleBehindTheirEnds) {
  for (const int seconds : {149, 151}) {
    PieceJoiner joiner;
    EXPECT_EQ(joiner.add(MiniSeedSpan{0, 0.01, 1}), 0U) << "ends at 100 s";
    for (int k = 101; k < 149; ++k)
      ASSERT_EQ(joiner.add(MiniSeedSpan{k * kSecond, 40, 2}), std::size_t(k - 100));
    EXPECT_EQ(joiner.add(MiniSeedSpan{seconds * kSecond, 0.01, 1}), seconds == 149 ? 0U : 49U);
  }
}

TEST(MiniSeedPieces, aRecordOfHundredThousandsOfYearsEndsAtAMomentThatThereIs) {
  const MiniSeedSpan endless{1335830400 * kSecond, 1e-6, 9223000};
  PieceJoiner joiner;
  const std::size_t piece = joiner.add(endless);
  EXPECT_NE(joiner.add(MiniSeedSpan{1335830400 * kSecond, 40, 2}), piece);
}
