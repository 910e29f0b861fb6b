#include "XOV_Graphics/views/seismic/wvfrmView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/HeldCopy.h"
#include "XOV_Graphics/views/base/RecordParts.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/seismic/Captions.h"
#include "XOV_Graphics/views/seismic/WvfrmPanels.h"

namespace xov {

namespace {

constexpr float kFontSize = 12;
constexpr double kHeaderLeft = 12;
constexpr double kHeaderDrop = 2;
constexpr double kCaptionInset = 4;
constexpr double kCaptionRise = 12;

constexpr double kPickInset = 42;
constexpr double kPickLabelRise = 4; // above the line's upper end

constexpr PickStyle kPicks = {
    .lineAbove = {.points = kPickInset},
    .lineBelow = {.points = kPickInset},
    .labelBelow = {.points = kPickInset - kPickLabelRise},
};

} // namespace

wvfrmView::wvfrmView(const QRectF& frame, QWidget* parent) : PickedSeismogramView(kPicks, frame, parent) {}

wvfrmView::~wvfrmView() = default;

std::shared_ptr<const SeismogramArray> wvfrmView::heldRecords() const { return heldCopy(wvfrmArray_); }

void wvfrmView::drawRect(const QRectF&) {
  drawPaper();
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  const LabelScope labels(*this);
  setLabelFontSize(kFontSize);
  AInitGraphLib();
  if (records->size() > 1 && (*records)[1]) drawHeader(*(*records)[1]);
  std::size_t first = 0;
  for (const WvfrmPanel& panel : layOutWvfrmPanels(bounds(), records->size() / 2)) {
    drawPair(panel.rect, *records, first);
    if (panel.endsColumn) drawTimeAxisUnder(panel.rect.x(), panel.rect.x() + panel.rect.width(), panel.rect.y());
    first += 2;
  }
  drawSourcePicks();
}

SeismogramArray wvfrmView::recordsToMoveOver() const {
  const auto records = heldRecords();
  return records ? *records : SeismogramArray();
}

PlotReach wvfrmView::reach() const {
  RecordSpan times;
  for (const auto& record : recordsToMoveOver()) {
    if (record) includeFromLeft(times, record->npts(), record->delta());
  }
  return reachFromLeft(times);
}

std::vector<QRectF> wvfrmView::panels() const {
  std::vector<QRectF> rects;
  for (const WvfrmPanel& panel : layOutWvfrmPanels(bounds(), recordsToMoveOver().size() / 2))
    rects.push_back(panel.rect);
  return rects;
}

QRectF wvfrmView::partFrame(QPointF viewPoint) const {
  for (const QRectF& panel : panels()) {
    if (containsPoint(panel, viewPoint)) return panel;
  }
  return {};
}

std::optional<QPointF> wvfrmView::partPosition(QPointF viewPoint) const {
  const QRectF panel = partFrame(viewPoint);
  if (panel.isEmpty()) return {};
  return viewToData(viewPoint, panel, limits()) + QPointF(xOrigin(), 0);
}

std::vector<QLineF> wvfrmView::linesAt(double x) const {
  const PlotSpan part = currentPart().x;
  const double share = shareOfSpan(part, x, PlotReach::Motion::Linear);
  std::vector<QLineF> lines;
  if (!(share >= 0 && share <= 1)) return lines;
  for (const QRectF& panel : panels()) {
    const double place = panel.x() + share * panel.width();
    lines.emplace_back(place, panel.top(), place, panel.bottom());
  }
  return lines;
}

void wvfrmView::drawHeader(const SeismogramRecord& record) {
  const QRectF b = bounds();
  drawStringXYHJustVJust(eventCaption(record), float(b.x() + kHeaderLeft), float(b.y() + b.height() - kHeaderDrop), 1,
                         3);
}

void wvfrmView::drawPair(const QRectF& rect, const SeismogramArray& records, std::size_t first) {
  GraphicsContext& context = GraphicsContext::current();
  const double center = rect.y() + rect.height() / 2;
  context.setColor(colors::lightGray);
  strokeLine({rect.x(), center}, {rect.x() + rect.width(), center});
  context.setColor(traceColor(first, colors::black));
  drawSeisSeis(rect, records[first].get());
  const SeismogramRecord* const second = records[first + 1].get();
  context.setColor(traceColor(first + 1, colors::red));
  drawSeisSeis(rect, second);
  drawLabelForSeisSeis(rect, second);
  if (!traceColors().empty()) context.setColor(colors::black); // of the time axis, else in the second trace's red
}

void wvfrmView::drawSeisSeis(const QRectF& rect, const SeismogramRecord* record) {
  if (record == nullptr) return;
  const SavedState saved(GraphicsContext::current());
  clipToPart(rect);
  strokeTrace(traceOf(rect, *record), rect, record->smin(), record->smax());
}

Trace wvfrmView::traceOf(const QRectF& rect, const SeismogramRecord& record) const {
  Trace trace;
  trace.borrow(record.borrowedSamples());
  placeFromLeft(trace, record.npts(), record.delta(), rect);
  trace.xOffset = rect.x();
  trace.yScale = shownGain() * rect.height() / double(2 * maxAmplitude_);
  trace.yOffset = rect.y() + rect.height() / 2;
  return trace;
}

std::vector<RecordTrace> wvfrmView::recordTraces() const {
  std::vector<RecordTrace> traces;
  const auto records = heldRecords();
  if (!records) return traces;
  std::size_t index = 0;
  for (const WvfrmPanel& panel : layOutWvfrmPanels(bounds(), records->size() / 2)) {
    for (const std::size_t end = index + 2; index < end; ++index) {
      const auto& record = (*records)[index];
      if (!record) continue;
      Trace trace = traceOf(panel.rect, *record);
      if (!settleTrace(trace, panel.rect, record->smin(), record->smax())) continue;
      RecordTrace found{index, record, trace, panel.rect};
      found.secondsPerUnit = shownPart() ? 1 : double(record->delta());
      found.zeroSeconds = double(record->b());
      if (shownPart()) found.zeroSeconds += shownPart()->x.lower - double(wholeLimits().limits.xmin);
      traces.push_back(std::move(found));
    }
  }
  return traces;
}

void wvfrmView::drawLabelForSeisSeis(const QRectF& rect, const SeismogramRecord* record) {
  if (record == nullptr) return;
  const auto y = float(rect.y() + rect.height() + kCaptionRise);
  drawStringXYHJustVJust(azimuthCaption(*record), float(rect.x() + rect.width() - kCaptionInset), y, 3, 3);
  drawStringXYHJustVJust(distanceCaption(*record), float(rect.x() + kCaptionInset), y, 1, 3);
}

} // namespace xov
