#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

namespace xov {

/// The seconds on the record's axis at which a phase arrives: of the first pick of that name, of the header's
/// field of that name (A, F, T0 to T9), of the origin ("O"), or else as the tables of arrivals have it for the
/// record's distance, depth and origin time. The line of error begins with the record's name.
XOV_EXPORT Result<double> phaseSeconds(const SeismogramRecord& record, const QString& phase);

} // namespace xov
