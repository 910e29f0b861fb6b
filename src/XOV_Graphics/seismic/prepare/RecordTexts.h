#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QStringList>

namespace xov {

// What plots of records are called. Records must not be null.

/// The title of a plot of these records: region and origin time of the event as far as the first record, the lowest
/// one, knows them; else their station, or their number where they are of several, and the day or days (UTC) of their
/// first samples, as far as known.
XOV_EXPORT QString titleOfRecords(const SeismogramArray& records);

/// Network and station, joined by a point; the station alone where there is no network.
XOV_EXPORT QString stationText(const SeismogramRecord& record);

/// The captions of the records' channels (SeismogramRecord::labelString()), each once, in their order.
XOV_EXPORT QStringList channelsOf(const SeismogramArray& records);

/// The title of a display of channels: the channel's caption, the station if they are of one, else their number.
XOV_EXPORT QString titleOfChannels(const SeismogramArray& records);

/// What amplitudes are, with their unit, as far as all records agree: "Velocity (nm/s)"; else "Amplitude". Null
/// records do not count.
XOV_EXPORT QString amplitudeLabel(const SeismogramArray& records);

/// That unit alone: "nm/s"; empty where it is not known.
XOV_EXPORT QString amplitudeUnit(const SeismogramArray& records);

/// The records as a view of bands takes them, which captions each with the last part of its path: a record that has
/// its path in common with others gets the name of its channel instead.
XOV_EXPORT SeismogramArray captionedByChannel(SeismogramArray records);

} // namespace xov
