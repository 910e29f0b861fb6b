#include "XOV_Graphics/views/base/RecordParts.h"
#include "XOV_Graphics/views/timeline/DrumRows.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"
#include "XOV_Graphics/views/timeline/HelicorderRows.h"
#include "XOV_Graphics/views/timeline/PageStart.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"

#include <QScopeGuard>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kPartMilliseconds = 1000; // a second
constexpr double kFarthestMoment = 1e15;   // milliseconds
constexpr double kSameRows = 1e-6;         // of a row, what rounding leaves

double secondsFromTo(const QDateTime& from, const QDateTime& to) {
  return double(from.msecsTo(to)) / kPartMilliseconds;
}

QDateTime movedOn(const QDateTime& moment, double seconds) {
  const double milliseconds = std::clamp(seconds * kPartMilliseconds, -kFarthestMoment, kFarthestMoment);
  return moment.addMSecs(qint64(std::llround(milliseconds)));
}

} // namespace

helicorderView::WholePage helicorderView::wholePage() const {
  return wholePage_ ? *wholePage_ : WholePage{pageStart_, rowDuration_};
}

QDateTime helicorderView::momentOfZero() const {
  const PageStart start = recordedStart(firstPiece().get());
  return start.hour.isValid() ? movedOn(start.hour, double(start.offset)) : QDateTime();
}

DrumRows helicorderView::rowsOfPart() const {
  const QDateTime zero = momentOfZero();
  const WholePage page = wholePage();
  if (!zero.isValid() || nRows_ < 1 || !(page.rowDuration > 0) || !std::isfinite(page.rowDuration)) return {};
  const QDateTime hour = recordedStart(firstPiece().get()).hour;
  const double start = secondsFromTo(zero, page.start.isValid() ? page.start : hour);
  const auto seconds = double(page.rowDuration);
  const QDateTime midnight(zero.toUTC().date(), QTime(0, 0), Qt::UTC);
  return {nRows_, {start, start + nRows_ * seconds}, seconds, secondsFromTo(zero, midnight)};
}

PlotReach helicorderView::reach() const {
  PlotReach reach;
  const auto pieces = heldRecords();
  if (!pieces || pieces->empty()) return reach;
  reach.gain = true;
  const DrumRows rows = rowsOfPart();
  if (rows.count < 1) return reach;
  const RecordSpan times = timesOf(*pieces);
  const PlotSpan farthest = times.isKnown() ? united(rows.whole, times.span) : rows.whole;
  reach.setX(rows.whole, farthest, false, rows.count * std::min(kShortestRow, rows.wholeSeconds));
  return reach;
}

PlotPart helicorderView::nearestPart(const PlotPart& wish) const {
  PlotPart part = XOVView::nearestPart(wish);
  const DrumRows rows = rowsOfPart();
  if (rows.count < 1) return part;
  part.x = rows.pageNear(part.x.lower, rows.nearestSeconds(part.x.width() / rows.count));
  return part;
}

double helicorderView::nearestZoom(double factor) const {
  const DrumRows rows = rowsOfPart();
  if (rows.count < 1) return 1;
  const double now = currentPart().x.width() / rows.count;
  const double seconds = rows.nearestSeconds(now * XOVView::nearestZoom(factor));
  const bool isSame = std::abs(seconds - now) < kSameRows * now;
  return isSame ? 1 : seconds / now;
}

QRectF helicorderView::partFrame(QPointF viewPoint) const {
  const HelicorderPage page = this->page();
  if (!page.holdsTraces() || !(page.rowHeight() > 0) || nRows_ < 1) return {};
  const QRectF rows(page.rect.x(), page.rowTop(nRows_), page.rect.width(), nRows_ * page.rowHeight());
  return containsPoint(rows, viewPoint) ? rows : QRectF();
}

std::optional<QPointF> helicorderView::partPosition(QPointF viewPoint) const {
  const HelicorderPage page = this->page();
  const DrumRows rows = rowsOfPart();
  const bool isLaidOut = page.holdsTraces() && page.rowHeight() > 0;
  if (rows.count < 1 || !isLaidOut || !std::isfinite(viewPoint.x()) || !std::isfinite(viewPoint.y())) return {};
  const double row = std::clamp(std::floor((page.top() - viewPoint.y()) / page.rowHeight()), 0.0, nRows_ - 1.0);
  const auto seconds = double(rowDuration_);
  const double into = std::clamp((viewPoint.x() - page.rect.x()) / page.xScale(), 0.0, seconds);
  return QPointF(currentPart().x.lower + row * seconds + into, 0);
}

PlotPart helicorderView::partInside(const QRectF& box) const {
  PlotPart part = currentPart();
  const auto first = partPosition({box.left(), box.bottom()}); // the upper edge
  const auto last = partPosition({box.right(), box.top()});
  if (first && last && first->x() < last->x()) part.x = rowsOfPart().pageAround({first->x(), last->x()});
  return part;
}

std::vector<QLineF> helicorderView::linesAt(double x) const {
  const HelicorderPage page = this->page();
  const DrumRows rows = rowsOfPart();
  if (rows.count < 1 || !page.holdsTraces()) return {};
  const double since = x - currentPart().x.lower;
  const double row = std::floor(since / double(rowDuration_));
  if (!(row >= 0 && row < nRows_)) return {};
  const double place = page.xAt(since - row * double(rowDuration_));
  return {QLineF(place, page.rowTop(row + 1), place, page.rowTop(row))};
}

void helicorderView::applyPart() {
  const DrumRows rows = rowsOfPart();
  const auto tell = qScopeGuard([this] { Q_EMIT settingsChanged(); });
  if (!shownPart()) {
    const WholePage page = wholePage();
    wholePage_.reset();
    pageStart_ = page.start;
    rowDuration_ = page.rowDuration;
  } else if (rows.count > 0) {
    if (!wholePage_) wholePage_ = WholePage{pageStart_, rowDuration_};
    const bool isWholePage = shownPart()->x == rows.whole;
    pageStart_ = isWholePage ? wholePage_->start : movedOn(momentOfZero(), shownPart()->x.lower);
    rowDuration_ = isWholePage ? wholePage_->rowDuration : float(shownPart()->x.width() / rows.count);
  }
}

// Times of a part that is shown.
std::optional<PlotSpan> helicorderView::spanOfPart() const {
  return shownPart() && rowsOfPart().count > 0 ? std::optional(shownPart()->x) : std::nullopt;
}

// A page that one moves over has no rows beside it, which would stand in title and scale. Times count from its begin,
// so that those of a page late in a long recording are as exact as those of its first one.
PieceTimes helicorderView::timesOnPage(const SeismogramRecord& piece, const float*& samples,
                                       const Placement& placement) const {
  if (!placement.part) return {piece.b() + placement.offset, piece.delta(), piece.npts()};
  const PlotSpan shown = *placement.part;
  const RecordPart part = partOf(piece, shown, shown.lower);
  PieceTimes times{part.firstTime, piece.delta(), part.last - part.first};
  samples += part.first;
  if (times.count > 0 && times.start < 0) { // the sample before the page
    ++samples;
    --times.count;
    times.start += times.step;
  }
  const auto end = float(shown.width());
  while (times.count > 0 && times.start + times.step * float(times.count - 1) >= end) // and those behind it
    --times.count;
  return times;
}

} // namespace xov
