#pragma once

#include "apps/desk/window/Workspace.h"

#include <QMainWindow>
#include <QUndoStack>

#include <map>

namespace xov::desk {

class FileActions;
class Memory;
class OutputActions;
class PicksTool;
class ThemeActions;

/// The window of the desk: panes in the middle, tools at the sides, menus, and the list of what can be taken back.
class MainWindow : public QMainWindow {
  Q_OBJECT
public:
  explicit MainWindow(CommandRunner run, QWidget* parent = nullptr);
  ~MainWindow() override;

  /// Lists files and folders. Of files, unless they are very many, it shows what suits them as soon as it has looked
  /// into them, without holding up the window; of folders what the user chooses from the list.
  void openFiles(const QStringList& paths);
  /// Opens a pane; can be taken back.
  Pane* openPane(const PlotRequest& request);
  void closePane(Pane* pane);
  /// Gives a pane another request; can be taken back under that name. Changes of the same `subject`, such as a
  /// property, one after the other are taken back together.
  void changeRequest(Pane* pane, const PlotRequest& request, const QString& text, const QString& subject = {});

  std::vector<Pane*> panes() const { return workspace_->panes(); }
  Pane* currentPane() const { return workspace_->currentPane(); }
  Workspace& workspace() { return *workspace_; }
  QUndoStack& undoStack() { return undoStack_; }

  Memory& memory() { return *memory_; }
  const OutputActions& output() const { return *output_; }
  PicksTool& picks() { return *picks_; }

  /// Puts a tool beside the panes, with an entry in the menu of tools.
  QDockWidget* addToolDock(QWidget* widget, const QString& title, const QString& objectName, Qt::DockWidgetArea area);

  /// Gives tools the width that they have at first, and plots the rest; once the window is shown.
  void settleTools();

  /// The menu of that name ("file", "edit", "pane", "tools", "help"); must be one of these.
  QMenu* menu(const QString& name) const { return menus_.at(name); }
  /// Adds an action to a menu. The name is the action's object name.
  QAction* addAction(const QString& menu, const QString& name, const QString& text, const QKeySequence& keys,
                     std::function<void()> act);

Q_SIGNALS:
  void paneOpened(xov::desk::Pane* pane);
  void currentPaneChanged(xov::desk::Pane* pane);
  /// Files or folders were opened, whatever is shown of them.
  void filesOpened(const QStringList& paths);
  /// The window closes; what is worth keeping is there yet.
  void closing();

protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void buildMenus();
  void buildPaneMenu();
  void buildProperties();
  void showCurrent();

  // Commands that go with the list refer to the workspace, a child of the window, in what they do but not in their
  // end.
  QUndoStack undoStack_;
  Workspace* workspace_;
  std::map<QString, QMenu*> menus_;
  FileActions* files_;
  OutputActions* output_;
  PicksTool* picks_;
  ThemeActions* themes_;
  Memory* memory_;
};

} // namespace xov::desk
