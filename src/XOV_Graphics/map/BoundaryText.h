#pragma once

#include "XOV_Graphics/map/XOVPolygon.h"

#include <QByteArray>

#include <array>
#include <cstddef>

// The two text formats of plate boundaries. Both are read in lines of at most 127 bytes: what a line has beyond that
// counts as a line of its own. A line is a point when it begins with two numbers, longitude and latitude.
//
//   by segment                        by type of boundary
//     a title                           a title that the next line replaces
//     -10.0 5.0                         a title
//     20.0 -5.0                         1 1
//     *** end of line segment ***       2 2
//     the title of the next one         >
//     ...                               the title of the next one
//                                       ...
//
// What follows the last closing line ("***", ">") belongs to no segment.

namespace xov {

/// The most points of a segment; what goes beyond continues as a segment of the same title.
inline constexpr std::size_t kBirdSegmentPoints = 512;
inline constexpr std::size_t kTypedSegmentPoints = 1024;

/// Collects the points of one segment after the other and adds them to an array of polygons. The room for points is
/// kept from segment to segment: a number that a line lacks is whatever stood in its place before, 0 at first.
class SegmentCollector {
public:
  enum class Bounds : std::uint8_t { NotComputed, Computed };

  /// `mostPoints` is at most kTypedSegmentPoints.
  SegmentCollector(std::size_t mostPoints, Bounds bounds, XOVPolygonArray& boundaries);

  /// Forgets the segment under construction.
  void restart();
  /// The line with its end becomes the title.
  void setTitle(QByteArrayView line);
  /// Adds a point, with a longitude below 0 moved into 0..360.
  void addPoint(QByteArrayView line);
  /// Adds the segment to the array, with or without points, and begins the next one.
  void close();

private:
  void addPolygon();

  std::array<float, kTypedSegmentPoints> xp_{};
  std::array<float, kTypedSegmentPoints> yp_{};
  std::size_t mostPoints_;
  std::size_t count_ = 0;
  QString title_;
  Bounds bounds_;
  XOVPolygonArray& boundaries_;
};

/// Reads a text in the format by segment.
void readBirdBoundaries(const QByteArray& text, SegmentCollector& segments);
/// Reads a text in the format by type.
void readTypedBoundaries(const QByteArray& text, SegmentCollector& segments);

} // namespace xov
