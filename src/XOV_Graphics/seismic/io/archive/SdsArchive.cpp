#include "XOV_Graphics/seismic/io/archive/SdsArchive.h"

#include "XOV_Graphics/base/FileName.h"
#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedOutline.h"
#include "XOV_Graphics/seismic/prepare/RecordWindow.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

namespace xov {

namespace {

namespace fs = std::filesystem;

constexpr char kWaveforms[] = ".D"; // behind the channel in the names of folders
constexpr qsizetype kYearDigits = 4;
constexpr qsizetype kDayDigits = 3;

fs::path systemPathOf(const QString& name) { return fileNameBytes(name).toStdString(); }

QString nameOf(const fs::path& path) { return fileNameFromBytes(path.filename().native()); }

/// What is in a folder, in the order of names; nothing where it may not be looked into, which `unreadable` tells. A
/// file in the place of a folder is neither.
std::vector<fs::path> entriesOf(const fs::path& folder, QStringList* unreadable = nullptr) {
  std::vector<fs::path> entries;
  std::error_code problem;
  for (fs::directory_iterator entry(folder, problem), end; !problem && entry != end; entry.increment(problem))
    entries.push_back(entry->path());
  if (problem && unreadable != nullptr && problem != std::errc::not_a_directory)
    unreadable->append(fileNameFromBytes(folder.native()) + QStringLiteral(": cannot be read: ") +
                       QString::fromLocal8Bit(problem.message()));
  std::ranges::sort(entries);
  return entries;
}

std::optional<int> numberOf(const QString& text, qsizetype digits) {
  bool ok = false;
  const int number = text.toInt(&ok);
  const bool isPlain = text.size() == digits && std::ranges::all_of(text, [](QChar c) { return c.isDigit(); });
  return ok && isPlain ? std::optional(number) : std::nullopt;
}

bool isYear(const fs::path& folder) {
  const std::optional<int> year = numberOf(nameOf(folder), kYearDigits);
  return year && *year > 0;
}

/// A folder of one channel and year, which may hold several locations.
struct ChannelFolder {
  fs::path path;
  QString year, network, station, channel;
};

/// A file of a day, as its name tells.
struct DayFile {
  fs::path path;
  QString location;
  QDate day;
};

std::optional<DayFile> dayFileOf(const fs::path& path, const ChannelFolder& folder) {
  const QStringList parts = nameOf(path).split(QLatin1Char('.'));
  if (parts.size() != 7) return {};
  if (parts[0] != folder.network || parts[1] != folder.station || parts[3] != folder.channel ||
      parts[4] != QLatin1String("D") || parts[5] != folder.year)
    return {};
  const std::optional<int> dayOfYear = numberOf(parts[6], kDayDigits);
  const QDate newYear(folder.year.toInt(), 1, 1);
  if (!dayOfYear || *dayOfYear < 1 || *dayOfYear > newYear.daysInYear()) return {};
  return DayFile{path, parts[2], newYear.addDays(*dayOfYear - 1)};
}

/// Calls `visit` with each folder of a channel, until that gives false.
template <typename Visit>
void forEachChannelFolder(const QString& root, QStringList* unreadable, const Visit& visit) {
  for (const fs::path& year : entriesOf(systemPathOf(root), unreadable)) {
    if (!isYear(year)) continue;
    for (const fs::path& network : entriesOf(year, unreadable)) {
      for (const fs::path& station : entriesOf(network, unreadable)) {
        for (const fs::path& channel : entriesOf(station, unreadable)) {
          const QString name = nameOf(channel);
          if (!name.endsWith(QLatin1String(kWaveforms))) continue;
          if (!visit(ChannelFolder{channel, nameOf(year), nameOf(network), nameOf(station), name.chopped(2)})) return;
        }
      }
    }
  }
}

void addDay(std::map<ChannelCodes, SdsChannel>& channels, const ChannelCodes& codes, const QDate& day) {
  SdsChannel& channel = channels[codes];
  channel.codes = codes;
  channel.firstDay = channel.dayCount == 0 ? day : std::min(channel.firstDay, day);
  channel.lastDay = channel.dayCount == 0 ? day : std::max(channel.lastDay, day);
  ++channel.dayCount;
}

std::optional<ChannelOutline> endsOf(const QString& path) {
  CheckedFile file(path);
  return openForReading(file) ? miniSeedEnds(file) : std::nullopt;
}

/// What of a record lies between two times; null where nothing does. The record that was read is cut itself: unlike a
/// window of it, it is then taken on as what it is, without a look at its samples.
std::shared_ptr<SeismogramRecord> cutTo(const std::shared_ptr<SeismogramRecord>& record, const QDateTime& from,
                                        const QDateTime& to) {
  if (!from.isValid() && !to.isValid()) return record;
  const Result<std::shared_ptr<RecordWindow>> window = windowOf(record, from, to);
  if (!window) return nullptr;
  const auto trace = std::dynamic_pointer_cast<SacSeismogram>(record);
  if (!trace) return *window;
  const std::size_t first = (*window)->firstIndex();
  trace->keepSamples(first, std::size_t((*window)->npts()));
  return trace;
}

QString timeSpanText(const QDateTime& from, const QDateTime& to) {
  QString text;
  if (from.isValid()) text += QStringLiteral(" from ") + utcText(from);
  if (to.isValid()) text += QStringLiteral(" to ") + utcText(to);
  return text;
}

} // namespace

bool SdsArchive::isArchive(const QString& folder) noexcept {
  bool isOne = false;
  const Status looked = guarded(folder, [&] {
    forEachChannelFolder(folder, nullptr, [&](const ChannelFolder& channel) {
      isOne = std::ranges::any_of(entriesOf(channel.path),
                                  [&](const fs::path& path) { return dayFileOf(path, channel).has_value(); });
      return !isOne;
    });
    return Status();
  });
  return looked && isOne;
}

Result<std::vector<SdsChannel>> SdsArchive::channels(const QStringList& patterns, std::stop_token stop,
                                                     QStringList* unreadable) const noexcept {
  return guarded(root_, [&]() -> Result<std::vector<SdsChannel>> {
    const Result<ChannelPatterns> wanted = ChannelPatterns::parse(patterns);
    if (!wanted) return Error{wanted.error()};
    std::error_code problem;
    if (fs::directory_iterator(systemPathOf(root_), problem); problem)
      return Error{root_ + QStringLiteral(": cannot be read: ") + QString::fromStdString(problem.message())};
    std::map<ChannelCodes, SdsChannel> found;
    forEachChannelFolder(root_, unreadable, [&](const ChannelFolder& folder) {
      for (const fs::path& path : entriesOf(folder.path, unreadable)) {
        const std::optional<DayFile> file = dayFileOf(path, folder);
        if (!file) continue;
        const ChannelCodes codes = {folder.network, folder.station, file->location, folder.channel};
        if (wanted->select(codes)) addDay(found, codes, file->day);
      }
      return !stop.stop_requested();
    });
    std::vector<SdsChannel> channels;
    channels.reserve(found.size());
    for (const auto& [codes, channel] : found)
      channels.push_back(channel);
    return channels;
  });
}

QStringList SdsArchive::dayFiles(const ChannelCodes& codes, const QDate& from, const QDate& to) const noexcept {
  QStringList paths;
  const Status listed = guarded(root_, [&] {
    const auto& [network, station, location, channel] = codes;
    for (const fs::path& year : entriesOf(systemPathOf(root_))) {
      if (!isYear(year)) continue;
      const int number = nameOf(year).toInt();
      if ((from.isValid() && number < from.year()) || (to.isValid() && number > to.year())) continue;
      const fs::path path =
          year / systemPathOf(network) / systemPathOf(station) / systemPathOf(channel + QLatin1String(kWaveforms));
      const ChannelFolder folder{path, nameOf(year), network, station, channel};
      for (const fs::path& entry : entriesOf(path)) {
        const std::optional<DayFile> file = dayFileOf(entry, folder);
        if (!file || file->location != location) continue;
        if ((from.isValid() && file->day < from) || (to.isValid() && file->day > to)) continue;
        paths.append(fileNameFromBytes(file->path.native()));
      }
    }
    return Status();
  });
  return listed ? paths : QStringList();
}

QStringList SdsArchive::files(const ChannelCodes& codes, const QDateTime& from, const QDateTime& to) const noexcept {
  const QDate first = from.toUTC().date();
  QStringList paths = dayFiles(codes, first, to.toUTC().date());
  if (!from.isValid()) return paths;
  const QDate before = first.addDays(-1);
  const QStringList earlier = dayFiles(codes, before, before);
  // Where its end is not known it is better read.
  if (earlier.isEmpty()) return paths;
  const std::optional<ChannelOutline> ends = endsOf(earlier.first());
  if (!ends || ends->end >= from) paths.prepend(earlier.first());
  return paths;
}

ChannelOutline SdsArchive::span(const SdsChannel& channel) const noexcept {
  ChannelOutline outline;
  outline.codes = channel.codes;
  outline.start = channel.firstDay.startOfDay(Qt::UTC);
  outline.end = channel.lastDay.endOfDay(Qt::UTC);
  const QStringList first = dayFiles(channel.codes, channel.firstDay, channel.firstDay);
  const QStringList last = dayFiles(channel.codes, channel.lastDay, channel.lastDay);
  if (const auto ends = first.isEmpty() ? std::nullopt : endsOf(first.first())) {
    outline.start = ends->start;
    outline.rateHz = ends->rateHz;
  }
  if (const auto ends = last.isEmpty() ? std::nullopt : endsOf(last.first())) outline.end = ends->end;
  return outline;
}

Result<SeismogramFile> SdsArchive::recordsOf(const ChannelCodes& codes, const QDateTime& from, const QDateTime& to,
                                             const std::optional<IndexCache>& cache) const noexcept {
  return guarded(root_, [&]() -> Result<SeismogramFile> {
    const QStringList paths = files(codes, from, to);
    Result<SeismogramFile> opened = paths.isEmpty() ? SeismogramFile() : openJoinedFiles(paths, {}, cache);
    if (!opened) return opened;
    SeismogramFile within{{}, opened->notes};
    for (const auto& record : opened->records) {
      if (auto part = cutTo(record, from, to)) within.records.push_back(std::move(part));
    }
    if (!within.records.empty()) return within;
    return Error{root_ + QStringLiteral(": the archive has no samples of ") + channelName(codes) +
                 timeSpanText(from, to)};
  });
}

Result<SeismogramFile> SdsArchive::records(const QStringList& patterns, const QDateTime& from, const QDateTime& to,
                                           const std::optional<IndexCache>& cache) const noexcept {
  return guarded(root_, [&]() -> Result<SeismogramFile> {
    const Result<std::vector<SdsChannel>> channels = this->channels(patterns);
    if (!channels) return Error{channels.error()};
    if (channels->empty()) return Error{root_ + QStringLiteral(": the archive has no channel that is selected")};
    SeismogramFile all;
    for (const SdsChannel& channel : *channels) {
      const Result<SeismogramFile> some = recordsOf(channel.codes, from, to, cache);
      if (!some) {
        all.notes.append(some.error());
        continue;
      }
      all.notes += some->notes;
      all.records.insert(all.records.end(), some->records.begin(), some->records.end());
    }
    if (all.records.empty()) return Error{all.notes.value(0)};
    return all;
  });
}

} // namespace xov
