#include "XOV_Graphics/views/timeline/helicorderView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/timeline/HelicorderMarker.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"
#include "XOV_Graphics/views/timeline/HelicorderRows.h"
#include "XOV_Graphics/views/timeline/HourLabels.h"
#include "XOV_Graphics/views/timeline/MinuteScale.h"
#include "XOV_Graphics/views/timeline/PageStart.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kTitleLeft = 72;
constexpr double kTitleDrop = 2;
constexpr double kZeroLineWidth = 0.5;
constexpr float kHourFontSize = 12;
constexpr float kMinuteFontSize = 11; // the widest "month/day hour:minute" that the margin has room for
constexpr float kLabelFontSize = 18;
constexpr float kBelowAllAmplitudes = -1.0e20f;

PageStart startOf(const SeismogramArray& pieces) {
  return pageStart(pieces.front() ? pieces.front()->GetSacHeader() : nullptr);
}

} // namespace

helicorderView::helicorderView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

helicorderView::~helicorderView() = default;

QString helicorderView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("time in a row (s)") : QStringLiteral("amplitude");
}

void helicorderView::drawRect(const QRectF& dirty) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::white);
  fillBounds();
  const auto pieces = wvfrmArray();
  if (!pieces || pieces->empty()) return;
  const PageStart start = startOf(*pieces);
  setStartTime(start.hour);
  setPlotDuration(double(float(nRows_) * rowDuration_));
  const SavedState saved(context);
  pRect_ = helicorderRect(bounds());
  iRect_ = pRect_;
  setMaxAmplitude(getAbsMaxAmplitude());
  if (pieces->front()) drawPageTitle(*pieces->front());
  if (showZeroLines_) drawZeroLines();
  drawSeismicPhases(dirty);
  drawTraces(*pieces, start.offset);
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
  const HelicorderPage page{pRect_, nRows_, rowDuration_};
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

// The rows of a piece are one path: where they overlap, ink does not double.
void helicorderView::drawTraces(const SeismogramArray& pieces, float offset) {
  const HelicorderPage page{pRect_, nRows_, rowDuration_};
  const auto scale = amplitudeScale(gainFactor_, page.rowHeight(), maxAmplitude_);
  if (!scale || !page.holdsTraces()) return;
  const double reach = std::abs(double(gainFactor_)) / 2;
  GraphicsContext& context = GraphicsContext::current();
  for (std::size_t k = 0; k < pieces.size(); ++k) {
    const SeismogramRecord* const piece = pieces[k].get();
    if (piece == nullptr) continue;
    const PieceTimes times{piece->b() + offset, piece->delta(), piece->npts()};
    Path rows;
    for (Trace& trace : rowTraces(page, times, piece->GetSacSeis(), *scale, reach)) {
      trace.index = piece->sampleIndex();
      rows.appendTrace(trace);
    }
    rows.setLineWidth(lineWidth_);
    context.setColor(k % 2 == 1 ? colors::red : colors::black);
    context.strokePath(rows);
  }
}

void helicorderView::drawSeismicPhases(const QRectF&) {
  const auto pieces = wvfrmArray();
  const auto events = theHypos();
  if (!pieces || pieces->empty() || !events || events->empty()) return;
  const HelicorderPage page{pRect_, nRows_, rowDuration_};
  const PageTime time{startTime_, plotDuration_, startOf(*pieces).offset};
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  for (const auto& event : *events) {
    if (!event) continue;
    const auto marker = helicorderMarker(page, time, *event, magThreshold_);
    if (!marker) continue;
    Path line;
    line.moveTo(marker->line.p1());
    line.lineTo(marker->line.p2());
    line.setLineWidth(marker->width);
    context.setColor(marker->color);
    context.strokePath(line);
  }
  xmin_ = 0;
  xmax_ = rowDuration_;
  drawMinuteMarks();
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
  const auto pieces = wvfrmArray();
  const PageStart start = pieces && !pieces->empty() ? startOf(*pieces) : PageStart();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  labelAttributes_->setColor(colors::lightGray);
  const HelicorderPage page{pRect_, nRows_, rowDuration_};
  setLabelFontSize(labelsTellMinutes(page) ? kMinuteFontSize : kHourFontSize);
  const std::int32_t step = rowsOfLabel(page, labelAttributes_->size(QStringLiteral("00:00")).height());
  for (const HourLabel& label : hourLabels(page, start.reference, startTime_, step))
    drawStringXYHJustVJust(label.text, float(label.place.x()), float(label.place.y()), 3, 2);
  setLabelFontSize(kLabelFontSize);
}

float helicorderView::getAbsMaxAmplitude() {
  float largest = kBelowAllAmplitudes;
  const auto pieces = wvfrmArray();
  if (!pieces) return largest;
  for (const auto& piece : *pieces) {
    if (piece) piece->ComputeExtrema();
    const float amplitude = piece ? piece->absMax() : 0;
    if (amplitude > largest) largest = amplitude;
  }
  return largest;
}

} // namespace xov
