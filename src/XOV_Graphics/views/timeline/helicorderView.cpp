#include "XOV_Graphics/views/timeline/helicorderView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/base/HeldCopy.h"
#include "XOV_Graphics/views/base/ScaleBar.h"
#include "XOV_Graphics/views/timeline/ClipMarks.h"
#include "XOV_Graphics/views/timeline/EventLabels.h"
#include "XOV_Graphics/views/timeline/HelicorderMarker.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"
#include "XOV_Graphics/views/timeline/HelicorderRows.h"
#include "XOV_Graphics/views/timeline/HourLabels.h"
#include "XOV_Graphics/views/timeline/MinuteScale.h"
#include "XOV_Graphics/views/timeline/PageStart.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kTitleLeft = 72;
constexpr double kTitleDrop = 2;
constexpr double kZeroLineWidth = 0.5;
constexpr float kHourFontSize = 12;
constexpr float kMinuteFontSize = 11; // the widest "month/day hour:minute" that the margin has room for
constexpr float kLabelFontSize = 18;
constexpr double kMillisecondsPerSecond = 1000;
constexpr float kEventFontSize = 9;
constexpr double kEventPaper = 0.8; // how little of the traces shows through under the labels of events
constexpr double kHeadingRise = 4;
constexpr double kLongestBar = 36;
constexpr double kBarRise = 6; // above the rows
constexpr double kClipMarkWidth = 2;
const QColor kClipMarkColor(213, 94, 0); // vermilion, which no kind of colour vision takes for black
constexpr float kBelowAllAmplitudes = -1.0e20f;

} // namespace

struct helicorderView::MarkedEvent {
  HelicorderMarker marker;
  std::shared_ptr<const EventOrigin> event;
};

helicorderView::helicorderView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

helicorderView::~helicorderView() = default;

std::shared_ptr<const SeismogramArray> helicorderView::heldRecords() const { return heldCopy(wvfrmArray_); }

bool helicorderView::hasPieces() const {
  const auto pieces = wvfrmArray_.lock();
  return pieces && !pieces->empty();
}

std::shared_ptr<const SeismogramRecord> helicorderView::firstPiece() const {
  const auto pieces = wvfrmArray_.lock();
  return pieces && !pieces->empty() ? pieces->front() : nullptr;
}

std::shared_ptr<const EventOriginArray> helicorderView::heldEvents() const { return heldCopy(theHypos_); }

PageStart helicorderView::startOf(const SeismogramRecord* first) const {
  PageStart start = recordedStart(first);
  if (!pageStart_.isValid() || !start.hour.isValid()) return start;
  const double secondsToHour = double(pageStart_.msecsTo(start.hour)) / kMillisecondsPerSecond;
  return {pageStart_.toUTC(), pageStart_.toUTC(), float(secondsToHour + double(start.offset))};
}

HelicorderPage helicorderView::page() const { return {pRect_, nRows_, rowDuration_}; }

QString helicorderView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("time in a row (s)") : QStringLiteral("amplitude");
}

void helicorderView::drawRect(const QRectF& dirty) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::white);
  fillBounds();
  const auto pieces = heldRecords();
  if (!pieces || pieces->empty()) return;
  const PageStart start = startOf(pieces->front().get());
  setStartTime(start.hour);
  setPlotDuration(double(float(nRows_) * rowDuration_));
  const SavedState saved(context);
  pRect_ = helicorderRect(bounds(), localZone_.isValid() ? RightMargin::Labels : RightMargin::Paper);
  iRect_ = pRect_;
  setMaxAmplitude(largestAmplitude(*pieces));
  if (pieces->front()) drawPageTitle(*pieces->front());
  if (showZeroLines_) drawZeroLines();
  drawSeismicPhases(dirty);
  drawTraces(*pieces, start.offset);
  if (showEventLabels_) drawEventLabels();
  if (showAmplitudeBar_) drawAmplitudeBar();
  xmin_ = 0;
  xmax_ = rowDuration_;
  drawMinuteMarks();
  drawHourLabels();
}

void helicorderView::drawPageTitle(const SeismogramRecord& record) {
  const QRectF b = bounds();
  labelAttributes_->setColor(colors::gray);
  drawStringXYHJustVJust(pageTitle(record), float(b.x() + kTitleLeft), float(b.y() + b.height() - kTitleDrop), 1, 3);
}

void helicorderView::drawZeroLines() {
  const HelicorderPage page = this->page();
  Path lines;
  for (const std::int32_t row : page.markedRows()) {
    const double y = page.zeroLine(row);
    lines.moveTo({pRect_.x(), y});
    lines.lineTo({pRect_.x() + pRect_.width(), y});
  }
  lines.setLineWidth(kZeroLineWidth);
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::lightGray);
  context.strokePath(lines);
}

