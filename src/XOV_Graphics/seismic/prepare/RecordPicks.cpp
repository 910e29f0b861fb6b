#include "XOV_Graphics/seismic/prepare/RecordPicks.h"

#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/SacPickFields.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace xov {

namespace {

bool isPredictable(const SacPickFields& pick) { return pick.key < kTimePickCount; }

QString nameOf(const SeismogramRecord& record, const SacPickFields& pick) {
  const QString label = record.pickLabelWithKey(pick.key);
  return label.isEmpty() || label == QLatin1String(kUndefinedLabel) ? QString::fromLatin1(pick.name) : label;
}

bool isSet(const SeismogramRecord& record, const SacPickFields& pick) {
  return isDefined(double(record.timePickKey(pick.key)));
}

bool hasPick(const SeismogramRecord& record, const QString& name) { return pickTime(record, name).has_value(); }

/// A record's header with other picks, as far as any were set.
class PickChanges {
public:
  explicit PickChanges(const SeismogramRecord& record)
      : header_(headerOf(record)),
        precise_(preciseValuesOf(record)) {}

  void set(const SacPickFields& pick, double seconds, const std::string& label) {
    header_.*pick.time = float(seconds);
    precise_.*pick.precise = seconds;
    header_.*pick.label = SacText<8>(label);
    any_ = true;
  }

  void clear(const SacPickFields& pick) {
    header_.*pick.time = kUndefinedValue;
    precise_.*pick.precise = kUndefinedValue;
    header_.*pick.label = SacText<8>();
    any_ = true;
  }

  std::shared_ptr<SeismogramRecord> applyTo(std::shared_ptr<SeismogramRecord> record) const {
    return any_ ? changedRecord(std::move(record), {.header = header_, .precise = precise_}) : record;
  }

private:
  SacHeader header_;
  SacFooter precise_;
  bool any_ = false;
};

std::vector<const SacPickFields*> freePicks(const SeismogramRecord& record) {
  std::vector<const SacPickFields*> free;
  for (const SacPickFields& pick : kSacPickFields)
    if (isPredictable(pick) && !isSet(record, pick)) free.push_back(&pick);
  return free;
}

} // namespace

QString pickName(const SeismogramRecord& record, int key) {
  const auto* const pick = std::ranges::find(kSacPickFields, key, &SacPickFields::key);
  return pick == std::end(kSacPickFields) ? QString() : nameOf(record, *pick);
}

std::optional<double> pickTime(const SeismogramRecord& record, const QString& name) {
  const auto* const pick = std::ranges::find_if(
      kSacPickFields, [&](const SacPickFields& one) { return isSet(record, one) && nameOf(record, one) == name; });
  if (pick == std::end(kSacPickFields)) return {};
  const double precise = preciseValuesOf(record).*pick->precise;
  return isDefined(precise) ? precise : double(record.timePickKey(pick->key));
}

std::optional<double> originSeconds(const SeismogramRecord& record) {
  const double precise = preciseValuesOf(record).o;
  const double origin = isDefined(precise) ? precise : double(record.originTimeOffset());
  return isDefined(origin) ? std::optional(origin) : std::nullopt;
}

std::vector<PhaseArrival> arrivalsOf(const SeismogramRecord& record, std::span<const SeismicPhase> phases,
                                     PhaseRepeats repeats) {
  const float depthKm = record.evdp();
  return arrivalsAt(double(record.gcarc()), isDefined(double(depthKm)) ? double(depthKm) : 0, phases, repeats);
}

PreparedRecords withPredictedPicks(SeismogramArray records, std::span<const SeismicPhase> phases) {
  PreparedRecords picked;
  SeismogramArray unknown;
  SeismogramArray full;
  for (auto& record : records) {
    std::vector<SeismicPhase> missing;
    std::ranges::copy_if(phases, std::back_inserter(missing),
                         [&](SeismicPhase phase) { return !hasPick(*record, phaseName(phase)); });
    const std::optional<double> origin = originSeconds(*record);
    const bool isUnknown = !missing.empty() && !(origin && isDefined(double(record->gcarc())));
    const auto arrivals = isUnknown ? std::vector<PhaseArrival>() : arrivalsOf(*record, missing);
    const std::vector<const SacPickFields*> free = freePicks(*record);
    PickChanges changes(*record);
    for (std::size_t i = 0; i < std::min(arrivals.size(), free.size()); ++i)
      changes.set(*free[i], *origin + arrivals[i].seconds, phaseName(arrivals[i].phase).toStdString());
    picked.records.push_back(changes.applyTo(std::move(record)));
    if (isUnknown) unknown.push_back(picked.records.back());
    if (arrivals.size() > free.size()) full.push_back(picked.records.back());
  }
  if (!unknown.empty())
    picked.notes.append(QStringLiteral("no distance or origin time of ") + stationsText(unknown) +
                        QStringLiteral(": arrivals are not known"));
  if (!full.empty())
    picked.notes.append(QStringLiteral("no room for more picks than T0 to T9 in records of ") + stationsText(full));
  return picked;
}

SeismogramArray withPicksNamed(SeismogramArray records, const QStringList& names) {
  for (auto& record : records) {
    PickChanges changes(*record);
    for (const SacPickFields& pick : kSacPickFields)
      if (isSet(*record, pick) && !names.contains(nameOf(*record, pick))) changes.clear(pick);
    record = changes.applyTo(std::move(record));
  }
  return records;
}

PreparedRecords withPicksOrPredictions(SeismogramArray records, const QStringList& names) {
  std::vector<SeismicPhase> phases;
  QStringList wanted = names;
  QStringList unknown;
  for (const QString& name : names) {
    if (const std::optional<SeismicPhase> phase = phaseNamed(name)) {
      if (std::ranges::find(phases, *phase) == phases.end()) phases.push_back(*phase);
      wanted.append(phaseName(*phase));
    } else if (std::ranges::none_of(records, [&](const auto& record) { return hasPick(*record, name); })) {
      unknown.append(name);
    }
  }
  PreparedRecords picked = withPredictedPicks(withPicksNamed(std::move(records), wanted), phases);
  unknown.removeDuplicates();
  if (!unknown.isEmpty())
    picked.notes.prepend(QStringLiteral("no record has a pick ") + unknown.join(QStringLiteral(", ")) +
                         QStringLiteral(", nor is that a phase of the travel times"));
  return picked;
}

} // namespace xov
