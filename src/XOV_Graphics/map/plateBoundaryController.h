#pragma once

#include "XOV_Graphics/map/XOVPolygon.h"

namespace xov {

/// Reads plate boundaries from the resource files and keeps them as lines, one a segment, x the longitude in 0..360
/// and y the latitude, in degrees. A title is a line of the file with its end, "\n" in every case.
///
/// A file is text in lines; what a line has beyond 127 bytes counts as a line of its own. A line with a point begins
/// with its longitude and latitude; a number that it lacks is the one that a former segment had at that place, 0 at
/// first. A segment with more points than are said below is closed at that number, which the log mentions; the rest
/// goes on as a segment of the same title that begins with the last point of the first. Points after the last closing
/// line belong to no segment and are left out.
class XOV_EXPORT plateBoundaryController {
public:
  plateBoundaryController();

  /// The lines read so far; never null. The array is shared: lines that are read later appear in it.
  const std::shared_ptr<XOVPolygonArray>& boundaries() const { return boundaries_; }
  /// Replaces the array; null makes a new one.
  void setBoundaries(std::shared_ptr<XOVPolygonArray> boundaries);

  /// Adds the boundaries of the model PB2002 (Bird, P., 2003: An updated digital model of plate boundaries, G-cubed
  /// 4(3), 1027), from PB2002_boundaries.txt: for each segment a line with the title, lines with points (at most
  /// 512), and a line that begins with "***". False, said in the log, when the file is missing or cannot be read, or
  /// has commas between its numbers.
  bool loadBirdPlateBoundaries();

  /// Adds boundaries by type, from trench.txt, ridge.txt and transform.txt, in this order: for each segment a line
  /// with the title, lines with points (at most 1024), and a line that begins with ">". Before the first segment a
  /// file has one more line, which is left out. The bounding boxes are computed. False, said in the log, when one of
  /// the files is missing or cannot be read; the others are read all the same.
  bool loadUTPlateBoundaries();

private:
  std::shared_ptr<XOVPolygonArray> boundaries_;
};

} // namespace xov
