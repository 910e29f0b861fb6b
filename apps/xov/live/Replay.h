#pragma once

#include "apps/xov/live/FeedDisplay.h"

#include <XOV_Graphics/seismic/realtime/Replayer.h>

namespace xov::cli {

/// What a replay shows of a recording.
struct ReplaySettings {
  double speed = 1;         ///< recorded seconds a second
  double spanSeconds = 600; ///< on the display
  Edge edge = Edge::Right;
  QDateTime start = {}; ///< recorded time at which it starts; that of the first sample when invalid
};

/// A recording that plays as if it arrived now, on a real-time display.
class Replay {
public:
  Replay(const SeismogramArray& recorded, std::shared_ptr<const EventOriginArray> events,
         const ReplaySettings& settings);

  /// Gives the display the channels, the events, and an amplitude range that holds all samples. They stay with this
  /// object, which must live as long as the display is drawn.
  void attachTo(RealTimeDisplayView& view);

  /// Lets arrive what arrives up to a time since the start, in seconds of the clock, and shows that moment.
  void showAt(double clockSeconds, RealTimeDisplayView& view);

  /// Clock seconds until everything has arrived.
  double durationSeconds() const { return replayer_.durationSeconds(); }
  bool isAtEnd() const { return replayer_.isAtEnd(); }
  /// False when no record has samples and a time.
  bool canPlay() const { return replayer_.playedCount() > 0; }

private:
  SeismogramArray recorded_;
  Replayer replayer_;
  FeedDisplay display_;
};

} // namespace xov::cli
