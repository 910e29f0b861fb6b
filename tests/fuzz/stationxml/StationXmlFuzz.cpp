// Whatever the bytes are, the readers of stations give places on the globe and finite responses, or one line of
// error.

#include "../InventoryClaims.h"
#include "XOV_Graphics/seismic/io/stations/InventoryReader.h"
#include "XOV_Graphics/seismic/io/stations/StationXml.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  fuzz::checkInventory(parseInventory(bytes, QStringLiteral("in")));
  // Also what does not begin like a document.
  const Result<StationInventory> document = parseStationXml(bytes, QStringLiteral("in"));
  fuzz::checkInventory(document);
  if (!document) return 0;
  for (const InventoryStation& station : document->stations)
    fuzz::require(!station.code.isEmpty(), "a station of a document has a code"); // lines of two numbers have none
  return 0;
}
