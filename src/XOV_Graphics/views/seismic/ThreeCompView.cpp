#include "XOV_Graphics/views/seismic/ThreeCompView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/seismic/Captions.h"
#include "XOV_Graphics/views/seismic/ThreeCompPanels.h"
#include "XOV_Graphics/views/seismic/TraceWindow.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kComponents = 3;
constexpr double kPeakMargin = 1.025;

constexpr float kFontSize = 12;
constexpr float kAxisFontSize = 18;
constexpr double kHeaderInset = 2;
constexpr double kComparisonDrop = 36;
constexpr double kCaptionInset = 4;
constexpr double kCaptionRise = 12;

constexpr PickStyle kPicks = {
    .labels = {.storedForFirstArrival = true, .storedForKeys = true},
    .lineAbove = {.share = 0.2},
    .lineBelow = {.share = 0.2},
    .labelBelow = {.points = 8},
};

} // namespace

ThreeCompView::ThreeCompView(const QRectF& frame, QWidget* parent) : PickedSeismogramView(kPicks, frame, parent) {}

ThreeCompView::~ThreeCompView() = default;

std::shared_ptr<SeismogramRecord> ThreeCompView::getSeisWithIndex(int index) const {
  const auto observation = anObs();
  if (!observation) return nullptr;
  switch (index) {
  case 0:
    return observation->vertical();
  case 1:
    return observation->radial();
  case 2:
    return observation->transverse();
  default:
    return nullptr;
  }
}

SeismogramArray ThreeCompView::components() const {
  SeismogramArray components;
  for (int i = 0; i < kComponents; ++i)
    components.push_back(getSeisWithIndex(i));
  return components;
}

void ThreeCompView::computeMaxAmplitude() {
  float peak = 0;
  for (const auto& record : components()) {
    if (record && record->absMax() > peak) peak = record->absMax();
  }
  maxAmplitude_ = float(kPeakMargin * double(peak));
}

void ThreeCompView::computePlotLimits() {
  if (!anObs()) return;
  // A missing component says nothing about times and amplitudes: a zero in its place would squeeze those that are
  // there into a corner.
  if (const auto found = recordLimits(components(), minYRange_)) takeLimits(*found, FixedRanges::Overwritten);
  pymin_ = ymin_;
  pymax_ = ymax_;
}

void ThreeCompView::drawRect(const QRectF&) {
  drawPaper();
  const auto observation = anObs(); // kept alive to the end
  if (!observation) return;
  const LabelScope labels(*this);
  std::shared_ptr<SeismogramRecord> named;
  for (int i = 0; i < kComponents && !named; ++i)
    named = getSeisWithIndex(i);
  if (!named) return;
  setLabelFontSize(kFontSize);
  AInitGraphLib();
  const ThreeCompPanels layout = layOutThreeCompPanels(bounds());
  iRect_ = layout.frame;
  pRect_ = layout.frame;
  computePlotLimits();
  drawHeader(*named);
  for (int i = 0; i < kComponents; ++i)
    drawPanel(layout.panel[std::size_t(i)], i);
  setLabelFontSize(kAxisFontSize);
  if (!traceColors().empty()) GraphicsContext::current().setColor(colors::black);
  drawTimeAxisUnder(layout.frame.x(), layout.frame.x() + layout.frame.width(), layout.frame.y());
}

void ThreeCompView::drawHeader(const SeismogramRecord& record) {
  const auto y = float(bounds().y() + bounds().height() - kHeaderInset);
  drawStringXYHJustVJust(regionCaption(record), float(pRect_.x()), y, 1, 3);
  drawStringXYHJustVJust(geometryCaption(record), float(pRect_.x() + pRect_.width() - kHeaderInset), y, 3, 3);
}

void ThreeCompView::drawPanel(const QRectF& rect, int index) {
  GraphicsContext& context = GraphicsContext::current();
  std::shared_ptr<SeismogramRecord> record = getSeisWithIndex(index);
  if (record) {
    const double center = rect.y() + rect.height() / 2;
    context.setColor(colors::lightGray);
    strokeLine({rect.x(), center}, {rect.x() + rect.width(), center});
    context.setColor(traceColor(std::size_t(index), colors::black));
    drawSeisSeis(rect, record.get());
    drawPicksSeis(rect, record.get());
  }
  if (opComparison_) {
    useAltScale_ = true;
    record = getSeisWithIndex(index + kComponents);
    context.setColor(colors::red);
    drawSeisSeis(rect.translated(0, -kComparisonDrop), record.get());
    useAltScale_ = false;
  }
  drawLabelForSeisSeis(rect, record.get());
}

float ThreeCompView::amplitudeSpan(const SeismogramRecord& record, bool isComparison) const {
  if (selfScaled_) return 2 * record.absMax();
  return isComparison ? pymax_ - pymin_ : ymax_ - ymin_;
}

void ThreeCompView::drawSeisSeis(const QRectF& rect, const SeismogramRecord* record) {
  if (record == nullptr) return;
  const SavedState saved(GraphicsContext::current());
  clipToPart(rect);
  strokeTrace(traceOf(rect, *record, amplitudeSpan(*record, useAltScale_)), rect, record->smin(), record->smax());
}

Trace ThreeCompView::traceOf(const QRectF& rect, const SeismogramRecord& record, float amplitudeSpan) const {
  Trace trace;
  trace.borrow(record.borrowedSamples());
  if (!cutToPart(trace, record)) {
    const TraceWindow window = windowBetweenLimits(record, xmin_, xmax_);
    trace.first = window.first;
    trace.last = window.last;
    trace.time = TraceTime::uniform(record.b(), record.delta());
  }
  trace.tOrigin = xmin_;
  trace.xScale = timeScale(rect);
  trace.xOffset = rect.x();
  trace.yScale = shownGain() * rect.height() / double(amplitudeSpan);
  trace.yOffset = rect.y() + rect.height() / 2;
  return trace;
}

std::vector<RecordTrace> ThreeCompView::recordTraces() const {
  std::vector<RecordTrace> traces;
  const ThreeCompPanels layout = layOutThreeCompPanels(bounds());
  if (iRect_.isEmpty()) return traces; // not drawn yet
  const auto add = [&](int index, const QRectF& panel, const QRectF& rect, bool isComparison) {
    const std::shared_ptr<SeismogramRecord> record = getSeisWithIndex(index);
    if (!record) return;
    Trace trace = traceOf(rect, *record, amplitudeSpan(*record, isComparison));
    if (!settleTrace(trace, rect, record->smin(), record->smax())) return;
    RecordTrace found{std::size_t(index), record, trace, panel};
    found.zeroSeconds = xOrigin();
    if (!isComparison) found.level = rect.center().y();
    traces.push_back(std::move(found));
  };
  for (int i = 0; i < kComponents; ++i) {
    const QRectF& panel = layout.panel[std::size_t(i)];
    add(i, panel, panel, false);
    if (opComparison_) add(i + kComponents, panel, panel.translated(0, -kComparisonDrop), true);
  }
  return traces;
}

void ThreeCompView::drawLabelForSeisSeis(const QRectF& rect, const SeismogramRecord* record) {
  if (record == nullptr) return;
  const auto x = float(rect.x() + rect.width() - kCaptionInset);
  const double top = rect.y() + rect.height();
  drawStringXYHJustVJust(record->kcmpnm(), x, float(top + kCaptionRise), 3, 3);
  if (showMaxAmplitude_) drawStringXYHJustVJust(peakCaption(*record), x, float(top), 3, 3);
}

} // namespace xov
