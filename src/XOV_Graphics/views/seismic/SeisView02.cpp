#include "XOV_Graphics/views/seismic/SeisView02.h"

#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/base/LabelSpread.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/seismic/Captions.h"
#include "XOV_Graphics/views/seismic/TraceWindow.h"

namespace xov {

namespace {

constexpr double kCaptionInset = 18; // from the upper left corner
constexpr double kTitleOffset = 2;   // from the left edge of the view, in font sizes

} // namespace

SeisView02::SeisView02(const QRectF& frame, QWidget* parent) : StackedSeisView(frame, parent) {}

SeisView02::~SeisView02() = default;

QRectF SeisView02::bandRect(const QRectF& frame, std::size_t index, std::size_t count) {
  const double band = frame.height() / double(count);
  return {frame.x(), frame.y() + frame.height() - double(index + 1) * band, frame.width(), band};
}

void SeisView02::drawRect(const QRectF&) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::white);
  fillBounds();
  context.setColor(colors::black);
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  computeRects();
  computePlotLimits();
  // Without this each draw would add one more rectangle.
  discardCursorRects();
  resetCursorRects();
  const SavedState saved(context);
  context.strokeRect(pRect_);
  const std::vector<bool> hasLabel = recordsWithLabel(records->size());
  for (std::size_t i = 0; i < records->size(); ++i) {
    const SeismogramRecord* const record = (*records)[i].get();
    context.setColor(traceColor(i, colors::black));
    drawSeismogramInRect(record, rectOf(i, records->size()));
    if (hasLabel[i]) drawLabelForSignalInRect(record, rectOf(i, records->size()));
  }
  drawSourcePicks();
  context.setColor(colors::black);
  drawAxesOnRect(pRect_);
  drawTitleTopCentered();
  if (plotStyle_ == kBands) drawAmplitudeBar(rectOf(0, records->size()).height() / double(ymax_ - ymin_));
  if (!legend().empty()) drawLegendOf(*records);
}

void SeisView02::drawLegendOf(const SeismogramArray& records) const {
  std::vector<DrawnTrace> traces;
  std::vector<QRectF> captions;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!records[i] || records[i]->delta() <= 0) continue;
    const QRectF rect = plotStyle_ == kBands ? bandRect(pRect_, i, records.size()) : pRect_;
    traces.push_back({traceOf(*records[i], rect), {}});
    const QSizeF size = labelAttributes_->size(fileCaption(records[i]->path()));
    captions.emplace_back(rect.x() + kCaptionInset, rect.y() + rect.height() - kCaptionInset - size.height(),
                          size.width(), size.height());
  }
  drawLegendIn(pRect_, traces, captions);
}

std::vector<RecordTrace> SeisView02::recordTraces() const {
  std::vector<RecordTrace> traces;
  const auto records = heldRecords();
  for (std::size_t i = 0; records && i < records->size(); ++i) {
    const auto& record = (*records)[i];
    if (!record || record->delta() <= 0) continue;
    const QRectF rect = rectOf(i, records->size());
    Trace trace = traceOf(*record, rect);
    if (!settleTrace(trace, rect, record->smin(), record->smax())) continue;
    RecordTrace found{i, record, trace, rect, {}, 1, xOrigin()};
    if (plotStyle_ == kBands) found.level = rect.center().y();
    traces.push_back(std::move(found));
  }
  return traces;
}

QRectF SeisView02::rectOf(std::size_t index, std::size_t count) const {
  return plotStyle_ == kBands ? bandRect(pRect_, index, count) : pRect_;
}

// From the top down, those whose names do not cover the ones above.
std::vector<bool> SeisView02::recordsWithLabel(std::size_t count) const {
  if (!labelsGiveWay()) return std::vector<bool>(count, true);
  std::vector<double> drops;
  for (std::size_t i = 0; i < count; ++i)
    drops.push_back(-(rectOf(i, count).y() + rectOf(i, count).height()));
  std::vector<bool> shown;
  for (const std::optional<double>& place : spreadLabels(drops, labelAttributes_->lineHeight(), 0))
    shown.push_back(place.has_value());
  return shown;
}

void SeisView02::drawSeismogramInRect(const SeismogramRecord* record, const QRectF& rect) {
  if (record == nullptr) return;
  GraphicsContext& context = GraphicsContext::current();
  context.saveState();
  if (record->delta() <= 0) return;
  const Trace trace = traceOf(*record, rect);
  clipToPart(rect);
  if (!trace.isEmpty()) strokeTrace(trace, rect, record->smin(), record->smax());
  context.restoreState();
}

Trace SeisView02::traceOf(const SeismogramRecord& record, const QRectF& rect) const {
  Trace trace;
  trace.borrow(record.borrowedSamples());
  trace.tOrigin = xmin_;
  trace.xScale = timeScale(rect);
  const bool isPart = cutToPart(trace, record);
  if (!isPart) {
    const TraceWindow window = windowStartingAtLimit(record, xmin_, xmax_);
    trace.first = window.first;
    trace.last = window.last;
    if (!trace.isEmpty())
      trace.settleTimes(window.firstTime, TraceTime::even(window.firstTime, record.delta(), window.first));
  }
  if (trace.isEmpty()) return trace;
  trace.xOffset = rect.x();
  trace.vOrigin = ymin_;
  trace.yScale = rect.height() / double(ymax_ - ymin_);
  trace.yOffset = rect.y();
  trace.clampLow = ymin_;
  trace.clampHigh = ymax_;
  if (isPart) return trace;
  const HeldSamples first = trace.held(trace.first, trace.first + 1);
  trace.firstValue = trace.samples[trace.first];
  return trace;
}

void SeisView02::drawLabelForSignalInRect(const SeismogramRecord* record, const QRectF& rect) {
  if (record == nullptr) return;
  drawStringXYHJustVJust(fileCaption(record->path()), float(rect.x() + kCaptionInset),
                         float(rect.y() + rect.height() - kCaptionInset), 1, 3);
}

void SeisView02::drawAxesOnRect(const QRectF& rect) {
  const double fontSize = labelAttributes_->pointSize();
  beginAxes(rect);
  ASetYAxisPowerFlag(1);
  ASetFontSize(towardZero(float(fontSize)));
  addTimeAxis(xLabelString_);
  if (plotStyle_ == kOverlay) addAmplitudeAxis(QString());
  strokeAxisPath();
  drawRotatedStringXYHJustVJustAngle(yLabelString_, float(bounds().x() + kTitleOffset * fontSize),
                                     float(rect.y() + rect.height() / 2), 1, 2, 90);
}

} // namespace xov
