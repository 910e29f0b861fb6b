#include "XOV_Graphics/seismic/io/archive/Archive.h"

#include "XOV_Graphics/base/FileName.h"
#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/archive/ExtremesFile.h"
#include "XOV_Graphics/seismic/io/archive/SampleReaders.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"
#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"
#include "XOV_Graphics/seismic/io/sac/SacBinary.h"
#include "XOV_Graphics/seismic/io/sac/SacChecks.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <limits>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 1024;             // what formats are known by
constexpr qint64 kLeastBytes = qint64(1) << 20; // of a file that is not read whole
constexpr qint64 kMostIndexBytes = qint64(1) << 31;
constexpr std::int64_t kTogether = std::int64_t(1) << 18; // samples that are gone through at a time
constexpr qsizetype kHashDigits = 16;

Result<ArchiveContents> locateSac(QIODevice& device, const QString& name) {
  const Result<SacLocation> found = locateSacBinary(device, name);
  if (!found) return Error{found.error()};
  ArchiveContents contents;
  contents.storage =
      found->order == QSysInfo::LittleEndian ? SampleStorage::LittleEndianSac : SampleStorage::BigEndianSac;
  contents.notes =
      QStringList{sacTimeNote(found->header, name, SacPlaces::Bytes), excessNote(device, found->header, name)};
  contents.notes.removeAll(QString());
  ArchivedTrace trace;
  trace.header = found->header;
  trace.precise = found->footer.value_or(footerFromHeader(found->header));
  trace.sampleCount = found->header.npts;
  trace.places = {{found->offset, trace.sampleCount}};
  contents.traces.push_back(std::move(trace));
  return contents;
}

/// An index that is kept of the file; an error where there is none, or one that does not fit.
Result<ArchiveContents> keptContents(const QString& indexPath, const ArchiveIdentity& identity) {
  if (!QFileInfo::exists(indexPath)) return Error{QStringLiteral("there is no index")};
  const Result<QByteArray> bytes = readWholeFile(indexPath, kMostIndexBytes);
  if (!bytes) return Error{bytes.error()};
  return parseExtremesFile(*bytes, identity);
}

/// Goes through the samples for their extremes and their sum.
void findExtremes(PagedSamples& samples, SampleIndex& index, FiniteSum& sum) {
  const std::span<const float> all(samples.data(), std::size_t(samples.count()));
  index.build(all.first(0));
  for (std::int64_t first = 0; first < samples.count(); first += kTogether) {
    const auto some = all.subspan(std::size_t(first), std::size_t(std::min(kTogether, samples.count() - first)));
    const HeldSamples held(&samples, some.data(), some.data() + some.size());
    index.appended(all, std::ssize(some));
    addFinite(some, sum);
  }
}

/// Where the index of several files is kept that are read as one: as that of the first, with the number of the others
/// behind its name.
QString jointIndexPath(const std::vector<JoinedFile>& files, const IndexCache& cache) {
  const QFileInfo first(files.front().path);
  QString name = first.fileName();
  QByteArray paths;
  for (const JoinedFile& file : files)
    paths += QFileInfo(file.path).absoluteFilePath().toUtf8() + '\n';
  if (files.size() > 1) name += QStringLiteral("+%1").arg(files.size() - 1);
  if (files.size() == 1) paths.chop(1);
  // Files of the same name in different folders.
  const QByteArray hash = QCryptographicHash::hash(paths, QCryptographicHash::Sha256);
  const QString sum = QLatin1Char('-') + QString::fromLatin1(hash.toHex().first(kHashDigits));
  const QString suffix = QStringLiteral(".xovindex");
  if (!cache.folder.isEmpty()) return QDir(cache.folder).filePath(name + sum + suffix);
  return first.dir().filePath(QLatin1Char('.') + name + (files.size() == 1 ? QString() : sum) + suffix);
}

