#include "XOV_Graphics/views/navigation/PlotNavigator.h"

#include "XOV_Graphics/views/navigation/PartHistory.h"

#include <cmath>

namespace xov {

namespace {

constexpr qint64 kOneGestureMs = 700; // steps of one kind that follow each other faster are one
constexpr double kNoShare = 1e-12;    // of a part's width

bool moves(PlotReach::Motion motion) { return motion != PlotReach::Motion::None; }

} // namespace

PlotNavigator::PlotNavigator(XOVView* view) : QObject(view), view_(view), history_(std::make_unique<PartHistory>()) {
  view_->grabGesture(Qt::PinchGesture);
  view_->installEventFilter(this);
}

PlotNavigator::~PlotNavigator() = default;

void PlotNavigator::setEnabled(bool enabled) {
  enabled_ = enabled;
  press_.reset();
  band_ = {};
  leave();
}

void PlotNavigator::setZoomsToBoxes(bool zooms) { zoomsToBoxes_ = zooms; }

void PlotNavigator::setCrossHair(CrossHair crossHair) {
  crossHair_ = crossHair;
  renewOverlay();
}

std::vector<PlotNavigator::Key> PlotNavigator::keys() {
  return {
      {tr("Wheel, pinch, +, -"), tr("Zoom about the pointer")},
      {tr("Ctrl+Wheel, Ctrl+Up, Ctrl+Down"), tr("Change the gain, or zoom the other axis")},
      {tr("Shift+Wheel, touchpad, arrows, middle button"), tr("Pan")},
      {tr("Page Up, Page Down"), tr("Pan by a page")},
      {tr("Left button"), tr("Zoom to a box")},
      {tr("Home"), tr("Show all")},
      {tr("Double click, Backspace"), tr("Back to the view before")},
      {tr("Shift+Backspace"), tr("Forward again")},
  };
}

// Whoever hears of the change may take the view away, and this with it.
void PlotNavigator::show(const Shown& part, Step step) {
  const Shown before = view_->shownPart();
  const QPointer<PlotNavigator> self(this);
  view_->showPart(part);
  if (!self || view_->shownPart() == before) return;
  const bool soon = sinceStep_.isValid() && sinceStep_.elapsed() < kOneGestureMs;
  history_->add(before, step == lastStep_ && step != Step::Other && soon);
  lastStep_ = step;
  sinceStep_.start();
  renewOverlay();
  Q_EMIT historyChanged();
}

void PlotNavigator::zoom(double factor, std::optional<QPointF> about) { zoomBy(factor, about, Step::Other); }

void PlotNavigator::amplify(double factor, std::optional<QPointF> about) { amplifyBy(factor, about, Step::Other); }

void PlotNavigator::pan(double xShare, double yShare) { panBy(xShare, yShare, Step::Other); }

// A view with steps, such as a drum, follows when the factors that it has been asked for make up a step.
void PlotNavigator::zoomBy(double factor, std::optional<QPointF> about, Step step) {
  const PlotReach reach = view_->reach();
  if (!moves(reach.x)) {
    if (reach.gain && factor > 0) amplifyBy(1 / factor, about, step);
    return;
  }
  if (!(factor > 0) || !std::isfinite(factor)) return;
  waitingFactor_ *= factor;
  const double possible = view_->nearestZoom(waitingFactor_);
  if (possible == 1) return;
  waitingFactor_ = 1;
  PlotPart part = view_->currentPart();
  const auto position = about ? view_->partPosition(*about) : std::nullopt;
  part.x = zoomedSpan(part.x, position ? position->x() : std::nan(""), possible, reach.x);
  if ((reach.wheelZoomsY || reach.together) && moves(reach.y))
    part.y = zoomedSpan(part.y, position ? position->y() : std::nan(""), possible, reach.y);
  show(part, step);
}

void PlotNavigator::amplifyBy(double factor, std::optional<QPointF> about, Step step) {
  const PlotReach reach = view_->reach();
  if (!(factor > 0) || !std::isfinite(factor)) return;
  PlotPart part = view_->currentPart();
  if (reach.gain) {
    part.gain *= factor;
  } else if (moves(reach.y) && !reach.together) {
    const auto position = about ? view_->partPosition(*about) : std::nullopt;
    part.y = zoomedSpan(part.y, position ? position->y() : std::nan(""), 1 / factor, reach.y);
  } else {
    return;
  }
  show(part, step);
}

void PlotNavigator::panBy(double xShare, double yShare, Step step) {
  const PlotReach reach = view_->reach();
  PlotPart part = view_->currentPart();
  if (std::isfinite(xShare)) waitingShareX_ += xShare;
  if (moves(reach.x)) part.x = shiftedSpan(part.x, waitingShareX_, reach.x);
  if (moves(reach.y)) part.y = shiftedSpan(part.y, yShare, reach.y);
  const PlotPart possible = view_->nearestPart(part);
  const bool movesX = possible.x != view_->currentPart().x;
  // What lies beyond the end of the data is not waited for.
  const bool waits = !movesX && moves(reach.x) && nearestPart(reach, part).x == part.x;
  if (!waits || std::abs(waitingShareX_) < kNoShare) waitingShareX_ = 0;
  show(part, step);
}

void PlotNavigator::zoomTo(const QRectF& box) {
  const QRectF wanted = box.normalized();
  if (!(wanted.width() > 0) || !(wanted.height() > 0)) return;
  show(view_->partInside(wanted), Step::Other);
}

void PlotNavigator::showAll() { show({}, Step::Other); }

bool PlotNavigator::canGoBack() const { return history_->canGoBack(); }

bool PlotNavigator::canGoForward() const { return history_->canGoForward(); }

void PlotNavigator::goBack() {
  if (canGoBack()) go(history_->back(view_->shownPart()));
}

void PlotNavigator::goForward() {
  if (canGoForward()) go(history_->forward(view_->shownPart()));
}

void PlotNavigator::go(const Shown& part) {
  const QPointer<PlotNavigator> self(this);
  lastStep_ = Step::Other;
  view_->showPart(part);
  if (!self) return;
  renewOverlay();
  Q_EMIT historyChanged();
}

void PlotNavigator::forgetHistory() {
  history_->clear();
  Q_EMIT historyChanged();
}

void PlotNavigator::showCursor(std::optional<double> x) {
  cursor_ = x;
  renewOverlay();
}

void PlotNavigator::renewOverlay() {
  ViewOverlay overlay;
  overlay.band = band_;
  if (cursor_) overlay.lines = view_->linesAt(*cursor_);
  if (pointer_ && crossHair_ != CrossHair::None) {
    const auto position = view_->partPosition(*pointer_);
    if (position) overlay.lines = view_->linesAt(position->x());
    const QRectF frame = view_->partFrame(*pointer_);
    if (crossHair_ == CrossHair::Both && !frame.isEmpty())
      overlay.lines.emplace_back(frame.left(), pointer_->y(), frame.right(), pointer_->y());
  }
  view_->setOverlay(overlay);
}

} // namespace xov
