#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/seismic/MarkedPickDrawing.h"
#include "XOV_Graphics/views/seismic/SeismogramView.h"

namespace xov {

namespace {

constexpr double kLabelInset = 3; // points, from the line and from the top

/// Where a time of the record lies along its trace.
double xOf(const RecordTrace& drawn, double seconds) {
  const double traceTime = (seconds - drawn.zeroSeconds) / drawn.secondsPerUnit;
  return drawn.trace.xOffset + (traceTime - double(drawn.trace.tOrigin)) * drawn.trace.xScale;
}

} // namespace

std::optional<std::vector<MarkedPick>> SeismogramView::sourcePicks(const SeismogramRecord& record) const {
  const auto source = pickSource();
  return source ? source->picksToMark(record) : std::nullopt;
}

void SeismogramView::drawSourcePicks() {
  if (!pickSource()) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  TextAttributes label = TextAttributes::systemLabel();
  for (const RecordTrace& drawn : recordTraces()) {
    const QRectF& panel = drawn.rect;
    const double pointsPerSecond = drawn.trace.xScale / drawn.secondsPerUnit;
    for (const MarkedPick& pick : sourcePicks(*drawn.record).value_or(std::vector<MarkedPick>())) {
      const double x = xOf(drawn, pick.seconds);
      if (!(x >= panel.left() && x <= panel.right())) continue;
      drawShape(pick, shapeOf(pick, {x, panel.top(), x, panel.bottom()}, pointsPerSecond));
      label.setColor(pick.color);
      context.drawText(pick.label, {x + kLabelInset, panel.bottom() - kLabelInset - label.lineHeight()}, label);
    }
  }
}

} // namespace xov
