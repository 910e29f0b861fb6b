#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

namespace xov {

/// Records that belong together on one time axis, so that a moment lies at one place of a plot: all times of such a
/// group count from the reference time of the first record of it. Belonging together are records
/// - that overlap in time,
/// - of events that began within a minute of each other, or
/// - between which no more time passes than a P wave needs around the earth (20 minutes) or the longest record lasts,
///   unless they know different origin times.
/// That carries over from record to record. Records far apart, as those of different earthquakes are, keep axes of
/// their own, and a record without a reference time keeps its times as they are. Records must not be null.
XOV_EXPORT SeismogramArray onCommonAxis(SeismogramArray records);

/// How many moments the records' times count from: 1 when all share a reference time, or none has one. Records must
/// not be null.
XOV_EXPORT std::size_t countTimeAxes(const SeismogramArray& records);

/// Records taken two by two, as a view draws them over each other from one left edge: of two that overlap in time,
/// the later one gets NaN before its first sample, so that both begin together to half a sample. Others stay as they
/// are, and so do those with a reference time beside those without. Records must not be null.
XOV_EXPORT SeismogramArray pairsFromOneStart(SeismogramArray records);

} // namespace xov
