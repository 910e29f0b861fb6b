#pragma once

#include <QByteArray>
#include <QPointF>

namespace xov::synthetic {

/// The made-up velocity of the ground at a place (longitude and latitude in degrees), east and north in mm/a, beside
/// a vertical strike-slip fault that moves at 35 mm/a below a depth of 15 km and is locked above: half of that at a
/// distance x from it is (35 / pi) * atan(x / 15 km) (J. C. Savage, R. O. Burford, Geodetic determination of relative
/// plate motion in central California, J. Geophys. Res. 78, 832-845 (1973)). What lies north-east of the fault and
/// far away stands still.
QPointF regionalVelocity(QPointF place);

/// Such velocities at 90 scattered places: lines "longitude latitude east north" under a line that begins with '#'.
QByteArray regionalVelocityTable();

/// The line of the fault, and a closed line around the places, in the NXY format: the number of points, then x and y
/// of each.
QByteArray regionalFaultLine();
QByteArray regionalNetworkLine();

} // namespace xov::synthetic
