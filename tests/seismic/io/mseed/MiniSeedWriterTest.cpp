#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <cmath>
#include <limits>

using namespace xov;
using test::TemporaryFiles;

namespace {

constexpr int kRecordBytes = 512;
constexpr int kEncodingAt = 52; // of blockette 1000, which comes first

std::shared_ptr<SacSeismogram> record(std::vector<float> samples) {
  SacHeader header;
  header.delta = 0.025F;
  header.b = 1.5F;
  header.knetwk = "II";
  header.kstnm = "TLY";
  header.khole = "00";
  header.kcmpnm = "BHZ";
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30, 33), Qt::UTC));
  SacFooter precise;
  auto made = std::make_shared<SacSeismogram>(header, std::move(samples));
  precise = made->preciseValues();
  precise.delta = 0.025;
  RecordChanges changes;
  changes.precise = precise;
  return copyOfRecord(*made, std::move(changes));
}

QByteArray written(const SeismogramArray& records) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  const Status status = writeMiniSeed(records, buffer, QStringLiteral("out"));
  EXPECT_TRUE(status) << status.error().toStdString();
  return buffer.data();
}

SeismogramArray readBack(QByteArray bytes) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  const auto file = readSeismogramDevice(buffer, QStringLiteral("in"), QStringLiteral("in"));
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->notes.isEmpty()) << file->notes.join('\n').toStdString();
  return file->records;
}

std::vector<float> valuesOf(const SeismogramRecord& record) {
  const auto samples = samplesOf(record);
  return {samples.begin(), samples.end()};
}

} // namespace

TEST(MiniSeedWriter, writesWhatTheReaderReads) {
  std::vector<float> samples;
  for (int i = 0; i < 3000; ++i)
    samples.push_back(float((i * 7919) % 20001 - 10000));
  const SeismogramArray back = readBack(written({record(samples)}));
  ASSERT_EQ(back.size(), 1U);
  EXPECT_EQ(valuesOf(*back[0]), samples);
  EXPECT_EQ(back[0]->labelString(), QStringLiteral("II.TLY.00.BHZ"));
  EXPECT_DOUBLE_EQ(intervalSeconds(*back[0]), 0.025);
  // 2011-03-11T05:47:30.033 and 1.5 s: 1299822450 s after 1970 and 1.533 s.
  EXPECT_NEAR(startSeconds(*back[0]).value_or(0), 1299822451.533, 1e-5);
}

TEST(MiniSeedWriter, compressesWholeNumbersAndKeepsOthersInSinglePrecision) {
  const QByteArray whole = written({record(std::vector<float>(1000, 3))});
  EXPECT_EQ(whole.size() % kRecordBytes, 0);
  EXPECT_LT(whole.size(), 1000 * 4) << "smaller than the samples themselves";
  const std::vector<float> fractions = {0.1F, -2.5F, 1e20F, 16777218};
  EXPECT_EQ(valuesOf(*readBack(written({record(fractions)})).at(0)), fractions);
}

TEST(MiniSeedWriter, leavesAGapWhereSamplesAreNotFinite) {
  const float gap = std::numeric_limits<float>::quiet_NaN();
  const SeismogramArray back = readBack(written({record({1, 2, gap, gap, 5, 6, 7})}));
  ASSERT_EQ(back.size(), 2U);
  EXPECT_EQ(valuesOf(*back[0]), (std::vector<float>{1, 2}));
  EXPECT_EQ(valuesOf(*back[1]), (std::vector<float>{5, 6, 7}));
  EXPECT_NEAR(*startSeconds(*back[1]) - *startSeconds(*back[0]), 4 * 0.025, 1e-5);
}

TEST(MiniSeedWriter, writesSeveralRecordsOneAfterTheOther) {
  auto other = record({9, 8});
  SacHeader header = headerOf(*other);
  header.kcmpnm = "BHN";
  RecordChanges changes;
  changes.header = header;
  const SeismogramArray back = readBack(written({record({1, 2, 3}), copyOfRecord(*other, std::move(changes))}));
  ASSERT_EQ(back.size(), 2U);
  EXPECT_EQ(back[1]->kcmpnm(), QStringLiteral("BHN"));
}

TEST(MiniSeedWriter, refusesWhatTheFormatCannotHoldAndWritesNothing) {
  const TemporaryFiles files;
  SacHeader header = headerOf(*record({1, 2}));
  header.kstnm = "STATION";
  const auto longCode = std::make_shared<SacSeismogram>(header, std::vector<float>{1, 2});
  const QString path = files.path("out.mseed");
  EXPECT_EQ(writeMiniSeed({record({1, 2}), longCode}, path).error(),
            path + ": II.STATION.00.BHZ: found the code 'STATION', expected 5 characters at most for miniSEED");
  EXPECT_FALSE(QFile::exists(path));
  SacHeader noTime;
  noTime.delta = 1;
  noTime.kstnm = "ABC";
  EXPECT_EQ(writeMiniSeed({std::make_shared<SacSeismogram>(noTime, std::vector<float>{1, 2})}, path).error(),
            path +
                ": .ABC..: found no samples with times, expected a reference time, an interval above 0 and samples");
}
