#pragma once

#include <QPointF>

#include <vector>

namespace xov::maker {

/// Points (longitude, latitude) of a line, in degrees; longitudes are within ±180.
using Segment = std::vector<QPointF>;
using Segments = std::vector<Segment>;

/// Cuts a segment where it crosses Greenwich or the date line, so that neither counting longitudes from 0 to 360 nor
/// from -180 to 180 leaves a step of a whole turn in it. Both pieces reach the meridian; on its western side they end
/// a hair (0.0001 degrees) off, so that the sign of every longitude tells the side. Pieces of a single point, which
/// cannot be drawn, are left out.
Segments cutAtMeridians(const Segment& segment);

/// The segment without those points that lie within `tolerance` degrees of the line through the others (Douglas, D.,
/// and T. Peucker, 1973: Algorithms for the reduction of the number of points required to represent a digitized line
/// or its caricature, The Canadian Cartographer 10(2), 112-122). The ends stay.
Segment thinned(const Segment& segment, double tolerance);

/// The segment in pieces of at most `mostPoints` (2 or more) points; each begins with the last point of the one
/// before.
Segments inPieces(const Segment& segment, std::size_t mostPoints);

} // namespace xov::maker
