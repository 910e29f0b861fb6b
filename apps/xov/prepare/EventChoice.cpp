#include "apps/xov/prepare/EventChoice.h"

#include <XOV_Graphics/seismic/prepare/Placement.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <optional>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kLongestWaySeconds = 3600; // of surface waves to a station

const Hypocentre* eventOf(const SeismogramRecord& record, const HypocentreArray& events) {
  if (events.size() == 1) return events.front().get();
  const std::optional<double> start = startSeconds(record);
  if (!start) return nullptr;
  const double end = *start + intervalSeconds(record) * double(record.npts());
  const Hypocentre* strongest = nullptr;
  for (const std::shared_ptr<Hypocentre>& event : events) {
    const double origin = double(event->oDate().toMSecsSinceEpoch()) / kMillisecondsPerSecond;
    if (origin < *start - kLongestWaySeconds || origin > end) continue;
    if (strongest == nullptr || event->magnitude() > strongest->magnitude()) strongest = event.get();
  }
  return strongest;
}

} // namespace

PreparedRecords withEventsOf(SeismogramArray records, const HypocentreArray& events) {
  PreparedRecords placed{records, {}};
  std::vector<const Hypocentre*> chosen;
  for (const auto& record : records)
    chosen.push_back(eventOf(*record, events));
  SeismogramArray without;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (chosen[i] == nullptr) without.push_back(records[i]);
    if (chosen[i] == nullptr || !records[i]) continue;
    // All records of one event at once, so that what is missing is noted once.
    std::vector<std::size_t> places;
    SeismogramArray same;
    for (std::size_t j = i; j < records.size(); ++j) {
      if (!records[j] || chosen[j] != chosen[i]) continue;
      places.push_back(j);
      placed.records[j] = nullptr;
      same.push_back(std::exchange(records[j], {}));
    }
    PreparedRecords done = withEvent(std::move(same), *chosen[places.front()]);
    placed.notes += done.notes;
    for (std::size_t k = 0; k < places.size(); ++k)
      placed.records[places[k]] = std::move(done.records[k]);
  }
  if (!without.empty())
    placed.notes.append(QStringLiteral("no event in the hour before or during the records of ") +
                        stationsText(without));
  return placed;
}

} // namespace xov::cli
