#include "XOV_Graphics/seismic/prepare/Alignment.h"

#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/arrivals/EarthModel.h"
#include "XOV_Graphics/seismic/prepare/PhaseTimes.h"
#include "XOV_Graphics/seismic/prepare/RecordPicks.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace xov {

namespace {

/// Counts each record from the moment that `zeroOf` finds for it.
template <typename ZeroOf>
AlignedRecords countedFromEach(SeismogramArray records, ZeroOf zeroOf) {
  AlignedRecords aligned;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const std::optional<double> zero = zeroOf(*records[i]);
    if (zero && std::isfinite(*zero)) {
      aligned.records.push_back(countedFrom(std::move(records[i]), *zero));
    } else {
      aligned.leftOut.push_back(std::move(records[i]));
      aligned.leftOutIndices.push_back(i);
    }
  }
  return aligned;
}

} // namespace

AlignedRecords alignedOn(SeismogramArray records, const QString& phase) {
  return countedFromEach(std::move(records), [&](const SeismogramRecord& record) -> std::optional<double> {
    const Result<double> seconds = phaseSeconds(record, phase);
    return seconds ? std::optional(*seconds) : std::nullopt;
  });
}

AlignedRecords reducedBy(SeismogramArray records, double kmPerSecond) {
  const bool anyOrigin =
      std::ranges::any_of(records, [](const auto& record) { return originSeconds(*record).has_value(); });
  return countedFromEach(std::move(records), [&](const SeismogramRecord& record) -> std::optional<double> {
    const std::optional<double> origin = anyOrigin ? originSeconds(record) : 0;
    if (!origin || !isDefined(double(record.gcarc())) || !(kmPerSecond > 0)) return {};
    return *origin + double(record.gcarc()) * kKmPerDegree / kmPerSecond;
  });
}

} // namespace xov
