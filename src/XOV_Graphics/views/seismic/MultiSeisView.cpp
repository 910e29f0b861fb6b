#include "XOV_Graphics/views/seismic/MultiSeisView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/seismic/Captions.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kSideMargin = 20;
constexpr double kBottomMargin = 60;
constexpr double kTopMargin = 40;

constexpr float kCaptionSize = 10;
constexpr double kCaptionRise = 4;
constexpr float kAxisFontSize = 14;

constexpr double kZeroLineInset = 4;
constexpr double kZeroLineWidth = 1;

constexpr double kArrivalReach = 0.4; // of a slot, to both sides of the zero line

// A strip is two slots high, with the zero line in its middle.
constexpr PickStyle kPicks = {.labels = {.storedForFirstArrival = false, .storedForKeys = true},
                              .lineAbove = {.share = 0.5},
                              .lineBelow = {.share = 0.2},
                              .labelBelow = {.share = 0.2},
                              .labelPlace = PickStyle::LabelPlace::RightOfLine};

} // namespace

MultiSeisView::MultiSeisView(const QRectF& frame, QWidget* parent) : PickedSeismogramView(kPicks, frame, parent) {}

MultiSeisView::~MultiSeisView() = default;

void MultiSeisView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kSideMargin, kBottomMargin, b.width() - 2 * kSideMargin, b.height() - kBottomMargin - kTopMargin};
  iRect_ = pRect_;
}

void MultiSeisView::computePlotLimits() {
  const auto records = wvfrmsArray();
  if (!records) return;
  if (const auto found = recordLimits(*records, minYRange_)) takeLimits(*found, FixedRanges::Overwritten);
}

void MultiSeisView::drawRect(const QRectF&) {
  drawPaper();
  const auto records = wvfrmsArray();
  if (!records || records->empty()) return;
  computeRects();
  computePlotLimits();
  std::vector<DrawnTrace> traces;
  {
    const SavedState saved(GraphicsContext::current());
    labelAttributes_->setColor(colors::gray);
    traces = drawStrips(*records);
    drawTimeAxis();
    drawTitleTopCentered();
  }
  drawPicks();
  drawLegendIn(pRect_, traces);
}

// All traces are stroked last, over the picks and captions.
std::vector<DrawnTrace> MultiSeisView::drawStrips(const SeismogramArray& records) {
  const auto n = double(records.size());
  const double slot = pRect_.height() / n;
  double center = pRect_.y() + pRect_.height() / (2 * n);
  std::vector<DrawnTrace> traces;
  for (const auto& record : records) {
    const auto index = std::size_t(&record - records.data());
    if (showZeroLine_) drawZeroLine(center);
    if (record) {
      Trace trace = traceOf(*record, center, slot);
      if (settleTrace(trace, pRect_, record->smin(), record->smax()))
        traces.push_back({trace, traceColor(index, colors::black)});
      drawCaption(*record, center);
      drawPicksSeis({pRect_.x(), center - slot, pRect_.width(), 2 * slot}, record.get());
    }
    center += slot;
  }
  strokeTraces(traces, lineWidth_);
  GraphicsContext::current().setColor(colors::black);
  return traces;
}

void MultiSeisView::drawZeroLine(double center) {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::lightGray);
  strokeDottedLine({pRect_.x() + kZeroLineInset, center}, {pRect_.x() + pRect_.width(), center}, kZeroLineWidth,
                   {dashes.begin(), dashes.end()});
}

Trace MultiSeisView::traceOf(const SeismogramRecord& record, double center, double slot) const {
  float ampMax = std::abs(ymin_);
  if (ymax_ > ampMax) ampMax = ymax_;
  Trace trace;
  trace.borrow(record.borrowedSamples());
  trace.last = record.npts();
  trace.tOrigin = xmin_;
  trace.xScale = timeScale(pRect_);
  trace.settleTimes(record.b(), TraceTime::even(record.b(), record.delta()));
  trace.xOffset = pRect_.x();
  trace.yScale = slot / double(plotGainFactor_ * ampMax);
  trace.yOffset = center;
  return trace;
}

void MultiSeisView::drawCaption(const SeismogramRecord& record, double center) {
  setLabelFontSize(kCaptionSize);
  drawStringXYHJustVJust(stripCaption(record), float(pRect_.x()), float(center + kCaptionRise), 1, 4);
}

void MultiSeisView::drawTimeAxis() {
  labelAttributes_->setColor(colors::darkGray);
  setLabelFontSize(kAxisFontSize);
  beginAxes(pRect_);
  ASetYAxisPowerFlag(1);
  addTimeAxis(xLabelString_);
  strokeAxisPath();
}

void MultiSeisView::drawPicks() {
  const auto records = wvfrmsArray();
  if (!records || records->empty()) return;
  const double slot = pRect_.height() / double(records->size());
  double center = pRect_.y() + slot / 2;
  Path ticks;
  for (const auto& record : *records) {
    if (record) {
      const double x = pickX(pRect_, record->a(), xmin_, xmax_);
      ticks.moveTo({x, center - kArrivalReach * slot});
      ticks.lineTo({x, center + kArrivalReach * slot});
    }
    center += slot;
  }
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::red);
  context.strokePath(ticks);
}

} // namespace xov
