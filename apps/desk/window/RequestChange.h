#pragma once

#include "apps/desk/window/Workspace.h"

#include <QUndoCommand>

namespace xov::desk {

/// A pane that is opened or closed, to be taken back.
class PaneOpening : public QUndoCommand {
public:
  enum class Kind : std::uint8_t { Open, Close };
  /// `number` of the pane to close; 0 for one to open.
  PaneOpening(Workspace& workspace, Kind kind, const PlotRequest& request, int number);
  void undo() override;
  void redo() override;

private:
  void open();
  void close();

  Workspace& workspace_;
  Kind kind_;
  PlotRequest request_;
  int number_;
};

/// Another request of a pane, to be taken back. Changes of the same value one after the other are one.
class RequestChange : public QUndoCommand {
public:
  /// `subject` tells what changes, such as a property's name; changes without one stay apart.
  RequestChange(Workspace& workspace, int number, const PlotRequest& after, const QString& text,
                const QString& subject);
  void undo() override;
  void redo() override;
  int id() const override { return 1; }
  bool mergeWith(const QUndoCommand* other) override;

private:
  void set(const PlotRequest& request);

  Workspace& workspace_;
  int number_;
  PlotRequest before_;
  PlotRequest after_;
  QString subject_;
};

} // namespace xov::desk
