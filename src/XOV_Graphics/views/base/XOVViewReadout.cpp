#include "XOV_Graphics/views/base/XOVView.h"

#include <cmath>

namespace xov {

PlotReadout XOVView::readout(QPointF) const { return {}; }

std::optional<PointedRecord> XOVView::recordAt(QPointF) const { return {}; }

bool XOVView::isInFrame(QPointF point) const {
  return iRect_.width() > 0 && iRect_.height() > 0 && containsPoint(iRect_, point);
}

void XOVView::addAxisValue(PlotReadout& readout, QLatin1String name, Qt::Axis axis, QPointF point) const {
  const bool isX = axis == Qt::XAxis;
  const QPointF at = viewToData(point, iRect_, limits(), logAxes());
  const QPointF beside = viewToData(point + QPointF(1, 1), iRect_, limits(), logAxes());
  const QString& label = isX ? xLabelString_ : yLabelString_;
  const NamedUnit named(label.isEmpty() ? usualAxisName(axis) : label);
  const double step = isX ? beside.x() - at.x() : beside.y() - at.y();
  readout.add(name, isX ? at.x() : at.y(), named.unit, std::abs(step), named.name);
}

} // namespace xov
