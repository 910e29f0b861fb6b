#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/picks/PickDocument.h"

#include <QFile>
#include <QLockFile>
#include <QStringList>

#include <memory>

namespace xov {

/// What a journal tells.
struct XOV_EXPORT RecoveredPicks {
  /// What became of one pick.
  struct Step {
    /// Of the pick.
    QString id;
    std::optional<Pick> pick; ///< nothing where it was removed
  };
  QString document;        ///< the file that the picks were of; empty for none
  std::vector<Step> steps; ///< in the order in which they were done
  QStringList notes;       ///< such as a damaged end, one line each
};

/// A journal of what a user does to picks, so that a crash loses nothing: a text file to which each change is
/// appended, and which the disk has before append() is back. It goes away when the picks are saved; one that is still
/// there belongs to a program that has died.
///
/// Journals lie in a folder, one for each program that is running. A line that is not whole, as a crash may leave the
/// last one, ends what is read.
class XOV_EXPORT PickJournal {
public:
  /// A journal in that folder, which is made where it is missing; nothing is written yet.
  explicit PickJournal(QString folder);
  ~PickJournal();
  PickJournal(const PickJournal&) = delete;
  PickJournal& operator=(const PickJournal&) = delete;

  /// The journals in the folder that no running program writes.
  QStringList leftBehind() const;
  /// Reads a journal. Errors are one line.
  static Result<RecoveredPicks> read(const QString& path) noexcept;

  /// Does what a journal tells to a document (PickDocument::restore()), keeps it in this journal and takes the other
  /// one away. Of one that cannot be read, or kept, nothing is done.
  Result<RecoveredPicks> recover(const QString& path, PickDocument& document) noexcept;

  /// The file that the picks are of, for the next journal's first line.
  void setDocument(const QString& path) { document_ = path; }
  /// Writes one change. What cannot be written is told in one line; the document is not changed by that.
  Status append(const PickChange& change) noexcept;
  /// Takes the journal away: the picks are saved, or nobody wants them.
  void clear();
  /// Where this one is written; empty before the first change.
  QString path() const { return file_.fileName(); }

private:
  Status open();
  Status write(const QByteArray& line);
  void cutTo(qint64 end);

  QString folder_;
  QString document_;
  QFile file_;
  std::unique_ptr<QLockFile> lock_;
};

} // namespace xov
