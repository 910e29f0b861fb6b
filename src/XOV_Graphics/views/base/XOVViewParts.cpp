#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// The factor that leaves a span at least `least` and at most as wide as `farthest`.
double heldFactor(const PlotSpan& span, const PlotSpan& farthest, double least, PlotReach::Motion motion,
                  double factor) {
  if (motion == PlotReach::Motion::None) return factor;
  const bool logarithmic = motion == PlotReach::Motion::Logarithmic;
  const auto width = [&](const PlotSpan& s) {
    return logarithmic ? std::abs(std::log10(s.upper / s.lower)) : std::abs(s.width());
  };
  const double now = width(span);
  if (!(now > 0) || !std::isfinite(now)) return 1;
  const double smallest = std::min(least / now, 1.0);
  return std::clamp(factor, smallest, std::max(width(farthest) / now, smallest));
}

} // namespace

PlotReach XOVView::reach() const {
  const PlotLimits whole = wholeLimits().limits;
  const PlotSpan x{double(whole.xmin), double(whole.xmax)};
  const PlotSpan y{double(whole.ymin), double(whole.ymax)};
  PlotReach reach;
  reach.setX(x, x, logAxes().x);
  reach.setY(y, y, logAxes().y);
  return reach;
}

XOVView::WholeLimits XOVView::wholeLimits() const {
  return whole_ ? *whole_ : WholeLimits{limits(), fixedXAxisRange_, fixedYAxisRange_};
}

void XOVView::showPart(const std::optional<PlotPart>& wish) {
  std::optional<PlotPart> next;
  if (wish) next = nearestPart(*wish);
  if (next && *next == reach().whole) next.reset();
  if (next == shownPart_) return;
  if (!whole_) whole_ = wholeLimits();
  shownPart_ = next;
  const QPointer<XOVView> self(this); // whoever hears of the change may take the view away
  applyPart();
  if (!self) return;
  if (!shownPart_) whole_.reset();
  setNeedsDisplay();
  announceLimits();
  if (!self) return;
  Q_EMIT shownPartChanged();
}

bool XOVView::endPart() {
  if (!shownPart_) return true;
  const QPointer<XOVView> self(this);
  const PlotReach reach = this->reach();
  if (reach.x != PlotReach::Motion::None || reach.y != PlotReach::Motion::None) showPart({});
  return !self.isNull();
}

void XOVView::applyPart() {
  const WholeLimits whole = wholeLimits();
  fixedXAxisRange_ = shownPart_ ? true : whole.fixedX;
  fixedYAxisRange_ = shownPart_ ? true : whole.fixedY;
  xOrigin_ = 0;
  if (!shownPart_) {
    xmin_ = whole.limits.xmin;
    xmax_ = whole.limits.xmax;
    ymin_ = whole.limits.ymin;
    ymax_ = whole.limits.ymax;
    return;
  }
  takeShownX(shownPart_->x);
  takeShownY(shownPart_->y);
}

void XOVView::takeShownX(const PlotSpan& span) {
  xmin_ = toSinglePrecision(span.lower - xOrigin_);
  xmax_ = toSinglePrecision(span.upper - xOrigin_);
}

void XOVView::takeShownY(const PlotSpan& span) {
  ymin_ = toSinglePrecision(span.lower);
  ymax_ = toSinglePrecision(span.upper);
}

PlotPart XOVView::nearestPart(const PlotPart& wish) const { return xov::nearestPart(reach(), wish); }

double XOVView::nearestZoom(double factor) const {
  if (!(factor > 0)) return 1;
  const PlotReach reach = this->reach();
  const PlotPart part = currentPart();
  const double held = heldFactor(part.x, reach.farthestX, reach.leastX, reach.x, factor);
  return reach.together ? heldFactor(part.y, reach.farthestY, reach.leastY, reach.y, held) : held;
}

QPointF XOVView::dataAt(QPointF viewPoint) const {
  return viewToData(viewPoint, iRect_, limits(), logAxes()) + QPointF(xOrigin_, 0);
}

std::optional<QPointF> XOVView::partPosition(QPointF viewPoint) const {
  const QPointF position = dataAt(viewPoint);
  if (!std::isfinite(position.x()) || !std::isfinite(position.y())) return {};
  return position;
}

QRectF XOVView::partFrame(QPointF viewPoint) const { return containsPoint(iRect_, viewPoint) ? iRect_ : QRectF(); }

PlotPart XOVView::partInside(const QRectF& box) const {
  PlotPart part = currentPart();
  const auto first = partPosition(box.topLeft());
  const auto last = partPosition(box.bottomRight());
  if (!first || !last) return part;
  const PlotReach reach = this->reach();
  if (reach.x != PlotReach::Motion::None) part.x = {first->x(), last->x()};
  if (reach.y != PlotReach::Motion::None) part.y = {first->y(), last->y()};
  if (!reach.together) return part;
  // The box grows to the proportions that the axes have.
  const double share = std::max(part.x.width() / reach.whole.x.width(), part.y.width() / reach.whole.y.width());
  part.x = zoomedSpan(part.x, part.x.center(), share * reach.whole.x.width() / part.x.width(), reach.x);
  part.y = zoomedSpan(part.y, part.y.center(), share * reach.whole.y.width() / part.y.width(), reach.y);
  return part;
}

std::vector<QLineF> XOVView::linesAt(double x) const {
  if (reach().x == PlotReach::Motion::None) return {};
  const QPointF foot = dataToView({x - xOrigin_, double(ymin_)}, iRect_, limits(), logAxes());
  const bool isInside = foot.x() >= iRect_.left() && foot.x() <= iRect_.right();
  if (!isInside) return {};
  return {QLineF(foot.x(), iRect_.top(), foot.x(), iRect_.bottom())};
}

} // namespace xov
