#include "XOV_Graphics/views/seismic/PickEditorMarks.h"

#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/PicksOfRecords.h"
#include "XOV_Graphics/seismic/prepare/RecordPicks.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr QColor kPickColor(0xB2, 0x22, 0x22);
constexpr QColor kCurrentColor(0xE0, 0x7B, 0x00);
constexpr QColor kAutomaticColor(0x80, 0x3C, 0x8C);
constexpr QColor kArrivalColor(0x2A, 0x7F, 0xB8);
constexpr std::size_t kMostArrivals = 10000; // places that are remembered
constexpr std::size_t kStationPart = 1;
constexpr double kSameArrival = 10; // seconds

QColor colorOf(const Pick& pick, const QString& current) {
  if (pick.id == current) return kCurrentColor;
  return pick.mode == PickMode::Automatic ? kAutomaticColor : kPickColor;
}

// What tells an onset in bulletins: iP, eS.
QString labelOf(const Pick& pick) {
  switch (pick.onset) {
  case PickOnset::Impulsive:
    return QLatin1Char('i') + pick.phase;
  case PickOnset::Emergent:
    return QLatin1Char('e') + pick.phase;
  case PickOnset::Questionable:
    return pick.phase + QLatin1Char('?');
  case PickOnset::Unknown:
    break;
  }
  return pick.phase;
}

} // namespace

PickArray PickEditorMarks::picksAt(const SeismogramRecord& record) const {
  PickArray found;
  if (!document_) return found;
  const PickArray& all = document_->picks();
  if (byStation_.isEmpty()) {
    for (std::size_t row = 0; row < all.size(); ++row)
      byStation_[all[row].channel[kStationPart]].push_back(row);
  }
  const ChannelCodes channel = channelCodesOf(record);
  for (const std::size_t row : byStation_.value(channel[kStationPart]))
    if (row < all.size() && isPickOf(all[row], channel)) found.push_back(all[row]);
  for (Pick& pick : picksOf(record))
    if (!document_->knows(pick.id)) found.push_back(std::move(pick));
  return found;
}

std::optional<std::vector<MarkedPick>> PickEditorMarks::picksToMark(const SeismogramRecord& record) const {
  if (!document_ || !referenceTimeOf(record).isValid()) return {};
  std::vector<MarkedPick> marks;
  const PickArray picks = picksAt(record);
  addArrivals(record, picks, marks);
  for (const Pick& held : picks) {
    const Pick& pick = dragged_ && dragged_->id == held.id ? *dragged_ : held;
    const std::optional<double> seconds = secondsOnAxis(record, pick.time);
    if (!seconds) continue;
    marks.push_back({*seconds, labelOf(pick), colorOf(pick, current_), false, pick.lowerSeconds, pick.upperSeconds,
                     pick.polarity});
  }
  return marks;
}

void PickEditorMarks::setPhases(const std::vector<SeismicPhase>& phases) {
  phases_ = phases;
  arrivals_.clear();
}

// One that has been seen beside it has the name.
void PickEditorMarks::addArrivals(const SeismogramRecord& record, const PickArray& picks,
                                  std::vector<MarkedPick>& marks) const {
  const std::optional<double> origin = originSeconds(record);
  if (phases_.empty() || !origin || !isDefined(double(record.gcarc()))) return;
  const std::pair place(record.gcarc(), record.evdp());
  auto known = arrivals_.find(place);
  if (known == arrivals_.end()) {
    if (arrivals_.size() >= kMostArrivals) arrivals_.clear();
    known = arrivals_.emplace(place, arrivalsOf(record, phases_)).first;
  }
  for (const PhaseArrival& arrival : known->second) {
    const QString name = phaseName(arrival.phase);
    const double seconds = *origin + arrival.seconds;
    const bool isSeen = std::ranges::any_of(picks, [&](const Pick& pick) {
      return pick.phase == name && std::abs(secondsOnAxis(record, pick.time).value_or(0) - seconds) < kSameArrival;
    });
    marks.push_back({seconds, isSeen ? QString() : name, kArrivalColor, true});
  }
}

} // namespace xov
