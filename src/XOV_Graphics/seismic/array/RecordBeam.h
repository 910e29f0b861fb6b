#pragma once

#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/array/BeamPower.h"
#include "XOV_Graphics/seismic/array/StationTable.h"

namespace xov {

/// The beam power of recordings between two times, such as those that a user has put a box around:
///
///     const auto beam = beamOfRecords(chosen, span.begin, span.end);
///     if (beam) fkView.setBeamPower(*beam);
///
/// Times are seconds on the axis of the first record, the others being lined up with it as arrayOfRecords() says,
/// which also tells where stations stand. `search` says what to look for; its window and interval do not count. What
/// is refused is what arrayOfRecords() and beamPower() refuse, and times that not all records have.
XOV_EXPORT Result<BeamPower> beamOfRecords(const SeismogramArray& records, double fromSeconds, double toSeconds,
                                           BeamSearch search = {}, const StationTable& places = {}) noexcept;

} // namespace xov
