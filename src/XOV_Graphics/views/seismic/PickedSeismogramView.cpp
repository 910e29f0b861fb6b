#include "XOV_Graphics/views/seismic/PickedSeismogramView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/views/seismic/MarkedPickDrawing.h"

namespace xov {

PickedSeismogramView::PickedSeismogramView(const PickStyle& picks, const QRectF& frame, QWidget* parent)
    : SeismogramView(frame, parent),
      picks_(picks) {}

PickedSeismogramView::~PickedSeismogramView() = default;

void PickedSeismogramView::drawPicksSeis(const QRectF& rect, const SeismogramRecord* record) {
  if (record == nullptr) return;
  const auto others = sourcePicks(*record);
  for (const PickMark& pick : visiblePicks(*record, xmin_, xmax_, picks_.labels, xOrigin())) {
    if (others && !pick.isOrigin) continue;
    GraphicsContext::current().setColor(pick.color);
    drawPickForRectTime(rect, pick.time);
    drawPickLabelForRectLabelAtTime(rect, pick.label, pick.time);
  }
  if (!others) return;
  for (const MarkedPick& pick : *others)
    drawMarkedPick(rect, pick);
  GraphicsContext::current().setColor(colors::darkGray); // as after picks of headers: axes take what they find
}

void PickedSeismogramView::drawMarkedPick(const QRectF& panel, const MarkedPick& pick) {
  const auto time = float(pick.seconds - xOrigin());
  if (!isPickDrawn(time, xmin_, xmax_)) return;
  const QLineF line = pickLine(panel, pickX(panel, time, xmin_, xmax_), picks_);
  drawShape(pick, shapeOf(pick, line, timeScale(panel)));
  if (!pick.label.isEmpty()) drawPickLabelForRectLabelAtTime(panel, pick.label, time);
}

void PickedSeismogramView::drawPickForRectTime(const QRectF& rect, float time) {
  const QLineF line = pickLine(rect, pickX(rect, time, xmin_, xmax_), picks_);
  strokeLine(line.p1(), line.p2());
}

void PickedSeismogramView::drawPickLabelForRectLabelAtTime(const QRectF& rect, const QString& label, float time) {
  const TextAttributes system = TextAttributes::systemLabel();
  labelAttributes_->setFont(system.family(), system.pointSize());
  const QSizeF size = labelAttributes_->size(label);
  const double x = pickX(rect, time, xmin_, xmax_);
  if (const auto origin = freePlace(rect, pickLabelPlaces(rect, x, size, picks_), size))
    GraphicsContext::current().drawText(label, *origin, *labelAttributes_);
}

// The first place that is free: the usual one on the page, or another one over the panel. Where labels do not give
// way, the usual one.
std::optional<QPointF> PickedSeismogramView::freePlace(const QRectF& panel, std::span<const QPointF> places,
                                                       QSizeF size) const {
  if (labelField_ == nullptr) return places.front();
  QRectF within = bounds();
  for (const QPointF& place : places) {
    const bool isWithin = place.x() >= within.left() && place.x() + size.width() <= within.right();
    if (isWithin && labelField_->take({place, size})) return place;
    within = panel;
  }
  return {};
}

} // namespace xov
