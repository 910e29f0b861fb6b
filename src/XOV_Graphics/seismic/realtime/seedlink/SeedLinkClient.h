#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/realtime/seedlink/LiveRecord.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkAddress.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace xov {

/// What a client does.
struct XOV_EXPORT SeedLinkSettings {
  /// Where to ask.
  SeedLinkAddress server;
  /// What to ask for.
  std::vector<SeedLinkStation> stations;
  QString user;     ///< empty where the server asks for none; protocol 4 only
  QString password; ///< for that user
  /// Where sequence numbers are kept, so that a client that starts again goes on where it stopped; empty for nowhere.
  QString stateFile;
  /// What stations begin with of which no packet is known: what the server still has since then; invalid for what
  /// comes next.
  QDateTime since;
  /// For displays of whole days: at first all stations begin with the day (UTC) of the earliest of their last packets
  /// in the state file, instead of behind them.
  bool beginsWithDay = false;
  double stateSeconds = 10;        ///< the file is written that often while packets arrive
  double keepAliveSeconds = 30;    ///< of silence, after which the server is asked whether it is there
  double stalledSeconds = 120;     ///< of silence, after which the connection is given up and made anew
  double shortestPauseSeconds = 1; ///< before the second attempt to connect; twice as long before each further one
  double longestPauseSeconds = 60; ///< the longest of those pauses
};

/// Receives records from a SeedLink server (protocols 3.1 and 4.0, SeedLink specification of the FDSN) for as long as
/// it exists: connects anew whenever the connection ends or the server falls silent, and goes on behind the last
/// packet of each station. Works in the event loop of the thread that it was made in; nothing blocks.
///
///     SeedLinkClient client(settings);
///     client.onRecord([&](const LiveRecord& record) {
///       feed.append(record.header(), record.startSeconds(), record.deltaSeconds(), record.samples,
///                   record.arrivalSeconds);
///     });
///     client.start();
///
/// Nothing that a server sends is trusted: what breaks the protocol ends the connection, damaged records are left out
/// and said, and no more than one packet is held at a time. A callback may stop() the client, or destroy it.
class XOV_EXPORT SeedLinkClient {
public:
  /// Nothing is asked before start().
  explicit SeedLinkClient(SeedLinkSettings settings);
  /// Ends the connection and writes the state file.
  ~SeedLinkClient();
  SeedLinkClient(const SeedLinkClient&) = delete;
  SeedLinkClient& operator=(const SeedLinkClient&) = delete;

  /// Is called with each record of samples that was asked for, in the order of arrival.
  void onRecord(std::function<void(const LiveRecord&)> take);
  /// Is called with a line for the user when something changes: connected, lost, refused, damaged. A fault that
  /// repeats itself is said once.
  void onMessage(std::function<void(const QString&)> take);

  /// Reads the state file and connects. An unreadable state file is said, and everything begins with what comes next.
  void start();
  /// Ends the connection for good and writes the state file.
  void stop();

  /// Whether packets are arriving or may arrive: the server has taken what was asked for.
  bool isStreaming() const;
  /// How far a channel has come, by the clock of this machine; nothing before its first record.
  std::optional<ChannelArrival> arrival(const ChannelCodes& channel) const;
  /// How often a connection was made.
  int connectionCount() const;

private:
  class Private;
  std::unique_ptr<Private> d_;
};

} // namespace xov