QColor helicorderView::rowColor(const HelicorderPage& page, double row, const QColor& usual) const {
  if (rowColors_.empty()) return usual;
  double place = row;
  if (colorsByDay_) {
    const QTimeZone zone = localZone_.isValid() ? localZone_ : QTimeZone::utc();
    const auto dayOf = [&](double r) { return rowBegin(page, startTime_, r).toTimeZone(zone).date(); };
    place = double(dayOf(0).daysTo(dayOf(row)));
  }
  const double turn = std::fmod(place, double(rowColors_.size()));
  return rowColors_[std::size_t(turn < 0 ? turn + double(rowColors_.size()) : turn) % rowColors_.size()];
}

// The traces of a piece, one a row, held within their reach.
std::vector<Trace> helicorderView::tracesOf(const SeismogramRecord& piece, const Placement& placement) const {
  const HelicorderPage page = this->page();
  const double reach = std::abs(double(shownGainFactor())) / 2;
  const double limit = clipReach_ * page.rowHeight() / std::abs(placement.scale);
  const bool isHeld = clipReach_ > 0 && limit <= double(std::numeric_limits<float>::max());
  BorrowedSamples samples = piece.borrowedSamples();
  const PieceTimes times = timesOnPage(piece, samples.samples, placement);
  std::vector<Trace> traces = rowTraces(page, times, samples.samples, placement.scale, reach);
  for (Trace& trace : traces) {
    trace.borrow(samples);
    if (!isHeld) continue;
    trace.clampLow = -float(limit);
    trace.clampHigh = float(limit);
  }
  return traces;
}

// The rows of a piece that have one colour are one path: where they overlap, ink does not double.
void helicorderView::drawTraces(const SeismogramArray& pieces, float offset) {
  const HelicorderPage page = this->page();
  const auto scale = amplitudeScale(shownGainFactor(), page.rowHeight(), maxAmplitude_);
  if (!scale || !page.holdsTraces()) return;
  const Placement placement{offset, *scale, spanOfPart()};
  TraceStrokes strokes(lineWidth_);
  strokes.reserve(pieces.size());
  std::vector<DrawnTrace> rows, held;
  for (std::size_t k = 0; k < pieces.size(); ++k) {
    const SeismogramRecord* const piece = pieces[k].get();
    if (piece == nullptr) continue;
    rows.clear();
    for (const Trace& trace : tracesOf(*piece, placement)) {
      const double row = std::round(double(trace.tOrigin) / double(rowDuration_));
      rows.push_back({trace, rowColor(page, row, k % 2 == 1 ? colors::red : colors::black)});
    }
    addStrokes(strokes, rows);
    if (!rows.empty() && rows.front().trace.clampHigh) held.insert(held.end(), rows.begin(), rows.end());
  }
  drawStrokes(strokes);
  drawClipMarks(held);
}

void helicorderView::drawClipMarks(const std::vector<DrawnTrace>& traces) {
  Path marks;
  for (const DrawnTrace& drawn : traces) {
    for (const QLineF& line : clipMarks(drawn.trace)) {
      marks.moveTo(line.p1());
      marks.lineTo(line.p2());
    }
  }
  if (marks.isEmpty()) return;
  marks.setLineWidth(kClipMarkWidth);
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(kClipMarkColor);
  context.strokePath(marks);
}

void helicorderView::drawAmplitudeBar() {
  const HelicorderPage page = this->page();
  const auto scale = amplitudeScale(shownGainFactor(), page.rowHeight(), maxAmplitude_);
  const auto bar = scaleBar(std::abs(scale.value_or(0)), kLongestBar, amplitudeUnit_);
  if (bar) drawUprightBar(*bar, {pRect_.x() + pRect_.width() - kScaleBarCap / 2, page.top() + kBarRise});
}

std::vector<helicorderView::MarkedEvent> helicorderView::markedEvents() const {
  std::vector<MarkedEvent> marked;
  const auto events = heldEvents();
  if (!hasPieces() || !events) return marked;
  const float offset = pageStart_.isValid() ? 0 : startOf(firstPiece().get()).offset;
  const PageTime time{startTime_, plotDuration_, offset};
  for (const auto& event : *events) {
    if (!event) continue;
    if (const auto marker = helicorderMarker(page(), time, *event, magThreshold_)) marked.push_back({*marker, event});
  }
  return marked;
}

