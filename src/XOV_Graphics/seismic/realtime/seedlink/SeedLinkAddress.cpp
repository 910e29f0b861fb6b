#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkAddress.h"

#include <algorithm>

namespace xov {

namespace {

constexpr quint16 kUsualPort = 18000;
constexpr quint16 kUsualEncryptedPort = 18500;
constexpr int kLastPort = 65535;
constexpr char kEncrypted[] = "tls://";

} // namespace

Result<SeedLinkAddress> parseSeedLinkAddress(const QString& text) {
  const QString trimmed = text.trimmed();
  SeedLinkAddress address;
  address.isEncrypted = trimmed.startsWith(QLatin1String(kEncrypted));
  QString rest = address.isEncrypted ? trimmed.sliced(qsizetype(sizeof kEncrypted) - 1) : trimmed;
  address.port = address.isEncrypted ? kUsualEncryptedPort : kUsualPort;
  const Error error{QStringLiteral("found '%1', expected a server as host or host:port").arg(text)};
  QString port;
  if (rest.startsWith('[')) {
    const qsizetype end = rest.indexOf(']');
    if (end < 0) return error;
    address.host = rest.sliced(1, end - 1);
    port = rest.sliced(end + 1);
  } else {
    const qsizetype colon = rest.indexOf(':');
    address.host = colon < 0 ? rest : rest.first(colon);
    port = colon < 0 ? QString() : rest.sliced(colon);
  }
  if (address.host.isEmpty() || std::ranges::any_of(address.host, [](QChar c) { return c.isSpace() || c == '/'; }))
    return error;
  if (port.isEmpty()) return address;
  bool isNumber = false;
  const int number = port.sliced(1).toInt(&isNumber);
  if (port[0] != ':' || !isNumber || number < 1 || number > kLastPort) return error;
  address.port = quint16(number);
  return address;
}

} // namespace xov
