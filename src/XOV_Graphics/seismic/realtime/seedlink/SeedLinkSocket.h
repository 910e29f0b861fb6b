#pragma once

#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkAddress.h"

#include <QSslSocket>

#include <functional>

namespace xov {

/// A connection to a server, encrypted where its address says so.
class SeedLinkSocket : public QSslSocket {
public:
  explicit SeedLinkSocket(SeedLinkAddress server);

  using QSslSocket::open;
  /// Begins to connect; calls `ready` once commands can be sent.
  void open(std::function<void()> ready);

private:
  SeedLinkAddress server_;
};

} // namespace xov
