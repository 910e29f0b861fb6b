#include "platform/TraceReduction.h"

#include "platform/TraceClip.h"
#include "platform/TraceProjection.h"
#include "platform/TraceScan.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kGrid = 0.01;                  // points
constexpr double kFarAway = 1e100;              // points; keeps slopes finite
constexpr std::int64_t kFew = 4;                // samples of a column that are all kept
constexpr std::int64_t kNear = 8;               // samples that are looked at one by one before the search jumps
constexpr std::int64_t kLongestBlock = 1 << 20; // samples scanned together; their indices fit 32 bits

class TraceReducer {
public:
  /// Columns are counted from `origin`; `box` is what may show.
  TraceReducer(const Trace& trace, double columnWidth, double origin, const QRectF& box, TraceClip::Shape shape)
      : trace_(trace),
        projection_(trace, QTransform(), 0, 0),
        width_(columnWidth),
        origin_(origin),
        box_(box),
        shape_(shape),
        clip_(box, kGrid, shape) {}

  std::vector<QPolygonF> reduce() {
    if (projection_.isEmpty()) return {};
    if (projection_.grows())
      reduceGrowing();
    else
      reduceAny();
    return clip_.takeLines();
  }

private:
  void reduceGrowing();
  void reduceAny();
  void addColumn(std::int64_t begin, std::int64_t end);
  void addBlock(std::int64_t begin, std::int64_t end);
  void addBroken(std::int64_t begin, std::int64_t end);
  void addPoint(std::int64_t i);
  void addStartOfPiece(std::int64_t inside);
  void addEndOfPiece(std::int64_t beyond);
  std::int64_t nextEdge(std::int64_t begin, std::int64_t guess, std::int64_t end, double edge) const;
  bool breaks(std::int64_t i) const { return !projection_.isFinite(i) || !std::isfinite(projection_.column(i)); }

  const Trace& trace_;
  TraceProjection projection_;
  double width_;
  double origin_;
  QRectF box_;
  TraceClip::Shape shape_;
  TraceClip clip_;
};

void TraceReducer::addPoint(std::int64_t i) {
  const double y = std::clamp(trace_.yOf(*trace_.valueAt(i)), -kFarAway, kFarAway);
  clip_.add({projection_.column(i), y});
}

/// The first sample at or right of an edge, begin < i <= end, looked for around a guess first.
std::int64_t TraceReducer::nextEdge(std::int64_t begin, std::int64_t guess, std::int64_t end, double edge) const {
  std::int64_t i = std::clamp(guess, begin + 1, end);
  std::int64_t looks = 0;
  for (; i > begin + 1 && projection_.column(i - 1) >= edge; --i) {
    if (++looks > kNear) return std::clamp(projection_.firstAtOrAfter(edge), begin + 1, end);
  }
  for (; i < end && projection_.column(i) < edge; ++i) {
    if (++looks > kNear) return std::clamp(projection_.firstAtOrAfter(edge), begin + 1, end);
  }
  return i;
}

void TraceReducer::reduceGrowing() {
  // One sample more on either side: the segments that lead into the box and out of it.
  const std::int64_t first = std::max(projection_.firstAtOrAfter(box_.left()) - 1, projection_.first());
  const std::int64_t last = std::min(projection_.firstAtOrAfter(box_.right()) + 1, projection_.last());
  std::int64_t begin = first;
  std::int64_t size = 1;
  if (shape_ == TraceClip::Shape::Polygon) addStartOfPiece(first);
  while (begin < last) {
    const double column = std::floor((projection_.column(begin) - origin_) / width_);
    const std::int64_t end = nextEdge(begin, begin + size, last, origin_ + (column + 1) * width_);
    size = end - begin;
    addColumn(begin, end);
    begin = end;
  }
  if (shape_ == TraceClip::Shape::Polygon) addEndOfPiece(last);
}

// The piece that reaches into the box from the left begins at its first sample: a straight way from there to the box
// winds about nothing inside. Only a polygon needs it, since its last side leads back there.
void TraceReducer::addStartOfPiece(std::int64_t inside) {
  std::int64_t start = inside;
  while (start > projection_.first() && !breaks(start - 1))
    --start;
  if (start < inside) addPoint(start);
}

