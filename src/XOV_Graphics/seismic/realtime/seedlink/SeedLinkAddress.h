#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QString>

namespace xov {

/// Where a SeedLink server is: "geofon.gfz-potsdam.de", "localhost:18001", "tls://host:18500", "[::1]:18000". Without
/// a port it is 18000, or 18500 with TLS.
struct XOV_EXPORT SeedLinkAddress {
  QString host;             ///< name or number
  quint16 port = 18000;     ///< 1 to 65535
  bool isEncrypted = false; ///< by TLS

  /// "host:port".
  QString text() const { return host + ':' + QString::number(port); }
};

/// Reads an address; refuses in one line what is none.
XOV_EXPORT Result<SeedLinkAddress> parseSeedLinkAddress(const QString& text);

} // namespace xov
