#include "XOV_Graphics/views/base/RecordParts.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// How many widths of a part its ends may be away from 0. Single precision there is an 8000th of the part fine, a
// fraction of a pixel.
constexpr double kFarthest = 1024;
constexpr int kOriginDigits = 15;

bool hasTimes(int npts, double start, double interval) {
  return npts > 0 && std::isfinite(start) && std::isfinite(interval) && interval > 0;
}

} // namespace

RecordSpan timesOf(const SeismogramArray& records) {
  RecordSpan times;
  for (const auto& record : records) {
    if (!record) continue;
    const SacFooter precise = preciseValuesOf(*record);
    if (!hasTimes(record->npts(), precise.b, precise.delta)) continue;
    const PlotSpan own{precise.b, precise.b + (double(record->npts()) - 1) * precise.delta};
    times.span = times.isKnown() ? united(times.span, own) : own;
    times.interval = times.isKnown() ? std::min(times.interval, precise.delta) : precise.delta;
  }
  return times;
}

double originOfPart(const PlotSpan& part, bool showsMoments) {
  const double farthest = std::max(std::abs(part.lower), std::abs(part.upper));
  const double origin = std::floor(part.lower);
  return (showsMoments || farthest > kFarthest * std::abs(part.width())) && std::isfinite(origin) ? origin : 0;
}

RecordPart partOf(int npts, double start, double interval, const PlotSpan& part, double origin) {
  if (!hasTimes(npts, start, interval)) return {};
  const auto index = [&](double time) {
    const double place = (time - start) / interval;
    return std::isnan(place) ? 0.0 : std::clamp(place, -1.0, double(npts));
  };
  RecordPart found;
  found.first = std::int64_t(std::clamp(std::floor(index(part.lower)), 0.0, double(npts)));
  found.last = std::int64_t(std::clamp(std::ceil(index(part.upper)) + 1, 0.0, double(npts)));
  found.firstTime = toSinglePrecision(start + double(found.first) * interval - origin);
  return found;
}

RecordPart partOf(const SeismogramRecord& record, const PlotSpan& part, double origin) {
  const SacFooter precise = preciseValuesOf(record);
  return partOf(record.npts(), precise.b, precise.delta, part, origin);
}

QString timeAxisLabel(const QString& label, double origin) {
  if (origin == 0) return label;
  const QString after = QStringLiteral("after %1 s").arg(QString::number(origin, 'g', kOriginDigits));
  return label.isEmpty() ? QStringLiteral("Time (s) ") + after : label + QLatin1Char(' ') + after;
}

} // namespace xov
