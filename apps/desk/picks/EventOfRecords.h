#pragma once

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <optional>

namespace xov::desk {

/// The event that records are of, as their headers have it: origin time, place, depth, magnitude and name. Nothing
/// where none knows both time and place, or two know different ones.
std::optional<HypocentreValues> eventOfRecords(const SeismogramArray& records);

} // namespace xov::desk
