#include "platform/TraceRaster.h"

#include "platform/TraceBlend.h"
#include "platform/TraceCoverage.h"
#include "platform/TraceEnvelope.h"
#include "platform/TraceLayers.h"
#include "platform/TraceProjection.h"
#include "platform/TraceStrip.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <vector>

namespace xov {

namespace {

constexpr double kLargestRadius = 64; // pixels; the work for a sub-column grows with the radius
constexpr double kScaleTolerance = 1e-6;
constexpr int kWidestStrip = 64;      // columns
constexpr int kLayerBudget = 1 << 17; // intervals of a strip that stay in a fast cache

/// The scale of a transform that keeps x rightwards, may mirror y and scales both alike.
std::optional<double> uniformScale(const QTransform& transform) {
  const double scale = transform.m11();
  if (!transform.isAffine() || !(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  const double tolerance = kScaleTolerance * scale;
  const bool turned = std::abs(transform.m12()) > tolerance || std::abs(transform.m21()) > tolerance;
  if (turned || !(std::abs(std::abs(transform.m22()) - scale) <= tolerance)) return std::nullopt;
  return scale;
}

/// Sub-columns a pixel, a multiple of eight. A vertical edge is off by a quarter of one on average, so the more the
/// better; the work grows with them and with the pen, and few lines leave room for more than many. Where a pixel holds
/// few samples, much of its ink lies beside a steep edge; where it holds dozens, little does, and less so for a wide
/// pen.
int subColumnsPerPixel(double radius, std::size_t lines, double samplesPerPixel) {
  struct Fineness {
    std::size_t lines;      // up to this many
    double samplesPerPixel; // with fewer than these
    int subColumns;         // with pens up to the radius
    double radius;
  };
  constexpr auto kAnyLines = std::numeric_limits<std::size_t>::max();
  constexpr double kAnySamples = std::numeric_limits<double>::infinity();
  constexpr Fineness kFineness[] = {{4, 128, 64, 2},
                                    {kAnyLines, 12, 32, 1},
                                    {16, kAnySamples, 16, 1},
                                    {kAnyLines, 128, 24, 2.0 / 3},
                                    {kAnyLines, kAnySamples, 16, 2.0 / 3}};
  constexpr int kCoarsest = 8;
  const Fineness& fineness = *std::find_if(std::begin(kFineness), std::end(kFineness), [=](const Fineness& f) {
    return lines <= f.lines && samplesPerPixel < f.samplesPerPixel;
  });
  const double narrower = std::min(fineness.radius / radius, 1.0);
  return std::max(static_cast<int>(fineness.subColumns * narrower) / 8 * 8, kCoarsest);
}

double samplesPerPixel(const std::vector<TraceProjection>& projections) {
  double samples = 0, pixels = 0;
  for (const TraceProjection& projection : projections) {
    samples += double(projection.last() - projection.first());
    pixels += projection.column(projection.last() - 1) - projection.column(projection.first());
  }
  return samples / std::max(pixels, 1.0);
}

/// Strips become narrower as the number of lines grows, so that all of a strip's ink stays at hand.
int stripColumns(int perColumn, std::size_t traces, double radius) {
  const auto lines = static_cast<int>(std::min<std::size_t>(traces, kLayerBudget));
  const int wished = kLayerBudget / (perColumn * std::max(lines, 1));
  const int narrowest = std::max(kInkColumns, static_cast<int>(2 * radius)); // else most work is done twice
  return std::clamp(wished, narrowest, std::max(narrowest, kWidestStrip)) / kInkColumns * kInkColumns;
}

} // namespace

bool strokeTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                  const QRect& clip, double lineWidth, const QColor& color) {
  const std::optional<double> scale = uniformScale(viewToDevice);
  if (!scale) return false;
  const double radius = lineWidth * *scale / 2;
  if (radius > kLargestRadius) return false;
  const QRect visible = clip & QRect(0, 0, target.width, target.height);
  std::vector<TraceProjection> projections;
  projections.reserve(traces.size());
  for (const Trace& trace : traces) {
    if (trace.isEmpty()) continue;
    projections.emplace_back(trace, viewToDevice, visible.top(), visible.height());
    if (!projections.back().grows()) return false;
    if (projections.back().isEmpty()) projections.pop_back();
  }
  const TraceInk ink(color);
  if (target.bits == nullptr || visible.isEmpty() || projections.empty() || !(radius > 0) || ink.isInvisible()) {
    return true;
  }

  TraceStrip strip{visible.left(), 0, 0, visible.height(), radius};
  strip.perColumn = subColumnsPerPixel(radius, projections.size(), samplesPerPixel(projections));
  strip.columns = std::min(stripColumns(strip.perColumn, projections.size(), radius), visible.width());
  const std::ptrdiff_t pixelsPerLine = target.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  TraceEnvelope envelope(strip);
  TraceLayers layers;
  TraceCoverage coverage(strip.rows);
  for (; strip.left <= visible.right(); strip.left += strip.columns) {
    strip.columns = std::min(strip.columns, visible.right() + 1 - strip.left);
    envelope.moveTo(strip);
    layers.reset(strip.subColumns(), strip.rows);
    for (const TraceProjection& projection : projections)
      envelope.addTrace(projection, layers);
    coverage.take(layers);
    for (int column = 0; column < strip.columns; column += kInkColumns) {
      const RowRange rows = coverage.unite(strip, column);
      uchar* const line = target.bits + (visible.top() + rows.first) * target.bytesPerLine;
      ink.lay(coverage.changes(), rows, strip.perColumn, std::min(kInkColumns, strip.columns - column),
              reinterpret_cast<std::uint32_t*>(line) + strip.left + column, pixelsPerLine);
    }
  }
  return true;
}

} // namespace xov
