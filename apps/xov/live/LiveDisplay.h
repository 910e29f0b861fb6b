#pragma once

#include "apps/xov/live/FeedDisplay.h"
#include "apps/xov/live/LiveFeed.h"

#include <QElapsedTimer>

namespace xov::cli {

/// What a server sends, on a real-time display that ends at the present.
class LiveDisplay {
public:
  LiveDisplay(const SeedLinkSettings& settings, std::shared_ptr<const EventOriginArray> events, double spanSeconds,
              Edge edge);

  /// Gives the display the channels and events; they stay with this object, which must live as long as it is drawn.
  void attachTo(RealTimeDisplayView& view);

  /// Where it comes from.
  LiveFeed& live() { return live_; }

  /// Shows what has arrived by now.
  void show(RealTimeDisplayView& view);

private:
  void fitAmplitudes(RealTimeDisplayView& view);

  FeedDisplay display_;
  float largest_ = 0;
  QElapsedTimer sinceFit_;
  LiveFeed live_; // goes first
};

} // namespace xov::cli
