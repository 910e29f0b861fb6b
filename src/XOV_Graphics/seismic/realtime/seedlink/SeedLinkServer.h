#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QStringList>

#include <cstdint>
#include <memory>

namespace xov {

/// Faults that a server makes on request, to try clients with. Each is made once in that many packets of a
/// connection; 0 never makes it.
struct XOV_EXPORT SeedLinkFaults {
  int dropEvery = 0;      ///< the connection is closed in place of the packet
  int stallEvery = 0;     ///< nothing more is sent over the connection, which stays open
  int duplicateEvery = 0; ///< the packet is sent twice
  int reorderEvery = 0;   ///< the packet is sent after the one behind it
  int cutEvery = 0;       ///< the connection is closed in the middle of the packet
  int garbageEvery = 0;   ///< bytes that are no packet are sent in its place
  int bytesAtOnce = 0;    ///< what is sent arrives in pieces of so many bytes; 0 sends packets whole
};

/// How recordings are served.
struct XOV_EXPORT SeedLinkServerSettings {
  quint16 port = 0;    ///< 0 takes any that is free
  bool isLocal = true; ///< only programs of the same machine may connect
  double speed = 1;    ///< recorded seconds a second; 0 has everything at once
  int protocol = 4;    ///< 3 knows protocol 3.1 only, 4 both
  /// Protocol 4 only: who may receive data; empty for everybody.
  QString user;
  /// Of that user.
  QString password;
  /// PEM files with the certificate that the server shows and the key of it, for clients that connect to tls://; none
  /// for connections that are not encrypted.
  QString certificateFile;
  /// In PEM, too.
  QString keyFile;
  /// What goes wrong on purpose, for tests of clients.
  SeedLinkFaults faults;
};

/// A small SeedLink server (protocols 3.1 and 4.0) that plays miniSEED files as if they were recorded now: for tests
/// of clients, for demonstrations, and for a display without a network. It serves any number of clients in the event
/// loop of the thread that it was made in. What they send is not trusted: lines are bounded, and what is no command
/// is answered by ERROR.
class XOV_EXPORT SeedLinkServer {
public:
  /// Nobody is answered before it listens.
  explicit SeedLinkServer(SeedLinkServerSettings settings);
  ~SeedLinkServer();
  SeedLinkServer(const SeedLinkServer&) = delete;
  SeedLinkServer& operator=(const SeedLinkServer&) = delete;

  /// Adds the records of a miniSEED file, in whole and as they stand there. Protocol 3.1 has those of 512 bytes only.
  /// Refuses a file without records.
  Status addFile(const QString& path);

  /// Begins to listen, and to play from the earliest record on; refuses in one line where the port is taken, or the
  /// certificate or its key cannot be read.
  Status listen();
  /// The port that clients connect to; 0 before listen().
  quint16 port() const;

  /// How many clients are connected.
  int clientCount() const;
  /// Whether every record has been played, and every client has what it asked for.
  bool isAtEnd() const;

private:
  class Private;
  std::unique_ptr<Private> d_;
};

} // namespace xov
