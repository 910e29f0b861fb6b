#include "apps/desk/window/FilesTool.h"

#include "apps/desk/files/FilesPanel.h"
#include "apps/desk/window/MainWindow.h"

#include <QDockWidget>
#include <QStandardPaths>

namespace xov::desk {

FilesTool::FilesTool(MainWindow& window) : QObject(&window), panel_(new FilesPanel) {
  const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
  if (!cache.isEmpty()) panel_->setIndexFolder(cache + QStringLiteral("/indexes"));
  window.addToolDock(panel_, tr("Files"), QStringLiteral("filesDock"), Qt::LeftDockWidgetArea);
  connect(&window, &MainWindow::filesOpened, panel_, &FilesPanel::add);
  connect(panel_, &FilesPanel::requested, &window,
          [&window](const PlotRequest& request) { window.openPane(request); });
}

} // namespace xov::desk
