#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"

#include "XOV_Graphics/seismic/io/mseed/Libmseed.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <new>
#include <utility>

namespace xov {

namespace {

static_assert(int(MiniSeedEncoding::Text) == DE_ASCII && int(MiniSeedEncoding::Int16) == DE_INT16 &&
              int(MiniSeedEncoding::Int32) == DE_INT32 && int(MiniSeedEncoding::Float32) == DE_FLOAT32 &&
              int(MiniSeedEncoding::Float64) == DE_FLOAT64 && int(MiniSeedEncoding::Steim1) == DE_STEIM1 &&
              int(MiniSeedEncoding::Steim2) == DE_STEIM2 && int(MiniSeedEncoding::Geoscope24) == DE_GEOSCOPE24 &&
              int(MiniSeedEncoding::Geoscope16Gain3) == DE_GEOSCOPE163 &&
              int(MiniSeedEncoding::Geoscope16Gain4) == DE_GEOSCOPE164 && int(MiniSeedEncoding::Cdsn) == DE_CDSN &&
              int(MiniSeedEncoding::Sro) == DE_SRO && int(MiniSeedEncoding::Dwwssn) == DE_DWWSSN);

// libmseed composes its messages in one buffer for the whole process.
std::mutex libraryMutex;

// The last that libmseed says while this thread decodes; null at other times.
thread_local QString* message = nullptr;

/// Keeps the messages of our own calls to ourselves. The host's go where libmseed sends them by itself.
void keepDiagnostic(char* text) {
  if (message == nullptr) {
    std::fputs(text, stderr);
  } else {
    *message = QString::fromLatin1(text).simplified();
  }
}

void keepLog(char* text) {
  if (message == nullptr) std::fputs(text, stdout);
}

class KeptMessage {
public:
  KeptMessage() : lock_(libraryMutex) {
    static std::once_flag once;
    std::call_once(once, [] { ms_loginit(keepLog, nullptr, keepDiagnostic, nullptr); });
    message = &text_;
  }
  ~KeptMessage() { message = nullptr; }
  KeptMessage(const KeptMessage&) = delete;
  KeptMessage& operator=(const KeptMessage&) = delete;

  const QString& text() const { return text_; }

private:
  std::lock_guard<std::mutex> lock_;
  QString text_;
};

constexpr std::size_t kWidestSample = sizeof(double);

/// Doubles beyond single precision become infinite, which a plain conversion leaves undefined.
float toSingle(double value) {
  constexpr double largest = std::numeric_limits<float>::max();
  if (std::abs(value) <= largest || std::isnan(value)) return float(value);
  return value < 0 ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
}

/// The last sample by the record's own account, in the first frame of compressed samples.
std::int32_t statedEnd(const SampleFormat& format, QByteArrayView bytes) {
  constexpr int kEndByte = 8;
  const char* const place = bytes.data() + format.dataOffset + kEndByte;
  return format.isBigEndian ? qFromBigEndian<std::int32_t>(place) : qFromLittleEndian<std::int32_t>(place);
}

/// Whether compressed samples end where the record says; what is odd if not.
QString oddEnd(const SampleFormat& format, QByteArrayView bytes, std::int32_t last) {
  if (format.encoding != MiniSeedEncoding::Steim1 && format.encoding != MiniSeedEncoding::Steim2) return {};
  const std::int32_t stated = statedEnd(format, bytes);
  if (stated == last) return {};
  return "the last sample is " + QString::number(last) + ", but the record says " + QString::number(stated);
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

} // namespace

struct MiniSeedSamples::Library {
  Library() : record(msr_init(nullptr)) {
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
  // libmseed reads wide samples where they lie, so they must lie where the processor wants them.
  const std::size_t shift = (kWidestSample - std::size_t(format.dataOffset) % kWidestSample) % kWidestSample;
  aligned_.resize(shift + std::size_t(format.length));
  std::copy_n(bytes.data(), format.length, aligned_.begin() + std::ptrdiff_t(shift));

  // Only the samples are left to libmseed: what it does with headers trusts their blockettes to lie in the record.
  MSRecord& target = *library_->record;
  target.record = aligned_.data() + shift;
  target.reclen = format.length;
  target.encoding = std::int8_t(format.encoding);
  target.samplecnt = std::int64_t(samples.size());
  target.fsdh->data_offset = std::uint16_t(format.dataOffset);
  const KeptMessage kept;
  const MiniSeedFlag swapped = format.isBigEndian != (QSysInfo::ByteOrder == QSysInfo::BigEndian);
  if (msr_unpack_data(&target, swapped, 0) != std::int64_t(samples.size())) return Error{problemText(kept.text())};

  if (target.sampletype == 'd') {
    take<double>(target.datasamples, samples, toSingle);
  } else if (target.sampletype == 'f') {
    take<float>(target.datasamples, samples, [](float value) { return value; });
  } else {
    take<std::int32_t>(target.datasamples, samples, [](std::int32_t value) { return float(value); });
    doubt = oddEnd(format, bytes, static_cast<const std::int32_t*>(target.datasamples)[samples.size() - 1]);
    if (!doubt.isEmpty() && !format.isStated) return Error{std::exchange(doubt, QString())};
  }
  return {};
}

} // namespace xov
