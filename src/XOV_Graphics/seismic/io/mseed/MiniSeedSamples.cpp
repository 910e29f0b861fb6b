#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/io/mseed/Libmseed.h"
#include "XOV_Graphics/seismic/io/mseed/LibmseedMessages.h"
#include "XOV_Graphics/seismic/io/mseed/SteimFrames.h"

#include <QtEndian>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>
#include <optional>
#include <type_traits>

namespace xov {

namespace {

static_assert(int(MiniSeedEncoding::Text) == DE_ASCII && int(MiniSeedEncoding::Int16) == DE_INT16 &&
              int(MiniSeedEncoding::Int32) == DE_INT32 && int(MiniSeedEncoding::Float32) == DE_FLOAT32 &&
              int(MiniSeedEncoding::Float64) == DE_FLOAT64 && int(MiniSeedEncoding::Steim1) == DE_STEIM1 &&
              int(MiniSeedEncoding::Steim2) == DE_STEIM2 && int(MiniSeedEncoding::Geoscope24) == DE_GEOSCOPE24 &&
              int(MiniSeedEncoding::Geoscope16Gain3) == DE_GEOSCOPE163 &&
              int(MiniSeedEncoding::Geoscope16Gain4) == DE_GEOSCOPE164 && int(MiniSeedEncoding::Cdsn) == DE_CDSN &&
              int(MiniSeedEncoding::Sro) == DE_SRO && int(MiniSeedEncoding::Dwwssn) == DE_DWWSSN);

// libmseed takes samples behind a header and in records of certain lengths only, and reads wide ones where they lie:
// so they must lie where the processor wants them.
std::size_t headerBytesBefore(qsizetype dataBytes) {
  constexpr qsizetype widest = sizeof(double);
  const qsizetype least = std::max(kMiniSeedHeaderBytes, MINRECLEN - dataBytes);
  return std::size_t((least + widest - 1) / widest * widest);
}

/// The last sample by the record's own account, in the first frame of compressed samples.
std::int32_t statedEnd(const SampleFormat& format, QByteArrayView bytes) {
  constexpr int kEndByte = 8;
  const char* const place = bytes.data() + format.dataOffset + kEndByte;
  return format.isBigEndian ? qFromBigEndian<std::int32_t>(place) : qFromLittleEndian<std::int32_t>(place);
}

/// Whether compressed samples end where the record says; the doubt if not, or the problem where the record does not
/// say that it holds compressed samples.
Status checkEnd(const SampleFormat& format, QByteArrayView bytes, std::int32_t last, QString& doubt) {
  if (format.encoding != MiniSeedEncoding::Steim1 && format.encoding != MiniSeedEncoding::Steim2) return {};
  const std::int32_t stated = statedEnd(format, bytes);
  if (stated == last) return {};
  const QString odd =
      "the last sample is " + QString::number(last) + ", but the record says " + QString::number(stated);
  if (!format.isStated) return Error{odd};
  doubt = odd;
  return {};
}

/// Samples stored as numbers of that type, one after the other.
template <typename Number>
void takeNumbers(const char* from, bool isBigEndian, std::span<float> samples) {
  const auto fill = [&](auto numberAt) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
      const Number number = numberAt(from + i * sizeof(Number));
      if constexpr (std::is_same_v<Number, double>)
        samples[i] = toSinglePrecision(number);
      else
        samples[i] = float(number);
    }
  };
  if (isBigEndian)
    fill([](const char* place) { return qFromBigEndian<Number>(place); });
  else
    fill([](const char* place) { return qFromLittleEndian<Number>(place); });
}

template <typename Value, typename Convert>
void take(const void* values, std::span<float> samples, Convert convert) {
  std::transform(static_cast<const Value*>(values), static_cast<const Value*>(values) + samples.size(),
                 samples.begin(), convert);
}

/// The message without what libmseed puts before it, or words of our own.
QString problemText(const QString& said) {
  return said.isEmpty() ? QStringLiteral("the samples cannot be decoded") : said.section(": ", -1);
}

