// Whatever a client's file of places holds, each station has one, or a line that is wrong is named.

#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkState.h"
#include "tests/fuzz/MemoryFile.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::MemoryFile file;
  file.hold({data, size});
  const Result<SeedLinkPlaces> places = readSeedLinkState(file.path());
  if (!places) {
    fuzz::require(!places.error().isEmpty() && !places.error().contains(QLatin1Char('\n')), "an error is one line",
                  places.error());
    return 0;
  }
  fuzz::require(places->size() <= size, "each place has a line");
  for (const auto& [station, place] : *places)
    fuzz::require(!station.isEmpty() && !station.contains(' '), "a station has a name");
  return 0;
}
