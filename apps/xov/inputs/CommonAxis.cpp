#include "apps/xov/inputs/CommonAxis.h"

#include <XOV_Graphics/seismic/TimeAxis.h>
#include <algorithm>

namespace xov::cli {

namespace {

bool overlap(const SeismogramRecord& left, const SeismogramRecord& right) {
  const std::optional<double> leftStart = startSeconds(left);
  const std::optional<double> rightStart = startSeconds(right);
  if (!leftStart || !rightStart) return false;
  const double leftEnd = *leftStart + double(left.npts()) * intervalSeconds(left);
  const double rightEnd = *rightStart + double(right.npts()) * intervalSeconds(right);
  return *leftStart <= rightEnd && *rightStart <= leftEnd;
}

} // namespace

SeismogramArray onCommonAxis(SeismogramArray records) {
  if (!std::ranges::all_of(records, [&](const auto& record) { return overlap(*records.front(), *record); }))
    return records;
  for (auto& record : records) {
    const auto reference = records.front()->mySeisReferenceTime();
    reference->updateNSDate();
    record = onTimeAxis(record, reference->nsDate());
  }
  return records;
}

} // namespace xov::cli
