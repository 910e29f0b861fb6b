#include "XOV_Graphics/seismic/realtime/EventFiles.h"

#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/seismic/io/events/EventReaders.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <set>

namespace xov {

namespace {

// File systems know times of changes to two seconds at worst.
constexpr qint64 kFreshMs = 2000;
// A folder is gone through in portions of that many times the files that are kept.
constexpr std::size_t kPortion = 2;

// Editors and programs that write a file beside its place give it such names.
bool isUnfinishedName(const QString& name) {
  return name.endsWith('~') || name.endsWith(QLatin1String(".tmp")) || name.endsWith(QLatin1String(".part"));
}

std::size_t hashOf(const QByteArray& contents) { return qHash(QByteArrayView(contents), 0); }

QDateTime originTimeOf(const std::shared_ptr<Hypocentre>& event) { return event->values().originTime; }

} // namespace

EventFiles::EventFiles(QString path, const EventFilesLimits& limits) : path_(std::move(path)), limits_(limits) {
  limits_.files = std::max<std::size_t>(limits_.files, 1);
  limits_.events = std::max<std::size_t>(limits_.events, 1);
}

void EventFiles::sayOnce(const QString& line, QString& last) {
  if (!line.isEmpty() && line != last) messages_.append(line);
  last = line;
}

std::vector<EventFiles::Found> EventFiles::filesThere() {
  std::vector<Found> found;
  const auto add = [&](const QFileInfo& file) {
    found.push_back({file.filePath(), file.size(), file.lastModified().toMSecsSinceEpoch()});
  };
  const QFileInfo whole(path_);
  if (!whole.exists()) {
    sayOnce(path_ + QStringLiteral(": there is no such file or folder"), lastPathFault_);
    return found;
  }
  if (!whole.isDir()) {
    add(whole);
    sayOnce({}, lastPathFault_);
    return found;
  }
  if (!whole.isReadable()) {
    sayOnce(path_ + QStringLiteral(": cannot be read"), lastPathFault_);
    return found;
  }
  bool isMore = false;
  const auto keepNewest = [&] {
    if (found.size() <= limits_.files) return;
    std::ranges::nth_element(found, found.begin() + std::ptrdiff_t(limits_.files), std::greater<>(),
                             &Found::changedMs);
    found.resize(limits_.files);
    isMore = true;
  };
  QDirIterator files(path_, QDir::Files);
  while (files.hasNext()) {
    files.next();
    if (isUnfinishedName(files.fileName())) continue;
    add(files.fileInfo());
    if (found.size() >= limits_.files * kPortion) keepNewest();
  }
  keepNewest();
  const QString more =
      QStringLiteral("%1: found more than %2 files; the older ones are left out").arg(path_).arg(limits_.files);
  sayOnce(isMore ? more : QString(), lastPathFault_);
  return found;
}

void EventFiles::forgetAllBut(const std::vector<Found>& found) {
  std::set<QString> there;
  for (const Found& file : found)
    there.insert(file.path);
  std::erase_if(files_, [&](const auto& known) {
    const bool isGone = !there.contains(known.first);
    if (isGone && !known.second.events.empty()) hasChanged_ = true;
    return isGone;
  });
}

void EventFiles::look(qint64 nowMs, qint64 settleMs) {
  const std::vector<Found> found = filesThere();
  forgetAllBut(found);
  for (const Found& there : found) {
    File& file = files_[there.path];
    const bool hasChanged = there.bytes != file.bytes || there.changedMs != file.changedMs;
    if (hasChanged || (file.isFresh && nowMs - file.changedMs > kFreshMs)) {
      file.bytes = there.bytes;
      file.changedMs = there.changedMs;
      if (!std::exchange(file.isQueued, true)) unread_.push_back(there.path);
    } else if (nowMs - file.readMs >= settleMs) {
      if (!file.problem.isEmpty()) messages_.append(std::exchange(file.problem, {}));
    }
  }
}

void EventFiles::readNext(qint64 nowMs) {
  if (unread_.empty()) return;
  const QString path = unread_.front();
  unread_.pop_front();
  const auto known = files_.find(path);
  if (known == files_.end()) return; // gone since
  File& file = known->second;
  const Result<QByteArray> contents = readWholeFile(path, limits_.fileBytes);
  file.isQueued = false;
  file.isFresh = contents && nowMs - file.changedMs < kFreshMs;
  file.readMs = nowMs;
  if (contents) {
    take(file, path, *contents);
  } else {
    file.problem = contents.error();
  }
}

void EventFiles::take(File& file, const QString& path, const QByteArray& contents) {
  const std::size_t hash = hashOf(contents);
  if (file.hash == hash && !contents.isEmpty()) return; // touched, or read once more
  file.hash = hash;
  Result<EventFile> read = parseEvents(contents, path);
  file.problem = read.error();
  if (!read) return;
  EventFile events = std::move(read).value();
  // They count rows: a file that grows would say the same again and again.
  if (events.notes.size() > file.notes) messages_.append(events.notes);
  file.notes = events.notes.size();
  file.events = std::move(events.events);
  hasChanged_ = true;
  forgetEarliest();
}

// Does nothing until there are twice as many as are kept, so that it costs little an event.
void EventFiles::forgetEarliest() {
  std::size_t count = 0;
  for (const auto& [path, file] : files_)
    count += file.events.size();
  if (count < kPortion * limits_.events) return;
  std::vector<QDateTime> times;
  times.reserve(count);
  for (const auto& [path, file] : files_)
    std::ranges::transform(file.events, std::back_inserter(times), originTimeOf);
  const auto earliestKept = times.begin() + std::ptrdiff_t(limits_.events - 1);
  std::ranges::nth_element(times, earliestKept, std::greater<>());
  for (auto& [path, file] : files_)
    std::erase_if(file.events, [&](const auto& event) { return originTimeOf(event) < *earliestKept; });
}

bool EventFiles::isUnsettled() const {
  return std::ranges::any_of(
      files_, [](const auto& known) { return known.second.isFresh || !known.second.problem.isEmpty(); });
}

HypocentreArray EventFiles::events() const {
  std::vector<const File*> newestFirst;
  newestFirst.reserve(files_.size());
  for (const auto& [path, file] : files_)
    newestFirst.push_back(&file);
  std::ranges::stable_sort(newestFirst, std::greater<>(), &File::changedMs);
  std::map<QString, const File*> ids;
  HypocentreArray all;
  for (const File* const file : newestFirst) {
    for (const auto& event : file->events) {
      const QString& id = event->values().id;
      const bool isElsewhere = !id.isEmpty() && ids.try_emplace(id, file).first->second != file;
      if (!isElsewhere) all.push_back(event);
    }
  }
  std::ranges::stable_sort(all, std::less<>(), originTimeOf);
  if (all.size() > limits_.events) all.erase(all.begin(), all.end() - std::ptrdiff_t(limits_.events));
  return all;
}

} // namespace xov
