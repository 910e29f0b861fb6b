#include "apps/desk/window/PaneHands.h"

#include "apps/desk/panes/PaneKinds.h"
#include "apps/desk/window/MainWindow.h"

#include <QMenu>

namespace xov::desk {

PaneHands::PaneHands(MainWindow& window)
    : QObject(&window),
      window_(window),
      linked_(new LinkedPlots(this)),
      linkTimes_(nullptr) {
  window.menu(QStringLiteral("pane"))->addSeparator();
  addStep("viewBack", tr("View &Before"), &PlotNavigator::goBack);
  addStep("viewForward", tr("View &After"), &PlotNavigator::goForward);
  addStep("viewAll", tr("Show A&ll"), &PlotNavigator::showAll);
  linkTimes_ = window.addAction(QStringLiteral("pane"), QStringLiteral("linkTimes"), tr("&Link Times"),
                                Qt::CTRL | Qt::Key_L, [this] { linkAll(); });
  linkTimes_->setCheckable(true);
  connect(&window, &MainWindow::paneOpened, this, [this](Pane* pane) {
    connect(pane, &Pane::viewMade, this, [this, pane](XOVView* view) { take(*pane, *view); });
  });
}

void PaneHands::addStep(const char* name, const QString& text, void (PlotNavigator::*step)()) {
  window_.addAction(QStringLiteral("pane"), QLatin1String(name), text, {}, [this, step] {
    if (PlotNavigator* const navigator = current()) (navigator->*step)();
  });
}

PlotNavigator* PaneHands::current() const {
  const Pane* const pane = window_.currentPane();
  if (pane == nullptr || pane->view() == nullptr) return nullptr;
  return pane->view()->findChild<PlotNavigator*>(QString(), Qt::FindDirectChildrenOnly);
}

void PaneHands::take(const Pane& pane, XOVView& view) {
  auto* const navigator = new PlotNavigator(&view);
  const PaneKind* const kind = paneKindOf(pane.request().kind);
  const bool isOfTime = kind != nullptr && kind->input == PaneInput::Seismograms;
  navigator->setCrossHair(isOfTime ? PlotNavigator::CrossHair::Vertical : PlotNavigator::CrossHair::Both);
  link(pane, *navigator);
}

// Cursors are shown in all plots of seismograms; the parts of them that are shown are one where that is wanted.
void PaneHands::link(const Pane& pane, PlotNavigator& navigator) {
  const PaneKind* const kind = paneKindOf(pane.request().kind);
  if (kind == nullptr || !kind->isOfTime) return;
  const bool isDrum = pane.request().kind == QLatin1String("drum");
  linked_->add(navigator,
               linkTimes_->isChecked() && !isDrum ? LinkedPlots::Follows::Times : LinkedPlots::Follows::Cursor);
}

void PaneHands::linkAll() {
  for (const Pane* const pane : window_.panes()) {
    if (pane->view() == nullptr) continue;
    auto* const navigator = pane->view()->findChild<PlotNavigator*>(QString(), Qt::FindDirectChildrenOnly);
    if (navigator != nullptr) link(*pane, *navigator);
  }
}

} // namespace xov::desk
