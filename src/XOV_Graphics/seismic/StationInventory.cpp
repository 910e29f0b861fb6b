#include "XOV_Graphics/seismic/StationInventory.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/SacHeader.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

enum Code : std::uint8_t { Network, StationCode, Location, Channel };

/// The time of the first sample, UTC; invalid when it is unknown.
QDateTime startOf(const SeismogramRecord& record) {
  constexpr double kMillisecondsPerSecond = 1000;
  constexpr double kFarthest = 1e11; // seconds; some three thousand years
  const QDateTime reference = record.mySeisReferenceTime()->nsDate();
  const double begin = double(record.b());
  if (!reference.isValid() || !(std::abs(begin) < kFarthest)) return reference;
  return reference.addMSecs(qint64(std::floor(begin * kMillisecondsPerSecond)));
}

/// Files of responses write the empty location as two dashes or as blanks.
QString bareLocation(const QString& location) {
  const QString bare = location.trimmed();
  return bare == QLatin1String("--") ? QString() : bare;
}

bool fits(const QString& known, const QString& wanted) {
  return known.isEmpty() || wanted.isEmpty() || known == wanted;
}

bool fitsButForLocation(const ChannelCodes& known, const ChannelCodes& wanted) {
  return fits(known[Network], wanted[Network]) && fits(known[StationCode], wanted[StationCode]) &&
         fits(known[Channel], wanted[Channel]);
}

bool hasNoCodes(const ChannelCodes& codes) {
  return std::ranges::all_of(codes, [](const QString& code) { return code.isEmpty(); });
}

using Channels = std::vector<const StationChannel*>;

/// Those channels that have the record's location; where it has none and no channel has none, all.
Channels atLocation(const Channels& channels, const QString& location) {
  Channels there;
  std::ranges::copy_if(channels, std::back_inserter(there), [&](const StationChannel* channel) {
    return bareLocation(channel->codes[Location]) == location || hasNoCodes(channel->codes);
  });
  return there.empty() && location.isEmpty() ? channels : there;
}

bool isOneChannel(const Channels& channels) {
  return std::ranges::all_of(
      channels, [&](const StationChannel* channel) { return channel->codes == channels.front()->codes; });
}

} // namespace

bool Epoch::holds(const QDateTime& time) const {
  if (!time.isValid()) return true;
  return (!start.isValid() || start <= time) && (!end.isValid() || time <= end);
}

ChannelCodes channelCodesOf(const SeismogramRecord& record) {
  return {record.knetwk(), record.kstnm(), bareLocation(record.khole()), record.kcmpnm()};
}

const InventoryStation* stationOf(const StationInventory& inventory, const SeismogramRecord& record) {
  const QString network = record.knetwk();
  const QString code = record.kstnm();
  const QDateTime time = startOf(record);
  const auto found = std::find_if(inventory.stations.rbegin(), inventory.stations.rend(), [&](const auto& station) {
    return station.code == code && fits(station.network, network) && station.epoch.holds(time);
  });
  return found == inventory.stations.rend() ? nullptr : &*found;
}

Result<const StationChannel*> stationChannelOf(const StationInventory& inventory,
                                               const SeismogramRecord& record) noexcept {
  return guarded(inventory.name, [&]() -> Result<const StationChannel*> {
    const ChannelCodes wanted = channelCodesOf(record);
    const auto fault = [&](const QString& what) {
      return Error{inventory.name + ": " + what + QLatin1Char(' ') + channelName(wanted)};
    };
    Channels known;
    for (const StationChannel& channel : inventory.channels)
      if (fitsButForLocation(channel.codes, wanted)) known.push_back(&channel);
    known = atLocation(known, wanted[Location]);
    if (known.empty()) return fault(QStringLiteral("has no channel"));
    const QDateTime time = startOf(record);
    std::erase_if(known, [&](const StationChannel* channel) { return !channel->epoch.holds(time); });
    if (known.empty()) return fault("has nothing of " + utcText(time) + " for");
    if (!isOneChannel(known)) return fault(QStringLiteral("has several channels for"));
    // Where one epoch begins as another ends, the later one holds, and of two of the same time the last.
    return *std::ranges::max_element(
        known, {}, [](const StationChannel* channel) { return std::pair(channel->epoch.start, channel->line); });
  });
}

} // namespace xov
