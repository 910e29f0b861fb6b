#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include <algorithm>
#include <cmath>

namespace xov {

std::optional<PointedRecord> SeismogramView::recordAt(QPointF point) const {
  const std::vector<RecordTrace> traces = recordTraces();
  const RecordTrace* const found = traceAt(traces, point);
  if (found == nullptr) return {};
  return PointedRecord{found->index, found->record, found->secondsAt(point.x())};
}

PlotReadout SeismogramView::readout(QPointF point) const {
  PlotReadout readout;
  const std::vector<RecordTrace> traces = recordTraces();
  const RecordTrace* const found = traceAt(traces, point);
  if (found == nullptr) return readout;
  const SeismogramRecord& record = *found->record;
  readout.addText(QLatin1String("record"), nameOfRecord(record));
  const double perPoint = std::abs(found->secondsPerUnit / found->trace.xScale);
  const double seconds =
      xOrigin_ + double(xmin_) + (point.x() - found->trace.xOffset) / found->trace.xScale * found->secondsPerUnit;
  readout.add(QLatin1String("time"), seconds, QStringLiteral("s"), perPoint);
  QDateTime moment = momentOf(seconds);
  if (!moment.isValid()) moment = momentAfter(referenceTimeOf(record), found->secondsAt(point.x()));
  readout.addMoment(moment, perPoint);
  addAmplitude(readout, *found, point, amplitudeUnit_);
  const QString degree = QStringLiteral("°");
  if (isDefined(double(record.gcarc()))) readout.add(QLatin1String("distance"), double(record.gcarc()), degree, 0.01);
  if (isDefined(double(record.azimuth())))
    readout.add(QLatin1String("azimuth"), double(record.azimuth()), degree, 0.1);
  addToReadout(readout, point);
  return readout;
}

std::vector<std::size_t> SeismogramView::recordsIn(const QRectF& box) const {
  return recordsInBox(recordTraces(), box);
}

std::optional<AxisSpan> SeismogramView::timesIn(const QRectF& box) const {
  const QRectF area = box.normalized();
  const double left = std::max(area.left(), iRect_.left());
  const double right = std::min(area.right(), iRect_.right());
  if (!(left <= right) || !(iRect_.width() > 0)) return {};
  const double begin = dataAt({left, iRect_.y()}).x();
  const double end = dataAt({right, iRect_.y()}).x();
  if (!std::isfinite(begin) || !std::isfinite(end)) return {};
  return AxisSpan{std::min(begin, end), std::max(begin, end)};
}

} // namespace xov
