#include "XOV_Graphics/seismic/array/RecordBeam.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/array/RecordArray.h"
#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

#include <algorithm>
#include <limits>

namespace xov {

namespace {

Result<BeamPower> formBeams(const SeismogramArray& records, double fromSeconds, double toSeconds, BeamSearch search,
                            const StationTable& places) {
  QStringList names;
  for (const auto& record : records)
    names << (record ? stationText(*record) : QStringLiteral("record"));
  const Result<RecordArray> array = arrayOfRecords(records, names, places);
  if (!array) return Error{array.error()};
  // What all of them have; windows count from there.
  double begin = -std::numeric_limits<double>::infinity();
  double end = -begin;
  for (const ArrayTrace& trace : array->traces) {
    begin = std::max(begin, trace.startSeconds);
    end = std::min(end, trace.startSeconds + double(trace.samples.size()) * array->intervalSeconds);
  }
  const double from = std::max(fromSeconds, begin);
  const double to = std::min(toSeconds, end);
  if (!(from < to))
    return Error{QStringLiteral("the times %1 to %2 s: all records have %3 to %4 s")
                     .arg(numberText(fromSeconds), numberText(toSeconds), numberText(begin), numberText(end))};
  search.intervalSeconds = array->intervalSeconds;
  search.windowFrom = from - begin;
  search.windowTo = to - begin;
  return beamPower(array->traces, search);
}

} // namespace

Result<BeamPower> beamOfRecords(const SeismogramArray& records, double fromSeconds, double toSeconds,
                                BeamSearch search, const StationTable& places) noexcept {
  return guarded(QStringLiteral("array"), [&] { return formBeams(records, fromSeconds, toSeconds, search, places); });
}

} // namespace xov
