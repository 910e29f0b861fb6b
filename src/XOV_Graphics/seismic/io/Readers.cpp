#include "XOV_Graphics/seismic/io/Readers.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedOutline.h"
#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"
#include "XOV_Graphics/seismic/io/sac/SacBinary.h"
#include "XOV_Graphics/seismic/io/sac/SacChecks.h"
#include "XOV_Graphics/seismic/prepare/RecordOutline.h"

#include <QFileInfo>

#include <functional>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 1024; // what a format may look at to know its files

ChannelCodes channelCodes(const SeismogramRecord& record) {
  return {record.knetwk(), record.kstnm(), record.khole(), record.kcmpnm()};
}

// The only trace of a file, as `File` holds it, with its notes, if it is selected.
template <typename File>
Result<File> selected(const decltype(File::records)& trace, QStringList notes, const QString& name,
                      const SeismogramReadOptions& options, const SeismogramRecord& record) {
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(options.channels);
  if (!patterns) return Error{patterns.error()};
  const ChannelCodes codes = channelCodes(record);
  if (!patterns->select(codes)) return File{{}, {name + ": no channel is selected of " + channelName(codes)}};
  notes.removeAll(QString());
  return File{trace, std::move(notes)};
}

// What a file's header gets wrong without making its samples useless.
QStringList sacNotes(QIODevice& device, const SacHeader& header, const QString& name, SacPlaces places) {
  QStringList notes = {sacTimeNote(header, name, places)};
  if (places == SacPlaces::Bytes) notes.append(excessNote(device, header, name));
  return notes;
}

using ReadTrace = Result<std::shared_ptr<SacSeismogram>> (*)(QIODevice&, const QString&, const QString&);

template <ReadTrace Read, SacPlaces places>
Result<SeismogramFile> readOne(QIODevice& device, const QString& name, const QString& path,
                               const SeismogramReadOptions& options) {
  const Result<std::shared_ptr<SacSeismogram>> trace = Read(device, name, path);
  if (!trace) return Error{trace.error()};
  const SacHeader& header = *(*trace)->GetSacHeader();
  return selected<SeismogramFile>({*trace}, sacNotes(device, header, name, places), name, options, **trace);
}

using SummarizeTrace = Result<SeismogramSummary> (*)(QIODevice&, const QString&, const QString&);

template <SummarizeTrace Summarize, SacPlaces places>
Result<SeismogramFileSummary> summarizeOne(QIODevice& device, const QString& name, const QString& path,
                                           const SeismogramReadOptions& options) {
  const Result<SeismogramSummary> trace = Summarize(device, name, path);
  if (!trace) return Error{trace.error()};
  SacHeader header = *trace->record->GetSacHeader();
  header.npts = std::int32_t(trace->samples.count());
  return selected<SeismogramFileSummary>({*trace}, sacNotes(device, header, name, places), name, options,
                                         *trace->record);
}

Result<SeismogramSummary> summarizeSacAlphanumeric(QIODevice& device, const QString& name, const QString& path) {
  const Result<std::shared_ptr<SacSeismogram>> trace = readSacAlphanumeric(device, name, path);
  if (!trace) return Error{trace.error()};
  SeismogramSummary summary = summaryOf(*trace);
  (*trace)->takeSamples();
  return summary;
}

Result<SeismogramOutline> outlineSacBinary(QIODevice& device, const QString& name, std::stop_token /*stop*/) {
  const Result<SacLocation> found = locateSacBinary(device, name);
  if (!found) return Error{found.error()};
  const SacSeismogram record(found->header, {}, {}, found->footer);
  SeismogramOutline outline{{}, {outlineOf(record, found->header.npts)}, {}};
  outline.notes = sacNotes(device, found->header, name, SacPlaces::Bytes);
  outline.notes.removeAll(QString());
  return outline;
}

Result<SeismogramOutline> outlineSacAlphanumeric(QIODevice& device, const QString& name, std::stop_token /*stop*/) {
  const Result<std::shared_ptr<SacSeismogram>> trace = readSacAlphanumeric(device, name, {});
  if (!trace) return Error{trace.error()};
  SeismogramOutline outline{{}, {outlineOf(**trace, (*trace)->npts())}, {}};
  outline.notes = sacNotes(device, *(*trace)->GetSacHeader(), name, SacPlaces::Lines);
  outline.notes.removeAll(QString());
  return outline;
}

/// One format. `matches` sees the first bytes of a file; `read` and `summarize` get the open file at its start, the
/// name that errors call it by, and its full path; `outline` the same.
struct Format {
  const char* name;
  bool (*matches)(QByteArrayView head);
  Result<SeismogramFile> (*read)(QIODevice& device, const QString& name, const QString& path,
                                 const SeismogramReadOptions& options);
  Result<SeismogramFileSummary> (*summarize)(QIODevice& device, const QString& name, const QString& path,
                                             const SeismogramReadOptions& options);
  Result<SeismogramOutline> (*outline)(QIODevice& device, const QString& name, std::stop_token stop);
};