MSRecord* newRecord() {
  const LibmseedMessages kept; // of memory that is refused
  return msr_init(nullptr);
}

} // namespace

struct MiniSeedSamples::Library {
  Library() : record(newRecord()) {
    if (record == nullptr) throw std::bad_alloc();
    record->fsdh = static_cast<fsdh_s*>(std::calloc(1, sizeof(fsdh_s)));
    if (record->fsdh == nullptr) {
      msr_free(&record);
      throw std::bad_alloc();
    }
  }
  ~Library() { msr_free(&record); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  MSRecord* record;
};

MiniSeedSamples::MiniSeedSamples() : library_(std::make_unique<Library>()) {}

MiniSeedSamples::~MiniSeedSamples() = default;

Status MiniSeedSamples::decode(const SampleFormat& format, QByteArrayView bytes, std::span<float> samples,
                               QString& doubt) {
  if (samples.empty()) return {};
  const QByteArrayView data = bytes.first(format.length).sliced(format.dataOffset);
  std::optional<std::int32_t> last;
  switch (format.encoding) {
  case MiniSeedEncoding::Int16:
    takeNumbers<std::int16_t>(data.data(), format.isBigEndian, samples);
    return {};
  case MiniSeedEncoding::Int32:
    takeNumbers<std::int32_t>(data.data(), format.isBigEndian, samples);
    return {};
  case MiniSeedEncoding::Float32:
    takeNumbers<float>(data.data(), format.isBigEndian, samples);
    return {};
  case MiniSeedEncoding::Float64:
    takeNumbers<double>(data.data(), format.isBigEndian, samples);
    return {};
  case MiniSeedEncoding::Steim1:
    last = decodeSteim(SteimVersion::Steim1, format.isBigEndian, data, samples);
    break;
  case MiniSeedEncoding::Steim2:
    last = decodeSteim(SteimVersion::Steim2, format.isBigEndian, data, samples);
    break;
  default:
    break;
  }
  return last ? checkEnd(format, bytes, *last, doubt) : decodeByLibrary(format, bytes, samples, doubt);
}

Status MiniSeedSamples::decodeByLibrary(const SampleFormat& format, QByteArrayView bytes, std::span<float> samples,
                                        QString& doubt) {
  if (samples.empty()) return {};
  const QByteArrayView data = bytes.first(format.length).sliced(format.dataOffset);
  const std::size_t headerBytes = headerBytesBefore(data.size());
  if (headerBytes + std::size_t(data.size()) > MAXRECLEN) return Error{problemText({})};
  aligned_.resize(headerBytes + std::size_t(data.size()));
  std::copy(data.begin(), data.end(), aligned_.begin() + std::ptrdiff_t(headerBytes));

  // Only the samples are left to libmseed: what it does with headers trusts their blockettes to lie in the record.
  MSRecord& target = *library_->record;
  target.record = aligned_.data();
  target.reclen = int(aligned_.size());
  target.encoding = std::int8_t(format.encoding);
  target.samplecnt = std::int64_t(samples.size());
  target.fsdh->data_offset = std::uint16_t(headerBytes);
  const LibmseedMessages kept;
  const MiniSeedFlag swapped = format.isBigEndian != (QSysInfo::ByteOrder == QSysInfo::BigEndian);
  if (msr_unpack_data(&target, swapped, 0) != std::int64_t(samples.size())) return Error{problemText(kept.text())};

  if (target.sampletype == 'd') {
    take<double>(target.datasamples, samples, toSinglePrecision);
  } else if (target.sampletype == 'f') {
    take<float>(target.datasamples, samples, [](float value) { return value; });
  } else {
    take<std::int32_t>(target.datasamples, samples, [](std::int32_t value) { return float(value); });
    return checkEnd(format, bytes, static_cast<const std::int32_t*>(target.datasamples)[samples.size() - 1], doubt);
  }
  return {};
}

} // namespace xov
