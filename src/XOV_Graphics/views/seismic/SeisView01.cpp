#include "XOV_Graphics/views/seismic/SeisView01.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/base/RecordTraces.h"

namespace xov {

SeisView01::SeisView01(const QRectF& frame, QWidget* parent) : StackedSeisView(frame, parent) {}

SeisView01::~SeisView01() = default;

Trace SeisView01::traceOf(const SeismogramRecord& record) const {
  Trace trace = traceAlong(pRect_, record);
  trace.vOrigin = ymin_;
  trace.yScale = pRect_.height() / double(ymax_ - ymin_);
  trace.yOffset = pRect_.y();
  return trace;
}

std::vector<RecordTrace> SeisView01::recordTraces() const {
  std::vector<RecordTrace> traces;
  const auto records = heldRecords();
  for (std::size_t i = 0; records && i < records->size(); ++i) {
    const auto& record = (*records)[i];
    if (!record) continue;
    Trace trace = traceOf(*record);
    if (settleTrace(trace, pRect_, record->smin(), record->smax()))
      traces.push_back({i, record, trace, pRect_, {}, 1, xOrigin()});
  }
  return traces;
}

void SeisView01::drawRect(const QRectF&) {
  drawPaper();
  const auto records = heldRecords();
  if (!records || records->empty()) return;
  computeRects();
  computePlotLimits();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.strokeRect(pRect_);

  std::vector<DrawnTrace> traces;
  for (std::size_t i = 0; i < records->size(); ++i) {
    const auto& record = (*records)[i];
    if (!record) continue;
    Trace trace = traceOf(*record);
    if (settleTrace(trace, pRect_, record->smin(), record->smax()))
      traces.push_back({trace, traceColor(i, colors::black)});
  }
  {
    const SavedState unclipped(context);
    context.clipToRect(pRect_);
    if (fillPositive_) {
      Path areas;
      for (const DrawnTrace& drawn : traces)
        areas.appendTrace(drawn.trace);
      context.setColor(colors::lightGray);
      context.fillPath(areas);
    }
    strokeTraces(traces, lineWidth_);
    drawSourcePicks();
  }

  context.setColor(colors::black);
  beginAxes(pRect_);
  ASetYAxisPowerFlag(1);
  addTimeAxis(xLabelString_);
  addAmplitudeAxis(yLabelString_);
  strokeAxisPath();
  drawTitleTopCentered();
  drawLegendIn(pRect_, traces);
}

} // namespace xov
