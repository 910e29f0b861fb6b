#include "XOV_Graphics/views/seismic/SeisView01.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"

namespace xov {

SeisView01::SeisView01(const QRectF& frame, QWidget* parent) : StackedSeisView(frame, parent) {}

SeisView01::~SeisView01() = default;

void SeisView01::drawRect(const QRectF&) {
  drawPaper();
  const auto records = wvfrmsArray();
  if (!records || records->empty()) return;
  computeRects();
  computePlotLimits();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.strokeRect(pRect_);

  Path traces;
  for (const auto& record : *records) {
    if (!record) continue;
    Trace trace;
    trace.samples = record->GetSacSeis();
    trace.index = record->sampleIndex();
    trace.last = record->npts();
    trace.tOrigin = xmin_;
    trace.xScale = timeScale(pRect_);
    trace.settleTimes(record->b(), TraceTime::even(record->b(), record->delta()));
    trace.xOffset = pRect_.x();
    trace.vOrigin = ymin_;
    trace.yScale = pRect_.height() / double(ymax_ - ymin_);
    trace.yOffset = pRect_.y();
    if (settleTrace(trace, pRect_, record->smin(), record->smax())) traces.appendTrace(trace);
  }
  {
    const SavedState unclipped(context);
    context.clipToRect(pRect_);
    if (fillPositive_) {
      context.setColor(colors::lightGray);
      context.fillPath(traces);
      context.setColor(colors::black);
    }
    context.strokePath(traces);
  }

  beginAxes(pRect_);
  ASetYAxisPowerFlag(1);
  addTimeAxis(xLabelString_);
  addAmplitudeAxis(yLabelString_);
  strokeAxisPath();
  drawTitleTopCentered();
}

} // namespace xov
