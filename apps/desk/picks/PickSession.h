#pragma once

#include <QObject>
#include <QUndoStack>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/seismic/io/picks/PickJournal.h>
#include <XOV_Graphics/seismic/picks/PickDocument.h>
#include <functional>
#include <memory>
#include <optional>

namespace xov::desk {

/// The picks of a window: their document, each change of which can be taken back and is in the journal before the
/// next one, and the files that they are read from and written to.
class PickSession : public QObject {
  Q_OBJECT
public:
  PickSession(QUndoStack& undoStack, QObject* parent = nullptr);
  ~PickSession() override;

  PickDocument& document() { return *document_; }
  bool isModified() const { return document_->isModified(); }
  /// The file that save() writes; empty before the first one.
  const QString& path() const { return path_; }

  /// Keeps the journal in that folder, and takes in what programs that have died have left there. How many picks were
  /// changed by that.
  std::size_t keepJournal(const QString& folder);
  /// Takes the picks of a file in.
  bool open(const QString& path);
  /// Who knows the event that the picks are of; else that of the file that was opened first is kept.
  void setEventSource(std::function<std::optional<HypocentreValues>()> source) { eventSource_ = std::move(source); }
  /// Writes all picks: a table where the name ends in .csv, else QuakeML, with the event where it is known. The
  /// journal goes away.
  bool save(const QString& path);
  /// Writes copies of these SAC files into a folder, with the picks of their channels. How many were written.
  int saveIntoCopies(const QStringList& files, const QString& folder);
  /// What is not saved is not wanted.
  void giveUp();

Q_SIGNALS:
  /// A line for the user.
  void said(const QString& text);

private:
  void sayAll(const QStringList& notes);

  QUndoStack& undoStack_;
  std::shared_ptr<PickDocument> document_; // shared with the steps on the list, which may outlive this
  std::unique_ptr<PickJournal> journal_;
  QString path_;
  std::function<std::optional<HypocentreValues>()> eventSource_;
  std::optional<HypocentreValues> event_; // of the file at path_
  bool hasComplained_ = false;            // of the journal
};

} // namespace xov::desk
