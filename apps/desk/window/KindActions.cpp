#include "apps/desk/window/KindActions.h"

#include "apps/desk/window/MainWindow.h"

#include <QMenu>

#include <algorithm>

namespace xov::desk {

namespace {

constexpr int kShortcuts = 9;

QString actionName(const PaneKind& kind) { return QStringLiteral("show_") + QLatin1String(kind.command); }

} // namespace

KindActions::KindActions(MainWindow& window) : QObject(&window), window_(window) {
  QMenu* const menu = window.menu(QStringLiteral("pane"))->addMenu(tr("Show &As"));
  int number = 0;
  for (const PaneKind& kind : paneKinds()) {
    auto* const action = new QAction(paneTitle(kind), &window);
    action->setObjectName(actionName(kind));
    if (++number <= kShortcuts) action->setShortcut(QKeyCombination(Qt::CTRL, Qt::Key(Qt::Key_0 + number)));
    connect(action, &QAction::triggered, this, [this, &kind] {
      if (const Pane* const pane = window_.currentPane()) window_.openPane(requestOfKind(kind, pane->request()));
    });
    menu->addAction(action);
  }
  connect(&window, &MainWindow::currentPaneChanged, this, &KindActions::offer);
  connect(&window, &MainWindow::paneOpened, this,
          [this](Pane* pane) { connect(pane, &Pane::requestChanged, this, &KindActions::offer); });
  offer();
}

// Kinds for other files than the pane's are not to be had.
void KindActions::offer() {
  const Pane* const pane = window_.currentPane();
  for (const PaneKind& kind : paneKinds())
    window_.findChild<QAction*>(actionName(kind))->setEnabled(pane != nullptr && canShowAs(kind, pane->request()));
}

} // namespace xov::desk
