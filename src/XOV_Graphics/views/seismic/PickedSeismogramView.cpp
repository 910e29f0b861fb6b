#include "XOV_Graphics/views/seismic/PickedSeismogramView.h"

namespace xov {

PickedSeismogramView::PickedSeismogramView(const PickStyle& picks, const QRectF& frame, QWidget* parent)
    : SeismogramView(frame, parent),
      picks_(picks) {}

PickedSeismogramView::~PickedSeismogramView() = default;

void PickedSeismogramView::drawPicksSeis(const QRectF& rect, const SeismogramRecord* record) {
  if (record == nullptr) return;
  for (const PickMark& pick : visiblePicks(*record, xmin_, xmax_, picks_.labels)) {
    GraphicsContext::current().setColor(pick.color);
    drawPickForRectTime(rect, pick.time);
    drawPickLabelForRectLabelAtTime(rect, pick.label, pick.time);
  }
}

void PickedSeismogramView::drawPickForRectTime(const QRectF& rect, float time) {
  const QLineF line = pickLine(rect, pickX(rect, time, xmin_, xmax_), picks_);
  strokeLine(line.p1(), line.p2());
}

void PickedSeismogramView::drawPickLabelForRectLabelAtTime(const QRectF& rect, const QString& label, float time) {
  const TextAttributes system = TextAttributes::systemLabel();
  labelAttributes_->setFont(system.family(), system.pointSize());
  const QSizeF size = labelAttributes_->size(label);
  const QPointF origin = pickLabelOrigin(rect, pickX(rect, time, xmin_, xmax_), size, picks_);
  GraphicsContext::current().drawText(label, origin, *labelAttributes_);
}

} // namespace xov
