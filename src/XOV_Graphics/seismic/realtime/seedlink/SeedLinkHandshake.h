#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkState.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace xov {

/// What a client asks a server for.
struct SeedLinkRequest {
  std::vector<SeedLinkStation> stations;
  SeedLinkPlaces places; ///< where to go on; of stations
  /// Since when stations without a place are asked for, microseconds since 1970; nothing for their next packet.
  std::optional<std::int64_t> sinceUs = {};
  QByteArray user; ///< empty where no name is to be given
  QByteArray password;
  QByteArray program; ///< the name and version that the server may log, as "xov/0.1"
};

/// What a client and a server say to each other before packets are sent: one command, one answer. Speaks protocol 4.0
/// with a server that does, else 3.1.
///
/// A station goes on behind its last packet. What is asked for with wildcards goes on at the time of the earliest of
/// the last packets of stations that match; those that arrive again change nothing in a buffer.
class SeedLinkHandshake {
public:
  explicit SeedLinkHandshake(SeedLinkRequest request);

  /// The first bytes to send.
  QByteArray begin() const;

  /// Takes an answer and gives what to send next; empty while the answer has more lines. An error ends the
  /// connection: the server is none, speaks another protocol or has none of the stations.
  Result<QByteArray> takeLine(const QByteArray& line);

  /// Whether what was sent last was the last command: packets follow.
  bool isDone() const { return step_ == Step::Done; }
  /// 3 or 4, once the server has introduced itself.
  int protocol() const { return protocol_; }
  /// Stations that the server refused, a line each.
  const QStringList& refused() const { return refused_; }
  /// How the server introduced itself: its software and the institution, a line each.
  const QStringList& server() const { return server_; }

private:
  enum class Step : std::uint8_t { Hello, Commands, Done };
  struct Command {
    QByteArray text;
    int station = -1;        // of the request; -1 for the server as a whole
    bool isOptional = false; // a refusal changes nothing
  };

  Result<QByteArray> takeHello(const QByteArray& line);
  void planProtocol3();
  void planProtocol4();
  void addStation(int number, const QByteArray& name, const QByteArray& data);
  std::vector<QByteArray> selectors(const SeedLinkStation& station) const;
  QByteArray dataCommand(const SeedLinkStation& station) const;
  Status takeAnswer(const QByteArray& line);
  Result<QByteArray> nextCommand();

  SeedLinkRequest request_;
  Step step_ = Step::Hello;
  int protocol_ = 3;
  std::vector<Command> commands_;
  std::size_t next_ = 0; // the command to be sent
  std::size_t accepted_ = 0;
  QStringList refused_;
  QStringList server_;
};

} // namespace xov
