#include "XOV_Graphics/views/seismic/MultiSeisView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/base/HeldCopy.h"
#include "XOV_Graphics/views/seismic/Captions.h"
#include "XOV_Graphics/views/seismic/SectionLayout.h"

#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kSideMargin = 20;
constexpr double kAxisMargin = 72;    // of the side that has an axis
constexpr double kCaptionMargin = 84; // of the side beside it
constexpr float kAxisTitleLeft = 20;
constexpr double kBottomMargin = 60;
constexpr double kTopMargin = 40;

constexpr float kCaptionSize = 10;
constexpr double kCaptionRise = 4;
constexpr double kCaptionGap = 5; // to the end of a trace
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

void fillLobes(const std::vector<DrawnTrace>& traces, TraceArea side, const QColor& color) {
  if (!color.isValid()) return;
  Path path;
  for (const DrawnTrace& drawn : traces) {
    Trace trace = drawn.trace;
    trace.area = side;
    path.appendTrace(trace);
  }
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(color);
  context.fillPath(path);
}

} // namespace

MultiSeisView::MultiSeisView(const QRectF& frame, QWidget* parent) : PickedSeismogramView(kPicks, frame, parent) {}

MultiSeisView::~MultiSeisView() = default;

std::shared_ptr<const SeismogramArray> MultiSeisView::heldRecords() const { return heldCopy(wvfrmsArray_); }

double MultiSeisView::lineWidthOf(std::size_t strips, double height) {
  constexpr double kThinnest = 0.35;
  constexpr double kShare = 1 / 3.0;
  return std::clamp(kShare * height / double(std::max<std::size_t>(strips, 1)), kThinnest, 1.0);
}

QString MultiSeisView::usualAxisName(Qt::Axis axis) const {
  const auto records = heldRecords();
  const bool isPlaces = axis == Qt::YAxis && records && anyHasPlace(*records, stripPlacement_);
  return isPlaces ? sectionAxisTitle(stripPlacement_).toLower() : PickedSeismogramView::usualAxisName(axis);
}

void MultiSeisView::computeRects() {
  const QRectF b = bounds();
  const auto records = heldRecords();
  const bool hasAxis = records && anyHasPlace(*records, stripPlacement_);
  const double left = hasAxis ? kAxisMargin : kSideMargin;
  const double right = hasAxis ? kCaptionMargin : kSideMargin;
  pRect_ = {left, kBottomMargin, b.width() - left - right, b.height() - kBottomMargin - kTopMargin};
  iRect_ = pRect_;
}

void MultiSeisView::computePlotLimits() {
  const auto records = heldRecords();
  if (!records) return;
  if (const auto found = recordLimits(*records, minYRange_)) takeLimits(*found, FixedRanges::Overwritten);
}

SeismogramArray MultiSeisView::recordsToMoveOver() const {
  const auto records = heldRecords();
  return records ? *records : SeismogramArray();
}

PlotReach MultiSeisView::reach() const {
  PlotReach reach = PickedSeismogramView::reach();
  const auto records = heldRecords();
  if (!records || !reach.movesAnything() || !anyHasPlace(*records, stripPlacement_)) return reach;
  const SectionLayout layout = layoutOfWhole(*records);
  const PlotSpan places{double(layout.lower), double(layout.upper)};
  if (layout.hasAxis) reach.setY(places, places, false);
  return reach;
}

SectionLayout MultiSeisView::layoutOfWhole(const SeismogramArray& records) const {
  return layoutSection(records, stripPlacement_, pRect_, 1 / double(plotGainFactor_));
}

double MultiSeisView::scaleOf(const SeismogramRecord& record, const SectionLayout& layout) const {
  const bool isOwnScale = amplitudeScaling_ == AmplitudeScaling::EachTrace;
  return layout.slot / double(shownGainFactor() * (isOwnScale ? record.absMax() : commonPeak_));
}

SectionLayout MultiSeisView::layoutOf(const SeismogramArray& records) const {
  SectionLayout layout = layoutOfWhole(records);
  if (shownPart() && layout.hasAxis) showPlaces(layout, pRect_, shownPart()->y);
  return layout;
}

void MultiSeisView::drawRect(const QRectF&) {
  drawPaper();
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  computeRects();
  computePlotLimits();
  commonPeak_ = std::abs(ymin_);
  if (ymax_ > commonPeak_) commonPeak_ = ymax_;
  const SectionLayout layout = layoutOf(*records);
  if (layout.hasAxis) {
    ymin_ = layout.lower;
    ymax_ = layout.upper;
  }
  std::vector<DrawnTrace> traces;
  {
    const SavedState saved(GraphicsContext::current());
    labelAttributes_->setColor(colors::gray);
    traces = drawStrips(*records, layout);
    drawAxes(layout);
    drawTitleTopCentered();
    if (amplitudeScaling_ == AmplitudeScaling::Common)
      drawAmplitudeBar(layout.slot / (double(shownGainFactor()) * double(commonPeak_)));
  }
  drawPicks();
  drawLegendIn(pRect_, traces);
}

