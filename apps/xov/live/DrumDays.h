#pragma once

#include "apps/xov/output/DrumSheets.h"

#include <XOV_Graphics/seismic/prepare/RecordWindow.h>
#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/seismic/realtime/seedlink/LiveRecord.h>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace xov::cli {

/// Channels as they arrive, each on pages of a day from midnight to midnight (UTC).
///
/// A page fills while its day lasts, and a new one begins at midnight. Five minutes later, when late packets have
/// found their place, the page of the day that is over is kept, once. Of each channel no more than a day and an hour
/// of samples is held.
class DrumDays {
public:
  /// Is called with the page of a day that is over; its record borrows its samples, and shows them during the call
  /// only.
  using Keep = std::function<void(const DrumSheet& sheet)>;

  explicit DrumDays(Keep keep);

  /// Where what arrives is put, each record after take() has been told of it.
  RealTimeFeed& feed() { return feed_; }
  /// Is to be told of each record before it goes into the feed: what it would push out of it is kept first.
  void expect(const LiveRecord& record);

  /// Turns pages at midnight. A moment of an earlier day changes nothing.
  void advanceTo(const QDateTime& present);
  /// Keeps the pages of days that are over by then, late packets or not.
  void keepAllBefore(const QDateTime& present);

  /// Where the pages begin that are shown; invalid before advanceTo().
  QDateTime day() const;
  /// How many channels there are, in the order in which they first appeared.
  std::size_t channelCount() const { return channels_.size(); }
  /// The page of a channel, less than channelCount(), which goes on filling: one record, maybe without samples.
  DrumSheet sheet(std::size_t channel) const;

private:
  struct Channel {
    std::shared_ptr<RecordWindow> page;
    qint64 firstUnkept = 0; // day since 1970
  };
  std::size_t indexOf(const LiveRecord& record);
  void keepDays(Channel& channel, qint64 end);
  void showDay(Channel& channel) const;

  Keep keep_;
  RealTimeFeed feed_;
  std::vector<Channel> channels_; // as in the feed
  std::optional<qint64> day_;     // since 1970
};

} // namespace xov::cli
