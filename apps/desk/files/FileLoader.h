#pragma once

#include "apps/desk/files/FileListing.h"

#include <QObject>
#include <QThreadPool>

#include <map>

namespace xov::desk {

/// Lists files in threads of its own and hands over what they hold, in the order of the files, in the thread that it
/// lives in. Destroying it gives up what is under way.
class FileLoader : public QObject {
  Q_OBJECT
public:
  explicit FileLoader(QObject* parent = nullptr);
  ~FileLoader() override;

  /// Lists files and folders, after those that are under way.
  void load(const QStringList& paths);
  /// Gives up what is under way and what was to follow. What has been handed over stays.
  void cancel();

  bool isBusy() const { return isBusy_; }

Q_SIGNALS:
  void found(const xov::desk::FileEntries& entries);
  void leftOut(const QString& path, const QString& reason);
  /// How many files have been looked into, of how many; 0 while folders are looked through.
  void advanced(qint64 done, qint64 total);
  /// All has been handed over, or was given up.
  void finished(bool isCancelled);

private:
  void startNext();
  void takePaths(const FoundPaths& found);
  void takeBatch(int number, int count, const FileListing& listing);
  void deliver();
  void end(bool isCancelled);

  template <typename Work>
  void runAside(Work work);

  QThreadPool threads_;
  std::stop_source stop_;
  int generation_ = 0; ///< of what is under way; what comes of an earlier one counts no more
  bool isBusy_ = false;
  std::vector<QStringList> waiting_;
  int batches_ = 0;
  int nextBatch_ = 0;
  struct Listed {
    int fileCount;
    FileListing listing;
  };
  std::map<int, Listed> early_; ///< batches that came before those in front of them
  qint64 done_ = 0;
  qint64 total_ = 0;
};

} // namespace xov::desk
