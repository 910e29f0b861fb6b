#include "XOV_Graphics/seismic/arrivals/EarthModel.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SectionLayout.h"

#include <cmath>

namespace xov {

std::vector<RecordTrace> MultiSeisView::recordTraces() const {
  std::vector<RecordTrace> traces;
  const auto records = heldRecords();
  if (!records || records->empty()) return traces;
  const SectionLayout layout = layoutOf(*records);
  for (const auto& [index, center] : layout.strips) {
    const auto& record = (*records)[index];
    if (!record) continue;
    Trace trace = traceOf(*record, center, scaleOf(*record, layout));
    if (settleTrace(trace, pRect_, record->smin(), record->smax()))
      traces.push_back({index, record, trace, pRect_, center, 1, xOrigin()});
  }
  return traces;
}

void MultiSeisView::addToReadout(PlotReadout& readout, QPointF point) const {
  const auto records = heldRecords();
  if (!records || !layoutOf(*records).hasAxis) return;
  addAxisValue(readout, QLatin1String("place"), Qt::YAxis, point);
  // Told apart from the distance of the record.
  readout.quantities.back().text.prepend(QStringLiteral("at "));
}

// Degrees from the event.
std::optional<double> MultiSeisView::distanceAt(double y) const {
  const auto records = heldRecords();
  if (!records || records->empty() || !(pRect_.height() > 0)) return {};
  const SectionLayout layout = layoutOf(*records);
  if (layout.hasAxis) {
    if (stripPlacement_ == StripPlacement::ByAzimuth) return {};
    const double place = viewToData({pRect_.x(), y}, pRect_, limits()).y();
    return stripPlacement_ == StripPlacement::ByDistanceKm ? place / kKmPerDegree : place;
  }
  const double slot = std::floor((y - pRect_.y()) / layout.slot);
  if (!(slot >= 0 && slot < double(records->size()))) return {};
  const auto& record = (*records)[std::size_t(slot)];
  return record ? placeOf(*record, StripPlacement::ByDistanceDegrees) : std::nullopt;
}

std::optional<ApparentVelocity> MultiSeisView::apparentVelocity(QPointF from, QPointF to) const {
  const auto near = distanceAt(from.y());
  const auto far = distanceAt(to.y());
  if (!near || !far || !(pRect_.width() > 0)) return {};
  const double seconds = viewToData(to, pRect_, limits()).x() - viewToData(from, pRect_, limits()).x();
  return apparentVelocityOf(seconds, *far - *near);
}

} // namespace xov