/// Files of traces that are opened as one, mostly just one; errors and notes call them `name`.
class Opening {
public:
  Opening(std::vector<JoinedFile> files, const QString& name, std::optional<IndexCache> cache)
      : name_(name),
        fullPath_(QFileInfo(files.front().path).absoluteFilePath()),
        cache_(std::move(cache)),
        identity_(jointIdentity(files)),
        files_(std::move(files)) {
    if (cache_) indexPath_ = jointIndexPath(files_, *cache_);
    for (JoinedFile& file : files_)
      file.path = QFileInfo(file.path).absoluteFilePath();
  }

  /// Takes the contents from the index that is kept, or makes them with `locate`.
  template <typename Locate>
  Status find(const Locate& locate) {
    if (cache_) {
      Result<ArchiveContents> kept = keptContents(indexPath_, identity_);
      isKept_ = bool(kept);
      if (isKept_) contents_ = std::move(kept).value();
    }
    if (isKept_) return {};
    Result<ArchiveContents> located = locate();
    if (!located) return Error{QString(located.error()).replace(kFileName, name_)};
    contents_ = std::move(located).value();
    return {};
  }

  /// The traces as records; null where the system does not give the addresses for one.
  std::optional<SeismogramArray> records() {
    SeismogramArray all;
    source_ = archiveSource(files_, contents_.storage);
    for (ArchivedTrace& trace : contents_.traces) {
      auto record = recordOf(trace, source_);
      if (!record) return {};
      all.push_back(std::move(record));
    }
    return all;
  }

  /// Why samples could not be read when they were gone through for their extremes; empty when all were.
  QString sampleFault() const { return source_ ? firstFault(*source_) : QString(); }
  /// What is not read from now on is missed in drawings.
  void handOut() const {
    if (source_) tellOfFaults(*source_);
  }

  QStringList notes() const {
    QStringList notes = contents_.notes;
    notes.replaceInStrings(QString(kFileName), name_);
    return notes;
  }

  /// Keeps what was found, if that is wished and it was not there.
  void keep(QStringList& notes) const {
    if (!cache_ || isKept_) return;
    if (!cache_->folder.isEmpty()) makeFolder(cache_->folder);
    QString problem;
    if (!writeFileAtomically(indexPath_, extremesFileBytes(contents_, identity_), &problem))
      notes.append(name_ + QLatin1String(kIndexNotKept) + problem);
  }

private:
  std::shared_ptr<SacSeismogram> recordOf(ArchivedTrace& trace, const std::shared_ptr<ArchiveSource>& source) const {
    // Another writer of the index needs the places no more, this one does.
    auto places = isKept_ ? std::move(trace.places) : trace.places;
    const auto samples = PagedSamples::make(trace.sampleCount, sampleReader(source, std::move(places)));
    if (!samples) return nullptr;
    const std::span<const float> all(samples->data(), std::size_t(samples->count()));
    SampleIndex index;
    if (isKept_) {
      index.adopt(all, std::move(trace.lowest), std::move(trace.highest));
    } else {
      findExtremes(*samples, index, trace.sum);
      const SampleIndex::Blocks blocks = index.blocksWithin(all.data(), 0, std::ssize(all));
      trace.lowest.assign(blocks.lowest, blocks.lowest + blocks.count);
      trace.highest.assign(blocks.highest, blocks.highest + blocks.count);
    }
    return std::make_shared<SacSeismogram>(trace.header, samples, std::move(index), trace.sum, fullPath_,
                                           trace.precise);
  }

  QString name_;
  QString fullPath_; // of the first file
  std::optional<IndexCache> cache_;
  QString indexPath_;
  ArchiveIdentity identity_;
  std::vector<JoinedFile> files_;
  ArchiveContents contents_;
  bool isKept_ = false;
  std::shared_ptr<ArchiveSource> source_;
};

ChannelCodes codesOf(const SeismogramRecord& record) {
  return {record.knetwk(), record.kstnm(), record.khole(), record.kcmpnm()};
}

/// Leaves the records that are selected; what to note where none is.
QString select(SeismogramArray& records, const ChannelPatterns& patterns, const QString& name) {
  QStringList names;
  for (const auto& record : records) {
    const QString channel = channelName(codesOf(*record));
    if (!names.contains(channel)) names.append(channel);
  }
  std::erase_if(records, [&](const auto& record) { return !patterns.select(codesOf(*record)); });
  return records.empty() ? name + QStringLiteral(": no channel is selected of ") + names.join(QStringLiteral(", "))
                         : QString();
}

