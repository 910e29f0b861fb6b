#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/Hypocentre.h"

#include <QStringList>

#include <deque>
#include <map>

namespace xov {

/// How much EventFiles keeps.
struct EventFilesLimits {
  std::size_t files = 10000;  ///< of a folder, those that changed last
  std::size_t events = 20000; ///< those with the latest origin times
  qint64 fileBytes = qint64(64) << 20;
};

/// The events of a file, or of the files of a folder, as they change. Looks and reads when it is told to; knows no
/// clock and no event loop. Times are milliseconds since 1970.
///
/// Others write these files at any time. One that cannot be read may not be whole yet: what it held before stays, it
/// is read again when it has changed, and it is said to be damaged only after it has not for a while. A file that
/// changed so lately that the next change might not show in its time is read once more.
class EventFiles {
public:
  EventFiles(QString path, const EventFilesLimits& limits);

  /// Looks which files are there; new and changed ones are read next. Those that are damaged for `settleMs` are said.
  void look(qint64 nowMs, qint64 settleMs);

  /// Whether readNext() has a file to read.
  bool hasUnread() const { return !unread_.empty(); }
  void readNext(qint64 nowMs);

  /// Whether look() is worthwhile soon: a file has only just changed, or cannot be read yet.
  bool isUnsettled() const;
  /// Whether events have come, changed or gone since the last call.
  bool takeChanged() { return std::exchange(hasChanged_, false); }
  /// Lines for the user since the last call.
  QStringList takeMessages() { return std::exchange(messages_, {}); }

  /// All events in the order of their times. Of several with one identifier that of the file that changed last.
  HypocentreArray events() const;

private:
  struct File {
    qint64 bytes = -1;
    qint64 changedMs = 0;
    qint64 readMs = 0;     // when it was read last
    std::size_t hash = 0;  // of what it held then
    bool isFresh = false;  // changed just before it was read
    bool isQueued = false; // to be read
    QString problem;       // not said yet
    qsizetype notes = 0;   // that were said
    HypocentreArray events;
  };
  struct Found {
    QString path;
    qint64 bytes = 0;
    qint64 changedMs = 0;
  };

  std::vector<Found> filesThere();
  void forgetAllBut(const std::vector<Found>& found);
  void take(File& file, const QString& path, const QByteArray& contents);
  void forgetEarliest();
  void sayOnce(const QString& line, QString& last);

  QString path_;
  EventFilesLimits limits_;
  std::map<QString, File> files_;
  std::deque<QString> unread_;
  bool hasChanged_ = false;
  QStringList messages_;
  QString lastPathFault_;
};

} // namespace xov
