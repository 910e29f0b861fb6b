#include "XOV_Graphics/seismic/array/RecordArray.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordTexts.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <QDateTime>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <optional>

namespace xov {

namespace {

// Intervals are read from single precision.
constexpr double kSameInterval = 1e-5;
constexpr double kMsPerSecond = 1000;

std::optional<StationPlace> placeOf(const SeismogramRecord& record, const StationTable& places) {
  for (const QString& key : {stationText(record), record.kstnm()}) {
    if (const auto found = places.constFind(key); found != places.constEnd()) return *found;
  }
  const SacHeader& header = headerOf(record);
  if (header.stla == kUndefinedValue || header.stlo == kUndefinedValue) return {};
  if (!isGeographicPoint(header.stla, header.stlo)) return {};
  return StationPlace{header.stla, header.stlo};
}

Result<RecordArray> make(const SeismogramArray& records, const QStringList& names, const StationTable& places) {
  RecordArray array;
  std::vector<StationPlace> found;
  QSet<QString> stations;
  QDateTime first;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const QString name = names.value(qsizetype(i));
    const auto fault = [&](const QString& what) { return Error{name + QStringLiteral(": ") + what}; };
    if (!records[i]) return fault(QStringLiteral("there is no record"));
    const SeismogramRecord& record = *records[i];
    const double interval = record.delta();
    if (i == 0) array.intervalSeconds = interval;
    if (!(std::abs(interval - array.intervalSeconds) <= kSameInterval * array.intervalSeconds))
      return fault(QStringLiteral("a sample interval of %1 s, expected %2 s as in %3")
                       .arg(interval)
                       .arg(array.intervalSeconds)
                       .arg(names.value(0)));
    const QString station = stationText(record);
    if (stations.contains(station))
      return fault(QStringLiteral("a second record of station %1, expected one for each").arg(station));
    stations.insert(station);
    const auto place = placeOf(record, places);
    if (!place) return fault(QStringLiteral("station %1 has no coordinates").arg(station));
    found.push_back(*place);
    const QDateTime reference = referenceTimeOf(record);
    if (i == 0) first = reference;
    if (reference.isValid() != first.isValid())
      return fault(QStringLiteral("only some of the records have a reference time"));
    const double later = reference.isValid() ? double(first.msecsTo(reference)) / kMsPerSecond : 0;
    array.traces.push_back({name, samplesOf(record), later + double(record.b()), {}});
  }
  const std::vector<StationOffset> offsets = stationOffsets(found);
  for (std::size_t i = 0; i < offsets.size(); ++i)
    array.traces[i].offset = offsets[i];
  return array;
}

} // namespace

Result<RecordArray> arrayOfRecords(const SeismogramArray& records, const QStringList& names,
                                   const StationTable& places) noexcept {
  return guarded(QStringLiteral("array"), [&] { return make(records, names, places); });
}

} // namespace xov
