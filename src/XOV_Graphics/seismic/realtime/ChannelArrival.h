#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

namespace xov {

/// How far a channel has come, and when. Both times are seconds since 1970 (UTC).
struct XOV_EXPORT ChannelArrival {
  double sampleSeconds = 0; ///< time of the newest sample
  double packetSeconds = 0; ///< when the last packet arrived, by the clock of whoever received it

  /// How far the newest sample lies behind `nowSeconds`: what a digitiser gathers into a packet, what transmission
  /// takes, and how long nothing has come. Below 0 where the channel's clock is ahead.
  double dataLatencySeconds(double nowSeconds) const { return nowSeconds - sampleSeconds; }
  /// How long ago the last packet came, whatever its samples' time: grows where a channel or the link to it is down.
  double feedLatencySeconds(double nowSeconds) const { return nowSeconds - packetSeconds; }

  /// The later one of each time: a late packet takes nothing back.
  ChannelArrival joined(const ChannelArrival& other) const {
    return {sampleSeconds > other.sampleSeconds ? sampleSeconds : other.sampleSeconds,
            packetSeconds > other.packetSeconds ? packetSeconds : other.packetSeconds};
  }

  bool operator==(const ChannelArrival&) const = default;
};

/// A latency in few characters: "4.2 s", from 10 s on "95 s", from 2 min on "12 min", from 2 h on "3 h", from 2 d on
/// "5 d"; whole units that have passed, as people count time. Below 0 with a sign, at most "99999 d", and "-" where
/// it is not finite.
XOV_EXPORT QString latencyText(double seconds);

} // namespace xov
