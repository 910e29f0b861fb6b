#include "XOV_Graphics/views/base/PlotPart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace xov {

namespace {

using Motion = PlotReach::Motion;

// Of the largest value of an axis: a thousand positions in single precision.
constexpr double kLeastShare = 0x1p-14;
constexpr double kLeastDecades = 1e-3;
constexpr double kSameWhole = 1e-6; // widths that ends may differ by
constexpr double kLargestFactor = 1e12;

// A span as it lies along its axis, from the smaller to the larger value.
struct LaidSpan {
  double low = 0;
  double high = 0;
  bool turned = false;

  double width() const { return high - low; }
};

double onAxis(double value, Motion motion) { return motion == Motion::Logarithmic ? std::log10(value) : value; }

double offAxis(double value, Motion motion) { return motion == Motion::Logarithmic ? std::pow(10.0, value) : value; }

// Views take differences of limits in single precision.
bool isUsable(const LaidSpan& span) {
  constexpr auto kWidest = double(std::numeric_limits<float>::max());
  return std::isfinite(span.low) && std::isfinite(span.high) && span.width() > 0 && span.width() <= kWidest;
}

LaidSpan along(const PlotSpan& span, Motion motion) {
  const double lower = onAxis(span.lower, motion);
  const double upper = onAxis(span.upper, motion);
  return upper < lower ? LaidSpan{upper, lower, true} : LaidSpan{lower, upper, false};
}

PlotSpan back(const LaidSpan& span, Motion motion) {
  const double low = offAxis(span.low, motion);
  const double high = offAxis(span.high, motion);
  return span.turned ? PlotSpan{high, low} : PlotSpan{low, high};
}

// Ends of logarithmic axes that are not above 0 stand for another value; see logRange().
PlotSpan drawable(const PlotSpan& span, bool logarithmic) {
  if (!logarithmic) return span;
  const LogRange range = logRange(float(span.lower), float(span.upper));
  return {span.lower > 0 ? span.lower : std::pow(10.0, range.lower),
          span.upper > 0 ? span.upper : std::pow(10.0, range.upper)};
}

struct AxisReach {
  Motion motion = Motion::None;
  PlotSpan whole;
  PlotSpan farthest;
  double least = 0;
};

AxisReach axisReach(const PlotSpan& whole, const PlotSpan& farthest, bool logarithmic, double least) {
  AxisReach reach;
  reach.whole = drawable(whole, logarithmic);
  reach.farthest = united(reach.whole, drawable(farthest, logarithmic));
  const Motion motion = logarithmic ? Motion::Logarithmic : Motion::Linear;
  const LaidSpan range = along(reach.farthest, motion);
  if (!isUsable(range) || !isUsable(along(reach.whole, motion))) return {Motion::None, whole, whole, 0};
  const double rounding =
      logarithmic ? kLeastDecades
                  : kLeastShare * std::max(std::abs(reach.farthest.lower), std::abs(reach.farthest.upper));
  reach.motion = motion;
  reach.least = std::min(least > 0 ? least : rounding, along(reach.whole, motion).width());
  return reach;
}

PlotSpan nearestSpan(const AxisReach& reach, const PlotSpan& wish) {
  if (reach.motion == Motion::None) return reach.whole;
  const LaidSpan whole = along(reach.whole, reach.motion);
  const LaidSpan farthest = along(reach.farthest, reach.motion);
  LaidSpan span = along(wish, reach.motion);
  if (!std::isfinite(span.low) || !std::isfinite(span.high) || !std::isfinite(span.width())) return reach.whole;
  const double width = std::clamp(span.width(), std::min(reach.least, farthest.width()), farthest.width());
  const double middle = span.low + span.width() / 2;
  if (width != span.width()) span = {middle - width / 2, middle + width / 2, false};
  if (span.low < farthest.low) span = {farthest.low, farthest.low + width, false};
  if (span.high > farthest.high) span = {farthest.high - width, farthest.high, false};
  const double near = kSameWhole * width;
  if (std::abs(span.low - whole.low) <= near && std::abs(span.high - whole.high) <= near) return reach.whole;
  if (!(span.width() > 0)) return reach.whole;
  span.turned = whole.turned;
  return back(span, reach.motion);
}

} // namespace

void PlotReach::setX(const PlotSpan& wholeSpan, const PlotSpan& farthest, bool logarithmic, double least) {
  const AxisReach reach = axisReach(wholeSpan, farthest, logarithmic, least);
  std::tie(x, whole.x, farthestX, leastX) = std::tie(reach.motion, reach.whole, reach.farthest, reach.least);
}

void PlotReach::setY(const PlotSpan& wholeSpan, const PlotSpan& farthest, bool logarithmic, double least) {
  const AxisReach reach = axisReach(wholeSpan, farthest, logarithmic, least);
  std::tie(y, whole.y, farthestY, leastY) = std::tie(reach.motion, reach.whole, reach.farthest, reach.least);
}

PlotSpan united(const PlotSpan& span, const PlotSpan& other) {
  const double low = std::min({span.lower, span.upper, other.lower, other.upper});
  const double high = std::max({span.lower, span.upper, other.lower, other.upper});
  return span.lower > span.upper ? PlotSpan{high, low} : PlotSpan{low, high};
}

PlotSpan zoomedSpan(const PlotSpan& span, double about, double factor, Motion motion) {
  if (!(factor > 0)) return span;
  const double times = std::clamp(factor, 1 / kLargestFactor, kLargestFactor);
  const double lower = onAxis(span.lower, motion);
  const double upper = onAxis(span.upper, motion);
  const double wished = onAxis(about, motion);
  const double fixed = std::isfinite(wished) ? wished : lower + (upper - lower) / 2;
  return {offAxis(fixed + (lower - fixed) * times, motion), offAxis(fixed + (upper - fixed) * times, motion)};
}

PlotSpan shiftedSpan(const PlotSpan& span, double share, Motion motion) {
  if (!std::isfinite(share)) return span;
  const double lower = onAxis(span.lower, motion);
  const double upper = onAxis(span.upper, motion);
  const double by = share * (upper - lower);
  return {offAxis(lower + by, motion), offAxis(upper + by, motion)};
}

double shareOfSpan(const PlotSpan& span, double value, Motion motion) {
  const double lower = onAxis(span.lower, motion);
  return (onAxis(value, motion) - lower) / (onAxis(span.upper, motion) - lower);
}

PlotPart nearestPart(const PlotReach& reach, const PlotPart& wish) {
  PlotPart part;
  part.x = nearestSpan({reach.x, reach.whole.x, reach.farthestX, reach.leastX}, wish.x);
  part.y = nearestSpan({reach.y, reach.whole.y, reach.farthestY, reach.leastY}, wish.y);
  const bool hasGain = reach.gain && std::isfinite(wish.gain) && wish.gain > 0;
  part.gain = hasGain ? std::clamp(wish.gain, kLeastGain, kLargestGain) : 1;
  if (std::abs(part.gain - 1) <= kSameWhole) part.gain = 1;
  return part;
}

} // namespace xov
