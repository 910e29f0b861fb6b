#include "apps/desk/window/ProcessingTool.h"

#include "apps/desk/panes/LiveRequests.h"
#include "apps/desk/panes/PaneKinds.h"
#include "apps/desk/processing/ProcessingPanel.h"
#include "apps/desk/window/MainWindow.h"

#include <QAction>
#include <QDockWidget>

namespace xov::desk {

ProcessingTool::ProcessingTool(MainWindow& window) : QObject(&window), window_(window), panel_(new ProcessingPanel) {
  window.addToolDock(panel_, tr("Processing"), QStringLiteral("processingDock"), Qt::RightDockWidgetArea);
  window.addAction(QStringLiteral("pane"), QStringLiteral("toggleRaw"), tr("&Raw Data"), Qt::CTRL | Qt::Key_R,
                   [this] {
                     if (const Pane* const pane = window_.currentPane()) setRaw(!pane->request().isRaw);
                   });
  window.addAction(QStringLiteral("pane"), QStringLiteral("addFilter"), tr("&Filter"), Qt::CTRL | Qt::Key_F, [this] {
    if (panel_->isEnabled()) panel_->addStep(*stepKindOf(QStringLiteral("--filter")));
  });
  connect(panel_, &ProcessingPanel::stepsWished, this, [this](const ProcessingList& steps, const QString& what) {
    Pane* const pane = window_.currentPane();
    if (pane == nullptr) return;
    PlotRequest request = pane->request();
    request.steps = keptWords(steps);
    window_.changeRequest(pane, request, what);
  });
  connect(panel_, &ProcessingPanel::rawWished, this, &ProcessingTool::setRaw);
  connect(&window, &MainWindow::currentPaneChanged, this, &ProcessingTool::showCurrent);
  connect(&window, &MainWindow::paneOpened, this,
          [this](Pane* pane) { connect(pane, &Pane::requestChanged, this, &ProcessingTool::showCurrent); });
}

void ProcessingTool::showCurrent() {
  const Pane* const pane = window_.currentPane();
  const PaneKind* const kind = pane == nullptr ? nullptr : paneKindOf(pane->request().kind);
  if (kind != nullptr && kind->input == PaneInput::Seismograms && !isLive(pane->request()))
    panel_->showSteps(listOfKept(pane->request().steps), pane->request().isRaw);
  else
    panel_->showNothing();
}

void ProcessingTool::setRaw(bool isRaw) {
  Pane* const pane = window_.currentPane();
  if (pane == nullptr) return;
  PlotRequest request = pane->request();
  request.isRaw = isRaw;
  window_.changeRequest(pane, request, isRaw ? tr("Raw data") : tr("Processed data"));
}

} // namespace xov::desk
