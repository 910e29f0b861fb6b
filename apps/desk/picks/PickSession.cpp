#include "apps/desk/picks/PickSession.h"

#include <QDir>
#include <QFileInfo>
#include <QUndoCommand>

#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/seismic/io/picks/PickFiles.h>
#include <XOV_Graphics/seismic/io/picks/SacPicks.h>

namespace xov::desk {

namespace {

/// A change of a pick on the list. It has been done when it is put there.
class PickStep : public QUndoCommand {
public:
  PickStep(const std::shared_ptr<PickDocument>& document, const PickChange& change)
      : QUndoCommand(textOf(change)),
        document_(document),
        change_(change) {}
  void undo() override { apply(change_.reversed()); }
  void redo() override {
    if (isDone_) apply(change_);
    isDone_ = true;
  }

private:
  static QString textOf(const PickChange& change) {
    if (!change.before) return QObject::tr("Set pick %1").arg(change.after->phase);
    return change.after ? QObject::tr("Change pick %1").arg(change.before->phase)
                        : QObject::tr("Remove pick %1").arg(change.before->phase);
  }
  void apply(const PickChange& change) {
    if (const auto document = document_.lock()) document->apply(change);
  }

  std::weak_ptr<PickDocument> document_;
  PickChange change_;
  bool isDone_ = false;
};

} // namespace

PickSession::PickSession(QUndoStack& undoStack, QObject* parent)
    : QObject(parent),
      undoStack_(undoStack),
      document_(std::make_shared<PickDocument>()) {
  connect(document_.get(), &PickDocument::edited, this,
          [this](const PickChange& change) { undoStack_.push(new PickStep(document_, change)); });
  connect(document_.get(), &PickDocument::changed, this, [this](const PickChange& change) {
    if (!journal_) return;
    const Status status = journal_->append(change);
    if (!status && !hasComplained_) Q_EMIT said(status.error());
    hasComplained_ = !status;
  });
}

PickSession::~PickSession() = default;

void PickSession::sayAll(const QStringList& notes) {
  for (const QString& note : notes)
    Q_EMIT said(note);
}

std::size_t PickSession::keepJournal(const QString& folder) {
  journal_ = std::make_unique<PickJournal>(folder);
  std::size_t steps = 0;
  for (const QString& left : journal_->leftBehind()) {
    const Result<RecoveredPicks> found = journal_->recover(left, *document_);
    if (!found) {
      Q_EMIT said(found.error());
      continue;
    }
    sayAll(found->notes);
    steps += found->steps.size();
    if (path_.isEmpty()) path_ = found->document;
  }
  if (steps > 0) Q_EMIT said(tr("Picks that were not saved are back: %n change(s)", nullptr, int(steps)));
  return steps;
}

bool PickSession::open(const QString& path) {
  const Result<PickFile> file = readPicks(path);
  if (!file) {
    Q_EMIT said(file.error());
    return false;
  }
  const bool isFirst = document_->picks().empty();
  document_->take(file->picks);
  if (isFirst && path_.isEmpty()) {
    path_ = path;
    const Result<EventFile> events = readEvents(path);
    if (events && events->events.size() == 1) event_ = events->events.front()->values();
  }
  if (journal_) journal_->setDocument(path_);
  sayAll(file->notes);
  return true;
}

bool PickSession::save(const QString& path) {
  const bool isTable = path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive);
  const std::optional<HypocentreValues> known = eventSource_ ? eventSource_() : std::nullopt;
  const std::optional<HypocentreValues>& values = known ? known : event_;
  const std::unique_ptr<Hypocentre> event = values ? std::make_unique<Hypocentre>(*values) : nullptr;
  const Status status =
      writePicks(document_->picks(), path, isTable ? PickFormat::Table : PickFormat::QuakeMl, event.get());
  if (!status) {
    Q_EMIT said(status.error());
    return false;
  }
  path_ = path;
  document_->markSaved();
  if (journal_) {
    journal_->clear();
    journal_->setDocument(path);
  }
  Q_EMIT said(tr("%n pick(s) saved", nullptr, int(document_->picks().size())));
  return true;
}

int PickSession::saveIntoCopies(const QStringList& files, const QString& folder) {
  int written = 0;
  for (const QString& file : files) {
    const QString target = QDir(folder).filePath(QFileInfo(file).fileName());
    if (QFileInfo(target) == QFileInfo(file)) {
      Q_EMIT said(tr("%1: the copy would take the place of the file itself").arg(target));
      continue;
    }
    const Result<QStringList> notes = writeSacPicks(file, target, document_->picks());
    if (!notes) {
      Q_EMIT said(notes.error());
      continue;
    }
    sayAll(*notes);
    ++written;
  }
  Q_EMIT said(tr("%n copies with picks written", nullptr, written));
  return written;
}

void PickSession::giveUp() {
  document_->markSaved();
  if (journal_) journal_->clear();
}

} // namespace xov::desk
