#include "bench/Reading.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <vector>
#ifdef __GLIBC__
#include <malloc.h>
#endif

// libmseed names a type `flag`, which the parameters of that name in Qt's headers would then shadow.
#define flag MiniSeedFlag
#include <libmseed.h>
#undef flag

namespace xov::bench {

namespace {

constexpr int kSamples = 20 * 86400 * 20;
constexpr int kRateHz = 20;

struct Kind {
  const char* name;
  int encoding;
  int recordBytes;
};

constexpr Kind kKinds[] = {
    {"Steim2, 4096 bytes", DE_STEIM2, 4096},
    {"Steim2, 512 bytes", DE_STEIM2, 512},
    {"Steim1, 512 bytes", DE_STEIM1, 512},
    {"32-bit integers, 512 bytes", DE_INT32, 512},
};

void writeRecord(char* record, int length, void* file) { static_cast<QFile*>(file)->write(record, length); }

// Noise of some hundred counts over a microseism.
std::vector<std::int32_t> counts() {
  std::vector<std::int32_t> samples(kSamples);
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    random = random * 1664525 + 1013904223;
    samples[i] = std::int32_t(std::lround(400 * std::sin(double(i) / 20))) + std::int32_t(random >> 24);
  }
  return samples;
}

bool writeFile(const QString& path, const Kind& kind) {
  QFile file(path);
  std::vector<std::int32_t> samples = counts();
  MSRecord* record = msr_init(nullptr);
  if (record == nullptr || !file.open(QIODevice::WriteOnly)) return false;
  std::copy_n("XX", 3, record->network);
  std::copy_n("DAYS", 5, record->station);
  std::copy_n("BHZ", 4, record->channel);
  record->dataquality = 'D';
  record->starttime = ms_timestr2hptime(const_cast<char*>("2025-01-01T00:00:00"));
  record->samprate = kRateHz;
  record->reclen = kind.recordBytes;
  record->encoding = std::int8_t(kind.encoding);
  record->byteorder = 1;
  record->datasamples = samples.data();
  record->numsamples = kSamples;
  record->sampletype = 'i';
  std::int64_t packed = 0;
  msr_pack(record, writeRecord, &file, &packed, 1, 0);
  record->datasamples = nullptr;
  msr_free(&record);
  return packed == kSamples && file.flush();
}

// What libmseed takes to give every sample of a file once.
std::int64_t loopOverRecords(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  MSRecord* record = nullptr;
  std::int64_t count = 0;
  while (ms_readmsr(&record, name.constData(), -1, nullptr, nullptr, 1, 1, 0) == MS_NOERROR)
    count += record->numsamples;
  ms_readmsr(&record, nullptr, 0, nullptr, nullptr, 0, 0, 0);
  return count;
}

// Bytes in use by the process; 0 where that is not told.
double heldBytes() {
#ifdef __GLIBC__
  const struct mallinfo2 use = mallinfo2();
  return double(use.uordblks + use.hblkhd);
#else
  return 0;
#endif
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double milliseconds(const QElapsedTimer& timer) { return double(timer.nsecsElapsed()) / 1e6; }

QString row(const Kind& kind, const QString& path, int rounds) {
  std::vector<double> loops;
  std::vector<double> readings;
  double held = 0;
  for (int round = 0; round <= rounds; ++round) {
    QElapsedTimer timer;
    timer.start();
    const bool isWhole = loopOverRecords(path) == kSamples;
    const double loop = milliseconds(timer);
    const double before = heldBytes();
    timer.start();
    const Result<SeismogramFile> file = readMiniSeed(path);
    const double reading = milliseconds(timer);
    held = heldBytes() - before;
    if (!isWhole || !file || file->records.size() != 1 || file->records.front()->npts() != kSamples)
      return QStringLiteral("| %1 | wrong samples |  |  |  |\n").arg(QLatin1String(kind.name));
    // The first round brings the file into memory.
    if (round == 0) continue;
    loops.push_back(loop);
    readings.push_back(reading);
  }
  return QStringLiteral("| %1 | %2 | %3 | %4 | %5 |\n")
      .arg(QLatin1String(kind.name))
      .arg(median(loops), 0, 'f', 0)
      .arg(median(readings), 0, 'f', 0)
      .arg(median(readings) / median(loops), 0, 'f', 2)
      .arg(held / (double(kSamples) * double(sizeof(float))), 0, 'f', 2);
}

} // namespace

QString readingTable(int rounds) {
  const QTemporaryDir folder;
  QString table = QStringLiteral("| miniSEED of 34.6 million samples | libmseed's loop, ms | reading, ms | ratio | "
                                 "held, of the samples |\n|---|---:|---:|---:|---:|\n");
  for (const Kind& kind : kKinds) {
    const QString path = folder.filePath(QStringLiteral("days.mseed"));
    table += writeFile(path, kind)
                 ? row(kind, path, rounds)
                 : QStringLiteral("| %1 | cannot be written |  |  |  |\n").arg(QLatin1String(kind.name));
  }
  return table;
}

} // namespace xov::bench
