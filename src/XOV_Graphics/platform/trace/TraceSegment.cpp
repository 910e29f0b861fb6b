#include "XOV_Graphics/platform/trace/TraceSegment.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// A segment is cut this far outside the picture, beyond the reach of its end's disc.
constexpr double kCutMargin = 4;
// Along a steeper segment than this, in columns, a line is drawn as a vertical one.
constexpr double kNoWidth = 1e-7;
// A line whose direction has a part smaller than this lies along the other axis.
constexpr double kNoSlope = 1e-12;
// Of rows, by which double precision is off by far less.
constexpr double kRounding = 1e-3;

/// The part of a segment where one coordinate lies between two bounds; false when there is none.
bool cutAlong(double TracePoint::*axis, double lowest, double highest, TracePoint& from, TracePoint& to) {
  const TracePoint a = from, b = to;
  const double start = a.*axis, end = b.*axis;
  if ((start < lowest && end < lowest) || (start > highest && end > highest)) return false;
  const auto at = [&](double bound) {
    const double part = (bound - start) / (end - start);
    TracePoint cut{a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
    cut.*axis = bound;
    return cut;
  };
  if (start < lowest)
    from = at(lowest);
  else if (start > highest)
    from = at(highest);
  if (end < lowest)
    to = at(lowest);
  else if (end > highest)
    to = at(highest);
  return true;
}

/// Cuts away what cannot show in the strip.
bool cutToStrip(const TraceStrip& strip, TracePoint& from, TracePoint& to) {
  const double margin = 2 * strip.radius + kCutMargin;
  return cutAlong(&TracePoint::x, -margin, strip.columns + margin, from, to) &&
         cutAlong(&TracePoint::y, -margin, strip.rows + margin, from, to);
}

struct Span {
  int begin = 0;
  int end = 0;
};

/// A segment with round ends, in single precision.
struct RoundInk {
  float x0, x1;
  float lean; // how far right of a column the disc sits that its highest ink touches, and how far left for the lowest
  float slope;
  float topY, bottomY; // at x0
  float radiusSquared;
  float subWidth;
};

/// Adds the ink in as many sub-columns as a vector has lanes, from `first` on, whose rows lie at `low` and `high`.
template <class Vector>
XOV_INLINE void addRoundLanes(const RoundInk& round, const Vector& middles, int first, float* low, float* high) {
  const Vector x = (middles + float(first)) * round.subWidth;
  const Vector left = Vector{} + round.x0, right = Vector{} + round.x1;
  Vector below = x + round.lean, above = x - round.lean;
  for (Vector* middle : {&below, &above}) {
    keepGreater(*middle, left);
    keepSmaller(*middle, right);
  }
  Vector heightBelow = round.radiusSquared - (x - below) * (x - below);
  Vector heightAbove = round.radiusSquared - (x - above) * (x - above);
  for (Vector* height : {&heightBelow, &heightAbove}) {
    keepGreater(*height, Vector{});
    takeRoot(*height);
  }
  Vector lowest, highest;
  loadVector(low, lowest);
  loadVector(high, highest);
  keepSmaller(lowest, round.topY + round.slope * (above - round.x0) - heightAbove);
  keepGreater(highest, round.bottomY + round.slope * (below - round.x0) + heightBelow);
  storeVector(lowest, low);
  storeVector(highest, high);
}

template <class Vector>
XOV_INLINE void addRoundInkWith(const RoundInk& round, int begin, int end, float* low, float* high) {
  constexpr int kWidth = kLanes<Vector>;
  Vector middles;
  for (int lane = 0; lane < kWidth; ++lane)
    middles[lane] = float(lane) + 0.5F;
  int j = begin;
  for (; j + kWidth <= end; j += kWidth)
    addRoundLanes<Vector>(round, middles, j, low + j, high + j);
  if (j == end) return;
  float fewLow[kWidth] = {}, fewHigh[kWidth] = {};
  std::copy(low + j, low + end, fewLow);
  std::copy(high + j, high + end, fewHigh);
  addRoundLanes<Vector>(round, middles, j, fewLow, fewHigh);
  std::copy_n(fewLow, end - j, low + j);
  std::copy_n(fewHigh, end - j, high + j);
}

XOV_VECTOR8_FUNCTION(void, addRoundInk, (const RoundInk& round, int begin, int end, float* low, float* high),
                     (round, begin, end, low, high))

/// A segment with butt ends.
struct ButtInk {
  TracePoint from;
  double along, up; // its direction, in columns and rows
  double length, radius;
  double subWidth;
  double lowest, highest; // rows from its start beyond which no ink is wanted
};

/// Finds the ink of as many sub-columns as a vector of double precision has lanes, in rows from the segment's start;
/// nothing where low >= high.
template <class Vector>
XOV_INLINE void findButtLanes(const ButtInk& butt, const Vector& middles, int first, Vector& low, Vector& high) {
  const Vector right = (middles + double(first)) * butt.subWidth - butt.from.x;
  low = Vector{} + butt.lowest;
  high = Vector{} + butt.highest;
  if (butt.along > kNoSlope) { // between the two long sides
    keepGreater(low, (right * butt.up - butt.radius) / butt.along);
    keepSmaller(high, (right * butt.up + butt.radius) / butt.along);
  } else {
    const Vector aside = right * butt.up;
    high = XOV_CHOOSE((aside > butt.radius) | (aside < -butt.radius), low, high);
  }
  const Vector done = right * butt.along;
  if (std::abs(butt.up) > kNoSlope) { // between the two ends
    Vector upper = -done / butt.up, lower = (butt.length - done) / butt.up;
    const Vector atStart = upper;
    keepSmaller(upper, lower);
    keepGreater(lower, atStart);
    keepGreater(low, upper);
    keepSmaller(high, lower);
  } else {
    high = XOV_CHOOSE((done < 0.0) | (done > butt.length), low, high);
  }
}

template <class Vector>
XOV_INLINE void addButtInkWith(const ButtInk& butt, int begin, int end, float* low, float* high) {
  constexpr int kWidth = kLanes<Vector> / 2;
  using Doubles = typename LanesWith<double, kWidth>::Vector;
  Doubles middles, from, to;
  for (int lane = 0; lane < kWidth; ++lane)
    middles[lane] = lane + 0.5;
  for (int first = begin; first < end; first += kWidth) {
    findButtLanes(butt, middles, first, from, to);
    for (int lane = 0; lane < std::min(kWidth, end - first); ++lane) {
      if (from[lane] < to[lane])
        InkRows{low, high}.include(first + lane, static_cast<float>(butt.from.y + from[lane]),
                                   static_cast<float>(butt.from.y + to[lane]));
    }
  }
}

XOV_VECTOR8_FUNCTION(void, addButtInk, (const ButtInk& butt, int begin, int end, float* low, float* high),
                     (butt, begin, end, low, high))

/// The sub-columns whose middles lie between two columns.
Span middlesBetween(double left, double right, const TraceStrip& strip, const InkRows& ink) {
  const double first = std::ceil(left * strip.perColumn - 0.5);
  const double last = std::floor(right * strip.perColumn - 0.5);
  return {static_cast<int>(std::clamp(first, double(ink.begin), double(ink.end))),
          static_cast<int>(std::clamp(last + 1, double(ink.begin), double(ink.end)))};
}

} // namespace

