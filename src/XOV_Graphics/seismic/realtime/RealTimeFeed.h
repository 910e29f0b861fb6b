#pragma once

#include "XOV_Graphics/base/Edge.h"
#include "XOV_Graphics/seismic/realtime/RealTimeSeismogram.h"

namespace xov {

/// The time span that a display shows, on the time axis that counts from `base`.
struct XOV_EXPORT RealTimeSpan {
  QDateTime base; ///< that times count from, UTC
  float xmin = 0; ///< where the display begins, in seconds
  float xmax = 0; ///< where it ends
};

/// The span of `seconds` that ends, or begins, at `reference`, which lies on that edge of the display. The base is
/// the last whole minute before the middle of the span: times stay within half the span and a minute of 0, where
/// single precision is finest, on both sides alike, which keeps what accumulates while a trace is drawn smallest. For
/// an hour, b, xmin and xmax are off by 0.07 ms at most. The base moves with the reference, a minute at a time. No
/// base for a reference that is invalid or at the ends of what dates can hold.
XOV_EXPORT RealTimeSpan realTimeSpan(const QDateTime& reference, double seconds, Edge edge);

/// Channels as they arrive, each with a buffer of its own. Not tied to any source or clock.
///
///     view.setWvfrmsArray(feed.records());                     // once
///     feed.append(header, start, delta, samples);              // whenever samples arrive
///     const RealTimeSpan span = feed.show(now, 3600, edge);    // for each redraw
///     view.setXLimitsMinMax(span.xmin, span.xmax);
///     view.setRefDate(now);
class XOV_EXPORT RealTimeFeed {
public:
  /// Buffers hold the latest `seconds` of each channel.
  explicit RealTimeFeed(double seconds);

  /// The channel with the codes of `header`; a new one, without samples, when there is none yet. Stays where it is.
  RealTimeSeismogram& channel(const SacHeader& header);
  /// Puts samples into the channel with the codes of `header`.
  void append(const SacHeader& header, double startSeconds, double deltaSeconds, std::span<const float> samples);
  /// The same of a packet that arrived at `arrivalSeconds` by the host's clock, since 1970 (UTC): then the channel
  /// tells its RealTimeSeismogram::arrival().
  void append(const SacHeader& header, double startSeconds, double deltaSeconds, std::span<const float> samples,
              double arrivalSeconds);

  /// The channels, in the order in which they first appeared: one array, which grows with them.
  const std::shared_ptr<const SeismogramArray>& records() const { return shown_; }

  /// Moves all channels to the time axis that counts from `base`; an invalid one changes nothing.
  void setBaseTime(const QDateTime& base);
  /// Moves all channels to the time axis of realTimeSpan() and gives that.
  RealTimeSpan show(const QDateTime& reference, double seconds, Edge edge);

private:
  double seconds_;
  QDateTime base_;
  std::vector<std::shared_ptr<RealTimeSeismogram>> channels_;
  std::shared_ptr<SeismogramArray> records_ = std::make_shared<SeismogramArray>();
  std::shared_ptr<const SeismogramArray> shown_ = records_; // the same, as views take it
};

} // namespace xov
