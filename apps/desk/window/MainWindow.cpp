#include "apps/desk/window/MainWindow.h"

#include "apps/desk/panes/PaneKinds.h"
#include "apps/desk/properties/PropertyPanel.h"
#include "apps/desk/window/BoxTool.h"
#include "apps/desk/window/DrumZoom.h"
#include "apps/desk/window/EventsTool.h"
#include "apps/desk/window/FileActions.h"
#include "apps/desk/window/FilesTool.h"
#include "apps/desk/window/HelpSheet.h"
#include "apps/desk/window/KindActions.h"
#include "apps/desk/window/LiveActions.h"
#include "apps/desk/window/Memory.h"
#include "apps/desk/window/OutputActions.h"
#include "apps/desk/window/PaneHands.h"
#include "apps/desk/window/PaneReadout.h"
#include "apps/desk/window/PicksTool.h"
#include "apps/desk/window/ProcessingTool.h"
#include "apps/desk/window/ReadingFailures.h"
#include "apps/desk/window/RequestChange.h"
#include "apps/desk/window/Theme.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QThread>

#include <algorithm>

namespace xov::desk {

namespace {

constexpr QSize kUsualSize(1200, 800);
constexpr int kMessageMs = 10000;
constexpr qsizetype kMostShownAtOnce = 100; // files; of more the user chooses from their list
constexpr int kToolWidth = 280;

} // namespace

MainWindow::MainWindow(CommandRunner run, QWidget* parent)
    : QMainWindow(parent),
      workspace_(new Workspace(std::move(run), this)) {
  setObjectName(QStringLiteral("desk"));
  setWindowTitle(tr("XOV Desk"));
  resize(kUsualSize.boundedTo(screen()->availableSize())); // which large scale factors make small
  setCentralWidget(workspace_);
  setAcceptDrops(true);
  setDockNestingEnabled(true);
  setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  buildMenus();
  files_ = new FileActions(*this);
  new LiveActions(*this);
  output_ = new OutputActions(*this);
  addAction(QStringLiteral("file"), QStringLiteral("quit"), tr("&Quit"), QKeySequence::Quit, [this] { close(); });
  buildPaneMenu();
  buildProperties();
  auto* const list = new FilesTool(*this);
  new ProcessingTool(*this);
  picks_ = new PicksTool(*this);
  auto* const events = new EventsTool(*this, list->panel());
  themes_ = new ThemeActions(*this);
  memory_ = new Memory(*this, *files_, *list, *themes_);
  new DrumZoom(*this);
  new PaneHands(*this);
  const auto* const boxes = new BoxTool(*this); // behind the hands, whose boxes zoom: it is asked first
  connect(boxes, &BoxTool::mapBoxed, events, &EventsTool::show);
  new PaneReadout(*this);
  new ReadingFailures(*this);
  addAction(QStringLiteral("help"), QStringLiteral("keys"), tr("&Keys…"), QKeySequence::HelpContents,
            [this] { showHelpSheet(*this); });
  statusBar();
  connect(workspace_, &Workspace::paneOpened, this, [this](Pane* pane) {
    connect(pane, &Pane::said, this, [this](const QString& text) { statusBar()->showMessage(text, kMessageMs); });
    connect(pane, &Pane::requestChanged, this, &MainWindow::showCurrent);
    Q_EMIT paneOpened(pane);
  });
  connect(workspace_, &Workspace::currentPaneChanged, this, [this](Pane* pane) {
    showCurrent();
    Q_EMIT currentPaneChanged(pane);
  });
  connect(workspace_, &Workspace::closeAsked, this, [this](int number) { closePane(workspace_->pane(number)); });
}

MainWindow::~MainWindow() {
  // Panes that go now are nothing to tell of.
  workspace_->disconnect(this);
}

void MainWindow::buildMenus() {
  const auto add = [this](const QString& name, const QString& title) {
    menus_[name] = menuBar()->addMenu(title);
    menus_[name]->setObjectName(name + QStringLiteral("Menu"));
  };
  add(QStringLiteral("file"), tr("&File"));
  add(QStringLiteral("edit"), tr("&Edit"));
  add(QStringLiteral("pane"), tr("&Pane"));
  add(QStringLiteral("tools"), tr("&Tools"));
  add(QStringLiteral("help"), tr("&Help"));
  QAction* const undo = undoStack_.createUndoAction(this);
  undo->setObjectName(QStringLiteral("undo"));
  undo->setShortcut(QKeySequence::Undo);
  QAction* const redo = undoStack_.createRedoAction(this);
  redo->setObjectName(QStringLiteral("redo"));
  redo->setShortcut(QKeySequence::Redo);
  menu(QStringLiteral("edit"))->addActions({undo, redo});
  menu(QStringLiteral("edit"))->addSeparator();
}

void MainWindow::buildPaneMenu() {
  const QString pane = QStringLiteral("pane");
  addAction(pane, QStringLiteral("closePane"), tr("&Close"), QKeySequence::Close,
            [this] { closePane(currentPane()); });
  addAction(pane, QStringLiteral("splitRight"), tr("Put &Beside"), Qt::CTRL | Qt::Key_Backslash,
            [this] { workspace_->split(Qt::Horizontal); });
  addAction(pane, QStringLiteral("splitBelow"), tr("Put Belo&w"), Qt::CTRL | Qt::Key_Minus,
            [this] { workspace_->split(Qt::Vertical); });
  addAction(pane, QStringLiteral("tearOff"), tr("&Tear Off"), Qt::CTRL | Qt::SHIFT | Qt::Key_T,
            [this] { workspace_->tearOff(); });
  addAction(pane, QStringLiteral("nextPane"), tr("&Next"), Qt::CTRL | Qt::Key_Tab, [this] { workspace_->goTo(1); });
  addAction(pane, QStringLiteral("previousPane"), tr("&Previous"), Qt::CTRL | Qt::SHIFT | Qt::Key_Tab,
            [this] { workspace_->goTo(-1); });
  const auto turnPage = [this](int step) {
    if (Pane* const shown = currentPane()) shown->showPage(shown->page() + std::size_t(step));
  };
  addAction(pane, QStringLiteral("nextPage"), tr("Ne&xt Page"), Qt::CTRL | Qt::Key_PageDown,
            [turnPage] { turnPage(1); });
  addAction(pane, QStringLiteral("previousPage"), tr("Pre&vious Page"), Qt::CTRL | Qt::Key_PageUp,
            [turnPage] { turnPage(-1); });
  addAction(pane, QStringLiteral("cancelReading"), tr("Cancel &Reading"), Qt::CTRL | Qt::Key_Period, [this] {
    if (Pane* const shown = currentPane()) shown->cancel();
  });
  menu(pane)->addSeparator();
  new KindActions(*this);
}

void MainWindow::buildProperties() {
  auto* const panel = new PropertyPanel;
  addToolDock(panel, tr("Properties"), QStringLiteral("properties"), Qt::RightDockWidgetArea);
  const auto show = [this, panel](const Pane* pane) { panel->setView(pane != nullptr ? pane->view() : nullptr); };
  connect(this, &MainWindow::currentPaneChanged, panel, show);
  connect(this, &MainWindow::paneOpened, panel, [this, panel, show](Pane* pane) {
    connect(pane, &Pane::viewMade, panel, [this, pane, show] {
      if (pane == currentPane()) show(pane);
    });
  });
  connect(panel, &PropertyPanel::edited, this, [this](const QString& name, const QString& text) {
    Pane* const pane = currentPane();
    if (pane == nullptr) return;
    PlotRequest request = pane->request();
    request.properties[name] = text;
    changeRequest(pane, request, propertyTitle(name), name);
  });
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!picks_->mayClose()) {
    event->ignore();
    return;
  }
  Q_EMIT closing();
  QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QMimeData* const dropped = event->mimeData();
  openFiles(FileActions::pathsIn(dropped->data(QStringLiteral("text/uri-list")), {}));
  event->acceptProposedAction();
}

