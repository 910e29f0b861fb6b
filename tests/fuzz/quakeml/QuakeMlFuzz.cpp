// Whatever the bytes are, the event readers give events with a time and numbers in range, or one line of error.

#include "../EventClaims.h"
#include "XOV_Graphics/seismic/io/events/QuakeMl.h"

#include <QBuffer>

#include <cstdint>

using namespace xov;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  fuzz::checkEvents(parseEvents(bytes, QStringLiteral("in")));
  // Also what does not begin like a document.
  QByteArray contents = bytes.toByteArray();
  QBuffer buffer(&contents);
  buffer.open(QIODevice::ReadOnly);
  fuzz::checkEvents(readQuakeMl(buffer, QStringLiteral("in")));
  return 0;
}
