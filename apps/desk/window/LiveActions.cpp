#include "apps/desk/window/LiveActions.h"

#include "apps/desk/live/ConnectDialog.h"
#include "apps/desk/window/MainWindow.h"

namespace xov::desk {

LiveActions::LiveActions(MainWindow& window) : QObject(&window), window_(window) {
  window.addAction(QStringLiteral("file"), QStringLiteral("connectToServer"), tr("&Connect to SeedLink…"),
                   Qt::CTRL | Qt::SHIFT | Qt::Key_L, [this] { ask(); });
}

void LiveActions::ask() {
  auto* const dialog = new ConnectDialog(&window_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  const Pane* const pane = window_.currentPane();
  dialog->setSource(pane != nullptr && isLive(pane->request()) ? liveSourceOf(pane->request()) : last_);
  connect(dialog, &QDialog::accepted, this, [this, dialog] {
    last_ = liveSourceOf(dialog->request());
    window_.openPane(dialog->request());
  });
  dialog->open();
}

} // namespace xov::desk
