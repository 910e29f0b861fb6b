#pragma once

#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/platform/TraceTimeline.h"

#include <QPointF>
#include <QRectF>
#include <QTransform>

#include <array>
#include <cstdint>
#include <vector>

namespace xov {

/// The points of a trace on the picture, whatever its times do, in blocks of which it is known how far they reach:
/// for a part of the picture only those blocks are looked at that may have ink there.
class TangledPoints {
public:
  static constexpr std::int64_t kBlock = 256; // segments

  /// Notes the reach of each block that may show inside `visible`, in device pixels. Ink reaches `radius` beyond its
  /// points.
  TangledPoints(const Trace& trace, const QTransform& viewToDevice, const QRectF& visible, double radius);

  /// A segment of the line, and whether the line begins at its first point or ends at its second one.
  struct Segment {
    QPointF from, to;
    bool opens = false;
    bool closes = false;
  };

  /// Calls `visit(segment)` for the segments of all blocks that reach into these columns, in order, until that
  /// returns false.
  template <class Visit>
  bool forEachSegment(double left, double right, const Visit& visit) const {
    const auto isBroken = [](QPointF point) { return point.x() != point.x(); };
    Points points;
    for (const Block& block : blocks_) {
      if (double(block.right) < left || double(block.left) > right) continue;
      const int segments = load(block.begin, points);
      for (int i = 0; i < segments; ++i) {
        const QPointF* const point = points.data() + 1 + i;
        if (isBroken(point[0]) || isBroken(point[1])) continue;
        if (!visit(Segment{point[0], point[1], isBroken(point[-1]), isBroken(point[2])})) return false;
      }
    }
    return true;
  }

private:
  struct Block {
    std::int64_t begin = 0; // the first sample
    float left = 0, right = 0;
  };

  /// The ends of a block's segments, and one point more on either side; NaN where the line is broken or over.
  using Points = std::array<QPointF, std::size_t(kBlock) + 3>;

  /// Returns the number of the block's segments.
  int load(std::int64_t begin, Points& points) const;
  void noteBlock(std::int64_t begin, const QRectF& visible, double radius);
  QPointF pointAt(std::int64_t i) const;
  /// The place of a sample that is there.
  QPointF placeOf(double since, float value) const;

  Trace trace_;
  TraceTimeline timeline_;
  QTransform toDevice_;  // from a difference of times and one of values
  bool isPlain_ = false; // times and values are as they stand
  std::vector<Block> blocks_;
};

} // namespace xov
