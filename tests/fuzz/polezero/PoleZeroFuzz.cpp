// Whatever the bytes are, the reader of SAC's poles and zeros gives channels of one stage, or one line of error.

#include "../InventoryClaims.h"
#include "XOV_Graphics/seismic/io/stations/SacPoleZero.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  const Result<StationInventory> inventory = parseSacPoleZero(bytes, QStringLiteral("in"));
  fuzz::checkInventory(inventory);
  for (const StationChannel& channel : inventory ? inventory->channels : std::vector<StationChannel>())
    fuzz::require(channel.response.stages.size() == 1, "a block is one stage");
  return 0;
}
