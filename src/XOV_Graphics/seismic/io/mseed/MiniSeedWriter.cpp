#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/seismic/io/mseed/Libmseed.h"
#include "XOV_Graphics/seismic/io/mseed/LibmseedMessages.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>

namespace xov {

namespace {

constexpr int kRecordBytes = 512;
constexpr float kMostExactInteger = 16777216; // in single precision: 2^24
constexpr qsizetype kCodeLengths[] = {2, 5, 2, 3};
constexpr char kBigEndian = 1;

struct FreeRecord {
  void operator()(MSRecord* record) const {
    record->datasamples = nullptr; // they are ours
    msr_free(&record);
  }
};
using RecordPointer = std::unique_ptr<MSRecord, FreeRecord>;

/// Where packed records go; what comes after a failure is dropped.
struct Sink {
  QIODevice* device;
  bool isSound = true;
};

void writePacked(char* bytes, int count, void* sink) {
  auto& out = *static_cast<Sink*>(sink);
  out.isSound = out.isSound && out.device->write(bytes, count) == count;
}

bool isInteger(float sample) { return std::abs(sample) <= kMostExactInteger && sample == std::floor(sample); }

QByteArray code(const QString& text) { return text.trimmed().toLatin1(); }

Status checkCodes(const SeismogramRecord& record, const QString& name) {
  const QByteArray codes[] = {code(record.knetwk()), code(record.kstnm()), code(record.khole()),
                              code(record.kcmpnm())};
  for (std::size_t i = 0; i < std::size(codes); ++i) {
    if (codes[i].size() > kCodeLengths[i])
      return Error{name + QStringLiteral(": %1: found the code '%2', expected %3 characters at most for miniSEED")
                              .arg(record.labelString(), QString::fromLatin1(codes[i]))
                              .arg(kCodeLengths[i])};
  }
  return {};
}

template <std::size_t size>
void setCode(char (&field)[size], const QString& text) {
  const QByteArray bytes = code(text);
  std::memcpy(field, bytes.constData(), std::size_t(std::min(bytes.size() + 1, qsizetype(size))));
}

/// Adds an empty blockette of that type, which packing fills in.
template <typename Blockette>
void addBlockette(MSRecord* record, int type, Blockette blockette) {
  msr_addblockette(record, reinterpret_cast<char*>(&blockette), sizeof(Blockette), type, 0);
}

RecordPointer headerOf(const SeismogramRecord& record, double startSeconds, double rateHz) {
  RecordPointer header(msr_init(nullptr));
  if (!header) throw std::bad_alloc();
  header->reclen = kRecordBytes;
  header->byteorder = kBigEndian;
  header->dataquality = 'D';
  header->sequence_number = 1;
  setCode(header->network, record.knetwk());
  setCode(header->station, record.kstnm());
  setCode(header->location, record.khole());
  setCode(header->channel, record.kcmpnm());
  header->starttime = hptime_t(std::llround(startSeconds * HPTMODULUS));
  header->samprate = rateHz;
  blkt_100_s rate = {};
  rate.samprate = float(rateHz);
  addBlockette(header.get(), 100, rate);
  addBlockette(header.get(), 1001, blkt_1001_s{});
  return header;
}

/// Packs one stretch of finite samples.
Status packStretch(MSRecord& header, std::span<const float> samples, Sink& sink, const QString& name) {
  std::vector<std::int32_t> integers; // libmseed wants samples that may be written to
  std::vector<float> floats;
  header.numsamples = std::int64_t(samples.size());
  if (std::ranges::all_of(samples, isInteger)) {
    integers.assign(samples.begin(), samples.end());
    header.datasamples = integers.data();
    header.sampletype = 'i';
    header.encoding = DE_STEIM2; // differences of such numbers fit into its 30 bits
  } else {
    floats.assign(samples.begin(), samples.end());
    header.datasamples = floats.data();
    header.sampletype = 'f';
    header.encoding = DE_FLOAT32;
  }
  const LibmseedMessages messages;
  std::int64_t packed = 0;
  const int count = msr_pack(&header, writePacked, &sink, &packed, 1, 0);
  header.datasamples = nullptr;
  if (count < 0 || packed != std::int64_t(samples.size()))
    return Error{name + QStringLiteral(": cannot be packed: ") + messages.text()};
  return {};
}

Status packRecord(const SeismogramRecord& record, Sink& sink, const QString& name) {
  if (Status status = checkCodes(record, name); !status) return status;
  const std::optional<double> start = startSeconds(record);
  const double interval = intervalSeconds(record);
  const std::span<const float> samples = samplesOf(record);
  if (!start || !(interval > 0) || !std::isfinite(interval) || samples.empty())
    return Error{name + QStringLiteral(": %1: found no samples with times, expected a reference time, an interval "
                                       "above 0 and samples")
                            .arg(record.labelString())};
  const auto isFinite = [](float sample) { return std::isfinite(sample); };
  auto begin = std::find_if(samples.begin(), samples.end(), isFinite);
  while (begin != samples.end()) {
    const auto end = std::find_if_not(begin, samples.end(), isFinite);
    const double time = *start + interval * double(begin - samples.begin());
    const RecordPointer header = headerOf(record, time, 1 / interval);
    if (Status status = packStretch(*header, std::span<const float>(begin, end), sink, name); !status) return status;
    begin = std::find_if(end, samples.end(), isFinite);
  }
  return {};
}

Status packAll(const SeismogramArray& records, QIODevice& device, const QString& name) {
  Sink sink{&device};
  for (const auto& record : records) {
    if (Status status = packRecord(*record, sink, name); !status) return status;
    if (!sink.isSound) return Error{name + QStringLiteral(": cannot be written: ") + device.errorString()};
  }
  return {};
}

} // namespace

Status writeMiniSeed(const SeismogramArray& records, const QString& path) noexcept {
  return guarded(path, [&]() -> Status {
    Status contents;
    QString fault;
    const auto write = [&](QIODevice& device) {
      contents = packAll(records, device, path);
      return bool(contents);
    };
    if (writeFileAtomically(path, write, &fault)) return {};
    return contents ? Status(Error{fault}) : contents;
  });
}

Status writeMiniSeed(const SeismogramArray& records, QIODevice& device, const QString& name) noexcept {
  return guarded(name, [&] { return packAll(records, device, name); });
}

} // namespace xov