bool isSacBinary(QByteArrayView head) { return sacByteOrder(head).has_value(); }

// The first row that matches reads the file. A miniSEED record may by chance hold what tells a binary SAC file, which
// in turn never looks like a record.
constexpr Format kFormats[] = {
    {"miniSEED", isMiniSeed, readMiniSeedDevice, summarizeMiniSeedDevice, outlineMiniSeedDevice},
    {"SAC alphanumeric", isSacAlphanumeric, readOne<readSacAlphanumeric, SacPlaces::Lines>,
     summarizeOne<summarizeSacAlphanumeric, SacPlaces::Lines>, outlineSacAlphanumeric},
    {"SAC binary", isSacBinary, readOne<readSacBinary, SacPlaces::Bytes>,
     summarizeOne<summarizeSacBinary, SacPlaces::Bytes>, outlineSacBinary},
};

// The format of a device at its start, from its first bytes.
Result<const Format*> formatOf(QIODevice& device, const QString& name) {
  const QByteArray head = device.peek(kHeadBytes);
  if (head.isEmpty()) return Error{name + ": the file is empty"};
  for (const Format& format : kFormats) {
    if (format.matches(head)) return &format;
  }
  return Error{name + ": unknown format, expected " + seismogramFormats().join(" or ")};
}

} // namespace

QStringList seismogramFormats() {
  QStringList names;
  for (const Format& format : kFormats)
    names.append(QString::fromLatin1(format.name));
  return names;
}

Result<SeismogramFile> readSeismogramDevice(QIODevice& device, const QString& name, const QString& path,
                                            const SeismogramReadOptions& options) noexcept {
  return guarded(name, [&]() -> Result<SeismogramFile> {
    return readChecked(device, name, [&]() -> Result<SeismogramFile> {
      const Result<const Format*> format = formatOf(device, name);
      if (!format) return Error{format.error()};
      return (*format)->read(device, name, path, options);
    });
  });
}

Result<SeismogramFile> readSeismogramFile(const QString& path, const SeismogramReadOptions& options) noexcept {
  return guarded(path, [&]() -> Result<SeismogramFile> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return readSeismogramDevice(file, path, QFileInfo(path).absoluteFilePath(), options);
  });
}

std::vector<Result<SeismogramFile>> readSeismogramFiles(const QStringList& paths,
                                                        const SeismogramReadOptions& options) {
  std::vector<Result<SeismogramFile>> files(std::size_t(paths.size()), Error{});
  runTasks(int(paths.size()), TaskStart::FirstAlone,
           [&](int k) { files[std::size_t(k)] = readSeismogramFile(paths[k], options); });
  return files;
}

Result<SeismogramFileSummary> summarizeSeismogramDevice(QIODevice& device, const QString& name, const QString& path,
                                                        const SeismogramReadOptions& options) noexcept {
  return guarded(name, [&]() -> Result<SeismogramFileSummary> {
    return readChecked(device, name, [&]() -> Result<SeismogramFileSummary> {
      const Result<const Format*> format = formatOf(device, name);
      if (!format) return Error{format.error()};
      return (*format)->summarize(device, name, path, options);
    });
  });
}

Result<SeismogramFileSummary> summarizeSeismogramFile(const QString& path,
                                                      const SeismogramReadOptions& options) noexcept {
  return guarded(path, [&]() -> Result<SeismogramFileSummary> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return summarizeSeismogramDevice(file, path, QFileInfo(path).absoluteFilePath(), options);
  });
}

QString seismogramFormatOf(const QString& path) noexcept {
  QString name;
  const Status looked = guarded(path, [&]() -> Status {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return status;
    const Result<const Format*> format = formatOf(file, path);
    if (format) name = QString::fromLatin1((*format)->name);
    return {};
  });
  return looked ? name : QString();
}

Result<SeismogramOutline> outlineSeismogramFile(const QString& path, std::stop_token stop) noexcept {
  return guarded(path, [&]() -> Result<SeismogramOutline> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return readChecked(file, path, [&]() -> Result<SeismogramOutline> {
      const Result<const Format*> format = formatOf(file, path);
      if (!format) return Error{format.error()};
      Result<SeismogramOutline> found = (*format)->outline(file, path, stop);
      if (!found) return Error{found.error()};
      SeismogramOutline outline = std::move(found).value();
      outline.format = QString::fromLatin1((*format)->name);
      return outline;
    });
  });
}

Result<SeismogramArray> readSeismograms(const QString& path) noexcept {
  Result<SeismogramFile> file = readSeismogramFile(path);
  if (!file) return Error{file.error()};
  return std::move(file).value().records;
}

} // namespace xov
