#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>
#include <vector>

namespace xov {

/// The codes of a channel: network, station, location and channel, without padding.
using ChannelCodes = std::array<QString, 4>;

/// The codes joined by points, as "II.TLY.00.BHZ".
XOV_EXPORT QString channelName(const ChannelCodes& codes);

/// Patterns that select channels, as SeismogramReadOptions describes them.
class XOV_EXPORT ChannelPatterns {
public:
  /// Refuses a pattern of more than four parts and one with a set that is not closed.
  static Result<ChannelPatterns> parse(const QStringList& patterns);

  /// Whether one of the patterns, of which there may be none, matches.
  bool select(const ChannelCodes& codes) const;
  /// Whether there is none, which selects every channel.
  bool isEmpty() const { return patterns_.empty(); }

private:
  std::vector<std::array<QRegularExpression, 4>> patterns_;
};

} // namespace xov