// The same on the right.
void TraceReducer::addEndOfPiece(std::int64_t beyond) {
  std::int64_t end = beyond;
  while (end < projection_.last() && !breaks(end))
    ++end;
  if (end > beyond) addPoint(end - 1);
}

/// Times in any order: samples that follow each other in the same column go together.
void TraceReducer::reduceAny() {
  std::int64_t begin = projection_.first();
  const auto columnOf = [this](std::int64_t i) {
    return std::floor((std::clamp(projection_.column(i), box_.left(), box_.right()) - origin_) / width_);
  };
  while (begin < projection_.last()) {
    std::int64_t end = begin + 1;
    if (std::isfinite(projection_.column(begin))) {
      const bool outside = projection_.column(begin) < box_.left() || projection_.column(begin) > box_.right();
      const double column = columnOf(begin);
      while (!outside && end < projection_.last() && columnOf(end) == column)
        ++end;
    }
    addColumn(begin, end);
    begin = end;
  }
}

void TraceReducer::addColumn(std::int64_t begin, std::int64_t end) {
  if (end - begin <= kFew) return addBroken(begin, end);
  for (; begin < end; begin += kLongestBlock)
    addBlock(begin, std::min(end, begin + kLongestBlock));
}

/// Samples of one column, of which few may break the line.
void TraceReducer::addBlock(std::int64_t begin, std::int64_t end) {
  if (projection_.isOverruled(begin)) {
    addPoint(begin);
    ++begin;
  }
  if (begin == end) return;
  const float* const samples = projection_.samples();
  const std::int32_t cuts[] = {0, static_cast<std::int32_t>(end - begin)};
  float low = 0, high = 0;
  if (!findBlockExtremes(samples + begin, cuts, 1, &low, &high)) return addBroken(begin, end);
  std::int64_t lowest = std::find(samples + begin, samples + end, low) - samples;
  std::int64_t highest = std::find(samples + begin, samples + end, high) - samples;
  if (lowest > highest) std::swap(lowest, highest);
  addPoint(begin);
  // Between a column's lowest and highest sample a stroke covers the fill, and leaving them out makes a fill of dense
  // data several times faster.
  if (shape_ == TraceClip::Shape::Polygon) return addPoint(end - 1);
  if (lowest > begin) addPoint(lowest);
  if (highest > lowest) addPoint(highest);
  if (end - 1 > highest) addPoint(end - 1);
}

/// Few samples, or samples between gaps.
void TraceReducer::addBroken(std::int64_t begin, std::int64_t end) {
  while (begin < end) {
    if (breaks(begin)) {
      clip_.endLine();
      ++begin;
      continue;
    }
    std::int64_t stop = begin + 1;
    while (stop < end && !breaks(stop))
      ++stop;
    if (stop - begin > kFew)
      addBlock(begin, stop);
    else
      for (; begin < stop; ++begin)
        addPoint(begin);
    begin = stop;
  }
}

std::vector<QPolygonF> reduceInside(const Trace& trace, double columnWidth, double origin, const QRectF& box,
                                    TraceClip::Shape shape) {
  if (!(columnWidth > 0) || trace.isEmpty() || !(box.width() > 0) || !(box.height() > 0)) return {};
  return TraceReducer(trace, columnWidth, origin, box, shape).reduce();
}

} // namespace

std::vector<QPolygonF> reduceTrace(const Trace& trace, double columnWidth, const QRectF& clip, double margin) {
  const QRectF inside = clip.normalized();
  return reduceInside(trace, columnWidth, inside.left(), inside.adjusted(-margin, -margin, margin, margin),
                      TraceClip::Shape::Line);
}

std::vector<QPolygonF> traceAreas(const Trace& trace, double columnWidth, const QRectF& clip) {
  const QRectF inside = clip.normalized();
  return reduceInside(trace, columnWidth, inside.left(), inside, TraceClip::Shape::Polygon);
}

} // namespace xov
