#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QString>

#include <vector>

namespace xov {

// Records whose times count from another moment each, so that what belongs together lies below each other in a plot.
// Their reference times move along (countedFrom()), so each record still knows when it was taken. Records must not be
// null.

/// Records on axes of their own, and which ones had none.
struct XOV_EXPORT AlignedRecords {
  SeismogramArray records;                 ///< in the order in which they came
  SeismogramArray leftOut;                 ///< as they were
  std::vector<std::size_t> leftOutIndices; ///< where these stood, ascending
};

/// The records with their times counted from a phase each: a pick of that name or a predicted one, as phaseSeconds()
/// finds it. Those without are left out.
XOV_EXPORT AlignedRecords alignedOn(SeismogramArray records, const QString& phase);

/// The records with their times reduced by the time that a wave of `kmPerSecond` takes along the surface from the
/// event: seconds since the origin time, less distance over velocity. Records that do not know their distance are
/// left out, and those that do not know the origin time where others do; where none does, seconds count as they did.
/// All are left out at a velocity that is not above 0.
XOV_EXPORT AlignedRecords reducedBy(SeismogramArray records, double kmPerSecond);

} // namespace xov
