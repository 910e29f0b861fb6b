#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/base/RecordParts.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/base/ScaleBar.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kLegendFontSize = 10;

// The share of a box that another one takes.
double shareOf(const QRectF& box, const QRectF& other) {
  const QRectF common = box.intersected(other);
  return common.width() * common.height() / (box.width() * box.height());
}
constexpr double kLongestBar = 28; // points; above a frame there are 40
constexpr double kBarGap = 6;      // points
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kFarthestReference = 1e15; // milliseconds

} // namespace

SeismogramView::SeismogramView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

SeismogramView::~SeismogramView() = default;

QString SeismogramView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("time (s)") : QStringLiteral("amplitude");
}

void SeismogramView::takeLimits(const RecordLimits& found, FixedRanges fixed) {
  const bool keep = fixed == FixedRanges::Kept;
  if (!keep || !fixedXAxisRange_) {
    xmin_ = found.tmin;
    xmax_ = found.tmax;
  }
  if (!keep || !fixedYAxisRange_) {
    ymin_ = found.amin;
    ymax_ = found.amax;
  }
  holdPart();
  announceLimits();
}

std::vector<RecordTrace> SeismogramView::recordTraces() const { return {}; }

QDateTime SeismogramView::momentOf(double axisSeconds) const { return momentAfter(timeReference_, axisSeconds); }

void SeismogramView::addToReadout(PlotReadout&, QPointF) const {}
QDateTime SeismogramView::momentOfZero() const {
  if (timeReference_.isValid()) return timeReference_;
  for (const auto& record : recordsToMoveOver()) {
    const QDateTime reference = record ? referenceTimeOf(*record) : QDateTime();
    if (reference.isValid()) return reference;
  }
  return {};
}

RecordLimits SeismogramView::limitsOfWhole() const {
  const PlotLimits kept = wholeLimits().limits;
  return recordLimits(recordsToMoveOver(), minYRange_)
      .value_or(RecordLimits{kept.xmin, kept.xmax, kept.ymin, kept.ymax});
}

PlotReach SeismogramView::reach() const {
  const SeismogramArray records = recordsToMoveOver();
  PlotReach reach;
  const RecordSpan times = timesOf(records);
  if (!times.isKnown()) return reach;
  const RecordLimits whole = limitsOfWhole();
  reach.setX({double(whole.tmin), double(whole.tmax)}, times.span, false, times.interval);
  reach.whole.y = {double(whole.amin), double(whole.amax)};
  reach.gain = true;
  return reach;
}

void SeismogramView::applyPart() {
  XOVView::applyPart();
  fixedXAxisRange_ = wholeLimits().fixedX;
  fixedYAxisRange_ = wholeLimits().fixedY;
  if (shownPart()) xOrigin_ = originOfPart(shownPart()->x, timeReference_.isValid());
  holdPart();
}

void SeismogramView::holdPart() {
  if (!shownPart()) return;
  if (reach().x != PlotReach::Motion::None) takeShownX(shownPart()->x);
  holdAmplitudes(*shownPart());
}

void SeismogramView::holdAmplitudes(const PlotPart&) {}

PlotSpan SeismogramView::withGain(const PlotSpan& amplitudes, double gain) const {
  return zoomedSpan(amplitudes, amplitudes.center(), 1 / gain, PlotReach::Motion::Linear);
}

bool SeismogramView::cutToPart(Trace& trace, const SeismogramRecord& record) const {
  if (!shownPart()) return false;
  const RecordPart part = partOf(record, shownPart()->x, xOrigin_);
  trace.first = part.first;
  trace.last = part.last;
  trace.time = TraceTime::even(part.firstTime, record.delta(), part.first);
  return true;
}

Trace SeismogramView::traceAlong(const QRectF& frame, const SeismogramRecord& record) const {
  Trace trace;
  trace.borrow(record.borrowedSamples());
  trace.last = record.npts();
  trace.tOrigin = xmin_;
  trace.xScale = timeScale(frame);
  if (!cutToPart(trace, record)) trace.settleTimes(record.b(), TraceTime::even(record.b(), record.delta()));
  trace.xOffset = frame.x();
  return trace;
}

void SeismogramView::includeFromLeft(RecordSpan& times, int npts, float interval) const {
  if (npts < 1 || !(interval > 0) || !std::isfinite(interval)) return;
  const auto start = double(wholeLimits().limits.xmin);
  const auto step = double(interval);
  const PlotSpan own{start, start + double(npts - 1) * step};
  times =
      times.isKnown() ? RecordSpan{united(times.span, own), std::min(times.interval, step)} : RecordSpan{own, step};
}

PlotReach SeismogramView::reachFromLeft(const RecordSpan& times) const {
  PlotReach reach;
  if (!times.isKnown()) return reach;
  const PlotLimits whole = wholeLimits().limits;
  reach.setX({double(whole.xmin), double(whole.xmax)}, times.span, false, times.interval);
  reach.whole.y = {double(whole.ymin), double(whole.ymax)};
  reach.gain = true;
  return reach;
}