void addRoundSegment(TracePoint from, TracePoint to, const TraceStrip& strip, const InkRows& ink) {
  if (!cutToStrip(strip, from, to)) return;
  const Span span = middlesBetween(from.x - strip.radius, to.x + strip.radius, strip, ink);
  const double width = to.x - from.x;
  const double length = std::hypot(width, to.y - from.y);
  const bool vertical = width < kNoWidth;
  // The highest ink above a column touches the pen's disc where the disc's rim runs along the segment: that disc
  // sits this far right of the column for the larger rows, as far left for the smaller ones.
  const auto lean = static_cast<float>(length > 0 ? strip.radius * (to.y - from.y) / length : 0.0);
  const auto slope = static_cast<float>(vertical ? 0.0 : (to.y - from.y) / width);
  const auto x0 = static_cast<float>(from.x), x1 = static_cast<float>(to.x);
  const auto topY = static_cast<float>(vertical ? std::min(from.y, to.y) : from.y);
  const auto bottomY = static_cast<float>(vertical ? std::max(from.y, to.y) : from.y);
  const RoundInk round{x0,
                       x1,
                       lean,
                       slope,
                       topY,
                       bottomY,
                       static_cast<float>(strip.radius * strip.radius),
                       static_cast<float>(strip.subWidth())};
  addRoundInk(round, span.begin, span.end, ink.low, ink.high);
}

void addButtSegment(TracePoint from, TracePoint to, const TraceStrip& strip, const InkRows& ink) {
  Span span = middlesBetween(from.x - strip.radius, to.x + strip.radius, strip, ink);
  // Mostly the curve that the segment leads to has inked all of these rows.
  const double reach = strip.radius + kRounding * (1 + std::abs(from.y) + std::abs(to.y));
  const auto top = static_cast<float>(std::min(from.y, to.y) - reach);
  const auto bottom = static_cast<float>(std::max(from.y, to.y) + reach);
  const auto isInked = [&](int j) { return ink.low[j] <= top && ink.high[j] >= bottom; };
  while (span.begin < span.end && isInked(span.begin))
    ++span.begin;
  while (span.begin < span.end && isInked(span.end - 1))
    --span.end;
  const double length = span.begin < span.end ? std::hypot(to.x - from.x, to.y - from.y) : 0;
  if (!(length > 0)) return;
  const double farRow = strip.rows + 2 * strip.radius + kCutMargin;
  addButtInk({from, (to.x - from.x) / length, (to.y - from.y) / length, length, strip.radius, strip.subWidth(),
              -farRow - from.y, farRow - from.y},
             span.begin, span.end, ink.low, ink.high);
}

} // namespace xov
