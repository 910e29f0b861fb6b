#pragma once

#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"

#include <cstdint>

namespace xov {

/// How a recording is played.
struct XOV_EXPORT ReplayOptions {
  double speed = 1;                 ///< recorded seconds per second of the clock; 1 where it is not above 0
  QDateTime start;                  ///< recorded time at clock 0; the earliest sample where it is invalid
  double shortestPacketSeconds = 1; ///< each channel has packets of its own length between these
  double longestPacketSeconds = 10; ///< the longest of them
  double longestLatencySeconds = 3; ///< each channel's packets arrive up to this long after their last sample
  double lateShare = 0;        ///< the share of packets, 0 to 1, that arrive still later, after those behind them
  double latenessSeconds = 20; ///< by how much
  std::uint32_t seed = 1;      ///< of the lengths, latencies and late packets
};

/// Plays recorded traces as if they arrived now: cuts them into packets and, as a clock goes on, appends those that
/// would have arrived to a feed. Has no clock of its own:
///
///     replayer.advanceTo(secondsSinceTheStart, feed);
///     feed.show(replayer.now(), span, edge);
///
/// The same recording and options give the same packets on every machine.
class XOV_EXPORT Replayer {
public:
  /// Keeps the records. Those whose time is unknown, without samples or with an interval that is not above 0 are left
  /// out; so are null ones.
  explicit Replayer(const SeismogramArray& recorded, const ReplayOptions& options = {});

  /// Appends what arrives up to `clockSeconds`, which does not go back: an earlier one changes nothing. At the first
  /// call the feed gets all channels in the order of the recording, so that their places are settled.
  void advanceTo(double clockSeconds, RealTimeFeed& feed);

  /// The recorded time that the clock has reached; to the millisecond. Invalid when nothing can be played.
  QDateTime now() const;
  /// Whether everything has arrived.
  bool isAtEnd() const { return next_ == packets_.size(); }
  /// How many of the records are played.
  std::size_t playedCount() const { return pieces_.size(); }
  /// Clock seconds until everything has arrived.
  double durationSeconds() const;

private:
  struct Piece {
    std::shared_ptr<SeismogramRecord> record;
    double startSeconds = 0;
    double deltaSeconds = 0;
  };
  struct Packet {
    double arrivalSeconds = 0; // recorded time
    std::size_t piece = 0;
    int first = 0;
    int count = 0;
  };

  void cutIntoPackets(const ReplayOptions& options);

  double speed_;
  double startSeconds_ = 0;
  double clockSeconds_ = 0;
  std::vector<Piece> pieces_;
  std::vector<Packet> packets_; // by arrival
  std::size_t next_ = 0;
  bool hasChannels_ = false;
};

} // namespace xov