/// Opens a device that is open and at its start, and holds these files.
Result<SeismogramFile> open(QIODevice& device, std::vector<JoinedFile> files, const QString& name,
                            const SeismogramReadOptions& options, const std::optional<IndexCache>& cache) {
  const QByteArray head = device.peek(kHeadBytes);
  const bool isRecords = isMiniSeed(head);
  const bool isSac = !isRecords && !isSacAlphanumeric(head) && sacByteOrder(head).has_value();
  const auto readWhole = [&, path = QFileInfo(files.front().path).absoluteFilePath()] {
    device.seek(0);
    return readSeismogramDevice(device, name, path, options);
  };
  if (files.size() > 1 && !isRecords)
    return Error{name +
                 QStringLiteral(": unknown format, expected miniSEED, of which several files are read as one")};
  if (device.size() < kLeastBytes || (!isRecords && !isSac)) return readWhole();
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(options.channels);
  if (!patterns) return Error{patterns.error()};
  Opening opening(std::move(files), name, cache);
  const QString standIn(kFileName);
  const Status found =
      opening.find([&] { return isRecords ? locateMiniSeedDevice(device, standIn) : locateSac(device, standIn); });
  if (!found) return Error{found.error()};
  std::optional<SeismogramArray> records = opening.records();
  if (const QString fault = opening.sampleFault(); !fault.isEmpty()) return Error{fault};
  if (!records || records->empty()) return readWhole();
  SeismogramFile opened{std::move(*records), opening.notes()};
  opening.handOut();
  opening.keep(opened.notes);
  if (const QString note = select(opened.records, *patterns, name); !note.isEmpty()) opened.notes = QStringList{note};
  return opened;
}

Result<SeismogramFile> openOne(const QString& path, const SeismogramReadOptions& options,
                               const std::optional<IndexCache>& cache) {
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  const std::int64_t modifiedMs = QFileInfo(path).lastModified().toMSecsSinceEpoch();
  return readChecked(file, path, [&] {
    return open(file, {{path, identityOf(file, modifiedMs)}}, path, options, cache);
  });
}

Result<SeismogramFile> openAll(const QStringList& paths, const SeismogramReadOptions& options,
                               const std::optional<IndexCache>& cache) {
  std::vector<JoinedFile> files;
  QStringList lost;
  for (const QString& path : paths) {
    Result<JoinedFile> file = joinedFile(path);
    // One that has gone since it was listed is missed; one that cannot be read would be half a record.
    if (!file && QFileInfo::exists(path)) return Error{file.error()};
    if (file)
      files.push_back(std::move(file).value());
    else
      lost.append(file.error());
  }
  if (files.empty()) return Error{lost.isEmpty() ? QStringLiteral("there is no file name") : lost.first()};
  QString name = files.front().path;
  if (files.size() > 1) name += QStringLiteral(" and %1 more").arg(files.size() - 1);
  JoinedFiles device(files);
  device.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  Result<SeismogramFile> opened =
      readChecked(device, name, [&] { return open(device, std::move(files), name, options, cache); });
  if (!opened) return Error{opened.error()};
  SeismogramFile all = std::move(opened).value();
  all.notes = lost + all.notes;
  return all;
}

} // namespace

QString indexPathOf(const QString& path, const IndexCache& cache) { return jointIndexPath({{path, {}}}, cache); }

Result<SeismogramFile> openSeismogramFile(const QString& path, const SeismogramReadOptions& options,
                                          const std::optional<IndexCache>& cache) noexcept {
  return guarded(path, [&] { return openOne(path, options, cache); });
}

Result<SeismogramFile> openJoinedFiles(const QStringList& paths, const SeismogramReadOptions& options,
                                       const std::optional<IndexCache>& cache) noexcept {
  return guarded(paths.value(0), [&] { return openAll(paths, options, cache); });
}

} // namespace xov
