#include "XOV_Graphics/seismic/io/archive/SampleReaders.h"

#include "XOV_Graphics/base/FileWindow.h"
#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/seismic/io/archive/Archive.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSearch.h"

#include <QtEndian>

#include <algorithm>
#include <atomic>
#include <functional>
#include <limits>
#include <mutex>
#include <numeric>
#include <optional>
#include <utility>

namespace xov {

namespace {

constexpr int kMostOpen = 64; // files of a process that stay open
constexpr float kGap = std::numeric_limits<float>::quiet_NaN();
// Of a record as they mostly are; of a longer one as much as it has is read then.
constexpr qsizetype kUsualBytes = 8192;
constexpr qsizetype kWindowBytes = 32768;

std::atomic<int> openFiles{0};

/// What was not read of samples while they were drawn, for who asks.
class SampleFaults {
public:
  void add(const QString& fault) {
    const std::scoped_lock lock(mutex_);
    if (faults_.size() >= kMost) return;
    faults_.append(fault);
    if (handler_) contained("a failed reading of samples", handler_);
  }
  void setHandler(std::function<void()> handler) {
    const std::scoped_lock lock(mutex_);
    handler_ = std::move(handler);
  }
  QStringList take() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(faults_, {});
  }

private:
  static constexpr qsizetype kMost = 100;
  std::mutex mutex_;
  QStringList faults_;
  std::function<void()> handler_;
};

SampleFaults& sampleFaults() {
  static SampleFaults faults;
  return faults;
}

} // namespace

class ArchiveSource {
public:
  ArchiveSource(std::vector<JoinedFile> files, SampleStorage storage) : files_(std::move(files)), storage_(storage) {}
  ~ArchiveSource() { close(); }
  ArchiveSource(const ArchiveSource&) = delete;
  ArchiveSource& operator=(const ArchiveSource&) = delete;

  SampleStorage storage() const { return storage_; }

  /// Calls `read` with the files as one.
  template <typename Read>
  bool visit(const Read& read) {
    open();
    const bool isRead = read(*joined_, *window_);
    if (!isRead) noteFault();
    if (!staysOpen_) close();
    return isRead;
  }

  /// The decoded samples of the last record that was asked for: pages cut through records.
  struct Decoded {
    std::int64_t offset = -1;
    std::vector<float> samples;
  };
  Decoded& decoded() { return decoded_; }
  MiniSeedSamples& decoder() { return decoder_; }

  const QString& fault() const { return fault_; }
  void tell() { isTold_ = true; }

private:
  void noteFault() {
    if (!fault_.isEmpty()) return;
    fault_ = joined_->readingFault();
    if (fault_.isEmpty()) fault_ = files_.front().path + QStringLiteral(": samples can no longer be read");
    if (isTold_) sampleFaults().add(fault_);
  }
  void open() {
    if (window_) return;
    joined_.emplace(files_);
    joined_->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    window_.emplace(*joined_, kWindowBytes);
    staysOpen_ = ++openFiles <= kMostOpen;
  }
  void close() {
    if (!window_) return;
    window_.reset();
    joined_.reset();
    --openFiles;
  }

  std::vector<JoinedFile> files_;
  SampleStorage storage_;
  std::optional<JoinedFiles> joined_;
  std::optional<FileWindow> window_;
  bool staysOpen_ = false;
  QString fault_;
  bool isTold_ = false; // before that, opening the file fails with it
  Decoded decoded_;
  MiniSeedSamples decoder_;
};

std::shared_ptr<ArchiveSource> archiveSource(std::vector<JoinedFile> files, SampleStorage storage) {
  return std::make_shared<ArchiveSource>(std::move(files), storage);
}

QString firstFault(const ArchiveSource& source) { return source.fault(); }

void tellOfFaults(ArchiveSource& source) { source.tell(); }

QStringList takeSampleFaults() { return sampleFaults().take(); }

void setSampleFaultHandler(std::function<void()> handler) { sampleFaults().setHandler(std::move(handler)); }

