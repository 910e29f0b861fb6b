#include "XOV_Graphics/views/timeline/RealTimeDisplayView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/realtime/ChannelArrival.h"
#include "XOV_Graphics/views/base/HeldCopy.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/timeline/MinuteScale.h"
#include "XOV_Graphics/views/timeline/RealTimeLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr float kLabelFontSize = 14;
constexpr double kLargestLatencySize = 12; // of the font
constexpr double kSmallestLatencySize = 6;
constexpr double kBandLabelInset = 6;
constexpr double kBandLabelDrop = 16; // under the upper edge of the band

constexpr double kReferenceLineWidth = 3;
const std::vector<double> kReferenceDashes = {0.1, 7.0}; // round dots

constexpr double kMarkerWidth = 2;
constexpr double kMarkerOpacity = 0.5;
constexpr float kOrangeFrom = 5;
constexpr float kRedFrom = 6;

constexpr double kLeastPartSeconds = 1; // of a part
constexpr double kSpanMilliseconds = 1000;
constexpr double kSameInstant = 1e-3; // seconds

Edge edgeOf(bool originOnRight) { return originOnRight ? Edge::Right : Edge::Left; }

} // namespace

RealTimeDisplayView::RealTimeDisplayView(const QRectF& frame, QWidget* parent)
    : SeisView01(frame, parent),
      backGroundColor_(colors::white),
      drawingColor_(colors::black) {}

RealTimeDisplayView::~RealTimeDisplayView() = default;

void RealTimeDisplayView::showSpan(float xmin, float xmax, const QDateTime& reference) {
  if (!reference.isValid()) return;
  const QPointer<RealTimeDisplayView> self(this); // whoever hears of the change may take the view away
  const std::optional<WholeSpan> before = std::exchange(span_, WholeSpan{xmin, xmax, reference});
  std::optional<PlotPart> part = shownPart();
  const PlotReach reach = this->reach();
  if (part && before && reach.x != PlotReach::Motion::None && part->x.upper < reach.whole.x.upper - kSameInstant) {
    const double elapsed = double(before->reference.msecsTo(reference)) / kSpanMilliseconds;
    const bool isAnotherTime = std::abs(elapsed) > reach.whole.x.width();
    if (!isAnotherTime) part->x = {part->x.lower - elapsed, part->x.upper - elapsed};
    showPart(part);
  }
  if (self && !shownPart()) setXLimitsMinMax(xmin, xmax);
  if (!self) return;
  applyPart();
  announceLimits();
}

std::shared_ptr<const EventOriginArray> RealTimeDisplayView::heldEvents() const { return heldCopy(eventOrigins_); }

PlotReach RealTimeDisplayView::reach() const {
  PlotReach reach;
  reach.gain = true;
  if (!span_) return reach;
  const double seconds = double(span_->xmax) - double(span_->xmin);
  const PlotSpan whole = originOnRight_ ? PlotSpan{-seconds, 0} : PlotSpan{0, seconds};
  reach.setX(whole, whole, false, std::min(kLeastPartSeconds, std::abs(seconds)));
  return reach;
}

void RealTimeDisplayView::applyPart() {
  if (!span_) return;
  const bool isPart = shownPart() && reach().x != PlotReach::Motion::None;
  const PlotSpan shown = isPart ? shownPart()->x : reach().whole.x;
  xmin_ = isPart ? float(referenceX() + shown.lower) : span_->xmin;
  xmax_ = isPart ? float(referenceX() + shown.upper) : span_->xmax;
  const double edge = isPart ? (originOnRight_ ? shown.upper : shown.lower) : 0;
  refDate_ = span_->reference.addMSecs(std::llround(edge * kSpanMilliseconds));
}

// On the axis of the records, which their host moves.
double RealTimeDisplayView::referenceX() const {
  return span_ ? double(originOnRight_ ? span_->xmax : span_->xmin) : 0;
}

std::optional<QPointF> RealTimeDisplayView::partPosition(QPointF viewPoint) const {
  const std::optional<QPointF> position = SeisView01::partPosition(viewPoint);
  if (!position) return {};
  return QPointF(position->x() - referenceX(), position->y());
}

std::vector<QLineF> RealTimeDisplayView::linesAt(double x) const { return SeisView01::linesAt(x + referenceX()); }

QDateTime RealTimeDisplayView::momentOfZero() const { return span_ ? span_->reference : SeisView01::momentOfZero(); }

void RealTimeDisplayView::computeRects() {
  pRect_ = realTimeRect(bounds());
  iRect_ = pRect_;
}

void RealTimeDisplayView::drawRect(const QRectF&) {
  GraphicsContext::current().setColor(backGroundColor_);
  fillBounds();
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  computeRects();
  const auto events = heldEvents();
  if (drawOriginTimes_ && events && !events->empty()) drawOriginTimeMarkers();
  drawTheSeismograms();
  if (showLatency_) drawLatencies();
  drawLabels();
  drawMinuteMarks();
}

std::vector<RecordTrace> RealTimeDisplayView::recordTraces() const {
  std::vector<RecordTrace> traces;
  const auto records = heldRecords();
  for (std::size_t k = 0; records && k < records->size(); ++k) {
    const auto& record = (*records)[k];
    if (!record) continue;
    const RealTimeBands bands{pRect_, records->size()};
    Trace trace = realTimeTrace(bands, k, *record, limits(), waveformGain_);
    if (settleTrace(trace, pRect_, record->smin(), record->smax()))
      traces.push_back({k, record, trace, pRect_, bands.zeroLine(k)});
  }
  return traces;
}

