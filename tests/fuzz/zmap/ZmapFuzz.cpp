// Whatever the bytes are, the reader of ZMAP rows gives events with a time and numbers in range, or one line of
// error.

#include "../EventClaims.h"
#include "XOV_Graphics/seismic/io/events/Zmap.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  fuzz::checkEvents(readZmap(bytes, QStringLiteral("in")));
  (void)isZmap(bytes);
  return 0;
}