void helicorderView::drawSeismicPhases(const QRectF&) {
  const auto events = heldEvents();
  if (!events || events->empty()) return;
  if (!hasPieces()) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  for (const MarkedEvent& marked : markedEvents()) {
    Path line;
    line.moveTo(marked.marker.line.p1());
    line.lineTo(marked.marker.line.p2());
    line.setLineWidth(marked.marker.width);
    context.setColor(marked.marker.color);
    context.strokePath(line);
  }
  xmin_ = 0;
  xmax_ = rowDuration_;
  drawMinuteMarks();
}

void helicorderView::drawEventLabels() {
  std::vector<EventMark> marks;
  for (const MarkedEvent& marked : markedEvents())
    marks.push_back(
        {marked.marker.line, eventText(*marked.event), largestMagnitude(*marked.event), marked.marker.width});
  const TextAttributes font = TextAttributes::helvetica(kEventFontSize);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  QColor paper = colors::white;
  paper.setAlphaF(float(kEventPaper));
  for (const EventLabel& label : layOutEventLabels(std::move(marks), pRect_, font)) {
    context.setColor(paper);
    context.fillRect(label.box);
    context.drawText(label.text, label.box.topLeft(), font);
  }
}

void helicorderView::drawMinuteMarks() {
  MinuteSpan span;
  span.rect = pRect_;
  span.seconds = xmax_ - xmin_;
  span.viewBottom = bounds().y();
  // Hours with two decimals are wider than the room that minutes need.
  if (labelHours_) {
    span.unit = MinuteSpan::Unit::Hours;
    span.labelWidth = labelAttributes_->size(longestMinuteLabel(pageMinutes(), span)).width();
  }
  drawMinuteScale(*this, layOutMinuteScale(pageMinutes(), span));
}

void helicorderView::drawHourLabels() {
  const PageStart start = startOf(firstPiece().get());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  labelAttributes_->setColor(colors::lightGray);
  const HelicorderPage page = this->page();
  const bool tellsMinutes = labelsTellMinutes(page);
  setLabelFontSize(tellsMinutes ? kMinuteFontSize : kHourFontSize);
  const double height = labelAttributes_->size(QStringLiteral("00:00")).height();
  const std::int32_t step = tellsMinutes || spreadsHourLabels_ ? rowsOfLabel(page, height) : 1;
  const bool startsWhereTold = pageStart_.isValid() && startTime_.isValid();
  drawTimeLabels(startsWhereTold ? rowTimeLabels(page, startTime_, QTimeZone::utc(), Edge::Left, step)
                                 : hourLabels(page, start.reference, startTime_, step),
                 3);
  if (localZone_.isValid() && startTime_.isValid()) drawLocalTime(step);
  setLabelFontSize(kLabelFontSize);
}

void helicorderView::drawTimeLabels(const std::vector<HourLabel>& labels, int hjust) {
  if (!labels.empty())
    setLabelFontSize(labels.front().text.contains(QLatin1Char(':')) ? kMinuteFontSize : kHourFontSize);
  for (const HourLabel& label : labels)
    drawStringXYHJustVJust(label.text, float(label.place.x()), float(label.place.y()), hjust, 2);
}

void helicorderView::drawLocalTime(std::int32_t step) {
  const HelicorderPage page = this->page();
  const std::vector<HourLabel> labels = rowTimeLabels(page, startTime_, localZone_, Edge::Right, step);
  drawTimeLabels(labels, 1);
  if (labels.empty()) return;
  setLabelFontSize(kMinuteFontSize);
  const auto y = float(page.top() + kHeadingRise);
  const auto right = float(labels.front().place.x());
  drawStringXYHJustVJust(QStringLiteral("UTC"), float(2 * pRect_.x() + pRect_.width() - double(right)), y, 3, 1);
  drawStringXYHJustVJust(zoneText(page, startTime_, localZone_), right, y, 1, 1);
}

// While a part is shown records are asked for the extremes that they know: a page must not cost the whole recording.
float helicorderView::largestAmplitude(const SeismogramArray& pieces) {
  if (!shownPart()) return getAbsMaxAmplitude();
  float largest = kBelowAllAmplitudes;
  for (const auto& piece : pieces)
    largest = std::max(largest, piece ? piece->absMax() : 0.0F);
  return largest;
}

float helicorderView::getAbsMaxAmplitude() {
  float largest = kBelowAllAmplitudes;
  const auto pieces = heldRecords();
  if (!pieces) return largest;
  for (const auto& piece : *pieces) {
    if (piece) piece->ComputeExtrema();
    const float amplitude = piece ? piece->absMax() : 0;
    if (amplitude > largest) largest = amplitude;
  }
  return largest;
}

} // namespace xov
