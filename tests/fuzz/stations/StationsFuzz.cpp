// Whatever the bytes are, the reader of stations gives stations on the globe, in the order of their lines, or one
// line of error; and a table of them has no more than they are.

#include "../Claims.h"
#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/array/StationTable.h"
#include "XOV_Graphics/seismic/io/stations/StationText.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  const Result<std::vector<Station>> stations = parseStations(bytes, QStringLiteral("in"));
  const Result<StationTable> table = parseStationTable(bytes, QStringLiteral("in"));
  if (!table) fuzz::requireOneLine(table.error());
  if (!stations) {
    fuzz::requireOneLine(stations.error());
    fuzz::require(!table, "a table has stations");
    return 0;
  }
  fuzz::require(!stations->empty(), "a file of stations has some");
  qint64 line = 0;
  for (const Station& station : *stations) {
    fuzz::require(isGeographicPoint(station.latitudeDeg, station.longitudeDeg), "a station is on the globe");
    fuzz::require(station.line >= line, "stations come in the order of their lines");
    line = station.line;
  }
  fuzz::require(!table || table->size() <= qsizetype(stations->size()), "a table has a place for each code");
  return 0;
}
