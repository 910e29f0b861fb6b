#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

namespace xov {

/// Records of the same time on one time axis, so that traces in one plot lie under each other: when each of them
/// overlaps the first one in time, all times count from the first one's reference time. Else each keeps its own, as
/// records of different events do, or those without a time. Records must not be null.
XOV_EXPORT SeismogramArray onCommonAxis(SeismogramArray records);

} // namespace xov
