#include "apps/desk/window/Desk.h"

#include "apps/desk/desktop/Dragging.h"
#include "apps/desk/window/MainWindow.h"
#include "apps/desk/window/Memory.h"
#include "apps/desk/window/PicksTool.h"
#include "apps/xov/terminal/Messages.h"

#include <QApplication>
#include <QFileInfo>
#include <QStatusBar>
#include <QTimer>

namespace xov::desk {

bool runDesk(const CommandRunner& run, const QStringList& paths) {
  bool isKept = true;
  {
    const QString file = settingsPath();
    QString note;
    const DeskSettings settings = readSettings(file, &note);
    dragPlotsAsPdf();
    MainWindow window(run);
    window.memory().restore(settings, paths.isEmpty());
    QObject::connect(&window, &MainWindow::closing, &window, [&window, &file, &isKept] {
      const Status written = writeSettings(window.memory().now(), file);
      isKept = bool(written);
      if (!written) cli::complain(written.error());
    });
    window.show();
    // Widths count when the window has laid itself out.
    QTimer::singleShot(0, &window, [&window, &settings] {
      if (settings.tools.isEmpty() || !window.restoreState(settings.tools)) window.settleTools();
    });
    window.statusBar()->showMessage(note);
    if (!note.isEmpty()) cli::note(note);
    window.picks().session().keepJournal(QFileInfo(file).path());
    window.openFiles(paths);
    QApplication::exec();
  }
  PlotMaker::waitForAll();
  return isKept;
}

} // namespace xov::desk
