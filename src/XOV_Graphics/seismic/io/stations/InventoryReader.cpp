#include "XOV_Graphics/seismic/io/stations/InventoryReader.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/io/stations/SacPoleZero.h"
#include "XOV_Graphics/seismic/io/stations/StationFile.h"
#include "XOV_Graphics/seismic/io/stations/StationText.h"
#include "XOV_Graphics/seismic/io/stations/StationXml.h"

namespace xov {

namespace {

Result<StationInventory> parseText(QByteArrayView text, const QString& name) {
  const Result<std::vector<Station>> stations = parseStations(text, name);
  if (!stations) return Error{stations.error()};
  StationInventory inventory;
  inventory.name = name;
  for (const Station& station : *stations)
    inventory.stations.push_back(
        {station.network, station.code, {}, {}, station.latitudeDeg, station.longitudeDeg, {}, station.line});
  return inventory;
}

} // namespace

Result<StationInventory> readInventory(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<StationInventory> {
    const Result<QByteArray> bytes = readStationFile(path);
    if (!bytes) return Error{bytes.error()};
    return parseInventory(*bytes, path);
  });
}

Result<StationInventory> parseInventory(QByteArrayView bytes, const QString& name) noexcept {
  return guarded(name, [&] {
    if (beginsAsXml(bytes)) return parseStationXml(bytes, name);
    if (isSacPoleZero(bytes)) return parseSacPoleZero(bytes, name);
    return parseText(bytes, name);
  });
}

} // namespace xov
