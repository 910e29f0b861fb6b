#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace xov {

/// The record's header, or an unset one where it has none. Valid while the record lives.
XOV_EXPORT const SacHeader& headerOf(const SeismogramRecord& record);

/// The header's times and coordinates in double precision: the record's own where it has them, else those of its
/// header, with the begin time and the interval that the record itself tells.
XOV_EXPORT SacFooter preciseValuesOf(const SeismogramRecord& record);

/// The record's samples; none where it has no block of them or tells a negative number. Valid while the record lives.
XOV_EXPORT std::span<const float> samplesOf(const SeismogramRecord& record);

/// The record's samples, stretch by stretch from the first to the last: of one whose samples are not all in memory,
/// no more than a stretch is brought there at a time. Stretches but the last are 262144 samples long.
XOV_EXPORT void visitSamples(const SeismogramRecord& record,
                             const std::function<void(std::span<const float>)>& visit);

/// What is different in a copy of a record.
struct XOV_EXPORT RecordChanges {
  std::optional<std::vector<float>> samples = {}; ///< from the begin time on
  std::optional<QString> path = {};               ///< in place of that of the file
  std::optional<SacHeader> header = {};           ///< in place of that of the record
  std::optional<SacFooter> precise = {};          ///< replaces what the header has in single precision
};

/// A record with the same header, in double precision, samples and path but for the changes. Its end time and
/// extremes fit its samples.
XOV_EXPORT std::shared_ptr<SacSeismogram> copyOfRecord(const SeismogramRecord& record, RecordChanges changes = {});

/// Like copyOfRecord(), for a record that is not needed as it was: of one that nobody else holds the samples are
/// taken over instead of copied, so that a long recording is in memory once; where only the header or the path
/// changes, the record itself comes back with those. `record` must not be null.
XOV_EXPORT std::shared_ptr<SacSeismogram> changedRecord(std::shared_ptr<SeismogramRecord> record,
                                                        RecordChanges changes = {});

} // namespace xov
