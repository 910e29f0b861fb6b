#include "XOV_Graphics/platform/trace/TangledPoints.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kFarthestPixel = 1e15; // pixels; slopes and differences stay numbers

} // namespace

TangledPoints::TangledPoints(const Trace& trace, const QTransform& viewToDevice, const QRectF& visible, double radius)
    : trace_(trace),
      timeline_(trace),
      toDevice_(QTransform(trace.xScale, 0, 0, trace.yScale, trace.xOffset, trace.yOffset) * viewToDevice),
      isPlain_(trace.time.rule == TraceTime::Rule::Explicit && !trace.firstValue && !trace.clampLow &&
               !trace.clampHigh && trace.source == nullptr) {
  for (std::int64_t begin = timeline_.first(); begin + 1 < timeline_.last(); begin += kBlock)
    noteBlock(begin, visible, radius);
}

QPointF TangledPoints::pointAt(std::int64_t i) const {
  if (isPlain_) {
    const float time = trace_.time.values[i], value = trace_.samples[i];
    const bool isThere = (time - time) + (value - value) == 0; // 0 for numbers, NaN for everything else
    return isThere ? placeOf(double(singleDifference(time, trace_.tOrigin)), value) : QPointF(kNan, kNan);
  }
  const std::optional<float> value = trace_.valueAt(i);
  const bool isThere = value && std::isfinite(timeline_.time(i));
  return isThere ? placeOf(timeline_.since(trace_.tOrigin, i), *value) : QPointF(kNan, kNan);
}

QPointF TangledPoints::placeOf(double since, float value) const {
  const double up = double(singleDifference(value, trace_.vOrigin));
  const double x = since * toDevice_.m11() + up * toDevice_.m21() + toDevice_.dx();
  const double y = since * toDevice_.m12() + up * toDevice_.m22() + toDevice_.dy();
  if (std::isnan(x) || std::isnan(y)) return {kNan, kNan};
  return {std::clamp(x, -kFarthestPixel, kFarthestPixel), std::clamp(y, -kFarthestPixel, kFarthestPixel)};
}

int TangledPoints::load(std::int64_t begin, Points& points) const {
  const auto pointOrNone = [this](std::int64_t i) {
    return i >= timeline_.first() && i < timeline_.last() ? pointAt(i) : QPointF(kNan, kNan);
  };
  const auto segments = static_cast<int>(std::min(kBlock, timeline_.last() - 1 - begin));
  for (int i = 0; i < segments + 3; ++i)
    points[static_cast<std::size_t>(i)] = pointOrNone(begin - 1 + i);
  return segments;
}

void TangledPoints::noteBlock(std::int64_t begin, const QRectF& visible, double radius) {
  double left = kFarthestPixel, right = -kFarthestPixel, top = kFarthestPixel, bottom = -kFarthestPixel;
  const std::int64_t end = std::min(begin + kBlock + 1, timeline_.last());
  for (std::int64_t i = begin; i < end; ++i) {
    const QPointF point = pointAt(i);
    if (std::isnan(point.x())) continue;
    left = std::min(left, point.x());
    right = std::max(right, point.x());
    top = std::min(top, point.y());
    bottom = std::max(bottom, point.y());
  }
  const double reach = radius + 1; // a pixel for the rounding of what is noted
  const bool shows = left - reach < visible.right() && right + reach > visible.left() &&
                     top - reach < visible.bottom() && bottom + reach > visible.top();
  if (shows) blocks_.push_back({begin, static_cast<float>(left - reach), static_cast<float>(right + reach)});
}

} // namespace xov
