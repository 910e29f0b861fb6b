#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

namespace xov {

/// Distance and directions between an event and a station.
struct XOV_EXPORT GreatCircle {
  double distanceDeg = 0;    ///< 0 to 180
  double azimuthDeg = 0;     ///< from the event to the station, clockwise from north, 0 to below 360
  double backAzimuthDeg = 0; ///< from the station to the event, clockwise from north, 0 to below 360
};

/// True for a latitude of -90 to 90 degrees and a longitude of -360 to 360 degrees.
XOV_EXPORT bool isGeographicPoint(double latitudeDeg, double longitudeDeg);

/// The great circle on the sphere through the geocentric latitudes of two points on the WGS 84 ellipsoid. Formulas:
/// J. P. Snyder, Map Projections: A Working Manual, USGS Professional Paper 1395 (1987), equations (3-28) for the
/// geocentric latitude, (5-3) for the distance and (5-4b) for the azimuth. Between points at one place, and from a
/// pole, the direction is whatever the formulas leave (0 for one place).
XOV_EXPORT GreatCircle greatCircle(double eventLatitudeDeg, double eventLongitudeDeg, double stationLatitudeDeg,
                                   double stationLongitudeDeg);

/// A point as text, for instance "38.32°N 142.37°E": two decimals, hemisphere letters, longitude 0 to 180. Empty when
/// isGeographicPoint() does not hold.
XOV_EXPORT QString coordinatesText(double latitudeDeg, double longitudeDeg);

} // namespace xov
