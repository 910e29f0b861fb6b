#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSocket.h"

namespace xov {

namespace {

// The socket takes so much ahead of what is read; the rest waits at the server.
constexpr qint64 kReadAhead = qint64(1) << 20;

} // namespace

SeedLinkSocket::SeedLinkSocket(SeedLinkAddress server) : server_(std::move(server)) { setReadBufferSize(kReadAhead); }

void SeedLinkSocket::open(std::function<void()> ready) {
  if (server_.isEncrypted) {
    connect(this, &QSslSocket::encrypted, this, std::move(ready));
    connectToHostEncrypted(server_.host, server_.port);
  } else {
    connect(this, &QAbstractSocket::connected, this, std::move(ready));
    connectToHost(server_.host, server_.port);
  }
}

} // namespace xov
