#include "apps/desk/files/FileListing.h"

#include "apps/xov/inputs/ColumnFile.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/grid/XyzGrid.h>
#include <XOV_Graphics/seismic/io/Readers.h>
#include <XOV_Graphics/seismic/io/archive/SdsArchive.h>
#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/seismic/io/stations/InventoryReader.h>
#include <algorithm>
#include <filesystem>
#include <system_error>

namespace xov::desk {

namespace {

namespace fs = std::filesystem;

constexpr qint64 kMostTextBytes = qint64(256) << 20; // of a file that is read whole to be listed

QString translated(const char* text) { return QCoreApplication::translate("FileListing", text); }

/// "events: 3", which is right with any number.
QString counted(const char* what, std::size_t count) {
  return QStringLiteral("%1: %2").arg(translated(what)).arg(count);
}

fs::path pathOnDisk(const QString& name) { return fileNameBytes(name).toStdString(); }

QString nameOnDisk(const fs::path& path) { return fileNameFromBytes(path.native()); }

bool isHiddenName(const fs::path& path) { return path.filename().native().starts_with('.'); }

bool isYearName(const fs::path& path) {
  const std::string name = path.filename().native();
  return name.size() == 4 && std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

/// Walks through folders.
class FolderWalk {
public:
  FolderWalk(FoundPaths& found, const std::stop_token& stop) : found_(found), stop_(stop) {}

  void walk(const fs::path& folder) {
    std::vector<fs::path> files, folders;
    std::error_code problem;
    fs::directory_iterator entry(folder, problem);
    for (const fs::directory_iterator end; !problem && entry != end && !stop_.stop_requested();
         entry.increment(problem)) {
      std::error_code unknown;
      if (isHiddenName(entry->path())) continue;
      if (entry->is_directory(unknown) && !entry->is_symlink(unknown))
        folders.push_back(entry->path());
      else if (entry->is_regular_file(unknown))
        files.push_back(entry->path());
    }
    const QString name = nameOnDisk(folder);
    if (problem)
      found_.leftOut.push_back(
          {name, name + translated(": cannot be read: ") + QString::fromStdString(problem.message())});
    std::ranges::sort(files);
    std::ranges::sort(folders);
    if (std::ranges::any_of(folders, isYearName) && SdsArchive::isArchive(name)) {
      found_.archives.append(name);
      return;
    }
    for (const fs::path& file : files)
      found_.files.append(nameOnDisk(file));
    for (const fs::path& below : folders) {
      if (stop_.stop_requested()) return;
      walk(below);
    }
  }

private:
  FoundPaths& found_;
  const std::stop_token& stop_;
};

FileListing refused(const QString& path, const QString& reason) { return {{}, {{path, reason}}}; }

FileEntry entryOf(FileKind kind, const QString& path, const QString& what) {
  FileEntry entry{kind, path, {}, what};
  entry.channel.sampleCount = -1;
  entry.channel.pieceCount = 0;
  return entry;
}

FileListing listSeismograms(const QString& path, const SeismogramOutline& outline) {
  FileListing listing;
  for (const ChannelOutline& channel : outline.channels)
    listing.entries.push_back({FileKind::Seismograms, path, channel, outline.format});
  return listing;
}

FileListing listEvents(const QString& path, const EventFile& file) {
  FileEntry entry = entryOf(FileKind::Events, path, counted("events", file.events.size()));
  for (const auto& event : file.events) {
    const QDateTime time = event->oDate().toUTC();
    if (!time.isValid()) continue;
    QDateTime& start = entry.channel.start;
    QDateTime& end = entry.channel.end;
    start = start.isValid() ? std::min(start, time) : time;
    end = end.isValid() ? std::max(end, time) : time;
  }
  return {{entry}, {}};
}

FileListing listStations(const QString& path, const StationInventory& inventory) {
  QString what = counted("stations", inventory.stations.size());
  if (!inventory.channels.empty()) what += QStringLiteral(", ") + counted("channels", inventory.channels.size());
  return {{entryOf(FileKind::Stations, path, what)}, {}};
}

/// Whether it is a file of stations: places without codes are rather two columns of numbers.
bool hasStations(const Result<StationInventory>& inventory) {
  return inventory && (!inventory->channels.empty() ||
                       std::ranges::any_of(inventory->stations,
                                           [](const InventoryStation& station) { return !station.code.isEmpty(); }));
}

FileListing listOtherFile(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QLatin1String("nxy")) return {{entryOf(FileKind::Lines, path, translated("lines"))}, {}};
  if (QFileInfo(path).size() > kMostTextBytes)
    return refused(path, path + translated(": is no seismogram file, and too large to be anything else"));
  if (looksLikeEvents(path)) {
    const Result<EventFile> events = readEvents(path);
    if (events) return listEvents(path, *events);
    const Result<StationInventory> inventory = readInventory(path);
    return hasStations(inventory) ? listStations(path, *inventory) : refused(path, events.error());
  }
  if (suffix == QLatin1String("xyz")) {
    const Result<Grid> grid = readXyzGrid(path);
    if (!grid) return refused(path, grid.error());
    return {{entryOf(FileKind::Grid, path, translated("%1 × %2 cells").arg(grid->columns).arg(grid->rows))}, {}};
  }
  if (const Result<StationInventory> inventory = readInventory(path); hasStations(inventory))
    return listStations(path, *inventory);
  const Result<cli::ColumnData> columns = cli::readColumns(path, {QStringLiteral("1"), QStringLiteral("2")});
  if (columns && !columns->columns.empty() && !columns->columns.front().empty())
    return {{entryOf(FileKind::Columns, path, counted("rows", columns->columns.front().size()))}, {}};
  return refused(path, path + translated(": holds no seismograms, events, stations, grid or columns"));
}

} // namespace

QString fileKindText(FileKind kind) {
  switch (kind) {
  case FileKind::Seismograms:
    return translated("Seismogram");
  case FileKind::Archive:
    return translated("Archive");
  case FileKind::Events:
    return translated("Events");
  case FileKind::Stations:
    return translated("Stations");
  case FileKind::Grid:
    return translated("Grid");
  case FileKind::Columns:
    return translated("Columns");
  case FileKind::Lines:
    break;
  }
  return translated("Lines");
}

FoundPaths findFiles(const QStringList& paths, const std::stop_token& stop) {
  FoundPaths found;
  for (const QString& path : paths) {
    if (stop.stop_requested()) break;
    std::error_code unknown;
    // In full, and without what leads back, so that a file has one name.
    const fs::path full = fs::absolute(pathOnDisk(path), unknown).lexically_normal();
    if (!fs::is_directory(full, unknown)) {
      found.files.append(nameOnDisk(full));
      continue;
    }
    const qsizetype before = found.files.size() + found.archives.size() + qsizetype(found.leftOut.size());
    FolderWalk(found, stop).walk(full);
    if (found.files.size() + found.archives.size() + qsizetype(found.leftOut.size()) == before &&
        !stop.stop_requested())
      found.leftOut.push_back({path, path + translated(": the folder holds no files")});
  }
  return found;
}

FileListing listFile(const QString& path, const std::stop_token& stop) {
  const Result<SeismogramOutline> outline = outlineSeismogramFile(path, stop);
  if (outline) return listSeismograms(path, *outline);
  std::error_code unknown;
  const bool isText = fs::is_regular_file(pathOnDisk(path), unknown) && seismogramFormatOf(path).isEmpty() &&
                      fs::file_size(pathOnDisk(path), unknown) > 0;
  return isText && !stop.stop_requested() ? listOtherFile(path) : refused(path, outline.error());
}

FileListing listArchive(const QString& root, const std::stop_token& stop) {
  const SdsArchive archive(root);
  const Result<std::vector<SdsChannel>> channels = archive.channels({}, stop);
  if (!channels) return refused(root, channels.error());
  FileListing listing;
  for (const SdsChannel& channel : *channels) {
    if (stop.stop_requested()) break;
    FileEntry entry = entryOf(FileKind::Archive, root, counted("days", std::size_t(channel.dayCount)));
    entry.channel = archive.span(channel);
    entry.channel.sampleCount = -1;
    listing.entries.push_back(std::move(entry));
  }
  return listing;
}

} // namespace xov::desk
