// Whatever the bytes are, the reader of the machine-readable PDE bulletin gives events with a time and numbers in
// range, or one line of error.

#include "../EventClaims.h"
#include "XOV_Graphics/seismic/io/events/Mchedr.h"

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  fuzz::checkEvents(readMchedr(bytes, QStringLiteral("in")));
  (void)isMchedr(bytes);
  return 0;
}
