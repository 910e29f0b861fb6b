#include "XOV_Graphics/views/seismic/uniformTimeSeriesView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/HeldCopy.h"
#include "XOV_Graphics/views/base/RecordParts.h"
#include "XOV_Graphics/views/base/TraceReading.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kLeftMargin = 24;
constexpr double kRightMargin = 12;
constexpr double kBottomMargin = 48;
constexpr double kTopMargin = 12;
constexpr float kFontSize = 12;
constexpr double kCaptionInset = 4;
constexpr double kCaptionRise = 12;

} // namespace

uniformTimeSeriesView::uniformTimeSeriesView(const QRectF& frame, QWidget* parent) : SeismogramView(frame, parent) {}

uniformTimeSeriesView::~uniformTimeSeriesView() = default;

PlotReach uniformTimeSeriesView::reach() const {
  RecordSpan times;
  const auto all = heldCopy(wvfrmArray_);
  if (!all) return {};
  for (const auto& series : *all) {
    if (series) includeFromLeft(times, series->npts(), series->delta());
  }
  return reachFromLeft(times);
}

void uniformTimeSeriesView::holdAmplitudes(const PlotPart& part) { takeShownY(withGain(part.y, part.gain)); }

void uniformTimeSeriesView::drawRect(const QRectF&) {
  drawPaper();
  const auto series = heldCopy(wvfrmArray_); // whatever a drawing step does
  if (!series || series->empty()) return;
  setLabelFontSize(kFontSize);
  AInitGraphLib();
  const QRectF b = bounds();
  const QRectF panel(b.x() + kLeftMargin, b.y() + kBottomMargin, b.width() - kLeftMargin - kRightMargin,
                     b.height() - kTopMargin - kBottomMargin);
  iRect_ = panel;
  pRect_ = panel;
  drawTitle();
  for (std::size_t i = 0; i < series->size(); ++i) {
    GraphicsContext::current().setColor(colors::black);
    drawsignalSignal(panel, (*series)[i].get());
    drawLabelForSignalSignal(panel, (*series)[i].get());
    if (i == 0) drawTimeAxisUnder(panel.x(), panel.x() + panel.width(), panel.y());
  }
}

void uniformTimeSeriesView::drawsignalSignal(const QRectF& rect, const UniformSignal* series) {
  if (series == nullptr) return;
  if (ymin_ == ymax_) {
    ymin_ = series->min();
    ymax_ = series->max();
  }
  const SavedState saved(GraphicsContext::current());
  clipToPart(rect);
  strokeTrace(traceOf(rect, *series), rect, series->min(), series->max());
}

Trace uniformTimeSeriesView::traceOf(const QRectF& rect, const UniformSignal& series) const {
  Trace trace;
  trace.samples = series.dataPointer();
  placeFromLeft(trace, series.npts(), series.delta(), rect);
  trace.xOffset = rect.x();
  trace.yScale = rect.height() / double(ymax_ - ymin_);
  trace.yOffset = rect.y();
  return trace;
}

PlotReadout uniformTimeSeriesView::readout(QPointF point) const {
  PlotReadout readout;
  const auto all = heldCopy(wvfrmArray_);
  if (!all || all->empty() || !isInFrame(point)) return readout;
  const UniformSignal* nearest = nullptr;
  Trace nearestTrace;
  double best = 0;
  for (const auto& series : *all) {
    if (!series) continue;
    Trace trace = traceOf(pRect_, *series);
    if (!settleTrace(trace, pRect_, series->min(), series->max())) continue;
    const auto height = heightFromTrace(trace, point);
    if (!height || (nearest != nullptr && *height > best)) continue;
    nearest = series.get();
    nearestTrace = trace;
    best = *height;
  }
  if (nearest != nullptr) readout.addText(QLatin1String("record"), nearest->description());
  const double seconds = dataAt(point).x();
  readout.add(QLatin1String("time"), seconds, QStringLiteral("s"), std::abs(1 / timeScale(pRect_)));
  readout.addMoment(momentOf(seconds), std::abs(1 / timeScale(pRect_)));
  if (nearest == nullptr) return readout;
  if (const auto sample = sampleUnder(nearestTrace, point))
    readout.add(QLatin1String("amplitude"), double(sample->value), amplitudeUnit());
  return readout;
}

void uniformTimeSeriesView::drawLabelForSignalSignal(const QRectF& rect, const UniformSignal* series) {
  if (series == nullptr) return;
  drawStringXYHJustVJust(series->description(), float(rect.x() + rect.width() - kCaptionInset),
                         float(rect.y() + rect.height() + kCaptionRise), 3, 3);
}

} // namespace xov