namespace {

bool readSac(QIODevice& file, std::int64_t offset, std::span<float> samples, QSysInfo::Endian order) {
  if (!file.seek(offset) || !readFully(file, {reinterpret_cast<char*>(samples.data()), samples.size_bytes()}))
    return false;
  if (order != QSysInfo::ByteOrder) qbswap<sizeof(float)>(samples.data(), qsizetype(samples.size()), samples.data());
  return true;
}

/// Decodes the record at that place, which must still have as many samples.
bool decode(ArchiveSource& source, FileWindow& window, const SamplePlace& place) {
  ArchiveSource::Decoded& decoded = source.decoded();
  if (decoded.offset == place.offset) return true;
  decoded.offset = -1;
  const qint64 remaining = window.size() - place.offset;
  for (const qsizetype wanted : {kUsualBytes, kMiniSeedChainBytes}) {
    const MiniSeedFinding finding = findAnyRecord(window.at(place.offset, wanted), remaining);
    const SampleFormat& format = finding.record.format;
    if (finding.kind != MiniSeedFinding::Kind::Record || finding.record.sampleCount != place.count) continue;
    const QByteArrayView bytes = window.at(place.offset, format.length);
    if (bytes.size() < format.length || format.encoding == MiniSeedEncoding::Text) return false;
    decoded.samples.resize(std::size_t(place.count));
    QString doubt;
    if (!source.decoder().decode(format, bytes.first(format.length), decoded.samples, doubt)) return false;
    decoded.offset = place.offset;
    return true;
  }
  return false;
}

/// The samples of one trace: those of a place, and of those behind it, until a stretch is full.
class TraceReader {
public:
  TraceReader(std::shared_ptr<ArchiveSource> source, std::vector<SamplePlace> places)
      : source_(std::move(source)),
        places_(std::move(places)),
        ends_(places_.size()) {
    std::transform_inclusive_scan(places_.begin(), places_.end(), ends_.begin(), std::plus<>(),
                                  [](const SamplePlace& place) { return place.count; });
  }

  void operator()(std::int64_t first, std::span<float> samples) const {
    auto place = std::size_t(std::ranges::upper_bound(ends_, first) - ends_.begin());
    for (; !samples.empty() && place < places_.size(); ++place) {
      const std::int64_t skipped = first - (ends_[place] - places_[place].count);
      const auto count = std::size_t(std::min(places_[place].count - skipped, std::int64_t(samples.size())));
      if (!read(places_[place], skipped, samples.first(count))) std::ranges::fill(samples.first(count), kGap);
      first += std::int64_t(count);
      samples = samples.subspan(count);
    }
    std::ranges::fill(samples, kGap);
  }

private:
  bool read(const SamplePlace& place, std::int64_t skipped, std::span<float> samples) const {
    return source_->visit([&](QIODevice& file, FileWindow& window) {
      if (source_->storage() != SampleStorage::MiniSeed) {
        const bool isLittle = source_->storage() == SampleStorage::LittleEndianSac;
        return readSac(file, place.offset + skipped * std::int64_t(sizeof(float)), samples,
                       isLittle ? QSysInfo::LittleEndian : QSysInfo::BigEndian);
      }
      if (!decode(*source_, window, place)) return false;
      std::ranges::copy(std::span(source_->decoded().samples).subspan(std::size_t(skipped), samples.size()),
                        samples.begin());
      return true;
    });
  }

  std::shared_ptr<ArchiveSource> source_;
  std::vector<SamplePlace> places_;
  std::vector<std::int64_t> ends_; // how many samples there are up to the end of each place
};

} // namespace

PagedSamples::Reader sampleReader(std::shared_ptr<ArchiveSource> source, std::vector<SamplePlace> places) {
  // Functions are copied; the places are not.
  return [reader = std::make_shared<const TraceReader>(std::move(source), std::move(places))](
             std::int64_t first, std::span<float> samples) { (*reader)(first, samples); };
}

} // namespace xov
