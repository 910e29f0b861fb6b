#pragma once

#include <XOV_Graphics/seismic/Hypocentre.h>
#include <XOV_Graphics/seismic/prepare/PreparedRecords.h>

namespace xov::cli {

/// Records of the events that they show: each becomes one of the strongest event whose origin time lies between an
/// hour before the record's first sample and its last one; the only event of a catalogue is that of all records.
/// Others stay as they are, with a note. Records must not be null.
PreparedRecords withEventsOf(SeismogramArray records, const HypocentreArray& events);

} // namespace xov::cli
