#include "XOV_Graphics/platform/trace/TraceSegment.h"

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
  const auto radiusSquared = static_cast<float>(strip.radius * strip.radius);
  const auto subWidth = static_cast<float>(strip.subWidth());
  for (int j = span.begin; j < span.end; ++j) {
    const float x = (float(j) + 0.5F) * subWidth;
    const float below = std::min(std::max(x + lean, x0), x1);
    const float above = std::min(std::max(x - lean, x0), x1);
    const float heightBelow = std::sqrt(std::max(radiusSquared - (x - below) * (x - below), 0.0F));
    const float heightAbove = std::sqrt(std::max(radiusSquared - (x - above) * (x - above), 0.0F));
    const float highest = bottomY + slope * (below - x0) + heightBelow;
    const float lowest = topY + slope * (above - x0) - heightAbove;
    ink.low[j] = std::min(ink.low[j], lowest);
    ink.high[j] = std::max(ink.high[j], highest);
  }
}

void addButtSegment(TracePoint from, TracePoint to, const TraceStrip& strip, const InkRows& ink) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  if (!(length > 0)) return;
  const Span span = middlesBetween(from.x - strip.radius, to.x + strip.radius, strip, ink);
  const double along = (to.x - from.x) / length, up = (to.y - from.y) / length;
  const double farRow = strip.rows + 2 * strip.radius + kCutMargin;
  for (int j = span.begin; j < span.end; ++j) {
    const double right = (j + 0.5) * strip.subWidth() - from.x;
    double low = -farRow - from.y, high = farRow - from.y;
    if (along > kNoSlope) { // between the two long sides
      low = std::max(low, (right * up - strip.radius) / along);
      high = std::min(high, (right * up + strip.radius) / along);
    } else if (std::abs(right * up) > strip.radius) {
      continue;
    }
    if (std::abs(up) > kNoSlope) { // between the two ends
      const double atStart = -right * along / up, atEnd = (length - right * along) / up;
      low = std::max(low, std::min(atStart, atEnd));
      high = std::min(high, std::max(atStart, atEnd));
    } else if (right * along < 0 || right * along > length) {
      continue;
    }
    if (low < high) ink.include(j, static_cast<float>(from.y + low), static_cast<float>(from.y + high));
  }
}

} // namespace xov
