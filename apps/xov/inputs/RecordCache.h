#pragma once

#include "apps/xov/inputs/Records.h"
#include "apps/xov/terminal/ThreadScope.h"

#include <QByteArray>
#include <QMutex>

#include <cstddef>
#include <functional>
#include <list>
#include <optional>

namespace xov::cli {

/// Records as they were read and as steps have made them, for a program that runs commands again and again. What was
/// used longest ago goes first. May be used by several threads.
///
/// Records are shared, not copied: who changes one that it got from here gets a copy, as changedRecord() does.
class RecordCache {
public:
  /// What it may hold at most, in bytes of samples. What is larger by itself is not kept.
  explicit RecordCache(std::size_t most) : most_(most) {}

  struct Entry {
    Records records;
    QStringList said; ///< while they were made
  };
  std::optional<Entry> find(const QByteArray& origin);
  /// Keeps records whose samples are in memory; of others, and of windows on others, nothing.
  void keep(const QByteArray& origin, const Entry& entry);

  std::size_t bytes() const;

private:
  struct Kept {
    QByteArray origin;
    Entry entry;
    std::size_t bytes;
  };
  mutable QMutex mutex_;
  std::size_t most_;
  std::size_t bytes_ = 0;
  std::list<Kept> kept_; // the one used last in front
};

/// While this lives, commands that run in the thread that it was made in use this cache.
using RecordCacheScope = ThreadScope<RecordCache*>;

/// The cache of this thread; nullptr where each command reads for itself.
inline RecordCache* currentRecordCache() { return RecordCacheScope::current(); }

/// A name for what is made in a way that the texts tell.
QByteArray originOf(const QStringList& texts);

/// A file as it is now: its name, size and time. Empty for what is none, such as a pipe.
QString fileStamp(const QString& path);

/// Records of that origin from the cache, saying again what there was to say, or those that `make` makes, which are
/// kept there unless something has failed. An empty origin is not looked for.
Records cachedRecords(const QByteArray& origin, const std::function<Records()>& make);

} // namespace xov::cli
