#include "apps/desk/window/Workspace.h"

#include "apps/desk/window/PaneBar.h"

#include <QApplication>
#include <QCloseEvent>

#include <algorithm>

namespace xov::desk {

namespace {

// Without a widget in its middle it would let tools take everything.
constexpr QSize kLeast(240, 180);

} // namespace

Workspace::Workspace(CommandRunner run, QWidget* parent) : QMainWindow(parent), run_(std::move(run)) {
  setWindowFlags(Qt::Widget); // it stands within a window
  setObjectName(QStringLiteral("workspace"));
  setDockOptions(QMainWindow::AllowNestedDocks | QMainWindow::AllowTabbedDocks | QMainWindow::GroupedDragging);
  setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  setDocumentMode(true);
  setMinimumSize(kLeast);
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget* /*before*/, const QWidget* now) { noteFocus(now); });
}

Workspace::~Workspace() = default;

Pane* Workspace::open(const PlotRequest& request, int number) {
  if (number == 0) number = lastNumber_ + 1;
  lastNumber_ = std::max(lastNumber_, number);
  auto* const dock = new QDockWidget(this);
  dock->setObjectName(QStringLiteral("pane%1").arg(number));
  dock->setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
  auto* const pane = new Pane(run_);
  dock->setWidget(pane);
  dock->setTitleBarWidget(new PaneBar(*dock, *pane));
  dock->installEventFilter(this);
  const Place* const current = placeOf(current_);
  addDockWidget(Qt::TopDockWidgetArea, dock);
  if (current != nullptr && !current->dock->isFloating()) tabifyDockWidget(current->dock, dock);
  places_.push_back({number, dock, pane});
  connect(pane, &Pane::requestChanged, dock, [pane, dock] { dock->setWindowTitle(pane->name()); });
  connect(dock, &QDockWidget::visibilityChanged, this, [this, pane](bool isVisible) {
    if (isVisible) setCurrentPane(pane);
  });
  Q_EMIT paneOpened(pane);
  pane->setRequest(request);
  goTo(*pane);
  return pane;
}

void Workspace::close(int number) {
  const auto place = std::ranges::find(places_, number, &Place::number);
  if (place == places_.end()) return;
  const Place gone = *place;
  Q_EMIT paneClosing(gone.pane);
  places_.erase(place);
  if (current_ == gone.pane) {
    current_ = nullptr;
    setCurrentPane(places_.empty() ? nullptr : places_.back().pane);
  }
  gone.dock->removeEventFilter(this);
  gone.dock->disconnect(this);
  delete gone.dock;
}

std::vector<Pane*> Workspace::panes() const {
  std::vector<Pane*> panes;
  for (const Place& place : places_)
    panes.push_back(place.pane);
  return panes;
}

Pane* Workspace::pane(int number) const {
  const auto place = std::ranges::find(places_, number, &Place::number);
  return place == places_.end() ? nullptr : place->pane;
}

const Workspace::Place* Workspace::placeOf(const Pane* pane) const {
  const auto place = std::ranges::find(places_, pane, &Place::pane);
  return place == places_.end() ? nullptr : &*place;
}

int Workspace::numberOf(const Pane* pane) const {
  const Place* const place = placeOf(pane);
  return place != nullptr ? place->number : 0;
}

void Workspace::setCurrentPane(Pane* pane) {
  if (pane == current_) return;
  current_ = pane;
  Q_EMIT currentPaneChanged(pane);
}

void Workspace::split(Qt::Orientation orientation) {
  const Place* const current = placeOf(current_);
  if (current == nullptr || places_.size() < 2) return;
  current->dock->setFloating(false);
  removeDockWidget(current->dock);
  addDockWidget(Qt::TopDockWidgetArea, current->dock, orientation);
  current->dock->show();
}

void Workspace::tearOff() {
  if (const Place* const current = placeOf(current_)) current->dock->setFloating(!current->dock->isFloating());
}

void Workspace::goTo(int step) {
  const Place* const current = placeOf(current_);
  if (current == nullptr) return;
  const auto count = std::ptrdiff_t(places_.size());
  const std::ptrdiff_t next = ((current - places_.data()) + step + count) % count;
  goTo(*places_[std::size_t(next)].pane);
}

void Workspace::goTo(Pane& pane) {
  const Place* const place = placeOf(&pane);
  if (place == nullptr) return;
  place->dock->show();
  place->dock->raise();
  pane.setFocus();
  setCurrentPane(&pane);
}

void Workspace::noteFocus(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const auto place = std::ranges::find(places_, widget, &Place::pane);
    if (place != places_.end()) return setCurrentPane(place->pane);
  }
}

// The close button of a pane is an entry in the list of what can be taken back.
bool Workspace::eventFilter(QObject* watched, QEvent* event) {
  const auto place = std::ranges::find(places_, watched, &Place::dock);
  if (place == places_.end() || event->type() != QEvent::Close) return QMainWindow::eventFilter(watched, event);
  event->ignore();
  Q_EMIT closeAsked(place->number);
  return true;
}

} // namespace xov::desk
