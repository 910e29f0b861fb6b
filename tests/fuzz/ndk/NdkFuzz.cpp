// Whatever the bytes are, the reader of NDK gives events with a time and numbers in range, or one line of error.

#include "../EventClaims.h"
#include "XOV_Graphics/seismic/io/events/Ndk.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  fuzz::checkEvents(readNdk(bytes, QStringLiteral("in")));
  (void)isNdk(bytes);
  return 0;
}
