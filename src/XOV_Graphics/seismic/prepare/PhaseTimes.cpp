#include "XOV_Graphics/seismic/prepare/PhaseTimes.h"

#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/prepare/RecordPicks.h"

#include <optional>
#include <vector>

namespace xov {

namespace {

/// The time that the header has in the field of that name, whatever its label: A, F, T0 to T9.
std::optional<double> fieldSeconds(const SeismogramRecord& record, const QString& name) {
  for (int key = 0; key <= kEndOfSignalKey; ++key) {
    const QString field = key == kFirstArrivalKey  ? QStringLiteral("A")
                          : key == kEndOfSignalKey ? QStringLiteral("F")
                                                   : QStringLiteral("T%1").arg(key);
    const double seconds = double(record.timePickKey(key));
    if (field == name && isDefined(seconds)) return seconds;
  }
  return {};
}

Result<double> predictedSeconds(const SeismogramRecord& record, SeismicPhase phase) {
  const QString name = record.labelString();
  const std::optional<double> origin = originSeconds(record);
  if (!origin || !isDefined(double(record.gcarc())))
    return Error{QStringLiteral("%1: found no pick %2, nor the event's origin time and distance to expect it from")
                     .arg(name, phaseName(phase))};
  const std::vector<PhaseArrival> arrivals = arrivalsOf(record, {&phase, 1});
  if (arrivals.empty())
    return Error{QStringLiteral("%1: found no pick %2, and none arrives at %3 degrees")
                     .arg(name, phaseName(phase))
                     .arg(double(record.gcarc()))};
  return *origin + arrivals.front().seconds;
}

} // namespace

Result<double> phaseSeconds(const SeismogramRecord& record, const QString& phase) {
  if (const std::optional<double> pick = pickTime(record, phase)) return *pick;
  if (const std::optional<double> field = fieldSeconds(record, phase)) return *field;
  if (const std::optional<double> origin = originSeconds(record); origin && phase == QLatin1String("O"))
    return *origin;
  if (const std::optional<SeismicPhase> known = phaseNamed(phase)) return predictedSeconds(record, *known);
  return Error{QStringLiteral("%1: found no pick %2").arg(record.labelString(), phase)};
}

} // namespace xov
