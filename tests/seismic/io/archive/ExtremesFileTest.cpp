#include "XOV_Graphics/seismic/io/archive/ExtremesFile.h"

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <cmath>
#include <cstring>
#include <limits>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr ArchiveIdentity kIdentity{5000000, 1300000000000, 0xCAFE};

// A trace of 600 samples in two records, with a gap in its second block of 256, and a note.
ArchiveContents smallContents() {
  ArchivedTrace trace;
  trace.header.kstnm = "TLY";
  trace.header.delta = 0.01F;
  trace.precise.b = 0.1;
  trace.places = {{4096, 400}, {8192, 200}};
  trace.sampleCount = 600;
  trace.sum = {1234.5, 599};
  trace.lowest = {-3, kNan};
  trace.highest = {7, kNan};
  return {SampleStorage::MiniSeed, {trace}, {QStringLiteral("ä: 1 record left out")}};
}

QByteArray smallFile() { return extremesFileBytes(smallContents(), kIdentity); }

template <typename Number>
Number at(const QByteArray& bytes, qsizetype offset) {
  Number number;
  std::memcpy(&number, bytes.constData() + offset, sizeof number);
  return qFromLittleEndian(number);
}

// With a check value that is right again.
QByteArray summed(QByteArray bytes) {
  const std::uint32_t sum = qToLittleEndian(crc32c(QByteArrayView(bytes).sliced(16)));
  std::memcpy(bytes.data() + 12, &sum, sizeof sum);
  return bytes;
}

template <typename Number>
QByteArray with(QByteArray bytes, qsizetype offset, Number number) {
  const Number little = qToLittleEndian(number);
  std::memcpy(bytes.data() + offset, &little, sizeof little);
  return summed(bytes);
}

// Where the trace begins: behind the head of 40 bytes, the number of notes, a note of 21 bytes and the number of
// traces.
constexpr qsizetype kTrace = 40 + 4 + 4 + 21 + 4;
constexpr qsizetype kPlaces = kTrace + 632 + 176;

} // namespace

TEST(ExtremesFile, liesAsItsFormatSays) {
  const QByteArray bytes = smallFile();
  EXPECT_EQ(bytes.first(8), QByteArray("XOVINDEX"));
  EXPECT_EQ(at<std::uint32_t>(bytes, 8), 1U);
  EXPECT_EQ(at<std::uint32_t>(bytes, 12), crc32c(QByteArrayView(bytes).sliced(16)));
  EXPECT_EQ(at<std::int64_t>(bytes, 16), 5000000);
  EXPECT_EQ(at<std::int64_t>(bytes, 24), 1300000000000);
  EXPECT_EQ(at<std::uint32_t>(bytes, 32), 0xCAFEU);
  EXPECT_EQ(at<std::uint32_t>(bytes, 36), 0U);
  EXPECT_EQ(at<std::uint32_t>(bytes, 40), 1U);
  EXPECT_EQ(at<std::uint32_t>(bytes, 44), 21U) << "ä takes two bytes";
  EXPECT_EQ(at<std::uint32_t>(bytes, kTrace - 4), 1U);
  EXPECT_EQ(at<float>(bytes, kTrace), 0.01F) << "delta comes first in a header";
  EXPECT_EQ(bytes.sliced(kTrace + 440, 8), QByteArray("TLY     "));
  EXPECT_EQ(at<std::int64_t>(bytes, kPlaces), 2);
  EXPECT_EQ(at<double>(bytes, kPlaces + 8), 1234.5);
  EXPECT_EQ(at<std::int64_t>(bytes, kPlaces + 16), 599);
  EXPECT_EQ(at<std::int64_t>(bytes, kPlaces + 24), 4096);
  EXPECT_EQ(at<std::int64_t>(bytes, kPlaces + 32), 400);
  EXPECT_EQ(at<std::int64_t>(bytes, kPlaces + 40), 8192);
  EXPECT_EQ(at<float>(bytes, kPlaces + 56), -3);
  EXPECT_EQ(at<float>(bytes, kPlaces + 60), 7);
  EXPECT_TRUE(std::isnan(at<float>(bytes, kPlaces + 64)));
  EXPECT_EQ(bytes.size(), kPlaces + 72);
}