void SeismogramView::placeFromLeft(Trace& trace, int npts, float interval, const QRectF& panel) const {
  if (!shownPart()) {
    trace.last = npts;
    trace.time = TraceTime::uniform(0, 1);
    trace.xScale = timeScale(panel) * double(interval);
    return;
  }
  const PlotSpan shown = shownPart()->x;
  const RecordPart part = partOf(npts, double(wholeLimits().limits.xmin), double(interval), shown, shown.lower);
  trace.first = part.first;
  trace.last = part.last;
  trace.time = TraceTime::even(part.firstTime, interval, part.first);
  trace.xScale = timeScale(panel);
}

void SeismogramView::clipToPart(const QRectF& panel) const {
  if (!shownPart()) return;
  const QRectF b = bounds();
  GraphicsContext::current().clipToRect({panel.x(), b.y(), panel.width(), b.height()});
}

bool SeismogramView::settleTrace(Trace& trace, const QRectF& panel, float lowest, float highest) {
  if (!(panel.width() > 0) || !(panel.height() > 0) || !std::isfinite(trace.xScale)) return false;
  if (std::isfinite(trace.yScale)) return true;
  trace.yScale = 0;
  return lowest == trace.vOrigin && highest == trace.vOrigin;
}

void SeismogramView::strokeTrace(Trace trace, const QRectF& panel, float lowest, float highest) const {
  if (!settleTrace(trace, panel, lowest, highest)) return;
  Path path;
  path.appendTrace(trace);
  path.setLineWidth(lineWidth_);
  GraphicsContext::current().strokePath(path);
}

QColor SeismogramView::traceColor(std::size_t index, const QColor& usual) const {
  return traceColors_.empty() ? usual : traceColors_[index % traceColors_.size()];
}

void SeismogramView::drawLegendIn(const QRectF& frame, std::span<const DrawnTrace> traces,
                                  std::span<const QRectF> texts) const {
  if (legend_.empty()) return;
  const TextAttributes font = TextAttributes::helvetica(kLegendFontSize);
  const auto covered = [&](const QRectF& box) {
    double sum = coveredByTraces(box, traces);
    for (const QRectF& text : texts)
      sum += shareOf(box, text);
    return sum;
  };
  drawLegend(layOutLegend(frame, legend_, legendPlace_, font, covered), font, lineWidth_);
}

void SeismogramView::strokeLine(QPointF from, QPointF to) {
  Path line;
  line.moveTo(from);
  line.lineTo(to);
  GraphicsContext::current().strokePath(line);
}

void SeismogramView::strokeDottedLine(QPointF from, QPointF to, double width, const std::vector<double>& dashes) {
  Path line;
  line.moveTo(from);
  line.lineTo(to);
  line.setLineWidth(width);
  line.setLineCap(Path::Cap::Round);
  line.setDashes(dashes, 0);
  GraphicsContext::current().strokePath(line);
}

void SeismogramView::addTimeAxis(const QString& label) {
  if (timeReference_.isValid()) {
    const double since = std::clamp(xOrigin_ * kMillisecondsPerSecond, -kFarthestReference, kFarthestReference);
    const QDateTime reference = timeReference_.addMSecs(qint64(std::llround(since)));
    ADrawUtcAxis(QStringLiteral("UTC"), reference, double(xmin_), double(xmax_));
  } else {
    addAxis(AxisSide::Bottom, timeAxisLabel(label, xOrigin_), xmin_, xmax_);
  }
}

void SeismogramView::addAmplitudeAxis(const QString& label) { addAxis(AxisSide::Left, label, ymin_, ymax_); }

void SeismogramView::drawAmplitudeBar(double pointsPerUnit) {
  if (!showAmplitudeBar_) return;
  const std::optional<ScaleBar> bar = scaleBar(pointsPerUnit, kLongestBar, amplitudeUnit_);
  if (!bar) return;
  const double right = iRect_.x() + iRect_.width();
  const double left = right - uprightBarWidth(*bar);
  const double titleRight = iRect_.center().x() + titleAttributes_->size(plotTitle_).width() / 2;
  const double top = iRect_.y() + iRect_.height();
  const double bottom = titleRight + kBarGap < left ? top + kBarGap : top - kBarGap - bar->length;
  drawUprightBar(*bar, {right - kScaleBarCap / 2, bottom});
}

void SeismogramView::drawTimeAxisUnder(double left, double right, double bottom) {
  if (!(std::abs(left) <= kAxisReach && std::abs(right) <= kAxisReach && std::abs(bottom) <= kAxisReach)) return;
  beginAxes({left, bottom, right - left, 0});
  addTimeAxis(QStringLiteral("Time (s)"));
  strokeAxisPath();
}

} // namespace xov
