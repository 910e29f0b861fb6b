#include "XOV_Graphics/views/xy/XYPlotFrame.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kFrameMargin = 60; // left, right and bottom
constexpr double kFrameTop = 40;
constexpr float kBeyondData = 1e25f;

void widen(float value, float& low, float& high) {
  if (low > value) low = value;
  if (value > high) high = value;
}

} // namespace

QRectF xyFrame(const QRectF& bounds) {
  return {kFrameMargin, kFrameMargin, bounds.width() - 2 * kFrameMargin, bounds.height() - kFrameMargin - kFrameTop};
}

std::size_t readablePoints(std::int32_t npts, std::size_t xCount, std::size_t yCount) {
  return npts <= 0 ? 0 : std::min({std::size_t(npts), xCount, yCount});
}

PlottedValues::PlottedValues(std::span<const float> values, bool logarithmic) : values_(values) {
  if (!logarithmic) return;
  logarithms_.reserve(values.size());
  for (const float value : values)
    logarithms_.push_back(value > 0 ? std::log10(value) : std::numeric_limits<float>::quiet_NaN());
  values_ = logarithms_;
}

PlotLimits dataExtremes(std::span<const float> x, std::span<const float> y, LogAxes axes) {
  PlotLimits limits{kBeyondData, -kBeyondData, kBeyondData, -kBeyondData};
  for (const float value : x)
    if (!axes.x || value > 0) widen(value, limits.xmin, limits.xmax);
  for (const float value : y)
    if (!axes.y || value > 0) widen(value, limits.ymin, limits.ymax);
  return limits;
}

XYScale xyScale(const QRectF& frame, const PlotLimits& limits) {
  return {float(frame.width() / double(limits.xmax - limits.xmin)),
          float(frame.height() / double(limits.ymax - limits.ymin))};
}

Trace xyLine(std::span<const float> x, std::span<const float> y, const QRectF& frame, const PlotLimits& limits) {
  const XYScale scale = xyScale(frame, limits);
  Trace line;
  line.samples = y.data();
  line.last = std::int64_t(std::min(x.size(), y.size()));
  line.time = TraceTime::explicitValues(x.data());
  line.tOrigin = limits.xmin;
  line.xScale = scale.x;
  line.xOffset = frame.x();
  line.vOrigin = limits.ymin;
  line.yScale = scale.y;
  line.yOffset = frame.y();
  return line;
}

std::optional<std::size_t> nearestPoint(const Trace& line, QPointF at, double reach, std::size_t skipped) {
  std::optional<std::size_t> nearest;
  double best = reach;
  for (std::int64_t i = std::int64_t(skipped); i < line.last; ++i) {
    const double distance = std::hypot(line.xOf(line.time.values[i]) - at.x(), line.yOf(line.samples[i]) - at.y());
    if (!(nearest ? distance < best : distance <= best)) continue;
    best = distance;
    nearest = std::size_t(i);
  }
  return nearest;
}

void addNearestPoint(PlotReadout& readout, const Trace& line, QPointF at, double reach, std::size_t skipped,
                     std::span<const float> x, std::span<const float> y) {
  const auto nearest = nearestPoint(line, at, reach, skipped);
  if (!nearest) return;
  readout.add(QLatin1String("point"), double(*nearest), {});
  readout.add(QLatin1String("pointX"), double(x[*nearest]), {}, 0, QStringLiteral("at x"));
  readout.add(QLatin1String("pointY"), double(y[*nearest]), {}, 0, QStringLiteral("at y"));
}

Symbols xySymbols(std::span<const float> x, std::span<const float> y, const QRectF& frame, const PlotLimits& limits,
                  double radius) {
  const XYScale scale = xyScale(frame, limits);
  Symbols symbols;
  symbols.x = x.data();
  symbols.y = y.data();
  symbols.first = 1;
  symbols.last = std::int64_t(std::min(x.size(), y.size()));
  symbols.xOrigin = limits.xmin;
  symbols.xScale = scale.x;
  symbols.xOffset = frame.x();
  symbols.yOrigin = limits.ymin;
  symbols.yScale = scale.y;
  symbols.yOffset = frame.y();
  symbols.radius = radius;
  symbols.fill = colors::gray;
  symbols.stroke = colors::black;
  return symbols;
}

void drawInsideFrame(const Symbols& symbols, const QRectF& frame) {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(frame);
  context.drawSymbols(symbols);
}

} // namespace xov