TEST(ExtremesFile, givesBackWhatWasPutIn) {
  const Result<ArchiveContents> found = parseExtremesFile(smallFile(), kIdentity);
  ASSERT_TRUE(bool(found)) << found.error().toStdString();
  EXPECT_EQ(found->notes, smallContents().notes);
  ASSERT_EQ(found->traces.size(), 1U);
  const ArchivedTrace& trace = found->traces[0];
  EXPECT_EQ(trace.header.kstnm.text(), QStringLiteral("TLY"));
  EXPECT_EQ(trace.precise.b, 0.1);
  EXPECT_EQ(trace.sampleCount, 600);
  EXPECT_EQ(trace.places[1].offset, 8192);
  EXPECT_EQ(trace.sum.sum, 1234.5);
  EXPECT_EQ(trace.highest[0], 7);
  EXPECT_EQ(extremesFileBytes(*found, kIdentity), smallFile());
}

TEST(ExtremesFile, keepsATraceOfOneSample) {
  ArchiveContents contents = smallContents();
  ArchivedTrace& trace = contents.traces[0];
  trace.places = {{4096, 1}};
  trace.sampleCount = 1;
  trace.sum = {5, 1};
  trace.lowest = trace.highest = {}; // no whole block
  const Result<ArchiveContents> found = parseExtremesFile(extremesFileBytes(contents, kIdentity), kIdentity);
  ASSERT_TRUE(bool(found)) << found.error().toStdString();
  ASSERT_EQ(found->traces.size(), 1U);
  EXPECT_EQ(found->traces[0].sampleCount, 1);
}

TEST(ExtremesFile, isOfOneFileAsItWas) {
  for (ArchiveIdentity other :
       {ArchiveIdentity{5000001, 1300000000000, 0xCAFE}, ArchiveIdentity{5000000, 1300000000001, 0xCAFE},
        ArchiveIdentity{5000000, 1300000000000, 0xCAFF}})
    EXPECT_EQ(parseExtremesFile(smallFile(), other).error(), "the file has changed since its index was made");
  const Result<ArchiveContents> newer = parseExtremesFile(with(smallFile(), 8, std::uint32_t(2)), kIdentity);
  EXPECT_EQ(newer.error(), "the index is of version 2, expected 1");
}

TEST(ExtremesFile, isRefusedWhereverItEndsOrABitIsWrong) {
  const QByteArray bytes = smallFile();
  for (qsizetype length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(parseExtremesFile(QByteArrayView(bytes).first(length), kIdentity)) << length;
    if (length > 16) {
      EXPECT_FALSE(parseExtremesFile(summed(bytes.first(length)), kIdentity)) << length;
    }
    QByteArray flipped = bytes;
    flipped[length] = char(flipped[length] ^ (1 << (length % 8)));
    EXPECT_FALSE(parseExtremesFile(flipped, kIdentity)) << length;
  }
  EXPECT_FALSE(parseExtremesFile(summed(bytes + 'x'), kIdentity));
}

TEST(ExtremesFile, isRefusedWhereItTellsWhatCannotBe) {
  const auto refuses = [](const QByteArray& bytes) { return !parseExtremesFile(bytes, kIdentity); };
  const QByteArray bytes = smallFile();
  ASSERT_FALSE(refuses(with(bytes, kPlaces + 24, std::int64_t(4097)))) << "any other place in the file may be";
  EXPECT_TRUE(refuses(with(bytes, 36, std::uint32_t(3)))) << "a storage that is not known";
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 24, std::int64_t(-1))));
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 24, std::int64_t(5000000)))) << "behind the file";
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 32, std::int64_t(0)))) << "no sample";
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 32, std::int64_t(1) << 40))) << "more samples than bits";
  EXPECT_TRUE(refuses(with(bytes, kPlaces, std::int64_t(1) << 60))) << "more places than bytes";
  EXPECT_TRUE(refuses(with(bytes, kPlaces, std::int64_t(-2))));
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 8, std::numeric_limits<double>::infinity())));
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 16, std::int64_t(601)))) << "more finite samples than samples";
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 56, 8.0F))) << "a lowest above the highest";
  EXPECT_TRUE(refuses(with(bytes, kPlaces + 56, kNan))) << "half a gap";
  EXPECT_TRUE(refuses(with(bytes, 40, std::uint32_t(0xFFFFFFFF)))) << "notes";
  EXPECT_TRUE(refuses(with(bytes, 44, std::uint32_t(0xFFFFFFFF)))) << "a note";
  EXPECT_TRUE(refuses(with(bytes, kTrace - 4, std::uint32_t(0xFFFFFFFF)))) << "traces";
}
