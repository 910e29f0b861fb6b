#pragma once

#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace xov::cli {

/// Puts what a server sends into a feed, and knows the present of a display of it. What the user should know is said
/// to whoever hears it in the thread that this is made in.
///
/// Each channel counts from the mean of its first record of the day (UTC), so that its offset does not push it off
/// its line, however that drifts over the years.
class LiveFeed {
public:
  /// The feed must outlive it. It gets no more than `mostChannels`, whatever the server sends; that others are left
  /// out is said once.
  LiveFeed(const SeedLinkSettings& settings, RealTimeFeed& feed, std::size_t mostChannels);

  /// Is called with each record before it goes into the feed.
  void beforeEach(std::function<void(const LiveRecord&)> look) { look_ = std::move(look); }
  /// What tells the time; that of the machine unless set.
  void setClock(std::function<QDateTime()> clock) { clock_ = std::move(clock); }

  /// Begins to receive.
  void start() { client_.start(); }
  /// Stops receiving, and keeps the place in the packets.
  void stop() { client_.stop(); }

  /// Takes a record as if it came from the server. Once there are records of about now, one that lies further than an
  /// hour ahead is left out, as its channel's clock must be wrong, and the channel said once.
  void take(const LiveRecord& record);

  /// The moment at which a display ends: now; of a server that plays a recording, whose records are all more than an
  /// hour from now, the newest sample. Once there are samples it does not go back, unless the machine's clock is set
  /// back by more than an hour.
  QDateTime present();

  /// Whether any sample has arrived.
  bool hasSamples() const { return newestSeconds_.has_value(); }

private:
  // The days before it have the offset `before`.
  struct Offset {
    qint64 day = 0;
    float now = 0;
    float before = 0;
  };
  bool hasRoomFor(const QString& channel);
  float offsetOf(const LiveRecord& record);
  double nowSeconds() const;

  RealTimeFeed& feed_;
  std::size_t mostChannels_;
  bool isFull_ = false; // that was said
  std::function<void(const QString&)> tell_;
  std::function<void(const LiveRecord&)> look_;
  std::function<QDateTime()> clock_;
  std::map<QString, Offset> offsets_;    // by channel
  std::set<QString> ahead_;              // channels of which that was said
  bool isLive_ = false;                  // some record was of about now
  std::optional<double> newestSeconds_;  // since 1970
  std::optional<double> presentSeconds_; // as it was told last
  SeedLinkClient client_;                // goes first
};

/// The present() of what a LiveDisplay or LiveDrum receives, for as long as it exists; invalid after that.
template <typename Live>
std::function<QDateTime()> presentOf(const std::weak_ptr<Live>& live) {
  return [live] {
    const auto shown = live.lock();
    return shown ? shown->live().present() : QDateTime();
  };
}

} // namespace xov::cli
