#include "XOV_Graphics/seismic/prepare/PicksOfRecords.h"

#include "XOV_Graphics/seismic/SacPickFields.h"
#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/picks/SacPickPlaces.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordPicks.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <QHash>

#include <algorithm>

namespace xov {

namespace {

constexpr std::size_t kStationCode = 1;

/// Which picks are of which station, so that each record looks at its own only.
class PicksByStation {
public:
  explicit PicksByStation(const PickArray& picks) : picks_(picks), isUsed_(picks.size()) {
    for (std::size_t i = 0; i < picks.size(); ++i)
      byStation_[picks[i].channel[kStationCode]].push_back(i);
  }

  std::vector<const Pick*> of(const SeismogramRecord& record) {
    const ChannelCodes channel = channelCodesOf(record);
    std::vector<const Pick*> found;
    for (const std::size_t i : byStation_.value(channel[kStationCode])) {
      if (!isPickOf(picks_[i], channel)) continue;
      isUsed_[i] = true;
      found.push_back(&picks_[i]);
    }
    return found;
  }

  auto unused() const { return std::ranges::count(isUsed_, false); }

private:
  const PickArray& picks_;
  QHash<QString, std::vector<std::size_t>> byStation_;
  std::vector<bool> isUsed_;
};

} // namespace

std::optional<UtcNanoseconds> momentOnAxis(const SeismogramRecord& record, double seconds) {
  return utcAfter(referenceTimeOf(record), seconds);
}

std::optional<double> secondsOnAxis(const SeismogramRecord& record, UtcNanoseconds moment) {
  const QDateTime reference = referenceTimeOf(record);
  return reference.isValid() ? std::optional(secondsFrom(reference, moment)) : std::nullopt;
}

PickArray picksOf(const SeismogramRecord& record) {
  const ChannelCodes channel = channelCodesOf(record);
  const SacFooter precise = preciseValuesOf(record);
  PickArray picks;
  for (const SacPickFields& place : kSacPickFields) {
    const auto rounded = double(record.timePickKey(place.key));
    if (!isDefined(rounded)) continue;
    const double seconds = isDefined(precise.*place.precise) ? precise.*place.precise : rounded;
    const std::optional<UtcNanoseconds> time = momentOnAxis(record, seconds);
    if (!time) continue;
    Pick pick;
    pick.id = QStringLiteral("smi:local/pick/%1.%2.%3")
                  .arg(channelName(channel), QLatin1String(place.name))
                  .arg(time->time_since_epoch().count());
    pick.phase = pickName(record, place.key);
    pick.time = *time;
    pick.channel = channel;
    picks.push_back(std::move(pick));
  }
  return picks;
}

PreparedRecords withPicks(SeismogramArray records, const PickArray& picks) {
  PreparedRecords picked;
  PicksByStation stations(picks);
  SeismogramArray timeless;
  SeismogramArray full;
  for (auto& record : records) {
    const std::vector<const Pick*> own = stations.of(*record);
    const bool isTimeless = !referenceTimeOf(*record).isValid();
    if (own.empty() || isTimeless) {
      if (isTimeless && !own.empty()) timeless.push_back(record);
      picked.records.push_back(std::move(record));
      continue;
    }
    SacHeader header = headerOf(*record);
    SacFooter precise = preciseValuesOf(*record);
    const std::vector<PlacedPick> placed = placesInHeader(own, header);
    clearPicks(header, precise);
    for (const PlacedPick& pick : placed)
      setPick(header, precise, pick, *secondsOnAxis(*record, pick.pick->time));
    picked.records.push_back(changedRecord(std::move(record), {.header = header, .precise = precise}));
    if (placed.size() < own.size()) full.push_back(picked.records.back());
  }
  if (const auto unused = stations.unused(); unused > 0)
    picked.notes.append(QStringLiteral("%1 of %2 pick%3: no record is of that channel")
                            .arg(unused)
                            .arg(picks.size())
                            .arg(picks.size() == 1 ? QString() : QStringLiteral("s")));
  if (!timeless.empty())
    picked.notes.append(QStringLiteral("no reference time of ") + stationsText(timeless) +
                        QStringLiteral(": picks have no place there"));
  if (!full.empty())
    picked.notes.append(QStringLiteral("no room for more picks than A, F and T0 to T9 in records of ") +
                        stationsText(full));
  return picked;
}

} // namespace xov
