#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/prepare/PreparedRecords.h"

namespace xov {

// Where records were taken and what event they show, written into the headers of copies (changedRecord()). Distance,
// azimuth and back azimuth are those of greatCircle(): on the sphere, through geocentric latitudes on the WGS 84
// ellipsoid. Records must not be null.

/// Records at the places that the inventory has for them at the time of their first sample: that of the channel,
/// with its elevation, depth and orientation, else that of the station. Records of other stations keep what their
/// headers have; a note names those that have no place at all.
XOV_EXPORT PreparedRecords withStations(SeismogramArray records, const StationInventory& inventory);

/// Records of that event: its origin time on the axis of each record, place, depth, name and magnitude take the place
/// of what the headers had of an event, and distance and directions follow from both places. Picks stay. Notes say
/// what is not known, of the event or of which records: records without coordinates then have no distance, and those
/// without a reference time no origin time.
XOV_EXPORT PreparedRecords withEvent(SeismogramArray records, const Hypocentre& event);

} // namespace xov
