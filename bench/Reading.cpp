#include "bench/Reading.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <vector>
#ifdef __unix__
#include <sys/resource.h>
#endif
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
constexpr std::int64_t kIntervalUs = 1000000 / kRateHz;
constexpr int kGapSamples = 5;

// What is recorded.
enum class Signal : std::uint8_t { Noise, Quiet };

struct Kind {
  const char* name;
  int encoding;
  int recordBytes;
  Signal signal = Signal::Noise;
  int pieceSamples = kSamples; ///< between gaps
  int channels = 1;            ///< whose records come in turn
};

constexpr Kind kKinds[] = {
    {"Steim2, 4096 bytes", DE_STEIM2, 4096},
    {"Steim2, 512 bytes", DE_STEIM2, 512},
    {"Steim2, 512 bytes, quiet", DE_STEIM2, 512, Signal::Quiet},
    {"Steim2, 128 bytes", DE_STEIM2, 128},
    {"Steim2, 512 bytes, a gap every minute", DE_STEIM2, 512, Signal::Noise, 60 * kRateHz},
    {"Steim2, 512 bytes, a gap every 100 samples", DE_STEIM2, 512, Signal::Noise, 100},
    {"Steim2, 512 bytes, 36 channels in turn", DE_STEIM2, 512, Signal::Noise, kSamples / 36, 36},
    {"Steim1, 512 bytes", DE_STEIM1, 512},
    {"32-bit integers, 512 bytes", DE_INT32, 512},
    {"16-bit integers, 512 bytes", DE_INT16, 512},
};

// Noise of some hundred counts over a microseism, or of four over a small one.
std::vector<std::int32_t> counts(Signal signal) {
  const bool isQuiet = signal == Signal::Quiet;
  const double amplitude = isQuiet ? 30 : 400;
  const int noiseShift = isQuiet ? 30 : 24;
  std::vector<std::int32_t> samples(kSamples);
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    random = random * 1664525 + 1013904223;
    samples[i] = std::int32_t(std::lround(amplitude * std::sin(double(i) / 20))) + std::int32_t(random >> noiseShift);
  }
  return samples;
}

void keepRecord(char* record, int length, void* records) {
  static_cast<std::vector<QByteArray>*>(records)->emplace_back(record, length);
}

// Packs a piece of a channel; the records it takes.
std::vector<QByteArray> packed(const Kind& kind, int channel, std::span<std::int32_t> samples, std::int64_t startUs) {
  std::vector<QByteArray> records;
  MSRecord* record = msr_init(nullptr);
  if (record == nullptr) return records;
  const QByteArray station = "D" + QByteArray::number(channel);
  std::copy_n("XX", 3, record->network);
  std::copy_n(station.constData(), station.size() + 1, record->station);
  std::copy_n("BHZ", 4, record->channel);
  record->dataquality = 'D';
  record->starttime = startUs;
  record->samprate = kRateHz;
  record->reclen = kind.recordBytes;
  record->encoding = std::int8_t(kind.encoding);
  record->byteorder = 1;
  record->datasamples = samples.data();
  record->numsamples = std::int64_t(samples.size());
  record->sampletype = 'i';
  std::int64_t packedSamples = 0;
  msr_pack(record, keepRecord, &records, &packedSamples, 1, 0);
  record->datasamples = nullptr;
  msr_free(&record);
  if (packedSamples != std::int64_t(samples.size())) records.clear();
  return records;
}