QAction* MainWindow::addAction(const QString& menu, const QString& name, const QString& text,
                               const QKeySequence& keys, std::function<void()> act) {
  auto* const action = new QAction(text, this);
  action->setObjectName(name);
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, std::move(act));
  menus_.at(menu)->addAction(action);
  return action;
}

QDockWidget* MainWindow::addToolDock(QWidget* widget, const QString& title, const QString& objectName,
                                     Qt::DockWidgetArea area) {
  auto* const dock = new QDockWidget(title, this);
  dock->setObjectName(objectName);
  dock->setWidget(widget);
  const QList<QDockWidget*> others = findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
  const auto beside = std::ranges::find_if(
      others, [&](QDockWidget* other) { return other != dock && dockWidgetArea(other) == area; });
  addDockWidget(area, dock);
  // One at a time leaves plots their room; the first one lies in front.
  if (beside != others.end()) {
    tabifyDockWidget(*beside, dock);
    (*beside)->raise();
  }
  QAction* const toggle = dock->toggleViewAction();
  toggle->setObjectName(objectName + QStringLiteral("Shown"));
  menus_.at(QStringLiteral("tools"))->addAction(toggle);
  return dock;
}

void MainWindow::settleTools() {
  for (const Qt::DockWidgetArea area : {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea}) {
    const QList<QDockWidget*> docks = findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const auto first = std::ranges::find_if(docks, [&](QDockWidget* dock) { return dockWidgetArea(dock) == area; });
    if (first != docks.end()) resizeDocks({*first}, {kToolWidth}, Qt::Horizontal);
  }
}

void MainWindow::openFiles(const QStringList& paths) {
  if (paths.isEmpty()) return;
  files_->addRecent(paths);
  Q_EMIT filesOpened(paths);
  QStringList shown = paths;
  shown.removeIf([](const QString& path) { return QFileInfo(path).isDir(); });
  if (shown.isEmpty() || shown.size() > kMostShownAtOnce) return;
  statusBar()->showMessage(tr("Looking into %n file(s)…", nullptr, int(shown.size())));
  const auto requests = std::make_shared<std::vector<PlotRequest>>();
  QThread* const thread = QThread::create([requests, shown] { *requests = requestsFor(shown); });
  connect(thread, &QThread::finished, this, [this, requests] {
    statusBar()->clearMessage();
    for (const PlotRequest& request : *requests)
      openPane(request);
  });
  connect(thread, &QThread::finished, thread, &QThread::deleteLater);
  thread->start();
}

Pane* MainWindow::openPane(const PlotRequest& request) {
  undoStack_.push(new PaneOpening(*workspace_, PaneOpening::Kind::Open, request, 0));
  return currentPane();
}

void MainWindow::closePane(Pane* pane) {
  if (pane == nullptr) return;
  undoStack_.push(
      new PaneOpening(*workspace_, PaneOpening::Kind::Close, pane->request(), workspace_->numberOf(pane)));
}

void MainWindow::changeRequest(Pane* pane, const PlotRequest& request, const QString& text, const QString& subject) {
  if (pane == nullptr || pane->request() == request) return;
  undoStack_.push(new RequestChange(*workspace_, workspace_->numberOf(pane), request, text, subject));
}

void MainWindow::showCurrent() {
  const Pane* const pane = currentPane();
  setWindowTitle(pane == nullptr ? tr("XOV Desk") : tr("%1 — XOV Desk").arg(pane->name()));
}

} // namespace xov::desk