// All traces are stroked last, over the picks and captions.
std::vector<DrawnTrace> MultiSeisView::drawStrips(const SeismogramArray& records, const SectionLayout& layout) {
  const LabelScope labels(*this);
  const std::vector<std::optional<double>> captions = placeCaptions(records, layout);
  std::vector<DrawnTrace> traces;
  for (std::size_t i = 0; i < layout.strips.size(); ++i) {
    const auto& [index, center] = layout.strips[i];
    const SeismogramRecord* const record = records[index].get();
    if (showZeroLine_) drawZeroLine(center);
    if (record == nullptr) continue;
    Trace trace = traceOf(*record, center, scaleOf(*record, layout));
    if (settleTrace(trace, pRect_, record->smin(), record->smax()))
      traces.push_back({trace, traceColor(index, colors::black)});
    if (captions[i]) drawCaption(captionOf(*record, layout), *captions[i]);
    drawPicksSeis({pRect_.x(), center - layout.slot, pRect_.width(), 2 * layout.slot}, record);
  }
  GraphicsContext& context = GraphicsContext::current();
  if (layout.hasAxis) {
    const SavedState saved(context);
    context.clipToRect(pRect_);
    drawTraces(traces, lineWidth_ * lineWidthOf(layout.strips.size(), pRect_.height()));
  } else {
    const SavedState saved(context);
    clipToPart(pRect_);
    drawTraces(traces, lineWidth_);
  }
  context.setColor(colors::black);
  return traces;
}

void MultiSeisView::drawTraces(const std::vector<DrawnTrace>& traces, double lineWidth) const {
  fillLobes(traces, TraceArea::AboveLevel, positiveLobeColor_);
  fillLobes(traces, TraceArea::BelowLevel, negativeLobeColor_);
  strokeTraces(traces, lineWidth);
}

void MultiSeisView::drawZeroLine(double center) {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::lightGray);
  strokeDottedLine({pRect_.x() + kZeroLineInset, center}, {pRect_.x() + pRect_.width(), center}, kZeroLineWidth,
                   {dashes.begin(), dashes.end()});
}

Trace MultiSeisView::traceOf(const SeismogramRecord& record, double center, double scale) const {
  Trace trace = traceAlong(pRect_, record);
  trace.yScale = scale;
  trace.yOffset = center;
  return trace;
}

// Along an axis, which tells distance or azimuth, behind the end of the trace; else above its begin.
MultiSeisView::Caption MultiSeisView::captionOf(const SeismogramRecord& record, const SectionLayout& layout) const {
  if (layout.hasAxis) return {shortCaption(record), pRect_.x() + pRect_.width() + kCaptionGap};
  return {stripCaption(record), pRect_.x()};
}

// Texts are asked for only where they show: of thousands of captions a page has room for dozens.
std::vector<std::optional<double>> MultiSeisView::placeCaptions(const SeismogramArray& records,
                                                                const SectionLayout& layout) const {
  const TextAttributes attributes = TextAttributes::helvetica(kCaptionSize);
  const double height = attributes.lineHeight();
  const double rise = layout.hasAxis ? -height / 2 : kCaptionRise;
  std::vector<double> wishes;
  for (const auto& strip : layout.strips)
    wishes.push_back(records[strip.record] ? strip.center + rise : std::numeric_limits<double>::quiet_NaN());
  if (labelField() == nullptr) return {wishes.begin(), wishes.end()};
  // In even slots, captions that moved would stand at their neighbours' traces.
  std::vector<std::optional<double>> places = spreadLabels(wishes, height, layout.hasAxis ? height / 2 : 0);
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!places[i]) continue;
    const Caption caption = captionOf(*records[layout.strips[i].record], layout);
    labelField()->take({{caption.left, *places[i]}, attributes.size(caption.text)});
  }
  return places;
}

void MultiSeisView::drawCaption(const Caption& caption, double bottom) {
  setLabelFontSize(kCaptionSize);
  drawStringXYHJustVJust(caption.text, float(caption.left), float(bottom), 1, 4);
}

void MultiSeisView::drawAxes(const SectionLayout& layout) {
  labelAttributes_->setColor(colors::darkGray);
  setLabelFontSize(kAxisFontSize);
  beginAxes(pRect_);
  if (layout.hasAxis) {
    ASetFontSize(int(kAxisFontSize));
    addAxis(AxisSide::Left, QString(), layout.lower, layout.upper,
            sectionTickInterval(stripPlacement_, layout.lower, layout.upper));
  }
  ASetYAxisPowerFlag(1);
  addTimeAxis(xLabelString_);
  strokeAxisPath();
  if (layout.hasAxis) {
    drawRotatedStringXYHJustVJustAngle(sectionAxisTitle(stripPlacement_), kAxisTitleLeft, float(pRect_.center().y()),
                                       HJust::Left, VJust::Center, 90);
  }
}

// Of a source the first pick that was seen; none without one.
std::optional<double> MultiSeisView::firstArrivalOf(const SeismogramRecord& record) const {
  const auto others = sourcePicks(record);
  if (!others) return double(record.a());
  std::optional<double> first;
  for (const MarkedPick& pick : *others)
    if (!pick.isPredicted && !(first && *first <= pick.seconds)) first = pick.seconds;
  return first;
}

void MultiSeisView::drawPicks() {
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  const SectionLayout layout = layoutOf(*records);
  Path ticks;
  for (const auto& [index, center] : layout.strips) {
    const SeismogramRecord* const record = (*records)[index].get();
    if (record == nullptr) continue;
    const std::optional<double> arrival = firstArrivalOf(*record);
    if (!arrival) continue;
    const double x = pickX(pRect_, float(*arrival - xOrigin()), xmin_, xmax_);
    ticks.moveTo({x, center - kArrivalReach * layout.slot});
    ticks.lineTo({x, center + kArrivalReach * layout.slot});
  }
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  if (layout.hasAxis) context.clipToRect(pRect_);
  clipToPart(pRect_);
  context.setColor(colors::red);
  context.strokePath(ticks);
}

} // namespace xov
