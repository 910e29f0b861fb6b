#include "apps/desk/files/FileLoader.h"

#include <XOV_Graphics/base/Threads.h>
#include <algorithm>
#include <utility>

namespace xov::desk {

namespace {

constexpr qsizetype kBatch = 32; // files that are handed over together

FileListing listFiles(const QStringList& paths, const std::stop_token& stop) {
  FileListing all;
  for (const QString& path : paths) {
    if (stop.stop_requested()) break;
    FileListing one = listFile(path, stop);
    std::ranges::move(one.entries, std::back_inserter(all.entries));
    std::ranges::move(one.leftOut, std::back_inserter(all.leftOut));
  }
  return all;
}

} // namespace

FileLoader::FileLoader(QObject* parent) : QObject(parent) { threads_.setMaxThreadCount(threadCount()); }

FileLoader::~FileLoader() {
  stop_.request_stop();
  threads_.clear();
  threads_.waitForDone();
}

void FileLoader::load(const QStringList& paths) {
  if (paths.isEmpty()) return;
  waiting_.push_back(paths);
  if (!isBusy_) startNext();
}

void FileLoader::cancel() {
  if (!isBusy_) return;
  waiting_.clear();
  stop_.request_stop();
  threads_.clear();
  stop_ = {};
  ++generation_;
  end(true);
}

/// Does work in another thread and what it gives in this one, unless that was given up meanwhile.
template <typename Work>
void FileLoader::runAside(Work work) {
  threads_.start([this, work = std::move(work), stop = stop_.get_token(), generation = generation_] {
    auto take = work(stop);
    QMetaObject::invokeMethod(
        this,
        [this, generation, take = std::move(take)] {
          if (generation == generation_) take();
        },
        Qt::QueuedConnection);
  });
}

void FileLoader::startNext() {
  isBusy_ = true;
  batches_ = nextBatch_ = 0;
  done_ = total_ = 0;
  early_.clear();
  const QStringList paths = waiting_.front();
  waiting_.erase(waiting_.begin());
  Q_EMIT advanced(0, 0);
  runAside([this, paths](const std::stop_token& stop) {
    return [this, found = findFiles(paths, stop)] { takePaths(found); };
  });
}

void FileLoader::takePaths(const FoundPaths& found) {
  const int generation = generation_;
  for (const LeftOutFile& file : found.leftOut)
    Q_EMIT leftOut(file.path, file.reason);
  if (generation != generation_) return;
  total_ = found.files.size() + found.archives.size();
  for (const QString& root : found.archives) {
    runAside([this, root, number = batches_++](const std::stop_token& stop) {
      return [this, number, listing = listArchive(root, stop)] { takeBatch(number, 1, listing); };
    });
  }
  for (qsizetype first = 0; first < found.files.size(); first += kBatch) {
    const QStringList some = found.files.mid(first, kBatch);
    runAside([this, some, number = batches_++](const std::stop_token& stop) {
      return [this, number, count = int(some.size()), listing = listFiles(some, stop)] {
        takeBatch(number, count, listing);
      };
    });
  }
  deliver();
}

void FileLoader::takeBatch(int number, int count, const FileListing& listing) {
  early_.insert({number, {count, listing}});
  deliver();
}

void FileLoader::deliver() {
  const int generation = generation_;
  while (!early_.empty() && early_.begin()->first == nextBatch_) {
    const Listed batch = std::move(early_.begin()->second);
    early_.erase(early_.begin());
    ++nextBatch_;
    done_ += batch.fileCount;
    if (!batch.listing.entries.empty()) Q_EMIT found(batch.listing.entries);
    for (const LeftOutFile& file : batch.listing.leftOut)
      Q_EMIT leftOut(file.path, file.reason);
    Q_EMIT advanced(done_, total_);
    if (generation != generation_) return; // somebody who heard it has given up
  }
  if (nextBatch_ < batches_) return;
  if (waiting_.empty())
    end(false);
  else
    startNext();
}

void FileLoader::end(bool isCancelled) {
  isBusy_ = false;
  early_.clear();
  Q_EMIT finished(isCancelled);
}

} // namespace xov::desk