QDateTime RealTimeDisplayView::momentOf(double axisSeconds) const {
  return momentAfter(refDate_, axisSeconds - double(originOnRight_ ? xmax_ : xmin_));
}

void RealTimeDisplayView::drawTheSeismograms() {
  computeRects();
  const auto records = heldRecords();
  if (!records) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(pRect_);
  labelAttributes_->setColor(colors::gray);
  const RealTimeBands bands{pRect_, records->size()};
  // All channels at once, which several threads can share; one takes little longer than it takes to wake them up.
  Path channels;
  Path late;
  for (std::size_t k = 0; k < records->size(); ++k) {
    const SeismogramRecord* const record = (*records)[k].get();
    if (record == nullptr) continue;
    Trace trace = realTimeTrace(bands, k, *record, limits(), waveformGain_ * float(shownGain()));
    if (settleTrace(trace, pRect_, record->smin(), record->smax()))
      (isLate(*record) ? late : channels).appendTrace(trace);
  }
  strokeChannels(late, colors::lightGray);
  strokeChannels(channels, drawingColor_);
  for (std::size_t k = 0; k < records->size(); ++k) {
    if (const SeismogramRecord* const record = (*records)[k].get(); record != nullptr)
      drawBandLabel(*record, bands.zeroLine(k) + bands.height() / 2);
  }
}

bool RealTimeDisplayView::isLate(const SeismogramRecord& record) const {
  return lateSeconds_ > 0 && channelLatency(record, presentX()).value_or(0) > lateSeconds_;
}

void RealTimeDisplayView::strokeChannels(Path& channels, const QColor& color) const {
  if (channels.traces().empty()) return;
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(color);
  channels.setLineWidth(lineWidth_);
  context.strokePath(channels);
}

void RealTimeDisplayView::drawLatencies() {
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  const RealTimeBands bands{pRect_, records->size()};
  const double size = std::min(kLargestLatencySize, bands.height());
  if (!(size >= kSmallestLatencySize)) return;
  setLabelFontSize(float(size));
  labelAttributes_->setColor(colors::gray);
  for (std::size_t k = 0; k < records->size(); ++k) {
    const SeismogramRecord* const record = (*records)[k].get();
    const auto seconds = record != nullptr ? channelLatency(*record, presentX()) : std::nullopt;
    if (seconds)
      drawStringXYHJustVJust(latencyText(*seconds), float(pRect_.x() + pRect_.width() + kBandLabelInset),
                             float(bands.zeroLine(k)), 1, 2);
  }
  setLabelFontSize(kLabelFontSize);
}

void RealTimeDisplayView::drawBandLabel(const SeismogramRecord& record, double upperEdge) {
  setLabelFontSize(kLabelFontSize);
  const auto y = float(upperEdge - kBandLabelDrop);
  if (originOnRight_) {
    drawStringXYHJustVJust(record.labelString(), float(pRect_.x() + kBandLabelInset), y, 1, 1);
  } else {
    drawStringXYHJustVJust(record.labelString(), float(pRect_.x() + pRect_.width()), y, 3, 1);
  }
}

void RealTimeDisplayView::drawMinuteMarks() {
  MinuteSpan span;
  span.rect = pRect_;
  span.seconds = xmax_ - xmin_;
  span.viewBottom = bounds().y();
  span.origin = originOnRight_ ? Edge::Right : Edge::Left;
  drawMinuteScale(*this, layOutMinuteScale(realTimeMinutes(), span));
}

void RealTimeDisplayView::drawLabels() {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  const ReferencePlaces places = referencePlaces(pRect_, edgeOf(originOnRight_));
  const ReferenceTexts texts = referenceTexts();
  const auto drawOver = [this](const QString& text, QPointF place, int hjust) {
    drawStringXYHJustVJust(text, float(place.x()), float(place.y()), hjust, 1);
  };
  drawOver(texts.date, places.date, places.dateHJust);
  drawOver(texts.utcTime, places.utcTime, 2);
  drawOver(texts.localTime, places.localTime, 2);
  labelAttributes_->setColor(colors::black);
  context.setColor(colors::gray);
  const double x = places.utcTime.x();
  strokeDottedLine({x, places.lineTop}, {x, places.lineBottom}, kReferenceLineWidth, kReferenceDashes);
  titleAttributes_->setColor(colors::gray);
  drawTitleTopCentered();
  titleAttributes_->setColor(colors::black);
}

void RealTimeDisplayView::drawOriginTimeMarkers() {
  const auto events = heldEvents();
  if (!events || !refDate_.isValid()) return;
  const float seconds = xmax_ - xmin_;
  const RealTimeWindow window = realTimeWindow(refDate_, seconds, edgeOf(originOnRight_));
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  for (const auto& event : *events) {
    const auto time = event ? event->_origin_time() : nullptr;
    if (!time) continue;
    time->updateNSDate();
    const auto x = instantX(pRect_, window, seconds, time->nsDate());
    if (!x) continue;
    Path line;
    line.moveTo({*x, markerTop(pRect_)});
    line.lineTo({*x, markerBottom(pRect_)});
    line.setLineWidth(kMarkerWidth);
    line.setLineCap(Path::Cap::Round);
    context.setColor(colorForMagnitude(event->magnitude()));
    context.strokePath(line);
  }
}

QColor RealTimeDisplayView::colorForMagnitude(float magnitude) const {
  QColor color = colors::red;
  if (magnitude < kOrangeFrom)
    color = colors::yellow;
  else if (magnitude < kRedFrom)
    color = colors::orange;
  color.setAlphaF(kMarkerOpacity);
  return color;
}

} // namespace xov
