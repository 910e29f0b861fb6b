#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QString>

namespace xov {

// The texts that the seismogram views write beside their traces. Numbers are rounded as printf() rounds, with a point
// in every locale. Values that are not set are shown as they are, and a missing text is an empty text; of records
// that ask for it (SeismogramRecord::unsetNumbers()) both are left out, with what separates them from the next.

/// "region\nOrigin Time:time / Depth =  12 km".
XOV_EXPORT QString eventCaption(const SeismogramRecord& record);

/// "station network (azimuth)", the azimuth in whole degrees, at least two characters, or three above 99.5.
XOV_EXPORT QString azimuthCaption(const SeismogramRecord& record);

/// "label (distance)", the user label and the distance in whole degrees, like azimuthCaption().
XOV_EXPORT QString distanceCaption(const SeismogramRecord& record);

/// "station network component (distance) (azimuth)" with two decimals, in degrees.
XOV_EXPORT QString stripCaption(const SeismogramRecord& record);

/// "station network component".
XOV_EXPORT QString shortCaption(const SeismogramRecord& record);

/// "geographic region\nOrigin Time:time / Depth: 12".
XOV_EXPORT QString regionCaption(const SeismogramRecord& record);

/// "Station: station-network / GCARC:45.7 deg / AZ:123.4 / BAZ:321.0".
XOV_EXPORT QString geometryCaption(const SeismogramRecord& record);

/// The largest absolute amplitude, such as "1.234e+05".
XOV_EXPORT QString peakCaption(const SeismogramRecord& record);

/// The last component of a path without any ".sac" in it, whatever its case; what remains is not searched again.
XOV_EXPORT QString fileCaption(const QString& path);

} // namespace xov
