#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"
#include "XOV_Graphics/views/timeline/HelicorderRows.h"
#include "XOV_Graphics/views/timeline/PageStart.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"

#include <algorithm>
#include <cmath>

namespace xov {

// Since the page began.
std::optional<double> helicorderView::secondsAt(QPointF point) const {
  const HelicorderPage page = this->page();
  if (!hasPieces() || !page.holdsTraces() || !(page.rowHeight() > 0) || !isInFrame(point)) return {};
  const double row = std::floor((page.top() - point.y()) / page.rowHeight());
  if (!(row >= 0 && row < double(nRows_))) return {};
  const double seconds = row * double(rowDuration_) + (point.x() - page.rect.x()) / page.xScale();
  return std::isfinite(seconds) ? std::optional(seconds) : std::nullopt;
}

// The trace in the row of the point of the piece that has the nearest sample there.
std::optional<RecordTrace> helicorderView::traceAt(QPointF point) const {
  const auto seconds = secondsAt(point);
  if (!seconds) return {};
  const auto pieces = heldRecords();
  const HelicorderPage page = this->page();
  const float offset = startOf(pieces->front().get()).offset;
  const double scale = amplitudeScale(shownGainFactor(), page.rowHeight(), maxAmplitude_).value_or(0);
  const Placement placement{offset, scale, spanOfPart()};
  const double row = std::floor((page.top() - point.y()) / page.rowHeight());
  const double rowBegin = row * double(rowDuration_);
  std::optional<RecordTrace> nearest;
  double best = 0;
  for (std::size_t k = 0; k < pieces->size(); ++k) {
    const auto& piece = (*pieces)[k];
    if (!piece) continue;
    const double begin = double(piece->b()) + double(offset);
    const double end = begin + double(piece->delta()) * (double(piece->npts()) - 1);
    if (!(end >= rowBegin && begin < rowBegin + double(rowDuration_))) continue;
    const double distance = std::max({begin - *seconds, *seconds - end, 0.0});
    if (nearest && !(distance < best)) continue;
    for (const Trace& trace : tracesOf(*piece, placement)) {
      if (std::round(double(trace.tOrigin) / double(rowDuration_)) != row) continue;
      nearest = RecordTrace{k, piece, trace, page.rect, page.zeroLine(row)};
      nearest->zeroSeconds = shownPart() ? shownPart()->x.lower : -double(offset);
      best = distance;
    }
  }
  return nearest;
}

std::optional<PointedRecord> helicorderView::recordAt(QPointF point) const {
  const auto found = traceAt(point);
  if (!found) return {};
  return PointedRecord{found->index, found->record, found->secondsAt(point.x())};
}

PlotReadout helicorderView::readout(QPointF point) const {
  PlotReadout readout;
  const auto seconds = secondsAt(point);
  if (!seconds) return readout;
  const auto found = traceAt(point);
  if (found) readout.addText(QLatin1String("record"), nameOfRecord(*found->record));
  const double perPoint = 1 / page().xScale();
  readout.add(QLatin1String("time"), *seconds, QStringLiteral("s"), perPoint);
  readout.addMoment(momentAfter(startTime_, *seconds), perPoint,
                    localZone_.isValid() ? localZone_ : QTimeZone::systemTimeZone());
  if (found) addAmplitude(readout, *found, point, amplitudeUnit_);
  return readout;
}

std::optional<DrumStretch> helicorderView::stretchAt(QPointF point, double seconds) const {
  const auto middle = secondsAt(point);
  if (!middle || !(seconds > 0) || !std::isfinite(seconds)) return {};
  const double begin = *middle - seconds / 2;
  const double end = *middle + seconds / 2;
  const double zero = shownPart() ? shownPart()->x.lower : -double(startOf(firstPiece().get()).offset);
  return DrumStretch{zero + begin, zero + end, momentAfter(startTime_, begin), momentAfter(startTime_, end)};
}

} // namespace xov
