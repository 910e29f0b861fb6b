#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include "XOV_Graphics/platform/trace/TraceCoverage.h"
#include "XOV_Graphics/platform/trace/TraceEnvelope.h"
#include "XOV_Graphics/platform/trace/TraceFineness.h"
#include "XOV_Graphics/platform/trace/TraceInk.h"
#include "XOV_Graphics/platform/trace/TraceLayers.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <vector>

namespace xov {

namespace {

constexpr double kLargestRadius = 64; // pixels; the work for a sub-column grows with the radius
constexpr double kScaleTolerance = 1e-6;
constexpr int kWidestStrip = 64;      // columns
constexpr std::size_t kJudged = 16;   // traces, by and large, whose ink decides about the fineness of a strip
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

  const std::ptrdiff_t pixelsPerLine = target.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  TraceFineness fineness(radius, projections.size(), samplesPerPixel(projections));
  TraceStrip strip{visible.left(), 0, 0, visible.height(), radius};
  strip.columns = std::min(stripColumns(fineness.subColumns(), projections.size(), radius), visible.width());
  const std::size_t judgedEvery = projections.size() / kJudged + 1;
  std::map<int, TraceEnvelope> envelopes; // by fineness
  TraceLayers layers;
  TraceCoverage coverage(strip.rows);
  for (; strip.left <= visible.right(); strip.left += strip.columns) {
    strip.columns = std::min(strip.columns, visible.right() + 1 - strip.left);
    TraceEnvelope* envelope = nullptr;
    do {
      strip.perColumn = fineness.subColumns();
      envelope = &envelopes.try_emplace(strip.perColumn, strip).first->second;
      envelope->moveTo(strip);
      layers.reset(strip.subColumns(), strip.rows);
      for (std::size_t i = 0; i < projections.size(); ++i)
        envelope->addTrace(projections[i], layers, i % judgedEvery == 0);
    } while (fineness.refine(envelope->roughness(), double(strip.subColumns()) * strip.rows));
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
