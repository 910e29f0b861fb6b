#include "XOV_Graphics/views/navigation/LinkedPlots.h"

#include <algorithm>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

// What a time of one view is more in another.
double shiftBetween(const XOVView& from, const XOVView& to) {
  const QDateTime zero = from.momentOfZero();
  const QDateTime otherZero = to.momentOfZero();
  return zero.isValid() && otherZero.isValid() ? double(otherZero.msecsTo(zero)) / kMillisecondsPerSecond : 0;
}

} // namespace

LinkedPlots::LinkedPlots(QObject* parent) : QObject(parent) {}

LinkedPlots::~LinkedPlots() = default;

void LinkedPlots::add(PlotNavigator& navigator, Follows follows) {
  remove(navigator);
  plots_.push_back({&navigator, follows});
  const QPointer<PlotNavigator> moved(&navigator);
  connect(navigator.view(), &XOVView::shownPartChanged, this, [this, moved] {
    if (moved) follow(*moved);
  });
  connect(&navigator, &PlotNavigator::pointed, this, [this, moved](double x) {
    if (moved) point(*moved, x);
  });
  connect(&navigator, &PlotNavigator::pointerLeft, this, [this, moved] {
    if (moved) point(*moved, {});
  });
}

void LinkedPlots::remove(PlotNavigator& navigator) {
  std::erase_if(plots_, [&](const Plot& plot) { return !plot.navigator || plot.navigator == &navigator; });
  navigator.view()->disconnect(this);
  navigator.disconnect(this);
  navigator.showCursor({});
}

std::vector<LinkedPlots::Plot> LinkedPlots::othersOf(const PlotNavigator& navigator) const {
  std::vector<Plot> others = plots_;
  std::erase_if(others, [&](const Plot& plot) { return plot.navigator == &navigator; });
  return others;
}

// Those who hear of a change may take away any view, or the links.
void LinkedPlots::follow(const PlotNavigator& moved) {
  if (isMoving_) return;
  const auto follows = [&](const Plot& plot) { return plot.navigator == &moved && plot.follows == Follows::Times; };
  if (std::none_of(plots_.begin(), plots_.end(), follows)) return;
  const QPointer<LinkedPlots> self(this);
  const QPointer<const PlotNavigator> source(&moved);
  isMoving_ = true;
  for (const Plot& plot : othersOf(moved)) {
    if (!source) break;
    if (!plot.navigator || plot.follows == Follows::Cursor) continue;
    XOVView& other = *plot.navigator->view();
    if (moved.view()->shownPart()) {
      const double shift = shiftBetween(*moved.view(), other);
      const PlotSpan shown = moved.view()->shownPart()->x;
      PlotPart part = other.currentPart();
      part.x = {shown.lower + shift, shown.upper + shift};
      other.showPart(part);
    } else {
      other.showPart({});
    }
    if (!self) return;
  }
  isMoving_ = false;
}

void LinkedPlots::point(const PlotNavigator& from, std::optional<double> x) {
  for (const Plot& plot : othersOf(from)) {
    if (!plot.navigator) continue;
    const double shift = shiftBetween(*from.view(), *plot.navigator->view());
    plot.navigator->showCursor(x ? std::optional(*x + shift) : std::nullopt);
  }
}

} // namespace xov
