#include "apps/desk/window/Memory.h"

#include "apps/desk/files/FilesPanel.h"
#include "apps/desk/window/FileActions.h"
#include "apps/desk/window/FilesTool.h"
#include "apps/desk/window/MainWindow.h"
#include "apps/desk/window/PicksTool.h"
#include "apps/desk/window/Theme.h"

namespace xov::desk {

Memory::Memory(MainWindow& window, FileActions& files, FilesTool& list, ThemeActions& themes)
    : QObject(&window),
      window_(window),
      files_(files),
      list_(list),
      themes_(themes) {}

DeskSettings Memory::now() const {
  DeskSettings settings;
  settings.geometry = window_.saveGeometry();
  settings.tools = window_.saveState();
  Workspace& workspace = window_.workspace();
  settings.workspace = workspace.saveState();
  for (Pane* const pane : workspace.panes())
    settings.panes.push_back({workspace.numberOf(pane), int(pane->page()), pane->requestAsShown()});
  settings.current = workspace.numberOf(workspace.currentPane());
  settings.recent = files_.recent();
  settings.theme = themes_.theme();
  settings.darkPlots = themes_.darkPlots();
  settings.sampleMegabytes = list_.panel().sampleMegabytes();
  settings.picks = window_.picks().session().path();
  settings.isPicking = window_.picks().isPicking();
  return settings;
}

void Memory::restore(const DeskSettings& settings, bool withPanes) {
  files_.setRecent(settings.recent);
  themes_.setTheme(settings.theme);
  themes_.setDarkPlots(settings.darkPlots);
  list_.panel().setSampleMegabytes(settings.sampleMegabytes);
  window_.restoreGeometry(settings.geometry);
  window_.restoreState(settings.tools);
  if (!withPanes) return;
  Workspace& workspace = window_.workspace();
  for (const RememberedPane& pane : settings.panes)
    workspace.open(pane.request, pane.number)->setFirstPage(std::size_t(pane.page));
  workspace.restoreState(settings.workspace);
  if (Pane* const current = workspace.pane(settings.current)) workspace.goTo(*current);
  if (!settings.picks.isEmpty()) window_.picks().session().open(settings.picks);
  window_.picks().setPicking(settings.isPicking);
}

} // namespace xov::desk
