#pragma once

#include <XOV_Graphics/seismic/SeismogramRecord.h>

namespace xov::cli {

/// The title of a plot of these records: region and origin time of the event as far as the first record, the lowest
/// one, knows them, else the number of records.
QString titleOfRecords(const SeismogramArray& records);

/// Network and station, joined by a point.
QString stationText(const SeismogramRecord& record);

/// What amplitudes are, with their unit, as far as all records agree: "Velocity (nm/s)"; else "Amplitude".
QString amplitudeLabel(const SeismogramArray& records);

} // namespace xov::cli
