#include "XOV_Graphics/views/timeline/RealTimeDisplayView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/timeline/MinuteScale.h"
#include "XOV_Graphics/views/timeline/RealTimeLayout.h"

namespace xov {

namespace {

constexpr float kLabelFontSize = 14;
constexpr double kBandLabelInset = 6;
constexpr double kBandLabelDrop = 16; // under the upper edge of the band

constexpr double kReferenceLineWidth = 3;
const std::vector<double> kReferenceDashes = {0.1, 7.0}; // round dots

constexpr double kMarkerWidth = 2;
constexpr double kMarkerOpacity = 0.5;
constexpr float kOrangeFrom = 5;
constexpr float kRedFrom = 6;

Edge edgeOf(bool originOnRight) { return originOnRight ? Edge::Right : Edge::Left; }

} // namespace

RealTimeDisplayView::RealTimeDisplayView(const QRectF& frame, QWidget* parent)
    : SeisView01(frame, parent),
      backGroundColor_(colors::white),
      drawingColor_(colors::black) {}

RealTimeDisplayView::~RealTimeDisplayView() = default;

void RealTimeDisplayView::computeRects() {
  pRect_ = realTimeRect(bounds());
  iRect_ = pRect_;
}

void RealTimeDisplayView::drawRect(const QRectF&) {
  GraphicsContext::current().setColor(backGroundColor_);
  fillBounds();
  const auto records = wvfrmsArray();
  if (!records || records->empty()) return;
  computeRects();
  const auto events = eventOrigins();
  if (drawOriginTimes_ && events && !events->empty()) drawOriginTimeMarkers();
  drawTheSeismograms();
  drawLabels();
  drawMinuteMarks();
}

void RealTimeDisplayView::drawTheSeismograms() {
  computeRects();
  const auto records = wvfrmsArray();
  if (!records) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(pRect_);
  labelAttributes_->setColor(colors::gray);
  const RealTimeBands bands{pRect_, records->size()};
  // All channels at once, which several threads can share; one takes little longer than it takes to wake them up.
  Path channels;
  for (std::size_t k = 0; k < records->size(); ++k) {
    const SeismogramRecord* const record = (*records)[k].get();
    if (record == nullptr) continue;
    Trace trace = realTimeTrace(bands, k, *record, limits(), waveformGain_);
    if (settleTrace(trace, pRect_, record->smin(), record->smax())) channels.appendTrace(trace);
  }
  context.setColor(drawingColor_);
  channels.setLineWidth(lineWidth_);
  if (!channels.traces().empty()) context.strokePath(channels);
  for (std::size_t k = 0; k < records->size(); ++k) {
    if (const SeismogramRecord* const record = (*records)[k].get(); record != nullptr)
      drawBandLabel(*record, bands.zeroLine(k) + bands.height() / 2);
  }
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
  const auto events = eventOrigins();
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
