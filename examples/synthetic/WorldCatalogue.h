#pragma once

#include <QByteArray>

namespace xov::synthetic {

/// A made-up catalogue of ten years of earthquakes of the Earth, as lines of comma-separated values under the line
/// "time,latitude,longitude,depth,magnitude,type", in the order of time.
///
/// The events lie along rough lines of the Earth's trenches, ridges and mountain belts. Under a trench their depths
/// grow with the distance from it as in a slab that dips at 45 degrees; elsewhere they are shallow. Magnitudes from
/// 4.8 on follow log N = a - b * magnitude with b = 1, up to 8.8 at trenches, 7.8 in mountain belts and 6.8 at
/// ridges.
QByteArray worldCatalogue();

/// Those of the same earthquakes from magnitude 6 on with a focal mechanism each, as QuakeML: what faultSlipAt()
/// has for the belt that they lie in.
QByteArray worldMechanisms();

} // namespace xov::synthetic
