#pragma once

#include <XOV_Graphics/seismic/EventOrigin.h>
#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/views/timeline/RealTimeDisplayView.h>
#include <memory>

namespace xov::cli {

/// Channels as they arrive, from wherever, on a real-time display.
class FeedDisplay {
public:
  FeedDisplay(std::shared_ptr<const EventOriginArray> events, double spanSeconds, Edge edge);

  RealTimeFeed& feed() { return feed_; }
  double spanSeconds() const { return spanSeconds_; }

  /// Gives the display the channels and events; they stay with this object, which must live as long as it is drawn.
  void attachTo(RealTimeDisplayView& view) const;

  /// Shows the span that ends at `present`.
  void showUntil(const QDateTime& present, RealTimeDisplayView& view);

private:
  RealTimeFeed feed_;
  std::shared_ptr<const EventOriginArray> events_;
  double spanSeconds_;
  Edge edge_;
};

} // namespace xov::cli
