#include "XOV_Graphics/seismic/array/StationTable.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/seismic/io/stations/StationText.h"

namespace xov {

namespace {

Result<StationTable> tableOf(const Result<std::vector<Station>>& stations, const QString& name) {
  if (!stations) return Error{stations.error()};
  StationTable table;
  for (const Station& station : *stations) {
    const auto fault = [&](const char* what) {
      return Error{QStringLiteral("%1: line %2: %3").arg(name).arg(station.line).arg(QLatin1StringView(what))};
    };
    if (station.code.isEmpty()) return fault("expected a station code, its latitude and its longitude");
    const QString key = station.network.isEmpty() ? station.code : station.network + QLatin1Char('.') + station.code;
    const auto known = table.constFind(key);
    if (known != table.constEnd() &&
        (known->latitudeDeg != station.latitudeDeg || known->longitudeDeg != station.longitudeDeg))
      return fault("the station has another place further up");
    table.insert(key, {station.latitudeDeg, station.longitudeDeg});
  }
  return table;
}

} // namespace

Result<StationTable> parseStationTable(QByteArrayView text, const QString& name) noexcept {
  return guarded(name, [&] { return tableOf(parseStations(text, name), name); });
}

Result<StationTable> readStationTable(const QString& path) noexcept {
  return guarded(path, [&] { return tableOf(readStations(path), path); });
}

} // namespace xov
