#include "XOV_Graphics/seismic/prepare/CommonAxis.h"

#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>

namespace xov {

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
    record = onTimeAxis(record, referenceTimeOf(*records.front()));
  }
  return records;
}

} // namespace xov