// One channel with gaps, or several with one piece each, whose records come in turn.
bool writeFile(const QString& path, const Kind& kind) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  std::vector<std::int32_t> samples = counts(kind.signal);
  const std::int64_t begin = ms_timestr2hptime(const_cast<char*>("2025-01-01T00:00:00"));
  std::vector<std::vector<QByteArray>> inTurn;
  for (int first = 0; first < kSamples; first += kind.pieceSamples) {
    const std::size_t count = std::size_t(std::min(kind.pieceSamples, kSamples - first));
    const int piece = first / kind.pieceSamples;
    const std::int64_t start =
        kind.channels > 1 ? begin : begin + (first + std::int64_t(piece) * kGapSamples) * kIntervalUs;
    inTurn.push_back(
        packed(kind, kind.channels > 1 ? piece : 0, std::span(samples).subspan(std::size_t(first), count), start));
    if (inTurn.back().empty()) return false;
    if (kind.channels > 1) continue;
    for (const QByteArray& record : inTurn.back())
      file.write(record);
    inTurn.clear();
  }
  for (std::size_t i = 0, left = inTurn.size(); left > 0; ++i) {
    left = 0;
    for (const std::vector<QByteArray>& records : inTurn) {
      if (i >= records.size()) continue;
      file.write(records[i]);
      ++left;
    }
  }
  return file.flush();
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

double milliseconds(const QElapsedTimer& timer) { return double(timer.nsecsElapsed()) / 1e6; }

// Of this process, in ms; 0 where that is not told.
double userTime() {
#ifdef __unix__
  rusage use = {};
  getrusage(RUSAGE_SELF, &use);
  return double(use.ru_utime.tv_sec) * 1e3 + double(use.ru_utime.tv_usec) / 1e3;
#else
  return 0;
#endif
}

// The least of several rounds: whatever else the machine does only adds.
struct Cost {
  double userMs = std::numeric_limits<double>::infinity();
  double wallMs = std::numeric_limits<double>::infinity();

  template <typename Work>
  auto measure(Work work) {
    QElapsedTimer timer;
    timer.start();
    const double user = userTime();
    auto result = work();
    userMs = std::min(userMs, userTime() - user);
    wallMs = std::min(wallMs, milliseconds(timer));
    return result;
  }
};

bool isWhole(const Result<SeismogramFile>& file, const Kind& kind) {
  if (!file || !file->notes.isEmpty()) return false;
  std::int64_t samples = 0;
  for (const auto& record : file->records)
    samples += record->npts();
  const int pieces = (kSamples + kind.pieceSamples - 1) / kind.pieceSamples;
  return samples == kSamples && file->records.size() == std::size_t(pieces);
}

QString row(const Kind& kind, const QString& path, int rounds) {
  Cost loop;
  Cost reading;
  double held = 0;
  for (int round = 0; round < rounds; ++round) {
    const bool isLoopWhole = loop.measure([&] { return loopOverRecords(path); }) == kSamples;
    const double before = heldBytes();
    const Result<SeismogramFile> file = reading.measure([&] { return readMiniSeed(path); });
    held = heldBytes() - before;
    if (!isLoopWhole || !isWhole(file, kind))
      return QStringLiteral("| %1 | wrong samples |  |  |  |  |  |  |\n").arg(QLatin1String(kind.name));
  }
  return QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 |\n")
      .arg(QLatin1String(kind.name))
      .arg(loop.userMs, 0, 'f', 0)
      .arg(reading.userMs, 0, 'f', 0)
      .arg(reading.userMs / loop.userMs, 0, 'f', 2)
      .arg(loop.wallMs, 0, 'f', 0)
      .arg(reading.wallMs, 0, 'f', 0)
      .arg(reading.wallMs / loop.wallMs, 0, 'f', 2)
      .arg(held / (double(kSamples) * double(sizeof(float))), 0, 'f', 2);
}

} // namespace

QString readingTable(int rounds) {
  const QTemporaryDir folder;
  QString table =
      QStringLiteral("| miniSEED of 34.6 million samples | libmseed's loop, user ms | reading, user ms | ratio | "
                     "libmseed's loop, ms | "
                     "reading, ms | ratio | held, of the samples |\n|---|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const Kind& kind : kKinds) {
    const QString path = folder.filePath(QStringLiteral("days.mseed"));
    table += writeFile(path, kind)
                 ? row(kind, path, rounds)
                 : QStringLiteral("| %1 | cannot be written |  |  |  |  |  |  |\n").arg(QLatin1String(kind.name));
  }
  return table;
}

} // namespace xov::bench
