#pragma once

#include <QElapsedTimer>

#include <XOV_Graphics/seismic/EventOrigin.h>
#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h>
#include <XOV_Graphics/views/timeline/RealTimeDisplayView.h>
#include <map>
#include <memory>

namespace xov::cli {

/// What a server sends, on a real-time display.
///
/// Each channel is drawn about the mean of its first record, so that its offset does not push it off its line. The
/// display ends now; where the newest sample is far from now, as with a server that plays a recording, it ends there.
class LiveDisplay {
public:
  LiveDisplay(const SeedLinkSettings& settings, std::shared_ptr<const EventOriginArray> events, double spanSeconds,
              Edge edge);

  /// Gives the display the channels and events; they stay with this object, which must live as long as it is drawn.
  void attachTo(RealTimeDisplayView& view);
  /// Begins to receive. What the user should know is said on standard error.
  void start();
  /// Stops receiving, and keeps the place in the packets.
  void stop() { client_.stop(); }

  /// Shows what has arrived by now.
  void show(RealTimeDisplayView& view);

  /// Whether any sample has arrived.
  bool hasSamples() const { return !offsets_.empty(); }

private:
  void take(const LiveRecord& record);
  QDateTime reference() const;
  void fitAmplitudes(RealTimeDisplayView& view);

  RealTimeFeed feed_;
  std::shared_ptr<const EventOriginArray> events_;
  double spanSeconds_;
  Edge edge_;
  std::map<QString, float> offsets_; // by channel
  double newestSeconds_ = 0;         // since 1970
  float largest_ = 0;
  QElapsedTimer sinceFit_;
  SeedLinkClient client_; // goes first
};

} // namespace xov::cli
